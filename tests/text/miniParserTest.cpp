#include "text/miniParser.h"
#include "tests/text/stepwiseParser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Fields = std::vector<std::string>;

// The fields in the order of the list: from its head to its tail.
Fields splitFields(char const* text)
{
    CStringList list;
    miniParser parser;
    parser.splitBySeperators(text, list);

    Fields fields;
    for (POSITION at = list.GetHeadPosition(); at;)
        fields.emplace_back(list.GetNext(at).GetString());
    return fields;
}

struct Label {
    std::string label;
    std::string params;
    bool operator==(Label const&) const = default;
};

std::ostream& operator<<(std::ostream& out, Label const& label)
{
    return out << '"' << label.label << "\" with \"" << label.params << '"';
}

// The parameters are "untouched" where the call leaves them alone.
Label firstLabel(char const* text)
{
    miniParser parser;
    CString params("untouched");
    CString const label = parser.getFirstLabel(text, params);
    return {label.GetString(), params.GetString()};
}

class OpenParser : public miniParser {
public:
    using miniParser::checkHardEnd;
    using miniParser::checkHardStart;
    using miniParser::checkIfdefEnd;
    using miniParser::checkIfdefStart;
    using miniParser::getAlphabetKind;
    using miniParser::getBlockEnd;
    using miniParser::initParserState;
    using miniParser::setAlphabetKind;
};

struct SplitRow {
    char const* text;
    Fields fields;
};

class Splitting : public testing::TestWithParam<SplitRow> { };

