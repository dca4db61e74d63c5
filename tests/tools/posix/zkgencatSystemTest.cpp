// Sources mean here what they mean to the system's own gencat, as far as the standard tells it.
#include "logging/CCgCatalog.h"
#include "logging/CCgCodeset.h"
#include "tests/support/SystemCatalog.h"
#include "tests/tools/zkgencatFixture.h"

#include <optional>

using zk::test::SystemCatalog;

namespace {

constexpr int mostSets = 12;
constexpr int mostMessages = 40;

class SystemGencat : public ZkGencat {
protected:
    void expectSameMessages(std::string const& source) const
    {
        folder.write("a.msg", source);
        std::filesystem::remove(folder.path("system.cat"));
        auto const systems = zk::test::runProgram("/usr/bin/gencat", {"system.cat", "a.msg"});
        ASSERT_EQ(systems.code, 0) << systems.err;
        ASSERT_EQ(run({"--new", "a.cat", "a.msg"}).err, "");

        SystemCatalog const expected(folder.path("system.cat"));
        CCgCatalog* const catalog = ccg_openCatalog(folder.path("a.cat").c_str(), 0, nullptr);
        ASSERT_NE(catalog, nullptr);
        int count = 0;
        for (int set = 1; set <= mostSets; ++set)
            for (int number = 1; number <= mostMessages; ++number) {
                char const* const text =
                    ccg_getCatalogText(catalog, set, number, nullptr, ccg_openCodeset("UTF8"));
                auto const ours = text ? std::optional<std::string>(text) : std::nullopt;
                EXPECT_EQ(ours, expected.text(set, number)) << set << '.' << number << " of\n" << source;
                count += ours.has_value();
            }
        EXPECT_GT(count, 0);
        ccg_closeCatalog(catalog);
        ccg_purgeCatalogs();
    }
};

TEST_F(SystemGencat, readsNumbersBlanksAndSetsAsWeDo)
{
    expectSameMessages("1 one\n2 two \n3  three\n4\tfour\n5 \n40 last\n");
    expectSameMessages("$set 1 comment\n1 a\n$set 3\n1 b\n2 c\n$set 12\n7 d\n");
    expectSameMessages("$set 2\n2 b\n1 a\n$set 1\n1 x\n$set 2\n3 c\n");
}

TEST_F(SystemGencat, passesOverCommentsAsWeDo)
{
    expectSameMessages("$ comment\n$\tcomment\n\n1 a\n$ 2 b\n\n3 c\n");
}

TEST_F(SystemGencat, joinsLinesAsWeDo)
{
    expectSameMessages("1 a\\\nb\n2 a \\\n  b\\\n\\\nc\n3 a\\\\\n4 d\n");
}

TEST_F(SystemGencat, readsEscapesAsWeDo)
{
    expectSameMessages("1 \\n\\t\\v\\b\\r\\f\\\\\n2 \\101\\7x\\1011\\18\\033\n3 \\q\\z\n");
}

TEST_F(SystemGencat, readsQuotedTextsAsWeDo)
{
    expectSameMessages("$quote \"\n1 \" blanks \"\n2 \"\"\n3 \"a\\\"b\"\n4 plain\n5 \"a\\\n b\"\n");
    expectSameMessages("$quote '\n1 'a\"b'\n$quote\n2 'c'\n$quote x\n3 xhix\n");
}

TEST_F(SystemGencat, readsUtf8AsWeDo)
{
    expectSameMessages("$ codeset=UTF-8\n1 \xC3\xA9\xE3\x81\x82\xF0\x9F\x98\x80\n");
}

// Every text of a few characters that the form treats in a special way.
TEST_F(SystemGencat, readsShortTextsAsWeDo)
{
    constexpr char characters[] = {'a', ' ', '\\', 'n', '1', '$'};
    std::string source;
    int number = 0;
    int set = 1;
    for (char const a : characters)
        for (char const b : characters)
            for (char const c : characters) {
                if (c == '\\')
                    continue;  // it would join the line with the next
                if (number == mostMessages) {
                    number = 0;
                    source += "$set " + std::to_string(++set) + '\n';
                }
                source += std::to_string(++number) + ' ' + a + b + c + '\n';
            }
    expectSameMessages(source);
}

}  // namespace
