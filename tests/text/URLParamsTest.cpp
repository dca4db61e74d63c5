#include "text/URLParams.h"

#include <gtest/gtest.h>

namespace {

TEST(URLParams, areEmptyAtFirst)
{
    URLParams const params;

    EXPECT_TRUE(params.IsEmpty());
    EXPECT_STREQ(params.getParams(), "");
}

TEST(URLParams, appendPairsAndEscapeTheirValuesOnly)
{
    URLParams params;

    params.addParam("a b", "c d");
    params.addParam("x", "");
    params.addParam("a b", "2");

    EXPECT_STREQ(params.getParams(), "a b=c%20d&x=&a b=2");
    EXPECT_FALSE(params.IsEmpty());
}

TEST(URLParams, takeAndGiveValuesAsTheyStandWithoutEncoding)
{
    URLParams params;
    params.setEncode(false);

    params.addParam("a", "c d%20");

    EXPECT_STREQ(params.getParams(), "a=c d%20");
    EXPECT_STREQ(params.getParam("a"), "c d%20");
}

TEST(URLParams, giveADecodedValueUpToTheNextPair)
{
    URLParams const params(CString("a=1%202&b=3"));
    CString value;

    EXPECT_TRUE(params.getParam("a", value));
    EXPECT_STREQ(value, "1 2");
    EXPECT_TRUE(params.getParam("b", value));
    EXPECT_STREQ(value, "3");
}

TEST(URLParams, leaveTheValueAloneForANameThatIsAbsentOrEmpty)
{
    URLParams const params(CString("a=&b=1"));
    CString value("old");

    EXPECT_FALSE(params.getParam("a", value));
    EXPECT_FALSE(params.getParam("z", value));
    EXPECT_STREQ(value, "old");
    EXPECT_STREQ(params.getParam("z"), "");
    EXPECT_STREQ(params.getParam("a"), "");
}

TEST(URLParams, findANameAlsoAtTheEndOfALongerOne)
{
    URLParams const params(CString("maxx=1&x=2"));

    EXPECT_STREQ(params.getParam("x"), "1");
}

TEST(URLParams, endAValueAtTheMarkBehindItsName)
{
    EXPECT_STREQ(URLParams(CString("a&b=1")).getParam("a&b"), "1");
}

TEST(URLParams, giveTheFirstOfTwoPairsOfAName)
{
    URLParams const params(CString("a=1&a=2"));

    EXPECT_STREQ(params.getParam("a"), "1");
}

TEST(URLParams, readTruthInAnyCaseAndAsADigit)
{
    URLParams const params(CString("t=TRUE&f=False&one=1&zero=0&other=maybe&two=01&empty="));

    EXPECT_TRUE(params.getParamAsBool("t", false));
    EXPECT_FALSE(params.getParamAsBool("f", true));
    EXPECT_TRUE(params.getParamAsBool("one", false));
    EXPECT_FALSE(params.getParamAsBool("zero", true));
    for (bool const byDefault : {true, false}) {
        EXPECT_EQ(params.getParamAsBool("other", byDefault), byDefault);
        EXPECT_EQ(params.getParamAsBool("two", byDefault), byDefault);
        EXPECT_EQ(params.getParamAsBool("empty", byDefault), byDefault);
        EXPECT_EQ(params.getParamAsBool("absent", byDefault), byDefault);
    }
}

TEST(URLParams, addThePairsOfAMapToWhatTheyHold)
{
    CMapStringToString map;
    map.SetAt("a", "1 2");
    URLParams fromMap(map);
    URLParams added(CString("b=2"));

    added.setParams(map);

    EXPECT_STREQ(fromMap.getParams(), "a=1%202");
    EXPECT_STREQ(added.getParams(), "b=2&a=1%202");
}

TEST(URLParams, replaceTheWholeString)
{
    URLParams params(CString("a=1"));

    params.setParams("b=%");

    EXPECT_STREQ(params.getParams(), "b=%");
}

TEST(URLParams, copyBothTheStringAndTheEncoding)
{
    URLParams plain;
    plain.setEncode(false);
    plain.addParam("a", "%20");

    URLParams const copy(plain);
    URLParams assigned;
    assigned = plain;

    EXPECT_STREQ(copy.getParam("a"), "%20");
    EXPECT_STREQ(assigned.getParam("a"), "%20");
}

struct UriRow {
    char const* uri;
    bool fragment;
    bool result;
    char const* params;  // "old" where they stay
};

TEST(URLParams, areTakenFromAUri)
{
    UriRow const rows[] = {
        {"", false, false, "old"},          {"", true, false, "old"},
        {"model", false, true, "old"},      {"model#f", true, true, "old"},
        {"m?a=1", false, true, "a=1"},      {"m?a=1", true, true, "a=1"},
        {"m?a=1#f", false, true, "a=1#f"},  {"m?a=1#f", true, true, "a=1"},
        {"m?a=1#f#g", true, true, "a=1#f"}, {"m?a?b=1", false, true, "a?b=1"},
        {"m#f?a=1", false, false, "old"},   {"m#f?a=1", true, false, "old"},
        {"m#f?a#g", true, false, "old"},    {"?", false, true, ""},
        {"m?#f", true, true, ""},           {"?a", true, true, "a"},
    };
    for (UriRow const& row : rows) {
        URLParams params(CString("old"));

        EXPECT_EQ(omGetParamsFromUri(row.uri, params, row.fragment), row.result) << row.uri;

        EXPECT_STREQ(params.getParams(), row.params) << row.uri << " with fragment " << row.fragment;
    }
}

}  // namespace
