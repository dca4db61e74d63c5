// Finding in a CString, and taking parts of it.
#include "platform/classlib/CString.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace {

char const* const noText = nullptr;

}  // namespace

TEST(CStringFind, givesThePositionOfACharacterAtOrBehindTheStart)
{
    struct Row {
        char const* text;
        char character;
        int start;
        int position;
    };
    for (auto const& [text, character, start, position] : std::vector<Row>{
             {"abcabc", 'a', 0, 0},
             {"abcabc", 'c', 0, 2},
             {"abcabc", 'a', 1, 3},
             {"abcabc", 'c', 5, 5},
             {"abcabc", 'c', 6, -1},
             {"abcabc", 'c', 7, -1},
             {"abcabc", 'c', INT_MAX, -1},
             {"abcabc", 'a', -1, -1},
             {"abcabc", 'x', 0, -1},
             {"", 'a', 0, -1},
             {"\xE4", '\xE4', 0, 0},
             {"abc", '\0', 0, 3},
             {"abc", '\0', 3, -1},
         })
        EXPECT_EQ(CString(text).Find(character, start), position) << text << ' ' << character << ' ' << start;
}

TEST(CStringFind, givesThePositionOfATextAtOrBehindTheStart)
{
    struct Row {
        char const* text;
        char const* wanted;
        int start;
        int position;
    };
    for (auto const& [text, wanted, start, position] : std::vector<Row>{
             {"abcabc", "abc", 0, 0},
             {"abcabc", "abc", 1, 3},
             {"abcabc", "abc", 4, -1},
             {"abcabc", "bc", 0, 1},
             {"abcabc", "abcabcd", 0, -1},
             {"abcabc", "BC", 0, -1},
             {"abc", "", 0, 0},
             {"abc", "", 2, 2},
             {"abc", "", 3, 3},
             {"abc", "", 4, -1},
             {"abc", "a", -1, -1},
             {"abc", "a", INT_MAX, -1},
             {"", "", 0, 0},
             {"", "a", 0, -1},
             {"aaab", "aab", 0, 1},
             {"abc", noText, 0, -1},
         }) {
        EXPECT_EQ(CString(text).Find(wanted, start), position)
            << text << ' ' << (wanted ? wanted : "null") << ' ' << start;
        if (wanted) {
            EXPECT_EQ(CString(text).Find(CString(wanted), start), position)
                << text << ' ' << wanted << ' ' << start;
        }
    }
}

TEST(CStringFind, looksBehindNulBytes)
{
    CString const text("a\0bc\0d", 6);

    EXPECT_EQ(text.Find('c'), 3);
    EXPECT_EQ(text.Find("c"), 3);
    EXPECT_EQ(text.Find(CString("\0d", 2)), 4);
    EXPECT_EQ(text.Find('\0'), 1);
    EXPECT_EQ(text.Find('\0', 2), 4);
    EXPECT_EQ(text.ReverseFind('a'), 0);
    EXPECT_EQ(text.FindOneOf("xd"), 5);
}

TEST(CStringFind, findsTheLastCharacter)
{
    EXPECT_EQ(CString("abcabc").ReverseFind('a'), 3);
    EXPECT_EQ(CString("abcabc").ReverseFind('c'), 5);
    EXPECT_EQ(CString("abcabc").ReverseFind('x'), -1);
    EXPECT_EQ(CString("").ReverseFind('x'), -1);
    EXPECT_EQ(CString("abc").ReverseFind('\0'), 3);
    EXPECT_EQ(CString('x', 100).ReverseFind('x'), 99);
    EXPECT_EQ(("a" + CString('x', 100)).ReverseFind('a'), 0);
}

TEST(CStringFind, findsTheFirstOfASet)
{
    EXPECT_EQ(CString("a,b;c").FindOneOf(";,"), 1);
    EXPECT_EQ(CString("a,b;c").FindOneOf(";"), 3);
    EXPECT_EQ(CString("a,b;c").FindOneOf("xyz"), -1);
    EXPECT_EQ(CString("a,b;c").FindOneOf(""), -1);
    EXPECT_EQ(CString("a,b;c").FindOneOf(noText), -1);
    EXPECT_EQ(CString("").FindOneOf("a"), -1);
}

