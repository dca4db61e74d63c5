#include "platform/os/codeSets.h"

#include <gtest/gtest.h>

#include <string>

using zk::os::CodeSet;

TEST(IconvCodeSets, areKnownByAnyNameOfTheCLibrary)
{
    for (char const* name : {"TIS-620", "ISO-8859-10", "ARMSCII-8", "EUC-TW", "VISCII"})
        EXPECT_NE(CodeSet::open(name), nullptr) << name;
}

TEST(IconvCodeSets, shiftInAndOut)
{
    auto const codeSet = CodeSet::open("ISO-2022-JP");
    ASSERT_NE(codeSet, nullptr);
    EXPECT_TRUE(codeSet->isStateful());
    EXPECT_FALSE(codeSet->hasAscii());
    std::string bytes;

    EXPECT_EQ(codeSet->encode(U"a\u3042", bytes), 2u);
    EXPECT_EQ(bytes, "a\x1B$B$\"");
    codeSet->finish(bytes);

    EXPECT_EQ(bytes, "a\x1B$B$\"\x1B(B");
}

TEST(IconvCodeSets, writeThreeBytesAndFour)
{
    auto const euc = CodeSet::open("EUC-JP");
    std::string bytes;
    EXPECT_EQ(euc->encode(U"\u4E02", bytes), 1u);
    EXPECT_EQ(bytes, "\x8F\xB0\xA1");

    auto const gb = CodeSet::open("GB18030");
    bytes.clear();
    EXPECT_EQ(gb->encode(U"\U0001F600", bytes), 1u);
    EXPECT_EQ(bytes, "\x94\x39\xFC\x36");
    EXPECT_EQ(gb->longestCharacter(), 4u);
}

// Such a decoder waits whether an accent follows.
TEST(IconvCodeSets, giveOutTheCharacterThatTheyHeldBack)
{
    auto const codeSet = CodeSet::open("CP1258");
    ASSERT_NE(codeSet, nullptr);
    std::u32string characters;

    EXPECT_EQ(codeSet->decode("za", characters).taken, 2u);

    EXPECT_EQ(characters, U"za");
}
