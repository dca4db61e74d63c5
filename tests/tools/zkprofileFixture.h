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

#include "tests/support/ChildProcess.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tools/zkprofile/run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

class ZkProfile : public testing::Test {
protected:
    ZkProfile() { std::filesystem::current_path(folder.path()); }
    ~ZkProfile() override { std::filesystem::current_path(before_); }

    // What the program did. Its lines end in "\n" here on both systems.
    zk::test::ProgramResult start(std::vector<std::string> const& arguments,
                                  zk::test::Output output = zk::test::Output::kept) const
    {
        zk::test::ProgramResult result = zk::test::runProgram(program_.string(), arguments, output);
        for (std::string* const text : {&result.out, &result.err})
            text->erase(std::remove(text->begin(), text->end(), '\r'), text->end());
        return result;
    }

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

    TemporaryFolder const folder;

private:
    static std::filesystem::path findProgram()
    {
        std::filesystem::path program(ZKPROFILE_PROGRAM);
        if (char const* const build = std::getenv("ZK_BINARY_DIR"))
            program = std::filesystem::path(build) / "bin" / program.filename();
        return std::filesystem::absolute(program).make_preferred();
    }

    zk::test::ScopedEnvironment const user_{"USERPROFILE", nullptr};
    zk::test::ScopedEnvironment const everybody_{"ALLUSERSPROFILE", nullptr};
    zk::test::ScopedEnvironment const configuration_{"XDG_CONFIG_HOME", folder.path("config").c_str()};
    std::filesystem::path const program_ = findProgram();  // with the current folder as it was
    std::filesystem::path const before_ = std::filesystem::current_path();
};
