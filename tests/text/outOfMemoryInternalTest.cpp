// Strings and lists where memory ends: an operation does all of its work or changes nothing.
#include "tests/support/OutOfMemory.h"
#include "text/SPStringList.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

using zk::test::failuresOf;

namespace {

// What a string holds, bytes behind a NUL included.
std::string bytesOf(SPString const& text)
{
    return {static_cast<char const*>(text), text.length()};
}

std::string const& longText()
{
    static std::string const text(1000, 'x');
    return text;
}

// Does `work` to `text` with ever more memory, and gives how often memory lacked; -1 if the text
// changed then.
int failuresOn(SPString text, std::function<void(SPString&)> const& work)
{
    std::string const before = bytesOf(text);
    return failuresOf([&] { work(text); }, [&] { return bytesOf(text) == before; });
}

// The bytes behind the NUL are out of view, but count.
SPString textWithANul()
{
    SPString text = SPString("abcdef") + '\0';
    text += 'g';
    return text;
}

}  // namespace

TEST(SPStringWithoutMemory, isAsBeforeWhenTextCannotBeAppended)
{
    SPString const more(longText().c_str());

    EXPECT_GT(failuresOn("abc", [&](SPString& text) { text += more; }), 0);
    EXPECT_GT(failuresOn("abc", [&](SPString& text) { text += longText().c_str(); }), 0);
    EXPECT_GT(failuresOn("abc", [](SPString& text) { text += 'd'; }), 0);
    EXPECT_GT(failuresOn(SPString("abc") + '\0', [&](SPString& text) { text += more; }), 0);
}

TEST(SPStringWithoutMemory, isAsBeforeWhenItCannotBeAssignedTo)
{
    SPString source(longText().c_str());

    EXPECT_GT(failuresOn("abc", [&](SPString& text) { text = source; }), 0);
    EXPECT_GT(failuresOn("abc", [&](SPString& text) { text = longText().c_str(); }), 0);
    EXPECT_GT(failuresOn("abc", [&](SPString& text) { text = source.substr(10); }), 0);
}

TEST(SPStringWithoutMemory, isAsBeforeWhenASumCannotBeHeld)
{
    SPString const more(longText().c_str());
    SPString sum;

    EXPECT_GT(failuresOn("abc", [&](SPString& text) { sum = text + more; }), 0);
    EXPECT_GT(failuresOn("abc", [&](SPString& text) { sum = text + longText().c_str(); }), 0);
    EXPECT_GT(failuresOn("abc", [&](SPString& text) { sum = text + 'd'; }), 0);
    EXPECT_GT(failuresOn("abc", [&](SPString& text) { sum = "start" + text; }), 0);
    EXPECT_STREQ(sum, "startabc");
}

TEST(SPStringWithoutMemory, isAsBeforeWhenAWindowCannotBeReplaced)
{
    SPString const more(longText().c_str());
    SPString other(more);

    EXPECT_GT(failuresOn("abcdef", [&](SPString& text) { text.substr(1, 2) = more; }), 0);
    EXPECT_GT(failuresOn("abcdef", [&](SPString& text) { text.substr(1, 2) = longText().c_str(); }), 0);
    EXPECT_GT(failuresOn("abcdef", [&](SPString& text) { text.substr(1, 2) = other.substr(5, 500); }), 0);
    EXPECT_GT(failuresOn("abcdef", [](SPString& text) { text.substr(1, 2) = text; }), 0);
    EXPECT_GT(failuresOn("abcdef", [](SPString& text) { text.substr(6) = text.substr(0, 3); }), 0);
}

TEST(SPStringWithoutMemory, isAsBeforeWhenAWindowOnATextWithANulCannotBeReplaced)
{
    SPString const more(longText().c_str());

    EXPECT_GT(failuresOn(textWithANul(), [&](SPString& text) { text.substr(1, 2) = more; }), 0);
    EXPECT_GT(failuresOn(textWithANul(), [&](SPString& text) { text.substr(5, 2) = more; }), 0);
    EXPECT_GT(failuresOn(textWithANul(), [](SPString& text) { text.substr(1, 0) = text; }), 0);
}

TEST(SPStringWithoutMemory, isAsBeforeWhenItCannotBeTranslated)
{
    EXPECT_GT(failuresOn("abc", [](SPString& text) { text.tr("a-z", "A-Z"); }), 0);
    EXPECT_GT(failuresOn("aabbcc", [](SPString& text) { text.tr("a-b", "", "d"); }), 0);
    EXPECT_GT(failuresOn("aabbcc", [](SPString& text) { text.tr("a-c", "", "s"); }), 0);
}

