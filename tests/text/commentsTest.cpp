#include "text/comments.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

TEST(Comments, areTextsThatConsistOfCommentsOnly)
{
    for (char const* text : {"", "  \n", "// a\n/* b */", "/* open", "// a", "//\n//\n", "/**//**/",
                             " /* a */ \n // b", "/*/", "/* // */", "// /*\n", "/**/"})
        EXPECT_TRUE(omIsCommentString(text)) << text;
    for (char const* text : {"x", "// a\nint x;", "/* a */ x", "/", "/ /", "/*/ */ x", "a // b", "/**/ /"})
        EXPECT_FALSE(omIsCommentString(text)) << text;
}

TEST(Comments, mayBeAMillion)
{
    CString text;
    for (int i = 0; i < 1000000; ++i)
        text += "//\n";

    EXPECT_TRUE(omIsCommentString(text));
    EXPECT_FALSE(omIsCommentString(text + "x"));
}

// A mark for each position from 0 to the length: '1' where it lies in a comment or literal.
std::string marks(char const* text)
{
    std::string result;
    for (int pos = 0; pos <= int(std::strlen(text)); ++pos)
        result += omIsInCommentOrQuotedString(text, pos) ? '1' : '0';
    return result;
}

struct Marked {
    char const* text;
    char const* inside;
};

TEST(Comments, andLiteralsAreKnownAtEachPosition)
{
    Marked const rows[] = {
        {"", "0"},
        {"ab", "000"},
        {"\"a//b\" c", "011111000"},
        {"'a'b", "01100"},
        {"\"'\"b", "01100"},
        {"'\"'b", "01100"},
        {"\"\\\"\"b", "011100"},  // an escaped quote does not end the string
        {"\"\\\\\"b", "011100"},  // behind an escaped backslash it does
        {"//a\nb", "011100"},
        {"/*a*/b", "0111000"},
        {"/*/b", "01111"},
        {"/a/b", "00000"},
        {"a/", "000"},
        {"//\"\nb", "011100"},
        {"/*//*/b", "01111000"},
        {"/*a*//b", "01110000"},  // the slash that ends a comment begins no other
        {"'\\''b", "011100"},     // an escaped quote does not end the character
        {"'\\\\'b", "011100"},
    };
    for (Marked const& row : rows)
        EXPECT_EQ(marks(row.text), row.inside) << row.text;
}

TEST(Comments, holdNoPositionOutsideTheText)
{
    EXPECT_FALSE(omIsInCommentOrQuotedString("//", -1));
    EXPECT_FALSE(omIsInCommentOrQuotedString("//", 0));
    EXPECT_TRUE(omIsInCommentOrQuotedString("//", 1));
    EXPECT_TRUE(omIsInCommentOrQuotedString("//", 2));
    EXPECT_FALSE(omIsInCommentOrQuotedString("//", 3));
}

TEST(Comments, ofTheBlockKindComeFirst)
{
    EXPECT_TRUE(omIsCTypePreComment("a /* b // c"));
    EXPECT_TRUE(omIsCTypePreComment("/*"));
    EXPECT_FALSE(omIsCTypePreComment("// /*"));
    EXPECT_FALSE(omIsCTypePreComment("//"));
    EXPECT_FALSE(omIsCTypePreComment(""));
}

TEST(Comments, mayStandBetweenBlanksOfAnyKind)
{
    EXPECT_TRUE(omIsCommentString("// a\r\n/* b */\r\n"));
    EXPECT_TRUE(omIsCommentString(" \t\n\v\f\r// a"));
    EXPECT_FALSE(omIsCommentString("\x01// a"));
}

}  // namespace
