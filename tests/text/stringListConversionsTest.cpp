// The functions that cut texts, side by side: what one trims or drops another keeps.
#include "text/stringListConversions.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using Parts = std::vector<std::string>;

Parts partsOf(CStringList const& list)
{
    Parts parts;
    for (POSITION at = list.GetHeadPosition(); at;) {
        CString const& part = list.GetNext(at);
        parts.emplace_back(part.GetString(), std::size_t(part.GetLength()));
    }
    return parts;
}

// Takes the list that a conversion gives.
Parts taken(CStringList* list)
{
    std::unique_ptr<CStringList> const owned(list);
    return partsOf(*owned);
}

Parts split2(char const* text, char separator, int keepEmpty, int noTrim)
{
    CStringList list;
    omConvertStringToStringList2(&list, text, separator, keepEmpty, noTrim);
    return partsOf(list);
}

TEST(StringListConversions, joinElementsWithTheirSeparator)
{
    CStringList list;
    EXPECT_STREQ(omConvertStringListToString(&list, ","), "");
    list.AddTail("a");
    EXPECT_STREQ(omConvertStringListToString(&list, ","), "a");
    list.AddTail("");
    list.AddTail("b");

    EXPECT_STREQ(omConvertStringListToString(&list, ", "), "a, , b");
    EXPECT_STREQ(omConvertStringListToString(&list, ';'), "a;;b");
    EXPECT_STREQ(omConvertStringListToString(&list, ""), "ab");
    EXPECT_STREQ(omConvertStringListToString(nullptr, ","), "");
    EXPECT_STREQ(omConvertStringListToString(nullptr, ','), "");
}

struct Row {
    char const* text;
    char const* separators;
    int whole;
    int keepEmpty;
    Parts trimmed;
    Parts untrimmed;
};

TEST(StringListConversions, cutAtASetOrAtAWholeDelimiter)
{
    Row const rows[] = {
        // A set of characters.
        {" a ; b,, c ", ",;", 0, 0, {"a", "b", "c"}, {" a ", " b", " c "}},
        {" a ; b,, c ", ",;", 0, 1, {"a", "b", "", "c"}, {" a ", " b", "", " c "}},
        // The whole text as one delimiter.
        {"a,;b,c;d,;", ",;", 1, 0, {"a", "b,c;d"}, {"a", "b,c;d"}},
        {"a,;b,c;d,;", ",;", 1, 1, {"a", "b,c;d", ""}, {"a", "b,c;d", ""}},
        // A single character: the same either way.
        {"a, b,", ",", 0, 0, {"a", "b"}, {"a", " b"}},
        {"a, b,", ",", 0, 1, {"a", "b", ""}, {"a", " b", ""}},
        {"a, b,", ",", 1, 1, {"a", "b", ""}, {"a", " b", ""}},
        // A part of blanks is empty only once it is trimmed.
        {"a, ,b", ",", 0, 0, {"a", "b"}, {"a", " ", "b"}},
        {"a, ,b", ",", 0, 1, {"a", "", "b"}, {"a", " ", "b"}},
        // Nothing to cut, and nothing to cut at.
        {"", ",", 0, 0, {}, {}},
        {"", ",", 0, 1, {""}, {""}},
        {" abc ", ",;", 0, 0, {"abc"}, {" abc "}},
        {"abc", "", 0, 0, {"abc"}, {"abc"}},
        {"abc", "", 1, 1, {"abc"}, {"abc"}},
        {",", ",", 0, 1, {"", ""}, {"", ""}},
        // Delimiters that overlap are met from the left.
        {"a;;;b", ";;", 1, 1, {"a", ";b"}, {"a", ";b"}},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(testing::Message() << '"' << row.text << "\" at \"" << row.separators << "\" whole "
                                        << row.whole << " keeping empty ones " << row.keepEmpty);
        EXPECT_EQ(taken(omConvertStringToStringList(row.text, row.separators, row.whole, row.keepEmpty)),
                  row.trimmed);
        EXPECT_EQ(
            taken(omConvertStringToStringListWithoutTrim(row.text, row.separators, row.whole, row.keepEmpty)),
            row.untrimmed);
    }
}