TEST(SPStringWithoutMemory, isAsBeforeWhenAMatchCannotBeReplaced)
{
    char const* const more = longText().c_str();

    EXPECT_GT(failuresOn("abcdef", [&](SPString& text) { text.s("cd", more); }), 0);
    EXPECT_GT(failuresOn("abcdef", [&](SPString& text) { text.s("[c-d]+", "$&$&$&$&$&$&$&$&"); }), 0);
    EXPECT_GT(failuresOn("abcabc", [&](SPString& text) { text.s("b", more, "g"); }), 0);
    EXPECT_GT(failuresOn("abcabc", [&](SPString& text) { text.s("(B)(C)", "$2$1$2$1$2$1$2$1", "gi"); }), 0);
}

TEST(SPStringWithoutMemory, isAsBeforeWhenItCannotBeSplit)
{
    SPStringList fields;

    for (char const* pattern : {",", "", "' '", "[,;]", "(,)"})
        EXPECT_GT(failuresOn("a,b;c d", [&](SPString& text) { fields = text.split(pattern); }), 0) << pattern;
    EXPECT_STREQ(fields.join("|"), "a|,|b;c d");
}

TEST(SPStringWithoutMemory, givesNoGroupsIfNotAll)
{
    SPString const text((longText() + "=" + longText()).c_str());
    SPStringList groups;
    groups.push("old");

    int const failures = failuresOf([&] { text.m("(x+)=(x+)", groups); },
                                    [&] { return groups.count() == 0 || groups[0] == "old"; });

    EXPECT_GT(failures, 1);
    EXPECT_EQ(groups.count(), 3);
}

namespace {

// The same for a list.
int failuresOn(SPStringList list, std::function<void(SPStringList&)> const& work)
{
    int const count = list.count();
    SPString const before = list.join("|");
    return failuresOf([&] { work(list); }, [&] { return list.count() == count && list.join("|") == before; });
}

SPStringList letters()
{
    return SPString("a,b,c").split(",");
}

}  // namespace

TEST(SPStringListWithoutMemory, isAsBeforeWhenFieldsCannotBeAppended)
{
    SPString text("p");
    for (int i = 0; i < 100; ++i)
        text += ",a field that is longer than the buffer of a slot; more";

    for (char const* pattern : {",", "", "' '", "[,;]", "(,)"})
        EXPECT_GT(failuresOn(letters(), [&](SPStringList& list) { list.split(text, pattern); }), 0)
            << pattern;
}

TEST(SPStringListWithoutMemory, isAsBeforeWhenItsOwnElementCannotBeSplit)
{
    EXPECT_GT(failuresOn(letters(), [](SPStringList& list) { list.split(list[1], ""); }), 0);
}

TEST(SPStringListWithoutMemory, isAsBeforeWhenGroupsCannotBeAppended)
{
    std::string const target = longText() + "=" + longText();

    EXPECT_GT(failuresOn(letters(), [&](SPStringList& list) { list.m("(x+)=(x+)", target.c_str()); }), 0);
}

TEST(SPStringListWithoutMemory, isAsBeforeWhenAnElementCannotBePut)
{
    SPString const more(longText().c_str());

    EXPECT_GT(failuresOn(letters(), [&](SPStringList& list) { list.push(more); }), 0);
    EXPECT_GT(failuresOn(letters(), [&](SPStringList& list) { list.unshift(more); }), 0);
    EXPECT_GT(failuresOn(letters(), [&](SPStringList& list) { list.add(1, more); }), 0);
    EXPECT_GT(failuresOn(letters(), [](SPStringList& list) { list[1000]; }), 0);
}

TEST(SPStringListWithoutMemory, isAsBeforeWhenItCannotBeSplicedJoinedOrSorted)
{
    SPString joined;
    SPStringList result;

    EXPECT_GT(failuresOn(letters(), [&](SPStringList& list) { list.splice(1, 1, letters()); }), 0);
    EXPECT_GT(failuresOn(letters(), [&](SPStringList& list) { joined = list.join(longText().c_str()); }), 0);
    EXPECT_GT(failuresOn(letters(), [&](SPStringList& list) { result = list.sort(); }), 0);
    EXPECT_GT(failuresOn(letters(), [&](SPStringList& list) { result = list.grep("[a-c]"); }), 0);
}