TEST(CStringParts, areCutByCountsInsideTheText)
{
    CString const text("abcdef");
    struct Row {
        int count;
        char const* left;
        char const* right;
    };
    for (auto const& [count, left, right] : std::vector<Row>{
             {INT_MIN, "", ""},
             {-1, "", ""},
             {0, "", ""},
             {1, "a", "f"},
             {5, "abcde", "bcdef"},
             {6, "abcdef", "abcdef"},
             {7, "abcdef", "abcdef"},
             {INT_MAX, "abcdef", "abcdef"},
         }) {
        EXPECT_EQ(text.Left(count), left) << count;
        EXPECT_EQ(text.Right(count), right) << count;
    }
}

TEST(CStringParts, areTakenFromTheMiddle)
{
    CString const text("abcdef");
    struct Row {
        int first;
        int count;
        char const* part;
    };
    for (auto const& [first, count, part] : std::vector<Row>{
             {0, 6, "abcdef"},
             {2, 2, "cd"},
             {2, 100, "cdef"},
             {2, INT_MAX, "cdef"},
             {2, 0, ""},
             {2, -1, ""},
             {-1, 2, "ab"},
             {INT_MIN, INT_MAX, "abcdef"},
             {5, 1, "f"},
             {6, 1, ""},
             {7, 1, ""},
             {INT_MAX, INT_MAX, ""},
         })
        EXPECT_EQ(text.Mid(first, count), part) << first << ' ' << count;

    EXPECT_EQ(text.Mid(0), "abcdef");
    EXPECT_EQ(text.Mid(4), "ef");
    EXPECT_EQ(text.Mid(6), "");
    EXPECT_EQ(text.Mid(7), "");
    EXPECT_EQ(text.Mid(-1), "abcdef");
}

TEST(CStringParts, keepNulBytes)
{
    CString const text("a\0bc", 4);

    EXPECT_EQ(text.Left(3), std::string_view("a\0b", 3));
    EXPECT_EQ(text.Right(3), std::string_view("\0bc", 3));
    EXPECT_EQ(text.Mid(1, 2), std::string_view("\0b", 2));
}

TEST(CStringParts, spanOnlyOrNoneOfASet)
{
    CString const text("cabinet");

    EXPECT_EQ(text.SpanIncluding("abc"), "cab");
    EXPECT_EQ(text.SpanIncluding("xyz"), "");
    EXPECT_EQ(text.SpanIncluding("cabinet"), "cabinet");
    EXPECT_EQ(text.SpanIncluding(""), "");
    EXPECT_EQ(text.SpanIncluding(noText), "");
    EXPECT_EQ(text.SpanExcluding("ni"), "cab");
    EXPECT_EQ(text.SpanExcluding("c"), "");
    EXPECT_EQ(text.SpanExcluding("xyz"), "cabinet");
    EXPECT_EQ(text.SpanExcluding(""), "cabinet");
    EXPECT_EQ(text.SpanExcluding(noText), "cabinet");
}

namespace {

std::vector<std::string> tokensOf(char const* text, char const* separators)
{
    std::vector<std::string> tokens;
    int position = 0;
    for (CString token = CString(text).Tokenize(separators, position); position != -1;
         token = CString(text).Tokenize(separators, position))
        tokens.emplace_back(token.GetString());
    return tokens;
}

}  // namespace

TEST(CStringTokens, areWhatStandsBetweenSeparators)
{
    using Tokens = std::vector<std::string>;

    EXPECT_EQ(tokensOf("a,b;c", ",;"), (Tokens{"a", "b", "c"}));
    EXPECT_EQ(tokensOf(",,a,,b,,", ","), (Tokens{"a", "b"}));
    EXPECT_EQ(tokensOf("", ","), Tokens{});
    EXPECT_EQ(tokensOf(",,,", ","), Tokens{});
    EXPECT_EQ(tokensOf("one", ","), Tokens{"one"});
    EXPECT_EQ(tokensOf("%First Second#Third", "% #"), (Tokens{"First", "Second", "Third"}));
}

TEST(CStringTokens, areTheWholeRestWithoutSeparators)
{
    EXPECT_EQ(tokensOf("a b", ""), std::vector<std::string>{"a b"});
    EXPECT_EQ(tokensOf("a b", noText), std::vector<std::string>{"a b"});
}

TEST(CStringTokens, moveTheStartBehindTheSeparator)
{
    CString const text("a, b");
    int position = 0;

    EXPECT_EQ(text.Tokenize(" ,", position), "a");
    EXPECT_EQ(position, 2);
    EXPECT_EQ(text.Tokenize(" ,", position), "b");
    EXPECT_EQ(position, 5);
    EXPECT_EQ(text.Tokenize(" ,", position), "");
    EXPECT_EQ(position, -1);
    EXPECT_EQ(text.Tokenize(" ,", position), "");
    EXPECT_EQ(position, -1);
}