TEST(StringListConversions, trimEachOfTheSixBlanks)
{
    for (char const* blank : {" ", "\t", "\n", "\v", "\f", "\r"}) {
        SCOPED_TRACE(testing::Message() << "blank " << int(*blank));
        std::string const text = blank + std::string("a") + blank + "," + blank + "b" + blank + ",";
        std::string const untouched = blank + std::string("a") + blank;
        CString const xml = CString("<t>") + untouched.c_str() + "</t><t>" + blank + "</t>";

        EXPECT_EQ(taken(omConvertStringToStringList(text.c_str(), ",", 0, 0)), (Parts{"a", "b"}));
        EXPECT_EQ(taken(omConvertStringToStringList(text.c_str(), ",;", 0, 0)), (Parts{"a", "b"}));
        EXPECT_EQ(taken(omConvertStringToStringListWithoutTrim(text.c_str(), ",", 0, 0))[0], untouched);
        EXPECT_EQ(split2(text.c_str(), ',', 0, 0), (Parts{"a", "b"}));
        EXPECT_EQ(split2(text.c_str(), ',', 0, 1)[0], untouched);
        EXPECT_EQ(taken(omConvertTemplateParamsStringToStringList(text.c_str())), (Parts{"a", "b"}));
        EXPECT_EQ(taken(omConvertXmlMultiStringToStringList(xml, "t", 1)), (Parts{"a"}));
    }
}

TEST(StringListConversions, appendTheirPartsToAList)
{
    EXPECT_EQ(split2(" a ,, b", ',', 0, 0), (Parts{"a", "b"}));
    EXPECT_EQ(split2(" a ,, b", ',', 1, 0), (Parts{"a", "", "b"}));
    EXPECT_EQ(split2(" a ,, b", ',', 0, 1), (Parts{" a ", " b"}));
    EXPECT_EQ(split2(" a ,, b", ',', 1, 1), (Parts{" a ", "", " b"}));
    EXPECT_EQ(split2("", ',', 1, 0), (Parts{""}));
    EXPECT_EQ(split2("", ',', 0, 0), (Parts{}));

    CStringList list;
    list.AddTail("old");
    omConvertStringToStringList2(&list, "a,b", ',', 0, 0);
    EXPECT_EQ(partsOf(list), (Parts{"old", "a", "b"}));

    omConvertStringToStringList2(nullptr, "a,b", ',', 0, 0);
}

TEST(StringListConversions, joinAgainToTheTextThatWasCut)
{
    for (char const* text : {"", ",", "a,b", ",a,,b,", " a , b "}) {
        std::unique_ptr<CStringList> const list(omConvertStringToStringListWithoutTrim(text, ",", 1, 1));

        EXPECT_STREQ(omConvertStringListToString(list.get(), ','), text);
    }
}

TEST(StringListConversions, cutTemplateParametersOutsideAngleBrackets)
{
    struct {
        char const* text;
        Parts parts;
    } const rows[] = {
        {"A<B,C>, D", {"A<B,C>", " D"}},
        {" A , B ", {"A", " B "}},
        {"A,,B", {"A", "", "B"}},
        {"A,", {"A"}},
        {",", {""}},
        {"", {}},
        {"A, ", {"A", " "}},
        {"A<B<C,D>,E>,F<G>", {"A<B<C,D>,E>", "F<G>"}},
        {"A>,B,C", {"A>,B,C"}},  // below 0 is not 0
        {"A<,B", {"A<,B"}},
    };
    for (auto const& row : rows)
        EXPECT_EQ(taken(omConvertTemplateParamsStringToStringList(row.text)), row.parts) << row.text;
}

TEST(StringListConversions, takeTheTextsOfXmlElements)
{
    struct {
        char const* xml;
        char onlyInside;
        Parts parts;
    } const rows[] = {
        {"<t>a</t><t> b </t>", 0, {"a", "b"}},
        {"<t>a</t><t> b </t>", 1, {"a", "b"}},
        {"<t></t><t> </t><t>c</t>", 0, {"c"}},
        // Text outside counts too, and ends the scan behind its element.
        {"x <t>a</t><t>b</t>", 0, {"x", "a"}},
        {"x <t>a</t><t>b</t>", 1, {"a", "b"}},
        {"<t>a</t> y <t>b</t><t>c</t>", 0, {"a", "y", "b"}},
        {" <t>a</t> <t>b</t>", 0, {"a", "b"}},  // blanks are no text
        {"x<t>a</t>y", 0, {"x", "a"}},          // behind the last element nothing is taken
        {"<t>a", 0, {}},
        {"x<t>a", 0, {"x"}},
        {"x", 0, {}},
        {"", 0, {}},
        {"</t><t>a</t>", 1, {"a"}},
        {"<T>a</T>", 1, {}},
    };
    for (auto const& row : rows)
        EXPECT_EQ(taken(omConvertXmlMultiStringToStringList(row.xml, "t", row.onlyInside)), row.parts)
            << row.xml << " only inside " << int(row.onlyInside);
}

TEST(StringListConversions, takeAMillionFields)
{
    CString text;
    for (int i = 0; i < 1000000; ++i)
        text += "ab,";

    std::unique_ptr<CStringList> const list(omConvertStringToStringList(text, ",", 0, 1));

    EXPECT_EQ(list->GetCount(), 1000001);
    EXPECT_EQ(omConvertStringListToString(list.get(), ','), text);
}

}  // namespace
