#include "platform/os/profileText.h"

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

TEST(ProfileText, leavesATextInUtf16Alone)
{
    std::string const wide = "\xFF\xFE[\0S\0]\0\n\0"s;
    std::string text = wide;

    EXPECT_FALSE(setProfileValue(text, "S", "k", "v"));
    removeProfileKey(text, "S", "k");
    removeProfileSection(text, "");

    EXPECT_EQ(text, wide);
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
