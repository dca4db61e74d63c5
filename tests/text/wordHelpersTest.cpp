// CStringCounter, StringFormatter, OMGrammar and SpellChecker.
#include "text/CStringCounter.h"
#include "text/OMGrammar.h"
#include "text/SpellChecker.h"
#include "text/StringFormatter.h"

#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

TEST(CStringCounter, countsInItsFourthByte)
{
    CStringCounter counter;

    EXPECT_STREQ(counter.getNext(), "\1\1\1\2");
    EXPECT_STREQ(counter.getNext(), "\1\1\1\3");
}

TEST(CStringCounter, gives254DifferentTextsAndThenAShorterOne)
{
    CStringCounter counter;
    std::set<std::string> texts;

    for (int i = 0; i < 254; ++i) {
        std::string const text = counter.getNext();
        EXPECT_EQ(text.size(), 4u);
        texts.insert(text);
    }

    EXPECT_EQ(texts.size(), 254u);
    EXPECT_STREQ(counter.getNext(), "\1\1\1");
    EXPECT_STREQ(counter.getNext(), "\1\1\1\1");
}

TEST(CStringCounter, beginsAnewAfterReset)
{
    CStringCounter counter;
    counter.getNext();

    counter.reset();

    EXPECT_STREQ(counter.getNext(), "\1\1\1\2");
}

struct Modified {
    char const* text;
    char const* expected;
};

TEST(StringFormatter, appliesTheModifierBehindAPath)
{
    zk::os::ScopedNativeSeparator const slash('/');
    Modified const rows[] = {
        {"dir/file.txt:r ", "dir/file"},
        {"dir/file:r ", "dir/file"},
        {"d.x/file:r ", "d"},
        {"dir/file.txt:t ", "file.txt"},
        {"file.txt:t ", "file.txt"},
        {"dir/:t ", ""},
        {"dir/file.txt:e ", "txt"},
        {"file:e ", "file"},
        {"dir/file.txt:c ", "dir/File.txt"},
        {"file:c ", "File"},
        {"dir/:c ", "dir/"},
        {"dir/file.txt:h ", "dir"},
        {"a/b/c:h ", "a/b"},
        {"file:h ", ""},
        {"abc:2", "ab"},
        {"abc:2 ", "ab"},
        {"abc:9", "abc"},
        {"abcdef:4294967298", "abcdef"},  // the nearest int is more than there is
        {"abc:0", "abc"},
        {"abc:-1", "abc"},
        {"abc:r", "abc"},  // without its blank it is no modifier
        {"abc:r  ", "abc"},
        {"abc:R ", "abc"},
        {"abc:", "abc"},
        {"abc:x:y", "abc"},
        {"abc", "abc"},
        {":r ", ":r "},
        {"", ""},
    };
    StringFormatter format;
    for (Modified const& row : rows) {
        CString text(row.text);

        format(text);

        EXPECT_STREQ(text, row.expected) << row.text;
    }
}

TEST(StringFormatter, goesByTheNativeSeparator)
{
    zk::os::ScopedNativeSeparator const backslash('\\');
    StringFormatter format;
    CString tail("dir\\a/b:t ");
    CString head("dir\\a/b:h ");

    format(tail);
    format(head);

    EXPECT_STREQ(tail, "a/b");
    EXPECT_STREQ(head, "dir");
}

TEST(OMGrammar, knowsTheVowelsInBothCases)
{
    std::string vowels;
    for (int code = 0; code < 256; ++code) {
        if (OMGrammar::isVowel(char(code)))
            vowels += char(code);
    }

    EXPECT_EQ(vowels, "AEIOUaeiou");
}

TEST(OMGrammar, capitalizesTheFirstCharacter)
{
    EXPECT_STREQ(OMGrammar::capitalize("item"), "Item");
    EXPECT_STREQ(OMGrammar::capitalize("Item"), "Item");
    EXPECT_STREQ(OMGrammar::capitalize("1tem"), "1tem");
    EXPECT_STREQ(OMGrammar::capitalize(""), "");
}

TEST(OMGrammar, makesPluralsInTheCaseOfTheLastLetter)
{
    Modified const rows[] = {
        {"class", "classes"}, {"boy", "boys"},    {"city", "cities"},   {"y", "ys"},        {"CAT", "CATS"},
        {"BUS", "BUSES"},     {"CITY", "CITIES"}, {"BOY", "BOYS"},      {"Y", "YS"},        {"item", "items"},
        {"x1", "x1s"},        {"1y", "1ies"},     {"itemS", "itemSES"}, {"cITy", "cITies"}, {"", ""},
    };
    for (Modified const& row : rows)
        EXPECT_STREQ(OMGrammar::makePlural(row.text), row.expected) << row.text;
}

TEST(OMGrammar, takesBytesAboveAsciiForWhatThePageSays)
{
    for (unsigned code = 128; code < 256; ++code) {
        CString const byte(char(code), 1);

        EXPECT_STREQ(OMGrammar::capitalize(byte),
                     _ismbcupper(code) ? byte : CString(char(_mbctoupper(code)), 1))
            << code;
        EXPECT_STREQ(OMGrammar::makePlural(byte), byte + (_ismbcupper(code) ? "S" : "s")) << code;
    }
}

class OwnSpellChecker : public SpellChecker {
public:
    OwnSpellChecker() { m_spellChecker = this; }
    ~OwnSpellChecker() override { m_spellChecker = nullptr; }
};

TEST(SpellChecker, isTheOneThatAHostPutInPlace)
{
    EXPECT_EQ(SpellChecker::GetSpellChecker(), nullptr);
    {
        OwnSpellChecker own;
        EXPECT_EQ(SpellChecker::GetSpellChecker(), &own);

        SpellChecker const plain;
        EXPECT_EQ(SpellChecker::GetSpellChecker(), nullptr);
    }
    EXPECT_EQ(SpellChecker::GetSpellChecker(), nullptr);
}

}  // namespace
