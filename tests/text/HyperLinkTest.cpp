#include "text/HyperLink.h"

#include <gtest/gtest.h>

#include <climits>

#include <string>

namespace {

HyperLink urlOver0To3()
{
    return HyperLink("abc", HyperLink::urlLink, "x", {0, 3});
}

// "keyword|target|type|from|to" of each link.
std::string told(CList<HyperLink> const& links)
{
    std::string all;
    for (HyperLink const& link : links) {
        CString const target = link.GetLink();
        CString line;
        line.Format("%s|%s|%d|%d|%d;", link.GetKeyWord().GetString(), target.GetString(),
                    int(link.GetLinkType()), int(link.GetRange().cpMin), int(link.GetRange().cpMax));
        all += line.GetString();
    }
    return all;
}

TEST(HyperLink, isAnEmptyUrlAtFirst)
{
    HyperLink const link;

    EXPECT_STREQ(link.GetKeyWord(), "");
    EXPECT_EQ(link.GetLinkType(), HyperLink::urlLink);
    EXPECT_EQ(CString(link.GetLink()), CString());
    EXPECT_EQ(link.GetRange().cpMin, 0);
    EXPECT_EQ(link.GetRange().cpMax, 0);
}

TEST(HyperLink, keepsWhatItIsGiven)
{
    HyperLink link;
    link.SetKeyWord("k");
    link.SetLinkType(HyperLink::fileLink);
    link.SetRange({2, 5});
    link.SetLink("first");
    EXPECT_STREQ(CString(link.GetLink()), "first");
    link.SetLink(LinkData("second"));

    HyperLink const copy(link);
    HyperLink assigned;
    assigned = link;

    for (HyperLink const* each : std::initializer_list<HyperLink const*>{&copy, &assigned}) {
        EXPECT_STREQ(each->GetKeyWord(), "k");
        EXPECT_EQ(each->GetLinkType(), 1);
        EXPECT_EQ(each->GetRange().cpMin, 2);
        EXPECT_EQ(each->GetRange().cpMax, 5);
        EXPECT_EQ(CString(each->GetLink()), CString("second"));
    }
}

TEST(RichText, isThePlainTextWithoutLinks)
{
    CList<HyperLink> const none;

    EXPECT_STREQ(getRichTextFromPlainText("abc", none), "abc");
    EXPECT_STREQ(getPlainTextFromRichText("abc"), "abc");
}

TEST(RichText, holdsTheLinksBehindTheMarker)
{
    CList<HyperLink> links;
    links.AddTail(urlOver0To3());
    EXPECT_STREQ(getRichTextFromPlainText("abc", links), "abc$OMHYPERLINKINFO$abc::x::URL::0::3::");

    links.AddTail(HyperLink("b", HyperLink::fileLink, "c:\\f", {-1, 2147483647}));
    EXPECT_STREQ(getRichTextFromPlainText("", links),
                 "$OMHYPERLINKINFO$abc::x::URL::0::3::b::c:\\f::File::-1::2147483647::");
}

TEST(RichText, givesItsPlainTextAndItsLinksBack)
{
    CList<HyperLink> links;
    links.AddTail(HyperLink("old", HyperLink::urlLink, "old", {1, 2}));

    CString const plain = getPlainTextAndLinksFromRichText(
        "abc$OMHYPERLINKINFO$abc::x::URL::0::3::b::c:\\f::File::-1::7::", links);

    EXPECT_STREQ(plain, "abc");
    EXPECT_EQ(told(links), "abc|x|0|0|3;b|c:\\f|1|-1|7;");
    EXPECT_STREQ(getPlainTextFromRichText("abc$OMHYPERLINKINFO$abc::x::URL::0::3::"), "abc");
}

TEST(RichText, emptiesTheListForATextWithoutAMarkerOrLinks)
{
    for (char const* rich : {"abc", "abc$OMHYPERLINKINFO$"}) {
        CList<HyperLink> links;
        links.AddTail(urlOver0To3());

        EXPECT_STREQ(getPlainTextAndLinksFromRichText(rich, links), "abc");

        EXPECT_TRUE(links.IsEmpty());
    }
}

TEST(RichText, takesTheFirstMarker)
{
    CList<HyperLink> links;

    EXPECT_STREQ(
        getPlainTextAndLinksFromRichText("a$OMHYPERLINKINFO$$OMHYPERLINKINFO$::x::File::1::2::", links), "a");

    EXPECT_EQ(told(links), "$OMHYPERLINKINFO$|x|1|1|2;");
}

TEST(RichText, takesAnyTypeButFileForAUrlAndNoNumberForZero)
{
    CList<HyperLink> links;

    getPlainTextAndLinksFromRichText("$OMHYPERLINKINFO$a::b::file::x::12y::", links);

    EXPECT_EQ(told(links), "a|b|0|0|12;");
}

TEST(RichText, usesUpNoiseOneCharacterAFieldFiveALink)
{
    struct Row {
        char const* noise;
        std::string links;
    };
    Row const rows[] = {
        {"x", "||0|0|0;"},
        {"xxxxx", "||0|0|0;"},
        {"xxxxxx", "||0|0|0;||0|0|0;"},
        {":", "||0|0|0;"},
        {"::", "||0|0|0;"},
        {"a::b::File",
         "a|b|0|0|0;||0|0|0;"},  // "File" has no end: three fields use up three of its characters
        {"a::b::File::3", "a|b|1|0|0;"},
    };
    for (Row const& row : rows) {
        CList<HyperLink> links;

        EXPECT_STREQ(getPlainTextAndLinksFromRichText(CString("$OMHYPERLINKINFO$") + row.noise, links), "");

        EXPECT_EQ(told(links), row.links) << row.noise;
    }
}

TEST(RichText, comesToTheEndOfAMegabyteOfNoise)
{
    CList<HyperLink> links;

    getPlainTextAndLinksFromRichText("$OMHYPERLINKINFO$" + CString('x', 1000000), links);

    EXPECT_EQ(links.GetCount(), 200000);
}

TEST(RichText, mayBeTheKeywordOfALinkThatGoes)
{
    CList<HyperLink> links;
    links.AddTail(HyperLink("a$OMHYPERLINKINFO$k::t::URL::0::1::", HyperLink::urlLink, "", {0, 0}));

    CString const plain = getPlainTextAndLinksFromRichText(links.GetHead().GetKeyWord(), links);

    EXPECT_STREQ(plain, "a");
    EXPECT_EQ(told(links), "k|t|0|0|1;");
}

TEST(RichText, takesTheNearestIntForANumberThatFitsNone)
{
    CList<HyperLink> links;

    getPlainTextAndLinksFromRichText("$OMHYPERLINKINFO$k::t::URL::4294967299::-99999999999999999999::",
                                     links);

    ASSERT_EQ(links.GetCount(), 1);
    EXPECT_EQ(links.GetHead().GetRange().cpMin, INT_MAX);
    EXPECT_EQ(links.GetHead().GetRange().cpMax, INT_MIN);
}

}  // namespace
