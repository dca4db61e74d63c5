#include "text/escapes.h"

#include "tests/text/stepwiseEscapes.h"

#include <gtest/gtest.h>

#include <string>

using namespace zk::test;

namespace {

CString encodedUrl(CString text)
{
    omEncodeUrl(text);
    return text;
}

CString decodedUrl(CString text)
{
    omDecodeUrl(text);
    return text;
}

TEST(Escapes, writeXmlTextWithEntities)
{
    EXPECT_STREQ(omString2XMLEncodedValue("a&b\"c'd<e>f"), "a&amp;b&quot;c&apos;d&lt;e&gt;f");
    EXPECT_STREQ(omString2XMLEncodedValue("&lt;"), "&amp;lt;");
    EXPECT_STREQ(omString2XMLEncodedValue("\xC3\xA4\n"), "\xC3\xA4\n");
    EXPECT_STREQ(omString2XMLEncodedValue(""), "");
    EXPECT_STREQ(omString2XMLEncodedValue(nullptr), "");
}

TEST(Escapes, readXmlEntitiesOnce)
{
    EXPECT_STREQ(omXMLEncodedValue2String("a&amp;b&quot;c&apos;d&lt;e&gt;f"), "a&b\"c'd<e>f");
    EXPECT_STREQ(omXMLEncodedValue2String("&amp;lt;"), "&lt;");
    EXPECT_STREQ(omXMLEncodedValue2String("&AMP;&#65;&lt&;&&amp;"), "&AMP;&#65;&lt&;&&");
    EXPECT_STREQ(omXMLEncodedValue2String("&"), "&");
    EXPECT_STREQ(omXMLEncodedValue2String(nullptr), "");
}

TEST(Escapes, writeUrlsWithPercentForms)
{
    EXPECT_STREQ(encodedUrl("a b%"), "a%20b%25");
    EXPECT_STREQ(encodedUrl("%:/+?=&\"# "), "%25%3A%2F%2B%3F%3D%26%22%23%20");
    EXPECT_STREQ(encodedUrl("a<b>;,'\xE4\t"), "a<b>;,'\xE4\t");
    EXPECT_STREQ(encodedUrl(""), "");
}

TEST(Escapes, readPercentFormsOnceAndInUpperCaseAlone)
{
    EXPECT_STREQ(decodedUrl("a%20b%25"), "a b%");
    EXPECT_STREQ(decodedUrl("%25%3A%2F%2B%3F%3D%26%22%23%20"), "%:/+?=&\"# ");
    EXPECT_STREQ(decodedUrl("%2525"), "%25");
    EXPECT_STREQ(decodedUrl("%253A"), "%3A");
    EXPECT_STREQ(decodedUrl("%3a%2f%41%2"), "%3a%2f%41%2");
    EXPECT_STREQ(decodedUrl("%%3A%"), "%:%");
}

TEST(Escapes, keepNulsInAUrl)
{
    CString const text("a \0b", 4);

    EXPECT_EQ(encodedUrl(text), CString("a%20\0b", 6));
    EXPECT_EQ(decodedUrl(encodedUrl(text)), text);
}

TEST(Escapes, agreeWithReplacingOneFormAfterTheOther)
{
    char const* const pieces[] = {"&", "amp;", "&lt;", "&gt", ";",   "<",     ">",    "'", "\"",
                                  "%", "%2",   "25",   "3A",  "%3A", "%20",   " ",    ":", "/",
                                  "+", "?",    "=",    "#",   "x",   "quot;", "apos;"};
    unsigned state = 7;
    for (int round = 0; round < 20000; ++round) {
        CString text;
        for (int i = 0; i < 12; ++i) {
            state = state * 1664525u + 1013904223u;
            text += pieces[(state >> 16) % std::size(pieces)];
        }

        ASSERT_EQ(omString2XMLEncodedValue(text), stepwiseXmlEncoded(text)) << text;
        ASSERT_EQ(omXMLEncodedValue2String(text), stepwiseXmlDecoded(text)) << text;
        ASSERT_EQ(encodedUrl(text), stepwiseUrlEncoded(text)) << text;
        ASSERT_EQ(decodedUrl(text), stepwiseUrlDecoded(text)) << text;
        ASSERT_EQ(omXMLEncodedValue2String(omString2XMLEncodedValue(text)), text);
        ASSERT_EQ(decodedUrl(encodedUrl(text)), text);
    }
}

}  // namespace
