// ToolTest.h: a tool that is started in a folder of the test's own.
//
//   class ZkGencat : public ToolTest { protected: ZkGencat() : ToolTest(ZKGENCAT_PROGRAM) { } };
//   TEST_F(ZkGencat, ...)
//   {
//       EXPECT_EQ(start({"--dump", "a.cat"}).code, 0);
//   }
#pragma once

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

class ToolTest : public testing::Test {
protected:
    explicit ToolTest(std::filesystem::path const& program) : program_(find(program))
    {
        std::filesystem::current_path(folder.path());
    }
    ~ToolTest() override { std::filesystem::current_path(before_); }

    // What the program did. Its lines end in "\n" here on both systems.
    zk::test::ProgramResult start(std::vector<std::string> const& arguments,
                                  zk::test::Output output = zk::test::Output::kept) const
    {
        zk::test::ProgramResult result = zk::test::runProgram(program_.string(), arguments, output);
        for (std::string* const text : {&result.out, &result.err})
            text->erase(std::remove(text->begin(), text->end(), '\r'), text->end());
        return result;
    }

    TemporaryFolder const folder;

private:
    static std::filesystem::path find(std::filesystem::path program)
    {
        if (char const* const build = std::getenv("ZK_BINARY_DIR"))
            program = std::filesystem::path(build) / "bin" / program.filename();
        return std::filesystem::absolute(program).make_preferred();
    }

    std::filesystem::path const program_;  // with the current folder as it was
    std::filesystem::path const before_ = std::filesystem::current_path();
};
