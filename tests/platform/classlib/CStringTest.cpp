// What a CString is: making, copying, moving, assigning, comparing, adding.
#include "platform/classlib/CString.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>
#include <unordered_set>
#include <utility>

namespace {

std::string const longText(100, 'x');
char const* const noText = nullptr;

static_assert(std::is_nothrow_move_constructible_v<CString>);
static_assert(std::is_nothrow_move_assignable_v<CString>);
static_assert(sizeof(CString) <= 32);
static_assert(!std::is_constructible_v<CString, int>, "a number is no text");
static_assert(!std::is_assignable_v<CString&, int>, "a number is no text");
static_assert(!std::is_constructible_v<bool, CString>, "a text is no condition");
static_assert(!std::is_convertible_v<char, CString>, "a character becomes a text only where it is said");
static_assert(std::is_convertible_v<char const*, CString>);
static_assert(std::is_convertible_v<CString, char const*>);

}  // namespace

TEST(CString, isEmptyAtFirst)
{
    CString const text;

    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.GetLength(), 0);
    EXPECT_STREQ(text, "");
}

TEST(CString, isMadeFromTextsOfAnyKind)
{
    unsigned char const bytes[] = "bytes";

    EXPECT_STREQ(CString("text"), "text");
    EXPECT_STREQ(CString(bytes), "bytes");
    EXPECT_STREQ(CString(bytes, 2), "by");
    EXPECT_STREQ(CString("text", 2), "te");
    EXPECT_STREQ(CString('c'), "c");
    EXPECT_STREQ(CString('c', 3), "ccc");
    EXPECT_STREQ(CString(std::string("string")), "string");
    EXPECT_STREQ(CString(std::string_view("view")), "view");
}

TEST(CString, takesANullTextAsEmpty)
{
    EXPECT_TRUE(CString(noText).IsEmpty());
    EXPECT_TRUE(CString(nullptr).IsEmpty());
    EXPECT_TRUE(CString(noText, 5).IsEmpty());
    EXPECT_TRUE(CString(static_cast<unsigned char const*>(nullptr)).IsEmpty());
}

TEST(CString, takesANegativeCountAsNone)
{
    EXPECT_TRUE(CString("text", -1).IsEmpty());
    EXPECT_TRUE(CString('c', -1).IsEmpty());
    EXPECT_TRUE(CString('c', 0).IsEmpty());
}

TEST(CString, holdsNulBytesThatItWasGivenWithALength)
{
    CString const text("a\0b", 3);

    EXPECT_EQ(text.GetLength(), 3);
    EXPECT_EQ(text[2], 'b');
    EXPECT_EQ(text, std::string_view("a\0b", 3));
    EXPECT_NE(text, "a");
}

TEST(CString, isCopiedByValueAtEveryLength)
{
    for (int length : {0, 1, 14, 15, 16, 17, 31, 32, 1000}) {
        CString const original('x', length);

        CString copy(original);
        EXPECT_EQ(copy, original) << length;

        copy += 'y';
        EXPECT_EQ(original, std::string(static_cast<std::size_t>(length), 'x')) << length;
        EXPECT_EQ(copy.GetLength(), length + 1);
        EXPECT_EQ(copy.GetString()[length + 1], '\0');
    }
}

TEST(CString, keepsShortTextsInsideItself)
{
    CString const text('x', 15);
    char const* const first = reinterpret_cast<char const*>(&text);

    EXPECT_GE(text.GetString(), first);
    EXPECT_LT(text.GetString(), first + sizeof text);
}

TEST(CString, movesALongTextWithoutCopyingIt)
{
    CString source(longText.c_str());
    char const* const block = source.GetString();

    CString target(std::move(source));
    EXPECT_EQ(target.GetString(), block);
    EXPECT_TRUE(source.IsEmpty());  // NOLINT: a moved-from string is empty

    source = std::move(target);
    EXPECT_EQ(source.GetString(), block);
    EXPECT_TRUE(target.IsEmpty());  // NOLINT
}

TEST(CString, movesAShortText)
{
    CString source("short");

    CString target(std::move(source));
    EXPECT_EQ(target, "short");
    EXPECT_TRUE(source.IsEmpty());  // NOLINT

    CString longer(longText.c_str());
    longer = std::move(target);
    EXPECT_EQ(longer, "short");
    EXPECT_EQ(longer.GetAllocLength(), 15);
}

TEST(CString, survivesAssigningAndMovingItselfToItself)
{
    for (char const* text : {"short", longText.c_str()}) {
        CString string(text);
        CString& same = string;

        string = same;
        EXPECT_EQ(string, text);
        string = std::move(same);
        EXPECT_EQ(string, text);
    }
}

