#include "text/stringHelpers.h"

#include "platform/os/os.h"
#include "text/SeperatorTables.h"
#include "text/URLParams.h"
#include "text/stringListConversions.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cstdlib>
#include <memory>
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
    EXPECT_EQ(omFindExactString("- -", "x- - -"), -1);  // a whole one begins inside the first
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

// All that a classifying function does with bytes above ASCII: what the code page says of them.
TEST(StringHelpers, takeBytesAboveAsciiForWhatThePageSays)
{
    for (unsigned code = 128; code < 256; ++code) {
        CString const byte(char(code), 1);
        bool const isPartOfWord = _ismbcalnum(code) != 0;

        EXPECT_STREQ(convertToStrictAlphaNum(byte), isPartOfWord ? byte : CString("_")) << code;
        EXPECT_EQ(omFindExactString("a", byte + "a" + byte), isPartOfWord ? -1 : 1) << code;
        EXPECT_STREQ(cleanWhiteSpaces(byte), _ismbcspace(code) ? CString() : byte) << code;
        EXPECT_STREQ(toLowerCaseFirstLetter(byte), CString(char(_mbctolower(code)), 1)) << code;
        EXPECT_STREQ(insertSpaces("aB" + byte + "C"),
                     _ismbcupper(code) ? "a B" + byte + "C" : "a B" + byte + " C")
            << code;
        std::istringstream in(byte.GetString());
        EXPECT_STREQ(zkyGetShortAlphaNumString(in), isPartOfWord ? byte : CString()) << code;
    }
}

// UTF-8 has no letters of one byte there.
TEST(StringHelpers, takeNoByteAboveAsciiForALetterWhereThePageIsUtf8)
{
    if (GetACP() != CP_UTF8)
        GTEST_SKIP() << "the code page is another one";
    for (unsigned code = 128; code < 256; ++code) {
        CString const byte(char(code), 1);

        EXPECT_STREQ(convertToStrictAlphaNum(byte), "_") << code;
        EXPECT_STREQ(toLowerCaseFirstLetter(byte), byte) << code;
    }
}

TEST(StringHelpers, moveBytesAboveAsciiWhereTheTableTakesThem)
{
    CString text("\xC3\xA4\"x");
    CString token;

    zkyEatOneToken(text, token, SeperatorTables::getString());

    EXPECT_STREQ(token, "\xC3\xA4");
    EXPECT_STREQ(text, "\"x");
}

TEST(StringHelpers, refuseBytesThatAreNoCharactersOfThePage)
{
    if (GetACP() != CP_UTF8)
        GTEST_SKIP() << "each byte is a character of this code page";
    CString text("\xFF\xFE");

    EXPECT_FALSE(omConvertStringToUTF8(text));

    EXPECT_STREQ(text, "\xFF\xFE");
}

TEST(StringHelpers, removeAllSixBlanks)
{
    EXPECT_STREQ(cleanWhiteSpaces(" \ta\nb\v\f\rc "), "abc");
}

TEST(StringHelpers, readAWordBehindAnyBlanks)
{
    std::istringstream in(" \t\n\v\f\rab1-");

    EXPECT_STREQ(zkyGetShortAlphaNumString(in), "ab1");
    EXPECT_EQ(in.peek(), '-');
}

TEST(StringHelpers, takeALimitOfNothingForOne)
{
    EXPECT_EQ(startsWith("abcd", "a", 0, 0), -1);
    EXPECT_EQ(startsWith("abcd", "", 0, 0), 0);
    EXPECT_EQ(startsWith("abcd", "ab", 1, 3), -1);
    EXPECT_EQ(startsWith("abcd", "bc", 1, 3), 0);
    EXPECT_EQ(startsWith("abcd", "bc", 1, 2), -1);
}

TEST(StringHelpers, searchBackwardWithinAnyBounds)
{
    EXPECT_EQ(ReverseFind("abca", 'a', INT_MAX, INT_MAX), -1);
    EXPECT_EQ(ReverseFind("abca", 'a', INT_MAX, INT_MIN), -1);
    EXPECT_EQ(ReverseFind("abca", 'a', INT_MIN, INT_MAX), 3);
    EXPECT_EQ(ReverseFind("abca", 'a', INT_MIN, INT_MIN), -1);
}

TEST(StringHelpers, findAnEmptyPatternAtTheEnd)
{
    EXPECT_EQ(ReverseFind("abc", ""), 3);
    EXPECT_TRUE(IsTheStringEndWithPattern("abc", ""));
    EXPECT_EQ(ReverseFind("aaa", "aa"), 1);
}

TEST(StringHelpers, leaveATextAsItIsInWhichNoTokenMatches)
{
    CString const withNul("a\0b", 3);
    CString untouched(withNul);
    CString cut(withNul);

    omReplaceToken(untouched, "z", "-");
    omReplaceToken(cut, "a", "-");

    EXPECT_EQ(untouched, withNul);
    EXPECT_EQ(cut, CString("-"));
}

// What compares each place anew takes some twenty seconds for one of these searches.
TEST(StringHelpers, searchAMegabyteForHalfAMegabyteInNoTime)
{
    auto const start = std::chrono::steady_clock::now();
    CString const text('a', 1000000);
    CString const last = "b" + CString('a', 500000);
    CString const word = CString('a', 500000) + "b";

    EXPECT_EQ(ReverseFind(text, last), -1);
    EXPECT_EQ(ReverseFind(text, word), -1);
    EXPECT_STREQ(URLParams(text).getParam(CString('a', 500000)), "");
    EXPECT_EQ(omFindExactString(word, text), -1);
    EXPECT_EQ(text.Find(word), -1);
    CString replaced(text);
    EXPECT_EQ(replaced.Replace(word, CString("x")), 0);
    std::unique_ptr<CStringList> const whole(omConvertStringToStringList(text, word, 1, 1));
    EXPECT_EQ(whole->GetCount(), 1);
    CString const brackets('<', 1000000);
    std::unique_ptr<CStringList> const tags(
        omConvertXmlMultiStringToStringList(brackets, CString('<', 500000), 1));
    EXPECT_EQ(tags->GetCount(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

}  // namespace
