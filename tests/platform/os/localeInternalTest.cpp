#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

namespace {

class UserLocale : public testing::Test {
protected:
    UserLocale()
    {
        for (char const* const name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
            saved_[name] = zk::os::environmentVariable(name);
            SetEnvironmentVariableA(name, nullptr);
        }
    }
    ~UserLocale() override
    {
        for (auto const& [name, value] : saved_)
            SetEnvironmentVariableA(name.c_str(), value ? value->c_str() : nullptr);
    }

private:
    std::map<std::string, std::optional<std::string>> saved_;
};

}  // namespace

TEST_F(UserLocale, isThatOfTheEnvironment)
{
    struct Row {
        char const* name;
        LCID number;
    };
    constexpr Row rows[] = {
        {"de_DE.UTF-8", 1031}, {"de_AT@euro", 3079}, {"de", 1031}, {"de_XX", 1031},
        {"ja_JP.UTF-8", 1041}, {"zh_TW.BIG5", 1028}, {"zh", 2052}, {"C.UTF-8", 1033},
        {"POSIX", 1033},       {"tlh_XX", 1033},     {"_", 1033},  {".", 1033},
        {"en_GB", 2057},
    };
    for (Row const& row : rows) {
        SetEnvironmentVariableA("LANG", row.name);

        EXPECT_EQ(GetUserDefaultLCID(), row.number) << row.name;
    }
}

TEST_F(UserLocale, isTheFirstThatIsSet)
{
    SetEnvironmentVariableA("LANG", "de_DE");
    SetEnvironmentVariableA("LC_CTYPE", "fr_FR");
    EXPECT_EQ(GetUserDefaultLCID(), 1036u);

    SetEnvironmentVariableA("LC_ALL", "ja_JP");
    EXPECT_EQ(GetUserDefaultLCID(), 1041u);

    SetEnvironmentVariableA("LC_ALL", "");
    EXPECT_EQ(GetUserDefaultLCID(), 1036u);
}

TEST_F(UserLocale, isAmericanEnglishWithoutAny)
{
    EXPECT_EQ(GetUserDefaultLCID(), 1033u);
    EXPECT_EQ(SetThreadUILanguage(0), 1033);
    SetEnvironmentVariableA("LANG", "de_DE");
    EXPECT_EQ(SetThreadUILanguage(0), 1031);
}