TEST(CString, isAssignedTextsOfAnyKind)
{
    CString text("old");
    unsigned char const bytes[] = "bytes";

    EXPECT_STREQ(text = "new", "new");
    EXPECT_STREQ(text = bytes, "bytes");
    EXPECT_STREQ(text = 'c', "c");
    EXPECT_STREQ(text = CString("string"), "string");
    EXPECT_STREQ(text = std::string_view("view"), "view");
    EXPECT_STREQ(text = longText.c_str(), longText.c_str());
    EXPECT_STREQ(text = noText, "");
}

TEST(CString, isAssignedAPartOfItself)
{
    for (int length : {10, 100}) {
        CString text = CString("0123456789") + CString('x', length);
        CString const expected = text.Mid(4);

        text = text.GetString() + 4;

        EXPECT_EQ(text, expected);
    }
}

TEST(CString, setsItsTextFromAnotherWithOrWithoutLength)
{
    CString text;

    text.SetString("abc");
    EXPECT_EQ(text, "abc");
    text.SetString("abc", 2);
    EXPECT_EQ(text, "ab");
    text.SetString("abc", -1);
    EXPECT_EQ(text, "");
}

TEST(CString, swapsShortAndLongTexts)
{
    CString a("short");
    CString b(longText.c_str());

    swap(a, b);

    EXPECT_EQ(a, longText);
    EXPECT_EQ(b, "short");
}

TEST(CString, givesNulForAnIndexOutsideTheText)
{
    CString const text("abc");

    EXPECT_EQ(text.GetAt(0), 'a');
    EXPECT_EQ(text[2], 'c');
    EXPECT_EQ(text[3], '\0');
    EXPECT_EQ(text[4], '\0');
    EXPECT_EQ(text.GetAt(-1), '\0');
    EXPECT_EQ(text[std::size_t(-1)], '\0');
    EXPECT_EQ(text[1L], 'b');
}

TEST(CString, setsACharacterInsideTheTextOnly)
{
    CString text("abc");

    text.SetAt(1, 'X');
    text.SetAt(3, 'Y');
    text.SetAt(-1, 'Y');

    EXPECT_EQ(text, "aXc");
}

TEST(CString, losesItsTextAndMemoryWhenEmptied)
{
    CString text(longText.c_str());

    text.Empty();

    EXPECT_TRUE(text.IsEmpty());
    EXPECT_STREQ(text, "");
    EXPECT_EQ(text.GetAllocLength(), 15);
}

TEST(CString, appendsTextsOfAnyKind)
{
    CString text;
    unsigned char const bytes[] = "4";

    text += "1";
    text += '2';
    text += CString("3");
    text += bytes;
    text += static_cast<unsigned char>('5');
    text += std::string_view("6");
    text += noText;
    text.Append("78", 1);
    text.Append("8");
    text.Append(CString("9"));
    text.Append("no", -1);
    text.AppendChar('0');

    EXPECT_EQ(text, "1234567890");
}

TEST(CString, appendsItselfAndItsParts)
{
    CString text("0123456789");

    text += text;
    EXPECT_EQ(text, "01234567890123456789");
    text += text.GetString() + 15;
    EXPECT_EQ(text, "0123456789012345678956789");
    text += text;
    EXPECT_EQ(text.GetLength(), 50);
    EXPECT_EQ(text.Right(5), "56789");
}

TEST(CString, growsByAppendingCharacters)
{
    CString text;
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        text += static_cast<char>('a' + i % 26);
        expected += static_cast<char>('a' + i % 26);
    }

    EXPECT_EQ(text, expected);
    EXPECT_STREQ(text, expected.c_str());
}

TEST(CString, isAddedToTextsOfAnyKind)
{
    CString const a("a");

    EXPECT_EQ(a + a, "aa");
    EXPECT_EQ(a + "b", "ab");
    EXPECT_EQ("b" + a, "ba");
    EXPECT_EQ(a + 'c', "ac");
    EXPECT_EQ('c' + a, "ca");
    EXPECT_EQ(a + noText, "a");
    EXPECT_EQ(noText + a, "a");
    EXPECT_EQ(a + "b" + 'c' + a + (a + a), "abcaaa");
    EXPECT_EQ(a + longText.c_str(), "a" + longText);
    EXPECT_EQ(a + CString("\0b", 2), std::string_view("a\0b", 3));
}

struct Comparison {
    char const* left;
    char const* right;
    int withCase;
    int withoutCase;
};

class CStringComparison : public testing::TestWithParam<Comparison> { };

