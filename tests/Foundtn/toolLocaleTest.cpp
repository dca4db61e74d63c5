#include "Foundtn/util/toolLocale.h"

#include "tests/support/MemoryProfile.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/freshProcess.h"

#include "platform/os/os.h"
#include "platform/os/runtimeLocale.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

using zk::test::MemoryProfile;
using zk::test::ScopedEnvironment;

TEST_IN_FRESH_PROCESS(ToolLocale, isEnglishWithoutASetting)
{
    ScopedEnvironment const none("ProductLocale", nullptr);
    EXPECT_STREQ(ToolLocaleName(), "EN");

    MemoryProfile profile;
    profile.set("General", "ProductLocale", "JA");
    EXPECT_STREQ(ToolLocaleName(), "EN") << "read once";
}

TEST_IN_FRESH_PROCESS(ToolLocale, isTheSettingAsItStands)
{
    MemoryProfile profile;
    profile.set("General", "ProductLocale", "DE");

    EXPECT_STREQ(ToolLocaleName(), "DE");
}

TEST_IN_FRESH_PROCESS(ToolLocale, doesNotTakeActiveInOtherCaseForTheUsersLanguage)
{
    ScopedEnvironment const set("ProductLocale", "Active");

    EXPECT_STREQ(ToolLocaleName(), "Active");
}

TEST_IN_FRESH_PROCESS(ToolLocale, followsTheUsersCodePageIfActive)
{
    ScopedEnvironment const set("ProductLocale", "active");
    struct Row {
        unsigned int codePage;
        char const* name;
    };
    char const* expected = "EN";
    for (Row const& row : {Row{932, "JA"}, Row{936, "CN"}, Row{949, "KO"}, Row{950, "TW"}}) {
        if (zk::os::usersCodePage() == row.codePage)
            expected = row.name;
    }

    EXPECT_STREQ(ToolLocaleName(), expected);
}

void expectActive(char const* locale, unsigned int codePage, char const* expected)
{
    ScopedEnvironment const user("LC_ALL", locale);
    ScopedEnvironment const set("ProductLocale", "active");
    if (zk::os::usersCodePage() != codePage)
        GTEST_SKIP() << "the user's language is not a matter of the environment here";

    EXPECT_STREQ(ToolLocaleName(), expected);
}

TEST_IN_FRESH_PROCESS(ToolLocale, isJapaneseForSuchAUserIfActive)
{
    expectActive("ja_JP.UTF-8", 932, "JA");
}

TEST_IN_FRESH_PROCESS(ToolLocale, isSimplifiedChineseForSuchAUserIfActive)
{
    expectActive("zh_CN.UTF-8", 936, "CN");
}

TEST_IN_FRESH_PROCESS(ToolLocale, isKoreanForSuchAUserIfActive)
{
    expectActive("ko_KR.UTF-8", 949, "KO");
}

TEST_IN_FRESH_PROCESS(ToolLocale, isTraditionalChineseForSuchAUserIfActive)
{
    expectActive("zh_TW.UTF-8", 950, "TW");
}

TEST_IN_FRESH_PROCESS(ToolLocale, isEnglishForAnyOtherUserIfActive)
{
    expectActive("de_DE.UTF-8", 1252, "EN");
}

TEST_IN_FRESH_PROCESS(ToolLocale, switchesTheRuntimesLocaleAndTheUsersLanguage)
{
    zk::os::setRuntimeLocale(932);
    std::string const expected = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "C");
    MemoryProfile profile;
    profile.set("General", "ProductLocale", "JA");
    profile.set("General", "UpdateLocaleByProductLocale", "TRUE");

    ToolLocaleName();

    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), expected);
}

TEST_IN_FRESH_PROCESS(ToolLocale, leavesTheLocalesAloneUnlessAskedTo)
{
    MemoryProfile profile;
    profile.set("General", "ProductLocale", "JA");
    LCID const before = GetThreadLocale();

    ToolLocaleName();

    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
    EXPECT_EQ(GetThreadLocale(), before);
}

void expectThreadLocale(char const* name, LCID expected)
{
    MemoryProfile profile;
    profile.set("General", "ProductLocale", name);
    profile.set("General", "UpdateLocaleByProductLocale", "TRUE");

    EXPECT_STREQ(ToolLocaleName(), name);

    EXPECT_EQ(GetThreadLocale(), expected);
}

TEST_IN_FRESH_PROCESS(ToolLocale, switchesToJapanese)
{
    expectThreadLocale("JA", 1041);
}

TEST_IN_FRESH_PROCESS(ToolLocale, switchesToSimplifiedChinese)
{
    expectThreadLocale("cn", 2052);
}

TEST_IN_FRESH_PROCESS(ToolLocale, switchesToKorean)
{
    expectThreadLocale("Ko", 1042);
}

TEST_IN_FRESH_PROCESS(ToolLocale, switchesToTraditionalChinese)
{
    expectThreadLocale("TW", 1028);
}

TEST_IN_FRESH_PROCESS(ToolLocale, switchesToEnglish)
{
    SetThreadLocale(1041);
    expectThreadLocale("EN", 1033);
}

TEST_IN_FRESH_PROCESS(ToolLocale, switchesToEnglishForAnyOtherText)
{
    SetThreadLocale(1041);
    expectThreadLocale("DE", 1033);
}

}  // namespace
