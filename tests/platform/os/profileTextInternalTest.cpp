#include "platform/os/profileText.h"

#include "tests/support/OutOfMemory.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;
using namespace zk::os;

namespace {

std::string set(std::string text, char const* section, char const* key, char const* value)
{
    EXPECT_TRUE(setProfileValue(text, section, key, value));
    return text;
}

std::string withoutKey(std::string text, char const* section, char const* key)
{
    removeProfileKey(text, section, key);
    return text;
}

std::string withoutSection(std::string text, char const* section)
{
    removeProfileSection(text, section);
    return text;
}

TEST(ProfileText, changesTheValueAlone)
{
    EXPECT_EQ(set("; top\n\n[S] ; tail\n Depth = 1 \n#x\nj=2 ; note", "s", "DEPTH", "27"),
              "; top\n\n[S] ; tail\n Depth = 27 \n#x\nj=2 ; note");
    EXPECT_EQ(set("[S]\r\nk\t=\t1\r\n", "S", "k", ""), "[S]\r\nk\t=\t\r\n");
    EXPECT_EQ(set("[S]\nk =  \nj=1\n", "S", "k", "v"), "[S]\nk =  v\nj=1\n");
    EXPECT_EQ(set("[S]\nk=1", "S", "k", "2"), "[S]\nk=2");
    EXPECT_EQ(set("\xEF\xBB\xBF[S]\nk=1\n", "S", "k", "2"), "\xEF\xBB\xBF[S]\nk=2\n");
}

TEST(ProfileText, replacesWhatANulHides)
{
    EXPECT_EQ(set("[S]\nk=a\0b\nj=1\n"s, "S", "k", "a"), "[S]\nk=a\nj=1\n");
}

TEST(ProfileText, takesACommentBehindAValueForPartOfIt)
{
    EXPECT_EQ(set("[S]\nk=1 ; old\nj=2 ; note\n", "S", "k", "3"), "[S]\nk=3\nj=2 ; note\n");
}

TEST(ProfileText, givesAKeyWithoutValueItsValue)
{
    EXPECT_EQ(set("[S]\n k \nk=1\n", "S", "k", "v"), "[S]\n k=v \nk=1\n");
}

TEST(ProfileText, addsAKeyBehindTheSectionsLastLine)
{
    EXPECT_EQ(set("[S]\nk=1\n\n\n[T]\nx=1\n", "S", "j", "v"), "[S]\nk=1\nj=v\n\n\n[T]\nx=1\n");
    EXPECT_EQ(set("[S]\nk=1\n;end\n\n", "S", "j", "v"), "[S]\nk=1\n;end\nj=v\n\n");
    EXPECT_EQ(set("[S]\n[T]\n", "S", "j", "v"), "[S]\nj=v\n[T]\n");
    EXPECT_EQ(set("[S]\nk=1\n\n; more\n\n[T]\n", "S", "j", "v"), "[S]\nk=1\n\n; more\nj=v\n\n[T]\n");
}

TEST(ProfileText, leavesACommentAboveTheNextSectionWithIt)
{
    EXPECT_EQ(set("[S]\nk=1\n\n; about T\n[T]\nx=1\n", "S", "j", "v"),
              "[S]\nk=1\nj=v\n\n; about T\n[T]\nx=1\n");
    EXPECT_EQ(withoutSection("[S]\nk=1\n; of S\n\n; about T\n; more\n[T]\nx=1\n", "S"),
              "; about T\n; more\n[T]\nx=1\n");
}

TEST(ProfileText, addsASectionAtTheEnd)
{
    EXPECT_EQ(set("", "S", "k", "v"), "[S]\nk=v\n");
    EXPECT_EQ(set("[S]\nk=1", "T", "j", "v"), "[S]\nk=1\n[T]\nj=v\n");
    EXPECT_EQ(set("\xEF\xBB\xBF", "S", "k", "v"), "\xEF\xBB\xBF[S]\nk=v\n");
}

TEST(ProfileText, keepsTheLineEndsOfTheText)
{
    EXPECT_EQ(set("[S]\r\nk=1\r\n", "S", "j", "v"), "[S]\r\nk=1\r\nj=v\r\n");
    EXPECT_EQ(set("[S]\r\nk=1", "T", "j", "v"), "[S]\r\nk=1\r\n[T]\r\nj=v\r\n");
    EXPECT_EQ(set("[S]\rk=1\r", "S", "j", "v"), "[S]\rk=1\rj=v\r");
    EXPECT_EQ(set("[S]\nk=1\r\n", "S", "j", "v"), "[S]\nk=1\r\nj=v\r\n");
    EXPECT_EQ(set("[S]\r\n", "", "j", "v"), "j=v\r\n[S]\r\n");
}

TEST(ProfileText, writesIntoTheFirstOfTheSectionsWithAName)
{
    EXPECT_EQ(set("[S]\nk=1\n[T]\n[S]\nj=2\n", "S", "j", "v"), "[S]\nk=1\nj=v\n[T]\n[S]\nj=2\n");
}

TEST(ProfileText, removesOneLine)
{
    EXPECT_EQ(withoutKey("[S]\r\n; c\r\n k = 1 \r\nj=2", "S", "K"), "[S]\r\n; c\r\nj=2");
    EXPECT_EQ(withoutKey("[S]\nk=1", "S", "k"), "[S]\n");
    EXPECT_EQ(withoutKey("[S]\nk=1\n", "S", "x"), "[S]\nk=1\n");
    EXPECT_EQ(withoutKey("[S]\nk=1\n", "T", "k"), "[S]\nk=1\n");
}

TEST(ProfileText, removesASectionUpToTheNext)
{
    EXPECT_EQ(withoutSection("a=1\n[S]\nk=1\n\n[T]\nj=1\n[S]\nm=1\n", "s"), "a=1\n[T]\nj=1\n[S]\nm=1\n");
    EXPECT_EQ(withoutSection("[T]\n[S]\nk=1\n\n; end\n", "S"), "[T]\n");
    EXPECT_EQ(withoutSection("a=1\n[S]\n", ""), "[S]\n");
    EXPECT_EQ(withoutSection("[S]\n", "X"), "[S]\n");
}

TEST(ProfileText, refusesWhatCouldNotBeReadBack)
{
    struct {
        char const* section;
        char const* key;
        char const* value;
    } const rows[] = {
        {"S", "k", "a\nb"},     {"S", "k", "a\r\n[T]\nx=1"},
        {"S", "a=b", "v"},      {"S", ";a", "v"},
        {"S", "[a]", "v"},      {"S", "[a", "]"},
        {"S\nT", "k", "v"},     {"S", "a\nb", "v"},
        {"S\r", "k\n=", "v"},   {"S", "\xEF\xBB\xBFk", "v"},
        {"S", "\xFF\xFE", "v"},
    };
    for (auto const& row : rows) {
        std::string text = "[S]\nk=1\n";
        EXPECT_FALSE(setProfileValue(text, row.section, row.key, row.value)) << row.key << "=" << row.value;
        EXPECT_EQ(text, "[S]\nk=1\n");
    }
}

TEST(ProfileText, keepsAnEmptyLineBeforeWhatWouldBecomeAMark)
{
    EXPECT_EQ(withoutKey("k=1\n\xFF\xFE=2\n", "", "k"), "\n\xFF\xFE=2\n");
    EXPECT_EQ(withoutKey("k=1\r\n\xEF\xBB\xBFj=2\n", "", "k"), "\r\n\xEF\xBB\xBFj=2\n");
}

// -- UTF-16 ----------------------------------------------------------------------------

std::string wide(std::u16string_view text)
{
    std::string bytes = "\xFF\xFE";
    for (char16_t const unit : text)
        bytes.append({char(unit & 0xFF), char(unit >> 8)});
    return bytes;
}

std::string bigWide(std::u16string_view text)
{
    std::string bytes = "\xFE\xFF";
    for (char16_t const unit : text)
        bytes.append({char(unit >> 8), char(unit & 0xFF)});
    return bytes;
}

TEST(WideProfileText, isReadAsUtf8)
{
    ProfileText const text(wide(u"; c\r\n[S]\r\nk = \u00E9\u0416\U0001F600 \r\n"));

    EXPECT_EQ(text.value("s", "K"), "\u00E9\u0416\U0001F600");
    EXPECT_EQ(text.sectionNames(), "S\0"s);
    EXPECT_EQ(text.keyNames("S"), "k\0"s);
    EXPECT_EQ(text.lineOf("S", "k"), 3u);
}

TEST(WideProfileText, staysWhatItIsWithEachChange)
{
    EXPECT_EQ(set(wide(u"; \u0416\r\n\r\n[S]\r\n k = 1 \r\nj=2\r\n"), "S", "k", "\u00E9"),
              wide(u"; \u0416\r\n\r\n[S]\r\n k = \u00E9 \r\nj=2\r\n"));
    EXPECT_EQ(set(bigWide(u"[S]\nk=1\n"), "S", "j", "\U0001F600"), bigWide(u"[S]\nk=1\nj=\U0001F600\n"));
    EXPECT_EQ(set(wide(u""), "S", "k", "v"), wide(u"[S]\nk=v\n"));
    EXPECT_EQ(withoutKey(wide(u"[S]\r\nk=1\r\nj=2"), "S", "k"), wide(u"[S]\r\nj=2"));
    EXPECT_EQ(withoutSection(bigWide(u"[S]\nk=1\n[T]\n"), "S"), bigWide(u"[T]\n"));
}

TEST(WideProfileText, losesNoUnitOfTheOtherLines)
{
    std::u16string rest = u"\nlast=a\uFEFFb\uFFFF\u2028";
    rest.append({0xD800, u'x', 0xDC00, 0xDBFF, u'\n', 0xDC01, 0, u'y', u'\n'});

    EXPECT_EQ(set(wide(u"\uFEFF\n[S]\nk=1" + rest), "S", "k", "2"), wide(u"\uFEFF\n[S]\nk=2" + rest));
    EXPECT_EQ(set(bigWide(u"[S]\nk=1" + rest), "S", "k", "2"), bigWide(u"[S]\nk=2" + rest));
}

TEST(WideProfileText, readsHalfAPairAsTheBytesOfItsCodeAndTakesThemBack)
{
    std::u16string value = u"a?b";
    value[1] = 0xD800;
    std::string const text = wide(u"[S]\nk=" + value + u"\n");

    EXPECT_EQ(ProfileText(text).value("S", "k"),
              "a\xED\xA0\x80"
              "b");
    EXPECT_EQ(set(text, "S", "j",
                  "a\xED\xA0\x80"
                  "b"),
              wide(u"[S]\nk=" + value + u"\nj=" + value + u"\n"));
}

TEST(WideProfileText, refusesBytesThatAreNoUtf8)
{
    std::string const before = wide(u"[S]\nk=1\n");
    for (char const* const value :
         {"\xE9", "\xC3", "\xC0\xAF", "\xED\xA0\xBD\xED\xB8\x80", "\xF4\x90\x80\x80", "\xFF\xFE"}) {
        std::string text = before;
        EXPECT_FALSE(setProfileValue(text, "S", "k", value)) << testing::PrintToString(value);
        EXPECT_EQ(text, before);
    }
}

TEST(WideProfileText, completesAByteAtItsEndOnlyWithAChange)
{
    std::string const before = wide(u"[S]\nk=1\nj=v") + "x";

    EXPECT_EQ(ProfileText(before).value("S", "j"), "vx");
    EXPECT_EQ(set(before, "S", "k", "1"), before);
    EXPECT_EQ(set(before, "S", "k", "2"), wide(u"[S]\nk=2\nj=vx"));
}

TEST(ProfileText, changesNothingWhereWhatIsToBeRemovedIsNotThere)
{
    for (std::u16string const content : {u"", u"; top\n[S]\nk=1\n", u"[S]\nk=1\n", u"k=1\n[S]\n", u"\n"}) {
        std::string const narrow(content.begin(), content.end());
        for (std::string const& text : {narrow, "\xEF\xBB\xBF" + narrow, wide(content), bigWide(content)}) {
            EXPECT_EQ(withoutKey(text, "S", "absent"), text);
            EXPECT_EQ(withoutKey(text, "absent", "k"), text);
            EXPECT_EQ(withoutKey(text, "", "absent"), text);
            EXPECT_EQ(withoutKey(text, "S", ""), text);
            EXPECT_EQ(withoutSection(text, "absent"), text);
        }
    }
    for (std::string const& text : {"[S]\nk=1\n"s, "\xEF\xBB\xBF[S]\nk=1\n"s, wide(u"[S]\nk=1\n")})
        EXPECT_EQ(withoutSection(text, ""), text);
}

TEST(ProfileText, listsEachKeyOnceWhenMemoryWasLackingBefore)
{
    std::string content = "[S]\n";
    std::string expected;
    for (char key = 'a'; key <= 'z'; ++key) {
        content.append({key, '=', '1', '\n'});
        expected.append({key, '\0'});
    }
    ProfileText const text(content);
    std::string names;

    EXPECT_GT(zk::test::failuresOf([&] { names = text.keyNames("S"); }, [&] { return names.empty(); }), 0);

    EXPECT_EQ(names, expected);
}

TEST(ProfileText, tellsTheLineOfAKey)
{
    ProfileText const text("; top\r\n\r[S]\n\nk=1\r\nj=2\nx\n[T]\nk=3");

    EXPECT_EQ(text.lineOf("S", "k"), 5u);
    EXPECT_EQ(text.lineOf("s", "J"), 6u);
    EXPECT_EQ(text.lineOf("T", "k"), 9u);
    EXPECT_EQ(text.lineOf("S", "x"), 0u);
    EXPECT_EQ(text.lineOf("X", "k"), 0u);
}

}  // namespace