TEST_P(CStringComparison, followsTheBytesOrTheirLowerCase)
{
    auto const [leftText, rightText, withCase, withoutCase] = GetParam();
    CString const left(leftText);
    CString const right(rightText);

    EXPECT_EQ(left.Compare(rightText), withCase);
    EXPECT_EQ(left.Compare(right), withCase);
    EXPECT_EQ(right.Compare(left), -withCase);
    EXPECT_EQ(left.CompareNoCase(rightText), withoutCase);
    EXPECT_EQ(left.CompareNoCase(right), withoutCase);
    EXPECT_EQ(right.CompareNoCase(left), -withoutCase);
}

TEST_P(CStringComparison, givesTheOperatorsTheirResultsForEveryMix)
{
    auto const [l, r, order, ignored] = GetParam();
    CString const left(l);
    CString const right(r);

    EXPECT_EQ(left == right, order == 0);
    EXPECT_EQ(left == r, order == 0);
    EXPECT_EQ(l == right, order == 0);
    EXPECT_EQ(left == std::string(r), order == 0);
    EXPECT_EQ(std::string_view(l) == right, order == 0);
    EXPECT_EQ(left != right, order != 0);
    EXPECT_EQ(left != r, order != 0);
    EXPECT_EQ(l != right, order != 0);
    EXPECT_EQ(left != std::string(r), order != 0);
    EXPECT_EQ(std::string_view(l) != right, order != 0);
    EXPECT_EQ(left < right, order < 0);
    EXPECT_EQ(left < r, order < 0);
    EXPECT_EQ(l < right, order < 0);
    EXPECT_EQ(left > right, order > 0);
    EXPECT_EQ(left > r, order > 0);
    EXPECT_EQ(l > right, order > 0);
    EXPECT_EQ(left <= right, order <= 0);
    EXPECT_EQ(left <= r, order <= 0);
    EXPECT_EQ(l <= right, order <= 0);
    EXPECT_EQ(left >= right, order >= 0);
    EXPECT_EQ(left >= r, order >= 0);
    EXPECT_EQ(l >= right, order >= 0);
}

INSTANTIATE_TEST_SUITE_P(Texts, CStringComparison,
                         testing::Values(Comparison{"", "", 0, 0}, Comparison{"a", "a", 0, 0},
                                         Comparison{"", "a", -1, -1}, Comparison{"a", "ab", -1, -1},
                                         Comparison{"A", "a", -1, 0}, Comparison{"B", "a", -1, 1},
                                         Comparison{"a", "\xE4", -1, -1}, Comparison{"\xC4", "\xE4", -1, -1},
                                         Comparison{"a_", "aB", 1, -1},
                                         Comparison{"Model.H", "mODEL.h", -1, 0}));

TEST(CString, comparesANullTextAsEmpty)
{
    EXPECT_EQ(CString().Compare(noText), 0);
    EXPECT_EQ(CString("a").Compare(noText), 1);
    EXPECT_EQ(CString().CompareNoCase(noText), 0);
    EXPECT_TRUE(CString() == noText);
    EXPECT_TRUE(noText == CString());
    EXPECT_EQ(CString().Collate(noText), 0);
}

TEST(CString, comparesWhatStandsBehindANul)
{
    EXPECT_EQ(CString("a\0b", 3).Compare(CString("a\0c", 3)), -1);
    EXPECT_EQ(CString("a\0B", 3).CompareNoCase(CString("A\0b", 3)), 0);
    EXPECT_FALSE(CString("a\0b", 3) == CString("a\0c", 3));
}

TEST(CString, collatesByTheBytesInTheLocaleOfTheStart)
{
    EXPECT_EQ(CString("a").Collate("b"), -1);
    EXPECT_EQ(CString("b").Collate("a"), 1);
    EXPECT_EQ(CString("B").Collate("a"), -1);
    EXPECT_EQ(CString("B").CollateNoCase("a"), 1);
    EXPECT_EQ(CString("Ab").CollateNoCase("aB"), 0);
}

TEST(CString, isWrittenToAStreamWithNulBytesUnderItsWidth)
{
    std::ostringstream stream;

    stream << CString("a\0b", 3) << std::setw(4) << CString("cd") << '|';

    EXPECT_EQ(stream.str(), std::string("a\0b  cd|", 8));
}

TEST(CString, isAKeyOfHashedContainers)
{
    std::unordered_set<CString> const names = {"a", "b", CString("a\0", 2)};

    EXPECT_EQ(names.count("a"), 1u);
    EXPECT_EQ(names.count("c"), 0u);
    EXPECT_EQ(names.size(), 3u);
}
