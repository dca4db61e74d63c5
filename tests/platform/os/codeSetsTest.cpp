#include "platform/os/codeSets.h"

#include <gtest/gtest.h>

#include <string>

using zk::os::CodeSet;

namespace {

std::string encoded(char const* name, std::u32string_view characters, std::size_t taken)
{
    auto const codeSet = CodeSet::open(name);
    if (!codeSet)
        return "(none)";
    std::string bytes;
    EXPECT_EQ(codeSet->encode(characters, bytes), taken);
    codeSet->finish(bytes);
    return bytes;
}

std::string encoded(char const* name, std::u32string_view characters)
{
    return encoded(name, characters, characters.size());
}

struct Decoded {
    std::u32string characters;
    std::size_t taken;
    CodeSet::Stop stop;
};

Decoded decoded(char const* name, std::string_view bytes)
{
    auto const codeSet = CodeSet::open(name);
    if (!codeSet)
        return {U"(none)", 0, CodeSet::Stop::end};
    Decoded result;
    auto const [taken, stop] = codeSet->decode(bytes, result.characters);
    result.taken = taken;
    result.stop = stop;
    return result;
}

}  // namespace

TEST(CodeSets, areKnownByTheNumberOfACodePage)
{
    EXPECT_EQ(encoded("1252", U"\u20AC"), "\x80");
    EXPECT_EQ(encoded("cp1252", U"\u20AC"), "\x80");
    EXPECT_EQ(encoded("Windows-1252", U"\u20AC"), "\x80");
    EXPECT_EQ(encoded("850", U"\u00E9"), "\x82");
}

TEST(CodeSets, areKnownByTheirUsualNames)
{
    EXPECT_EQ(encoded("ISO-8859-1", U"\u00E9"), "\xE9");
    EXPECT_EQ(encoded("ISO8859-15", U"\u20AC"), "\xA4");
    EXPECT_EQ(encoded("iso_8859_2", U"\u0141"), "\xA3");
    EXPECT_EQ(encoded("SHIFT_JIS", U"\u3042"), "\x82\xA0");
    EXPECT_EQ(encoded("EUC-JP", U"\u3042"), "\xA4\xA2");
    EXPECT_EQ(encoded("EUC-KR", U"\uAC00"), "\xB0\xA1");
    EXPECT_EQ(encoded("KOI8-R", U"\u0416"), "\xF6");
    EXPECT_EQ(encoded("Big5", U"\u6F22"), "\xBA\x7E");
    EXPECT_EQ(encoded("US-ASCII", U"a"), "a");
}

TEST(CodeSets, ofOtherNamesAreNone)
{
    for (char const* name :
         {"", "0", "99999", "CP", "ISO-8859-12", "no such code set", "ASCII//TRANSLIT", "1252/"})
        EXPECT_EQ(CodeSet::open(name), nullptr) << name;
}

TEST(CodeSets, whoseTextsHoldNulsAreNone)
{
    for (char const* name : {"UTF-16", "UTF-16LE", "UTF-32", "1200"})
        EXPECT_EQ(CodeSet::open(name), nullptr) << name;
}

TEST(CodeSets, doNotIncludeUtf8)
{
    for (char const* name : {"UTF-8", "utf8", "65001", "CP65001"})
        EXPECT_EQ(CodeSet::open(name), nullptr) << name;
}

TEST(CodeSets, stopEncodingAtTheFirstCharacterTheyLack)
{
    EXPECT_EQ(encoded("1252", U"a\u00E9\u3042b", 2), "a\xE9");
    EXPECT_EQ(encoded("US-ASCII", U"\u00E9", 0), "");
    EXPECT_EQ(encoded("932", U"\u3042\u20AC", 1), "\x82\xA0");
}

TEST(CodeSets, chooseNoCharacterThatMerelyLooksAlike)
{
    EXPECT_EQ(encoded("1252", U"\u0101", 0), "");  // a with macron
    EXPECT_EQ(encoded("850", U"\u201C", 0), "");   // a curly quotation mark
}

TEST(CodeSets, decodeUpToWhatIsNoCharacter)
{
    Decoded const whole = decoded("932", "a\x82\xA0z");
    EXPECT_EQ(whole.characters, U"a\u3042z");
    EXPECT_EQ(whole.stop, CodeSet::Stop::end);
    EXPECT_EQ(whole.taken, 4u);

    Decoded const invalid = decoded("932", "a\x82\x20z");
    EXPECT_EQ(invalid.characters, U"a");
    EXPECT_EQ(invalid.stop, CodeSet::Stop::invalid);
    EXPECT_EQ(invalid.taken, 1u);

    Decoded const incomplete = decoded("932", "a\x82");
    EXPECT_EQ(incomplete.characters, U"a");
    EXPECT_EQ(incomplete.stop, CodeSet::Stop::incomplete);
    EXPECT_EQ(incomplete.taken, 1u);
}

TEST(CodeSets, takeLongTextsWhole)
{
    std::u32string const characters(5000, U'\u3042');
    std::string bytes;
    for (std::size_t i = 0; i < characters.size(); ++i)
        bytes += "\x82\xA0";

    EXPECT_EQ(encoded("932", characters), bytes);
    EXPECT_EQ(decoded("932", bytes).characters, characters);
}

TEST(CodeSets, withAStateEndInTheInitialOne)
{
    auto const codeSet = CodeSet::open("UTF-7");
    ASSERT_NE(codeSet, nullptr);
    std::string bytes;

    EXPECT_EQ(codeSet->encode(U"a\u3042", bytes), 2u);
    codeSet->finish(bytes);

    EXPECT_EQ(bytes, "a+MEI-");
    std::u32string characters;
    codeSet->reset();
    EXPECT_EQ(codeSet->decode(bytes, characters).taken, bytes.size());
    EXPECT_EQ(characters, U"a\u3042");
    EXPECT_FALSE(codeSet->hasAscii());
}

TEST(CodeSets, tellTheirKind)
{
    auto const single = CodeSet::open("1252");
    EXPECT_TRUE(single->hasAscii());
    EXPECT_FALSE(single->isStateful());
    EXPECT_EQ(single->longestCharacter(), 1u);

    auto const pairs = CodeSet::open("932");
    EXPECT_TRUE(pairs->hasAscii());
    EXPECT_EQ(pairs->longestCharacter(), 2u);

    EXPECT_FALSE(CodeSet::open("37")->hasAscii());
}

TEST(CodeSets, haveUsualNamesForCodePages)
{
    EXPECT_EQ(zk::os::codePageOf("cp-850"), 850u);
    EXPECT_EQ(zk::os::codePageOf("sjis"), 932u);
    EXPECT_EQ(zk::os::codePageOf("iso-8859-13"), 28603u);
    EXPECT_EQ(zk::os::codePageOf("iso-8859-10"), 0u);
    EXPECT_EQ(zk::os::codePageOf("EBCDIC"), 0u);
    EXPECT_EQ(zk::os::codePageOf("123456"), 0u);
    EXPECT_EQ(zk::os::codePageOf("a name that is much longer than all that are known"), 0u);
}
