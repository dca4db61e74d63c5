// zkprofileFixture.h: zkprofile, at work in a folder of the test's own in which nothing of the user's shows.
//
//   class X : public ZkProfile { };
//   TEST_F(X, ...)
//   {
//       folder.write("p.ini", "[S]\nk=v\n");
//       EXPECT_EQ(start({"--file", "p.ini", "get", "S", "k"}).out, "v\n");     // the program itself
//       EXPECT_EQ(run({"--file", "p.ini", "get", "S", "k"}).out, "v\n");       // in this process: fast
//   }
#pragma once

#include "tests/support/ScopedEnvironment.h"
#include "tests/tools/ToolTest.h"
#include "tools/zkprofile/run.h"

#include <sstream>
#include <string>
#include <vector>

class ZkProfile : public ToolTest {
protected:
    ZkProfile() : ToolTest(ZKPROFILE_PROGRAM) { }

    // The same in this process.
    static zk::test::ProgramResult run(std::vector<std::string> const& arguments)
    {
        std::vector<char const*> words{"zkprofile"};
        for (std::string const& argument : arguments)
            words.push_back(argument.c_str());
        std::ostringstream out, err;
        int const code = zkprofile::run(int(words.size()), words.data(), out, err);
        return {code, out.str(), err.str()};
    }

    // The same on the profile p.ini in the folder.
    static zk::test::ProgramResult onFile(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"--file", "p.ini"});
        return run(arguments);
    }

private:
    zk::test::ScopedEnvironment const user_{"USERPROFILE", nullptr};
    zk::test::ScopedEnvironment const everybody_{"ALLUSERSPROFILE", nullptr};
    zk::test::ScopedEnvironment const configuration_{"XDG_CONFIG_HOME", folder.path("config").c_str()};
};
