// Two threads, each with expressions of its own.
#include "tests/text/expressionSupport.h"
#include "text/Regexp.h"
#include "text/SPStringList.h"

#include <string>
#include <thread>

using namespace zk::test;

namespace {

// Compiles and matches many times; gives how often the result was wrong.
int mistakesOf(std::string const& word)
{
    int mistakes = 0;
    std::string const subject = "(" + word + "=" + std::string(300, 'x') + ")";
    for (int round = 0; round < 300; ++round) {
        Regexp expression((word + "=(x|y)*").c_str(), round % 2);
        mistakes += expression.match(subject.c_str()) != 1;
        mistakes += expression.groups() != 2;
        mistakes += expression.getgroup(0).length() != static_cast<int>(word.size()) + 301;
        mistakes += groupsOfMatch("(a|ab)*[cd]" + word, std::string(60, 'a')) != "no match";
        RegexpFault fault;
        mistakes += regcomp(("(" + word).c_str(), fault) != nullptr;
        mistakes += fault.offset != word.size() + 1;
        SPString text((word + "=1," + word + "=22").c_str());
        mistakes += text.s("([0-9])+", "<$1>", round % 2 ? "g" : "gi") != 2;
        mistakes += text.split("[,=]").count() != 4;
        mistakes += text.split(",").grep(word.c_str(), "i").count() != 2;
        mistakes += text.m((word + "=<([0-9]*)>").c_str()) != 1;
        mistakes += SPStringList("([a-z]+)=", text).count() != 1;
    }
    return mistakes;
}

}  // namespace

TEST(RegexpThreads, compileAndMatchAtTheSameTime)
{
    int first = -1;
    int second = -1;

    std::thread one([&] { first = mistakesOf("alpha"); });
    std::thread other([&] { second = mistakesOf("be"); });
    one.join();
    other.join();

    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 0);
}
