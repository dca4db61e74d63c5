#include "text/stringHelpers.h"

#include "text/SeperatorTables.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>

namespace {

TEST(StringHelpers, removeBlanksAtBothEnds)
{
    EXPECT_STREQ(omRemoveTrailingAndLeadingBlanks(" \t\r\n a b \v\f"), "a b");
    EXPECT_STREQ(omRemoveTrailingAndLeadingBlanks("   "), "");
    EXPECT_STREQ(omRemoveTrailingAndLeadingBlanks(""), "");
}

TEST(StringHelpers, cleanAwayAllWhiteSpace)
{
    EXPECT_STREQ(cleanWhiteSpaces(" a\tb\r\nc "), "abc");
    EXPECT_STREQ(cleanWhiteSpaces("\xC3\xA4 \xFF"), "\xC3\xA4\xFF");
    EXPECT_STREQ(cleanWhiteSpaces(""), "");
}

TEST(StringHelpers, changeTheCaseInPlace)
{
    CString text("aBc1");
    omMakeUpper(text);
    EXPECT_STREQ(text, "ABC1");
    omMakeLower(text);
    EXPECT_STREQ(text, "abc1");
}

TEST(StringHelpers, makeAllButLettersAndDigitsAnUnderscore)
{
    EXPECT_STREQ(convertToStrictAlphaNum("a-b_c 1:Z"), "a_b_c_1_Z");
    EXPECT_STREQ(convertToStrictAlphaNum(""), "");
}

TEST(StringHelpers, lowerTheFirstLetterOfEachPart)
{
    EXPECT_STREQ(toLowerCaseFirstLetter("Foo-Bar-bAZ"), "foo-bar-bAZ");
    EXPECT_STREQ(toLowerCaseFirstLetter("-Foo"), "-foo");
    EXPECT_STREQ(toLowerCaseFirstLetter("Foo--Bar-"), "foo--bar-");
    EXPECT_STREQ(toLowerCaseFirstLetter(" Foo - Bar "), "foo-bar");
    EXPECT_STREQ(toLowerCaseFirstLetter("1X"), "1X");
    EXPECT_STREQ(toLowerCaseFirstLetter(""), "");
}

TEST(StringHelpers, putABlankBeforeEachRunOfCapitals)
{
    EXPECT_STREQ(insertSpaces("myHTTPServer"), "my HTTPServer");
    EXPECT_STREQ(insertSpaces("SysMLPort"), "SysMLPort");
    EXPECT_STREQ(insertSpaces("SysMLPorts"), "Sys MLPorts");
    EXPECT_STREQ(insertSpaces("lower"), "lower");
    EXPECT_STREQ(insertSpaces("UPPER"), "UPPER");
    EXPECT_STREQ(insertSpaces("aB"), "a B");
    EXPECT_STREQ(insertSpaces("#Bc"), "# Bc");
    EXPECT_STREQ(insertSpaces("1B"), "1B");        // a digit alone brings no match
    EXPECT_STREQ(insertSpaces("aB1C"), "a B1 C");  // but counts once there is one
    EXPECT_STREQ(insertSpaces("MyClassName"), "My Class Name");
    EXPECT_STREQ(insertSpaces(""), "");
}

TEST(StringHelpers, compareUpToWhiteSpace)
{
    EXPECT_EQ(identicalUpToSpaces("a b", "ab"), 1);
    EXPECT_EQ(identicalUpToSpaces(" a\tb\n", "a  b"), 1);
    EXPECT_EQ(identicalUpToSpaces("", "   "), 1);
    EXPECT_EQ(identicalUpToSpaces("   ", ""), 1);
    EXPECT_EQ(identicalUpToSpaces("ab", "aB"), 0);
    EXPECT_EQ(identicalUpToSpaces("ab", "a"), 0);
    EXPECT_EQ(identicalUpToSpaces("a", "a b"), 0);
}

TEST(StringHelpers, countACharacter)
{
    EXPECT_EQ(countCharacterInStr("banana", 'a'), 3);
    EXPECT_EQ(countCharacterInStr("banana", 'x'), 0);
    EXPECT_EQ(countCharacterInStr("", 'a'), 0);
}

TEST(StringHelpers, findACharacterBackwardInAHalfOpenRange)
{
    EXPECT_EQ(ReverseFind("banana", 'a', 0, 5), 5);
    EXPECT_EQ(ReverseFind("banana", 'a', 0, 4), 3);
    EXPECT_EQ(ReverseFind("banana", 'a', 3, 4), -1);  // the lower bound is not part of it
    EXPECT_EQ(ReverseFind("banana", 'b', -1, 5), 0);
    EXPECT_EQ(ReverseFind("banana", 'a', 3, 3), -1);
    EXPECT_EQ(ReverseFind("banana", 'a', 4, 3), -1);
    EXPECT_EQ(ReverseFind("banana", 'a', -100, 100), 5);
    EXPECT_EQ(ReverseFind("banana", 'a', 6, 100), -1);
    EXPECT_EQ(ReverseFind("", 'a', -1, 5), -1);
}

TEST(StringHelpers, findTheLastOfOverlappingOccurrences)
{
    EXPECT_EQ(ReverseFind("aaa", "aa"), 1);
    EXPECT_EQ(ReverseFind("abcabc", "bc"), 4);
    EXPECT_EQ(ReverseFind("abc", "x"), -1);
    EXPECT_EQ(ReverseFind("", "x"), -1);
}

TEST(StringHelpers, compareThePrefixAtAPosition)
{
    EXPECT_EQ(startsWith("abcd", "bc", 1), 0);
    EXPECT_EQ(startsWith("abcd", "bc", 0), -1);
    EXPECT_EQ(startsWith("abcd", "cd", 2, 4), 0);
    EXPECT_EQ(startsWith("abcd", "cd", 2, 3), -1);
    EXPECT_EQ(startsWith("abcd", "ab"), 0);
    EXPECT_EQ(startsWith("abcd", "", 4), 0);
    EXPECT_EQ(startsWith("abcd", "", 5), -1);
    EXPECT_EQ(startsWith("abcd", "a", -1), -1);
    EXPECT_EQ(startsWith("ab", "abc"), -1);
}

TEST(StringHelpers, knowThePatternThatEndsAText)
{
    EXPECT_TRUE(IsTheStringEndWithPattern("file.txt", ".txt"));
    EXPECT_TRUE(IsTheStringEndWithPattern("aaa", "aa"));
    EXPECT_FALSE(IsTheStringEndWithPattern("file.txt2", ".txt"));
    EXPECT_FALSE(IsTheStringEndWithPattern("file", ".txt"));
    EXPECT_TRUE(IsTheStringEndWithPattern(".txt.txt", ".txt"));
}

TEST(StringHelpers, findAWholeWord)
{
    EXPECT_EQ(omFindExactString("ab", "xab ab"), 4);
    EXPECT_EQ(omFindExactString("ab", "ab"), 0);
    EXPECT_EQ(omFindExactString("ab", "(ab)"), 1);
    EXPECT_EQ(omFindExactString("ab", "_ab ab_ ab1 1ab"), -1);
    EXPECT_EQ(omFindExactString("a.b", "xa.b a.b"), 5);
    EXPECT_EQ(omFindExactString("aa", "aaa aa"), 4);
    EXPECT_LT(omFindExactString("ab", ""), 0);
    EXPECT_LT(omFindExactString("", "ab"), 0);
}

TEST(StringHelpers, goOnBehindAnOccurrenceThatIsNotWhole)
{
    EXPECT_EQ(omFindExactString("-a-", "x-a--a-"), 4);
    EXPECT_EQ(omFindExactString("-a-", "x-a-a-"), -1);  // the whole one begins inside the first
}

TEST(StringHelpers, findAnElementOfASeparatedList)
{
    EXPECT_TRUE(omFindExactString2("b", "a, b ;c"));
    EXPECT_TRUE(omFindExactString2("c", "a,b;c"));
    EXPECT_FALSE(omFindExactString2("B", "a,b"));
    EXPECT_FALSE(omFindExactString2("", "a,,b"));
    EXPECT_FALSE(omFindExactString2("a b", "a,b"));
}

TEST(StringHelpers, findAnElementWithoutCase)
{
    CStringList list;
    list.AddTail("One");
    list.AddTail("Two");
    list.AddTail("TWO");

    POSITION const found = omFindInStringListNoCase(list, "two");

    ASSERT_NE(found, nullptr);
    EXPECT_STREQ(list.GetAt(found), "Two");
    EXPECT_EQ(omFindInStringListNoCase(list, "three"), nullptr);
}

TEST(StringHelpers, knowRichTextByItsFirstFiveCharacters)
{
    EXPECT_TRUE(omIsRTF("{\\rtf1 x}"));
    EXPECT_TRUE(omIsRTF("{\\rtf"));
    EXPECT_FALSE(omIsRTF("{\\rt"));
    EXPECT_FALSE(omIsRTF(" {\\rtf"));
    EXPECT_FALSE(omIsRTF(""));
}

TEST(StringHelpers, compareThePointersThatQsortMoves)
{
    CString const texts[] = {"b", "C", "a", "\xC3", "ab"};
    CString const* sorted[] = {&texts[0], &texts[1], &texts[2], &texts[3], &texts[4]};

    std::qsort(sorted, std::size(sorted), sizeof sorted[0], cstringCompare);

    std::string all;
    for (CString const* text : sorted)
        all += text->GetString() + std::string(" ");
    EXPECT_EQ(all, "C a ab b \xC3 ");
}

TEST(StringHelpers, cutOffAPrefix)
{
    CString text("abcd");

    EXPECT_EQ(advanceIfStartsWith(text, "ab"), 1);
    EXPECT_STREQ(text, "cd");
    EXPECT_EQ(advanceIfStartsWith(text, "x"), 0);
    EXPECT_STREQ(text, "cd");
    EXPECT_EQ(advanceIfStartsWith(text, ""), 1);
    EXPECT_EQ(advanceIfStartsWith(text, "cde"), 0);
    EXPECT_EQ(advanceIfStartsWith(text, "cd"), 1);
    EXPECT_STREQ(text, "");
}

TEST(StringHelpers, eatTheLongestTokenOfATable)
{
    CString text("ab_1-x");
    CString token("old");

    zkyEatOneToken(text, token, SeperatorTables::getIdentifier());
    EXPECT_STREQ(token, "ab_1");
    EXPECT_STREQ(text, "-x");

    zkyEatOneToken(text, token, SeperatorTables::getIdentifier());
    EXPECT_STREQ(token, "");
    EXPECT_STREQ(text, "-x");

    zkyEatOneToken(text, token, SeperatorTables::getIdentifierD());
    EXPECT_STREQ(token, "-x");
    EXPECT_STREQ(text, "");
}

TEST(StringHelpers, readAShortWordFromAStream)
{
    std::istringstream in("  ab1-cd\n" + std::string(300, 'x'));

    EXPECT_STREQ(zkyGetShortAlphaNumString(in), "ab1");
    EXPECT_STREQ(zkyGetShortAlphaNumString(in), "");
    EXPECT_EQ(in.get(), '-');
    EXPECT_STREQ(zkyGetShortAlphaNumString(in), "cd");
    EXPECT_EQ(zkyGetShortAlphaNumString(in).GetLength(), 255);
    EXPECT_EQ(zkyGetShortAlphaNumString(in).GetLength(), 45);
    EXPECT_STREQ(zkyGetShortAlphaNumString(in), "");
}

TEST(StringHelpers, replaceEachMatchOfAnExpression)
{
    CString text("a1b22c");

    omReplaceToken(text, "([0-9]+)", "<$1>");
    EXPECT_STREQ(text, "a<1>b<22>c");

    omReplaceToken(text, "z", "y");
    EXPECT_STREQ(text, "a<1>b<22>c");
}

TEST(StringHelpers, convertAsciiToUtf8AndBackUnchanged)
{
    CString text("abc\x7F 1");

    EXPECT_TRUE(omConvertStringToUTF8(text));
    EXPECT_STREQ(text, "abc\x7F 1");
    EXPECT_TRUE(omConvertUTF8ToString(text));
    EXPECT_STREQ(text, "abc\x7F 1");

    CString empty;
    EXPECT_TRUE(omConvertStringToUTF8(empty));
    EXPECT_TRUE(omConvertUTF8ToString(empty));
    EXPECT_STREQ(empty, "");
}

TEST(StringHelpers, convertALetterWithAnUmlautToUtf8AndBack)
{
    CString text("\xC3\xA4");

    ASSERT_TRUE(omConvertUTF8ToString(text));
    CString const inCodePage(text);
    ASSERT_TRUE(omConvertStringToUTF8(text));

    EXPECT_STREQ(text, "\xC3\xA4");
    EXPECT_FALSE(inCodePage.IsEmpty());
}

TEST(StringHelpers, leaveInvalidUtf8AsItIs)
{
    CString text("a\xC3(");

    EXPECT_FALSE(omConvertUTF8ToString(text));

    EXPECT_STREQ(text, "a\xC3(");
}

TEST(StringHelpers, convertNulsToo)
{
    CString text("a\0b", 3);

    EXPECT_TRUE(omConvertStringToUTF8(text));

    EXPECT_EQ(text, CString("a\0b", 3));
}

}  // namespace