TEST_P(Splitting, givesTheFieldsFromLastToFirst)
{
    EXPECT_EQ(splitFields(GetParam().text), GetParam().fields) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(AtTopLevel, Splitting,
                         testing::Values(SplitRow{"", {""}}, SplitRow{"a", {"a"}}, SplitRow{",", {"", ""}},
                                         SplitRow{"a,", {"", "a"}}, SplitRow{" a , b ", {" b ", " a "}},
                                         SplitRow{"a,b(c,d),e", {"e", "b(c,d)", "a"}}));

INSTANTIATE_TEST_SUITE_P(
    AroundBrackets, Splitting,
    testing::Values(SplitRow{"a[1,2],b{3,4},c<5,6>,d", {"d", "c<5,6>", "b{3,4}", "a[1,2]"}},
                    SplitRow{"a<b,c", {"a<b,c"}}, SplitRow{"(a,b", {"(a,b"}}, SplitRow{"a),b", {"b", "a)"}},
                    SplitRow{"x->y,z", {"z", "x->y"}}, SplitRow{"x>y,z", {"z", "x>y"}},
                    // A closer drops what is open inside its pair, but a '>' does not.
                    SplitRow{"(a<b),c", {"c", "(a<b)"}}, SplitRow{"(a>b,c),d", {"d", "(a>b,c)"}},
                    SplitRow{"[(a],b", {"b", "[(a]"}},
                    // With no pair of its own it drops everything.
                    SplitRow{"(a<b],c", {"c", "(a<b]"}},
                    // An arrow inside angle brackets closes nothing.
                    SplitRow{"a<p->q,r>,s", {"s", "a<p->q,r>"}},
                    // Only '>' makes an arrow.
                    SplitRow{"(a-),b", {"b", "(a-)"}}));

INSTANTIATE_TEST_SUITE_P(
    AroundStringsAndComments, Splitting,
    testing::Values(SplitRow{"a,\"b,c\",d", {"d", "\"b,c\"", "a"}},
                    SplitRow{"\"a\\\",b\",c", {"c", "\"a\\\",b\""}},  // an escaped quote ends nothing
                    SplitRow{"\"a\\\\\",b", {"b", "\"a\\\\\""}},      // an escaped backslash does
                    SplitRow{"','", {"','"}}, SplitRow{"\"'\",b", {"b", "\"'\""}},
                    SplitRow{"\"open,a,b", {"\"open,a,b"}}, SplitRow{"a/*,*/,b", {"b", "a/*,*/"}},
                    SplitRow{"a/*,*,/,*/,b", {"b", "a/*,*,/,*/"}}, SplitRow{"a//,\n,b", {"b", "a//,\n"}},
                    SplitRow{"a//,b", {"a//,b"}}, SplitRow{"a/b,c", {"c", "a/b"}}, SplitRow{"a/", {"a/"}},
                    SplitRow{"/*\",*/,b", {"b", "/*\",*/"}}, SplitRow{"a/*,*", {"a/*,*"}},
                    SplitRow{"/*/,*/,b", {"b", "/*/,*/"}},
                    // The slash that ends a comment begins no other.
                    SplitRow{"/*a*//b,c", {"c", "/*a*//b"}}));

INSTANTIATE_TEST_SUITE_P(
    AroundConditionalBlocks, Splitting,
    testing::Values(SplitRow{"#ifdef X\na,b\n#endif\nc,d", {"d", "#ifdef X\na,b\n#endif\nc"}},
                    SplitRow{"#ifndif X\na,b\n#endif\nc,d", {"d", "#ifndif X\na,b\n#endif\nc"}},
                    SplitRow{"#ifndef X\na,b", {"b", "#ifndef X\na"}},
                    SplitRow{"#ifdef A\n#ifdef B\n#endif\na,b\n#endif,c",
                             {"c", "#ifdef A\n#ifdef B\n#endif\na,b\n#endif"}},
                    // Strings count inside a block, brackets do not.
                    SplitRow{"#ifdef A\n\"#endif\"a,b\n#endif,c", {"c", "#ifdef A\n\"#endif\"a,b\n#endif"}},
                    SplitRow{"#ifdef A\n(((\n#endif,c", {"c", "#ifdef A\n(((\n#endif"}},
                    SplitRow{"# ifdef A\na,b", {"b", "# ifdef A\na"}}, SplitRow{"#endif,b", {"b", "#endif"}},
                    SplitRow{"#,b", {"b", "#"}},
                    // Comments count inside a block, too.
                    SplitRow{"#ifdef X\n/*#endif*/a,b\n#endif,c", {"c", "#ifdef X\n/*#endif*/a,b\n#endif"}},
                    // An end without a beginning means nothing.
                    SplitRow{"#endif #ifdef X\na,b", {"#endif #ifdef X\na,b"}}));

TEST(MiniParser, putsFieldsInFrontOfWhatTheResultHolds)
{
    CStringList result;
    result.AddTail("old");
    miniParser parser;

    parser.splitBySeperators("a,b", result);

    ASSERT_EQ(result.GetCount(), 3);
    EXPECT_STREQ(result.GetHead(), "b");
    EXPECT_STREQ(result.GetTail(), "old");
}

TEST(MiniParser, startsEachScanAnew)
{
    miniParser parser;
    CStringList ignored;
    parser.splitBySeperators("#ifdef A\n\"open", ignored);
    CStringList result;

    parser.splitBySeperators("a,b", result);

    EXPECT_EQ(result.GetCount(), 2);
}

TEST(MiniParser, startsEachLabelAnew)
{
    miniParser parser;

    for (char const* const open : {"\"open", "/* open", "#ifdef A"}) {
        parser.getFirstLabel(open);

        EXPECT_STREQ(parser.getFirstLabel("foo"), "foo") << open;
    }
}

TEST(MiniParser, putsBackTheKindsThatASubclassGave)
{
    OpenParser parser;
    CStringList ignored;
    for (char const character : {':', '<', ',', '>'})
        parser.setAlphabetKind(character, miniParser::charBlank);

    parser.splitBySeperators("a,b", ignored);
    parser.getFirstLabel("a::b");

    for (char const character : {':', '<', ',', '>'})
        EXPECT_EQ(parser.getAlphabetKind(character), miniParser::charBlank) << character;
}

TEST(MiniParser, givesTheLabelOfATextThatTakesTheParameters)
{
    miniParser parser;
    CString text("  foo(a, b)");

    CString const label = parser.getFirstLabel(text, text);

    EXPECT_STREQ(label, "foo");
    EXPECT_STREQ(text, "a, b");
}

TEST(MiniParser, takesACommaForASeparatorOnlyWhileItSplits)
{
    OpenParser parser;
    CStringList result;

    parser.splitBySeperators("a,b", result);

    EXPECT_EQ(parser.getAlphabetKind(','), miniParser::charUnknown);
}

TEST(MiniParser, joinsColonsAndAnglesOnlyWhileItLooksForALabel)
{
    OpenParser parser;

    parser.getFirstLabel("a::b");

    EXPECT_EQ(parser.getAlphabetKind(':'), miniParser::charUnknown);
    EXPECT_EQ(parser.getAlphabetKind(','), miniParser::charUnknown);
    EXPECT_EQ(parser.getAlphabetKind('<'), miniParser::charBlockStart);
    EXPECT_EQ(parser.getAlphabetKind('>'), miniParser::charBlockEnd);
}

TEST(MiniParser, knowsTheKindOfEachCharacter)
{
    OpenParser parser;
    std::string labels, starts, ends, strings, commentStarts, commentEnds, preprocessor, separators, blanks;

    for (int code = 0; code < 256; ++code) {
        char const character = char(code);
        switch (parser.getAlphabetKind(character)) {
        case miniParser::charLabel: labels += character; break;
        case miniParser::charBlockStart: starts += character; break;
        case miniParser::charBlockEnd: ends += character; break;
        case miniParser::charString: strings += character; break;
        case miniParser::charCommentStart: commentStarts += character; break;
        case miniParser::charCommentEnd: commentEnds += character; break;
        case miniParser::charPreprocessor: preprocessor += character; break;
        case miniParser::charSeparator: separators += character; break;
        case miniParser::charBlank: blanks += character; break;
        case miniParser::charUnknown: break;
        }
    }

    EXPECT_EQ(labels, "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(starts, "(<[{");
    EXPECT_EQ(ends, ")>]}");
    EXPECT_EQ(strings, "\"'");
    EXPECT_EQ(commentStarts, "/");
    EXPECT_EQ(commentEnds, "\n*");
    EXPECT_EQ(preprocessor, "#");
    EXPECT_EQ(separators, "");
    EXPECT_EQ(blanks, "\t\r ");
}

TEST(MiniParser, pairsOpenersAndClosersByPosition)
{
    OpenParser parser;

    EXPECT_EQ(parser.getBlockEnd('('), ')');
    EXPECT_EQ(parser.getBlockEnd('['), ']');
    EXPECT_EQ(parser.getBlockEnd('{'), '}');
    EXPECT_EQ(parser.getBlockEnd('<'), '>');
    EXPECT_EQ(parser.getBlockEnd('a'), '\0');
}

TEST(MiniParser, letsASubclassGiveACharacterAnotherKind)
{
    OpenParser parser;
    parser.setAlphabetKind('$', miniParser::charLabel);

    EXPECT_STREQ(parser.getFirstLabel("$a b"), "$a");
}

TEST(MiniParser, movesOntoTheSecondCharacterOfACommentsOpening)
{
    OpenParser parser;
    int pos = 1;

    EXPECT_TRUE(parser.checkHardStart("a/*", pos, 3));

    EXPECT_EQ(pos, 2);
}

TEST(MiniParser, needsBothCharactersOfACommentsOpening)
{
    OpenParser parser;
    int pos = 0;

    EXPECT_FALSE(parser.checkHardStart("/", pos, 1));
    EXPECT_FALSE(parser.checkHardStart("/a", pos, 2));
    EXPECT_EQ(pos, 0);
}

TEST(MiniParser, movesOntoTheLastCharacterOfAConditionalsWord)
{
    OpenParser parser;
    int start = 1;
    int end = 1;

    EXPECT_TRUE(parser.checkIfdefStart("a#ifdef", start));
    EXPECT_TRUE(parser.checkIfdefEnd("a#endif", end));

    EXPECT_EQ(start, 6);
    EXPECT_EQ(end, 6);
}

TEST(MiniParser, looksForAConditionalsWordBehindTheMarkOnly)
{
    OpenParser parser;
    int pos = 0;

    EXPECT_FALSE(parser.checkIfdefStart("aifdef", pos));
    EXPECT_FALSE(parser.checkIfdefStart("#ifde", pos));
    EXPECT_FALSE(parser.checkIfdefEnd("#endi", pos));
    EXPECT_FALSE(parser.checkIfdefEnd("#ifdef", pos));
    EXPECT_EQ(pos, 0);
}

struct LabelRow {
    char const* text;
    Label expected;
};

class FirstLabel : public testing::TestWithParam<LabelRow> { };

TEST_P(FirstLabel, isTakenWithItsParameters)
{
    EXPECT_EQ(firstLabel(GetParam().text), GetParam().expected) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Plain, FirstLabel,
    testing::Values(LabelRow{"", {"", "untouched"}}, LabelRow{"foo", {"foo", "untouched"}},
                    LabelRow{"foo()", {"foo", ""}}, LabelRow{"foo(", {"foo", "untouched"}},
                    LabelRow{"  int x;", {"int", "untouched"}}, LabelRow{"(a)", {"a", "untouched"}},
                    LabelRow{"...", {"", "untouched"}}, LabelRow{"foo (a)", {"foo", "a"}},
                    LabelRow{"foo bar(a, b)", {"foo", "a, b"}}, LabelRow{"foo)(a)", {"foo", "a"}},
                    LabelRow{"foo(a)(b)", {"foo", "a"}}, LabelRow{"foo(a(b)c)d", {"foo", "a(b)c"}},
                    LabelRow{"foo(a(b)", {"foo", "untouched"}}));

INSTANTIATE_TEST_SUITE_P(
    Templated, FirstLabel,
    testing::Values(LabelRow{"  std::map<int, char> foo(a, b)", {"std::map<int, char>", "a, b"}},
                    LabelRow{"a::b::c(d)", {"a::b::c", "d"}}, LabelRow{"a,b c", {"a,b", "untouched"}},
                    LabelRow{"map<int*> x", {"map<int", "untouched"}},
                    LabelRow{"map<a,\n b> x", {"map<a,\n b>", "untouched"}},
                    LabelRow{"map<a\r\tb> x", {"map<a\r\tb>", "untouched"}},
                    LabelRow{"a> b", {"a>", "untouched"}}));

INSTANTIATE_TEST_SUITE_P(
    AroundStringsAndComments, FirstLabel,
    testing::Values(LabelRow{"/* no */ foo(a)", {"foo", "a"}}, LabelRow{"// no\nfoo", {"foo", "untouched"}},
                    LabelRow{"\"no\" foo", {"foo", "untouched"}}, LabelRow{"foo\"(\"(a)", {"foo", "a"}},
                    LabelRow{"foo(a, \")\", b)", {"foo", "a, \")\", b"}},
                    LabelRow{"foo(/* ) */ a)", {"foo", "/* ) */ a"}}, LabelRow{"foo/b", {"foo", "untouched"}},
                    LabelRow{"foo/*x*/bar", {"foo", "untouched"}}));

INSTANTIATE_TEST_SUITE_P(
    AroundConditionalBlocks, FirstLabel,
    testing::Values(LabelRow{"#ifdef X\nno\n#endif\nfoo(a)", {"foo", "a"}},
                    LabelRow{"foo#ifdef X\n(no)\n#endif\n(a)", {"foo", "a"}},
                    LabelRow{"foo(a#ifdef X\n)\n#endif\n)", {"foo", "a#ifdef X\n)\n#endif\n"}},
                    LabelRow{"#ifdef A\n#ifdef B\n#endif\nno\n#endif\nfoo", {"foo", "untouched"}},
                    LabelRow{"#include foo", {"include", "untouched"}},
                    LabelRow{"foo#bar", {"foo", "untouched"}},
                    // Strings count inside a block.
                    LabelRow{"#ifdef X \"#endif\" no\n#endif foo", {"foo", "untouched"}},
                    LabelRow{"#ifdef X /*#endif*/ no\n#endif foo", {"foo", "untouched"}},
                    // An end without a beginning means nothing.
                    LabelRow{"f(#endif #ifdef X ) #endif a)", {"f", "#endif #ifdef X ) #endif a"}}));

TEST(MiniParser, givesTheLabelWithoutItsParametersToo)
{
    miniParser parser;

    EXPECT_STREQ(parser.getFirstLabel("foo(a)"), "foo");
}

TEST(MiniParser, passesThroughBytesAboveAsciiAndNuls)
{
    miniParser parser;
    CString const text("\xC3\xA4\0,b", 5);
    CStringList result;

    parser.splitBySeperators(text, result);

    ASSERT_EQ(result.GetCount(), 2);
    EXPECT_EQ(result.GetTail(), CString("\xC3\xA4\0", 3));
}

// Compares with the stepwise way.
void expectSameAsStepwise(std::string const& text)
{
    Fields fields = zk::test::StepwiseParser::split(text);
    std::reverse(fields.begin(), fields.end());
    ASSERT_EQ(splitFields(text.c_str()), fields) << text;

    zk::test::StepwiseParser::Label const label = zk::test::StepwiseParser::firstLabel(text);
    Label const expected = {label.label, label.params.value_or("untouched")};
    ASSERT_EQ(firstLabel(text.c_str()), expected) << text;
}

constexpr char const* pieces[] = {"a", ",", "<", ">",  "(",  ")",      "\"",     "'", "/",
                                  "*", "#", "-", "\n", "\\", "#ifdef", "#endif", "]", " "};

TEST(MiniParser, agreesWithTheStepwiseWayOnEachShortText)
{
    for (char const* const first : pieces)
        for (char const* const second : pieces)
            for (char const* const third : pieces)
                expectSameAsStepwise(std::string(first) + second + third + "a,b(c)");
}

TEST(MiniParser, agreesWithTheStepwiseWayOnLongerTexts)
{
    unsigned state = 3;
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (int i = 0; i < 14; ++i) {
            state = state * 1664525u + 1013904223u;
            text += pieces[(state >> 16) % std::size(pieces)];
        }
        expectSameAsStepwise(text);
    }
}

TEST(MiniParser, takesAMillionOpenBracketsAndHashes)
{
    CString const brackets('(', 1000000);
    CString const hashes('#', 1000000);
    CString const backslashes = CString('\\', 1000000) + "\"";
    CStringList result;
    miniParser parser;

    parser.splitBySeperators(brackets, result);
    parser.splitBySeperators(hashes, result);
    parser.splitBySeperators("\"" + backslashes, result);

    EXPECT_EQ(result.GetCount(), 3);
}

}  // namespace
