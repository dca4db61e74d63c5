#include "resources/hostTexts.h"

#include "platform/classlib/CString.h"
#include "platform/classlib/textTables.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// How a text takes its arguments.
enum class Arguments { none, braces, printf };

struct Expected {
    unsigned id;
    Arguments style;
    std::vector<std::string> placeholders;  // in their order in the text
};

using enum Arguments;

// What each user of a number puts into its text. A number that is added to the
// library gets a row here.
Expected const expectedTexts[] = {
    {43431, none, {}},
    {46521, none, {}},
    {46645, none, {}},
    {46936, none, {}},
    {47011, braces, {"{0}", "{1}"}},
    {47188, none, {}},
    {47198, braces, {"{0}", "{1}"}},
    {47307, braces, {"{0}"}},
    {47308, braces, {"{0}"}},
    {47310, braces, {"{0}"}},
    {47313, braces, {"{0}", "{1}"}},
    {47314, braces, {"{0}", "{1}"}},
    {47315, braces, {"{0}", "{1}", "{2}"}},
    {47316, braces, {"{0}", "{1}", "{2}"}},
    {47317, braces, {"{0}"}},
    {47318, braces, {"{0}"}},
    {47319, braces, {"{0}"}},
    {47320, braces, {"{0}"}},
    {47321, braces, {"{0}", "{1}"}},
    {47322, printf, {"%s", "%s"}},
    {47323, printf, {"%s"}},
    {47324, printf, {"%s", "%s", "%d"}},
    {47329, braces, {"{0}"}},
    {47330, braces, {"{0}", "{1}", "{2}"}},
    {48155, printf, {"%s"}},
    {48156, printf, {"%s", "%s"}},
    {48157, printf, {"%s", "%s"}},
    {48169, none, {}},
    {48170, none, {}},
    {48171, none, {}},
    {48172, none, {}},
    {48173, none, {}},
    {48174, printf, {"%s", "%s", "%d"}},
    {48175, printf, {"%p"}},
    {48176, printf, {"%08X", "%s"}},
    {48177, none, {}},
    {48179, none, {}},
    {49972, none, {}},
    {49973, none, {}},
};

std::vector<std::string> placeholdersOf(std::string const& text, char opening)
{
    std::vector<std::string> found;
    for (std::size_t at = text.find(opening); at != std::string::npos; at = text.find(opening, at)) {
        std::size_t const end = opening == '{' ? text.find('}', at) : text.find_first_of("sdpXu%", at + 1);
        if (end == std::string::npos)
            break;
        found.push_back(text.substr(at, end - at + 1));
        at = end + 1;
    }
    return found;
}

class HostTexts : public testing::Test {
protected:
    HostTexts() { zkRegisterHostTexts(); }
};

TEST_F(HostTexts, haveATextForEveryNumberWithTheArgumentsThatItsUserGives)
{
    for (Expected const& expected : expectedTexts) {
        CString text;

        ASSERT_TRUE(text.LoadString(expected.id)) << expected.id;

        std::vector<std::string> const nothing;
        std::string const content(text.GetString());
        EXPECT_FALSE(content.empty()) << expected.id;
        EXPECT_EQ(placeholdersOf(content, '{'), expected.style == braces ? expected.placeholders : nothing)
            << content;
        EXPECT_EQ(placeholdersOf(content, '%'),
                  expected.style == Arguments::printf ? expected.placeholders : nothing)
            << content;
    }
}

TEST_F(HostTexts, haveNoTextForAnyOtherNumber)
{
    std::size_t found = 0;
    for (unsigned id = 0; id < 0x10000; ++id)
        found += zkFindText(id) != nullptr;

    EXPECT_EQ(found, std::size(expectedTexts));
}

TEST_F(HostTexts, giveWayToATableThatTheHostRegistersLater)
{
    static ZkText const own[] = {{47188, "Modeller"}};
    zkRegisterTexts(own, 1);
    CString title;

    title.LoadString(47188);

    EXPECT_STREQ(title, "Modeller");
    zkUnregisterTexts(own);
    title.LoadString(47188);
    EXPECT_STREQ(title, "Zentrika");
}

TEST_F(HostTexts, namesTheSharingViolationInLowerCase)
{
    CString phrase;
    phrase.LoadString(48170);

    CString lower = phrase;
    lower.MakeLower();

    EXPECT_STREQ(phrase, lower);
}

}  // namespace
