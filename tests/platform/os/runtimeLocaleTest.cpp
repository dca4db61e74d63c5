#include "platform/os/runtimeLocale.h"

#include "tests/support/freshProcess.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

struct Row {
    unsigned int codePage;
    char const* name;
};

#ifdef _WIN32
constexpr Row rows[] = {{932, ".932"}, {936, ".936"},   {949, ".949"},
                        {950, ".950"}, {1252, ".1252"}, {437, ".1252"}};
#else
constexpr Row rows[] = {{932, "ja_JP.UTF-8"}, {936, "zh_CN.UTF-8"},  {949, "ko_KR.UTF-8"},
                        {950, "zh_TW.UTF-8"}, {1252, "en_US.UTF-8"}, {437, "en_US.UTF-8"}};
#endif

TEST_IN_FRESH_PROCESS(RuntimeLocale, isThatOfTheCodePageIfTheSystemHasIt)
{
    for (Row const& row : rows) {
        std::setlocale(LC_ALL, "C");
        char const* const possible = std::setlocale(LC_ALL, row.name);
        std::string const expected = possible ? possible : "C";
        std::setlocale(LC_ALL, "C");

        EXPECT_EQ(zk::os::setRuntimeLocale(row.codePage), possible != nullptr) << row.codePage;

        EXPECT_EQ(std::setlocale(LC_ALL, nullptr), expected) << row.codePage;
    }
}

}  // namespace
