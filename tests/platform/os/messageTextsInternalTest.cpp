#include "platform/os/os.h"

#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <regex>
#include <string>

using namespace zk::os;

namespace {

std::string format(char const* source, DWORD_PTR* arguments)
{
    char text[64];
    DWORD const flags = FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY;
    DWORD const length =
        FormatMessageA(flags, source, 0, 0, text, sizeof text, reinterpret_cast<va_list*>(arguments));
    return length ? text : "error " + std::to_string(GetLastError());
}

}  // namespace

TEST(ErrorSentences, existForAllErrorNumbers)
{
    char const* const project = std::getenv("ZK_SOURCE_DIR");
    ASSERT_NE(project, nullptr) << "set ZK_SOURCE_DIR to the project's folder, as ctest does";
    std::ifstream header(std::string(project) + "/platform/os/posix/lastError.h");
    ASSERT_TRUE(header) << project;
    std::regex const definition("#define ([A-Z_]+) ([0-9]+)u");
    int count = 0;
    for (std::string line; std::getline(header, line);) {
        std::smatch match;
        if (!std::regex_match(line, match, definition))
            continue;
        ++count;
        auto const error = static_cast<DWORD>(std::stoul(match[2]));

        EXPECT_NE(errorSentence(error), nullptr) << match[1] << " has no sentence in errorSentences.cpp";
    }
    EXPECT_GT(count, 50);
}

TEST(ErrorSentences, doNotExistForOthers)
{
    EXPECT_EQ(errorSentence(99999), nullptr);
    EXPECT_EQ(errorSentence(7), nullptr);
}

TEST(ErrorSentences, sayWhatTheyAlwaysSaid)
{
    EXPECT_STREQ(errorSentence(ERROR_FILE_NOT_FOUND), "The file was not found.");
    EXPECT_STREQ(errorSentence(ERROR_ACCESS_DENIED), "Access is denied.");
}

TEST(MessageTexts, refuseSpecificationsThatAreNotSupplied)
{
    DWORD_PTR arguments[] = {5, 5};

    for (char const* const source : {"%1!*d!", "%1!n!", "%1!p!", "%1!f!", "%1!12345d!", "%1!.12345d!",
                                     "%1!dd!", "%1!!", "%1!#d!", "%1!0s!", "%1!+u!", "%1!----------d!"})
        EXPECT_EQ(format(source, arguments), "error 87") << source;
}

TEST(MessageTexts, showNumbersInTheirWidth)
{
    DWORD_PTR arguments[] = {DWORD_PTR(0xFFFFFFFFFFFFFFFE), 'x', 0};

    EXPECT_EQ(format("%1!hd! %1!d! %1!lld! %1!hu! %1!I64x!", arguments), "-2 -2 -2 65534 fffffffffffffffe");
    EXPECT_EQ(format("%2!c!%2!3c! %3", arguments), "x  x (null)");
    EXPECT_EQ(format("%1!.d!", arguments), "-2");
}

TEST(MessageTexts, areRefusedWithAWidth)
{
    char text[64];

    EXPECT_FAILS(FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | 40, nullptr, 5, 0, text, sizeof text, nullptr),
                 ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(FormatMessageA(FORMAT_MESSAGE_FROM_STRING, nullptr, 5, 0, text, sizeof text, nullptr),
                 ERROR_INVALID_PARAMETER);
}

TEST(LocalMemory, isRefusedWithUnknownFlagsAndBeyondAllMemory)
{
    EXPECT_FAILS(LocalAlloc(0x2, 1), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(LocalAlloc(LPTR, std::size_t(1) << 62), ERROR_NOT_ENOUGH_MEMORY);
}
