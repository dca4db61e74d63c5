// zkgencatFixture.h: zkgencat, at work in a folder of the test's own.
//
//   class X : public ZkGencat { };
//   TEST_F(X, ...)
//   {
//       EXPECT_EQ(compile("7 text\n"), "$quote \"\n$set 1\n7 \"text\"\n");
//       EXPECT_EQ(start({"--dump", "a.cat"}).code, 0);       // the program itself
//       EXPECT_EQ(run({"--dump", "a.cat"}).code, 0);         // in this process: fast
//   }
#pragma once

#include "tests/tools/ToolTest.h"
#include "tools/zkgencat/run.h"

#include <sstream>
#include <string>
#include <vector>

class ZkGencat : public ToolTest {
protected:
    ZkGencat() : ToolTest(ZKGENCAT_PROGRAM) { }

    // The same in this process.
    static zk::test::ProgramResult run(std::vector<std::string> const& arguments,
                                       std::string const& input = {})
    {
        std::vector<char const*> words{"zkgencat"};
        for (std::string const& argument : arguments)
            words.push_back(argument.c_str());
        std::istringstream in(input);
        std::ostringstream out, err;
        int const code = zkgencat::run(int(words.size()), words.data(), in, out, err);
        return {code, out.str(), err.str()};
    }

    // The catalog "a.cat" that a source makes, listed without its first line; or what is wrong with it.
    std::string compile(std::string const& source, std::vector<std::string> const& options = {"--new"}) const
    {
        folder.write("a.msg", source);
        std::vector<std::string> arguments = options;
        arguments.insert(arguments.end(), {"a.cat", "a.msg"});
        auto const result = run(arguments);
        return result.code == 0 ? listed("a.cat") : result.err;
    }

    static std::string listed(std::string const& catalog)
    {
        auto const result = run({"--dump", catalog});
        return result.code == 0 ? result.out.substr(result.out.find('\n') + 1) : result.err;
    }
};
