#include "logging/CCgCodeset.h"

#include "logging/CCgLogManager.h"
#include "logging/CCgPrintf.h"
#include "platform/os/os.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace {

using zk::test::ScopedEnvironment;

struct Close {
    void operator()(CCgCodeset* codeset) const { ccg_closeCodeset(codeset); }
};
using Codeset = std::unique_ptr<CCgCodeset, Close>;

Codeset open(char const* name)
{
    return Codeset(ccg_openCodeset(name));
}

// The result of a conversion into room for `size` units, and what it leaves behind them.
template <class Unit, class Call>
std::basic_string<Unit> into(std::size_t size, Call call)
{
    std::basic_string<Unit> room(size + 1, Unit('\x5A'));
    std::size_t const length = call(room.data(), size);
    EXPECT_LE(length, size);
    EXPECT_EQ(room[length], Unit('\x5A')) << "written behind the end";
    return room.substr(0, length);
}

std::string fromUtf8(Codeset const& codeset, std::string_view text, std::size_t size = 100)
{
    return into<char>(size, [&](char* target, std::size_t room) {
        return ccg_utf8ToCodeset(codeset.get(), text.data(), static_cast<std::ptrdiff_t>(text.size()), target,
                                 room);
    });
}

std::string toUtf8(Codeset const& codeset, std::string_view text, std::size_t size = 100)
{
    return into<char>(size, [&](char* target, std::size_t room) {
        return ccg_codesetToUtf8(codeset.get(), text.data(), static_cast<std::ptrdiff_t>(text.size()), target,
                                 room);
    });
}

std::u16string toUtf16(Codeset const& codeset, std::string_view text, std::size_t size = 100)
{
    return into<char16_t>(size, [&](char16_t* target, std::size_t room) {
        return ccg_codesetToUtf16(codeset.get(), text.data(), static_cast<std::ptrdiff_t>(text.size()),
                                  target, room);
    });
}

std::string fromUtf16(Codeset const& codeset, std::u16string_view text, std::size_t size = 100)
{
    return into<char>(size, [&](char* target, std::size_t room) {
        return ccg_utf16ToCodeset(codeset.get(), text.data(), static_cast<std::ptrdiff_t>(text.size()),
                                  target, room);
    });
}

constexpr char euro[] = "\xE2\x82\xAC";
constexpr char hiraganaA[] = "\xE3\x81\x82";

// A folder of converter and alias files, and no other one.
class CodesetFiles : public testing::Test {
protected:
    CodesetFiles() { folder_.makeFolder("codeset"); }

    std::string nameOf(char const* name)
    {
        Codeset const codeset = open(name);
        return codeset ? codeset->name : "(none)";
    }

    static std::string converterFile()
    {
        std::string content(1760, 'x');
        content.replace(8, 3, "ucv");
        return content;
    }

    TemporaryFolder folder_;
    ScopedEnvironment const qisDir_{"QISDIR", folder_.path().c_str()};
    ScopedEnvironment const noPrograms_{"BINDIR", nullptr};
};

}  // namespace

TEST(CodesetNames, areLettersAndDigitsInUpperCase)
{
    EXPECT_EQ(ccg_normalizeCodesetName("iso-8859-1"), "ISO88591");
    EXPECT_EQ(ccg_normalizeCodesetName("Utf-8"), "UTF8");
    EXPECT_EQ(ccg_normalizeCodesetName("koi8_r"), "KOI8R");
    EXPECT_EQ(ccg_normalizeCodesetName(""), "");
    EXPECT_EQ(ccg_normalizeCodesetName(nullptr), "");
}

TEST(CodesetNames, loseTheLettersOfAMakerBeforeANumber)
{
    EXPECT_EQ(ccg_normalizeCodesetName("abc-850"), "850");
    EXPECT_EQ(ccg_normalizeCodesetName("ABC1252"), "1252");
    EXPECT_EQ(ccg_normalizeCodesetName("ISO-8859"), "ISO8859");
    EXPECT_EQ(ccg_normalizeCodesetName("UTF-16"), "UTF16");
    EXPECT_EQ(ccg_normalizeCodesetName("Big5"), "BIG5");
    EXPECT_EQ(ccg_normalizeCodesetName("INTERNAL37"), "INTERNAL37");
}

TEST(CodesetNames, stayAsTheyAreWithAPathSeparator)
{
    EXPECT_EQ(ccg_normalizeCodesetName("sets/abc-850"), "sets/abc-850");
    EXPECT_EQ(ccg_normalizeCodesetName("sets\\abc-850"), "sets\\abc-850");
}

TEST(CodesetNames, ofTheSystemAreNumbersOfCodePages)
{
    std::string const console = std::to_string(GetOEMCP());
    std::string const texts = std::to_string(GetACP());

    EXPECT_EQ(ccg_normalizeCodesetName("DOS"), console);
    EXPECT_EQ(ccg_normalizeCodesetName("win"), texts);
    EXPECT_EQ(ccg_normalizeCodesetName("OS"), texts);
}

TEST(Codesets, ofUtf8AndPlainBytesAreAlwaysThere)
{
    EXPECT_EQ(open("utf-8")->kind, CCG_CODESET_UTF8);
    EXPECT_STREQ(open("UTF8")->name, "UTF8");
    EXPECT_EQ(open("INTERNAL37")->kind, CCG_CODESET_BYTES);
    EXPECT_NE(open("INTERNAL37").get(), open("INTERNAL37").get());
}

TEST(Codesets, thatAreNotKnownAreNone)
{
    for (char const* name : {"no such code set", "", "-", "0"})
        EXPECT_EQ(ccg_openCodeset(name), nullptr) << name;
    EXPECT_EQ(ccg_openCodeset(nullptr), nullptr);
    ccg_closeCodeset(nullptr);
}

TEST(Codesets, tellTheirKind)
{
    EXPECT_EQ(open("1252")->kind, CCG_CODESET_SINGLE_BYTE);
    EXPECT_EQ(open("932")->kind, CCG_CODESET_DOUBLE_BYTE);
    EXPECT_EQ(open("37")->kind, CCG_CODESET_EBCDIC);
    EXPECT_EQ(open("UTF-7")->kind, CCG_CODESET_STATEFUL);
}

TEST(Codesets, convertBothWays)
{
    Codeset const latin = open("ISO-8859-15");
    Codeset const japanese = open("932");

    EXPECT_EQ(fromUtf8(latin, "a\xC3\xA9" + std::string(euro)), "a\xE9\xA4");
    EXPECT_EQ(toUtf8(latin, "a\xE9\xA4"), "a\xC3\xA9" + std::string(euro));
    EXPECT_EQ(fromUtf8(japanese, std::string(hiraganaA) + "b"),
              "\x82\xA0"
              "b");
    EXPECT_EQ(toUtf8(japanese,
                     "\x82\xA0"
                     "b"),
              std::string(hiraganaA) + "b");
    EXPECT_EQ(toUtf16(japanese,
                      "\x82\xA0"
                      "b"),
              u"\u3042b");
    EXPECT_EQ(fromUtf16(japanese, u"\u3042b"),
              "\x82\xA0"
              "b");
}

TEST(Codesets, withoutAsciiConvertToo)
{
    Codeset const ebcdic = open("37");

    EXPECT_EQ(fromUtf8(ebcdic, "A1"), "\xC1\xF1");
    EXPECT_EQ(toUtf8(ebcdic, "\xC1\xF1"), "A1");
    EXPECT_EQ(fromUtf8(ebcdic, std::string("A") + hiraganaA), "\xC1\x6F");
}

TEST(Codesets, writeAQuestionMarkForWhatTheyLack)
{
    Codeset const latin = open("1252");

    EXPECT_EQ(fromUtf8(latin, "a" + std::string(hiraganaA) + hiraganaA + "\xC3\xA9"), "a??\xE9");
    EXPECT_EQ(latin->lostCharacters, 2);
    EXPECT_EQ(fromUtf16(latin, u"\u3042\xD800z"), "??z");
    EXPECT_EQ(latin->lostCharacters, 4);
}

TEST(Codesets, writeAQuestionMarkForWhatIsNoCharacter)
{
    Codeset const latin = open("1252");
    Codeset const japanese = open("932");

    EXPECT_EQ(fromUtf8(latin, "a\xFFz\xC0\xAF\xED\xA0\x80"), "a?z?????");
    EXPECT_EQ(fromUtf8(latin, "\xE2\x82z"), "?z");
    EXPECT_EQ(toUtf8(japanese, "a\x82\x20z"), "a? z");
    EXPECT_EQ(japanese->lostCharacters, 1);
}

TEST(Codesets, leaveOutACharacterThatIsCutOffAtTheEnd)
{
    Codeset const latin = open("1252");

    EXPECT_EQ(fromUtf8(latin, "a\xE2\x82"), "a");
    EXPECT_EQ(toUtf8(open("932"), "a\x82"), "a");
    EXPECT_EQ(toUtf8(open("UTF8"), "a\xE2\x82"), "a");
    EXPECT_EQ(latin->lostCharacters, 0);
}

TEST(Codesets, countNoMoreLossesThanTheyCan)
{
    Codeset const latin = open("INTERNAL37");
    latin->lostCharacters = 65534;

    fromUtf8(latin, std::string(euro) + euro + euro);

    EXPECT_EQ(latin->lostCharacters, 65535);
}

TEST(Codesets, ofPlainBytesHoldTheCharactersUpTo255)
{
    Codeset const bytes = open("INTERNAL37");

    EXPECT_EQ(fromUtf8(bytes, "a\xC3\xBF\xC4\x80"), "a\xFF?");
    EXPECT_EQ(toUtf8(bytes, "a\xFF"), "a\xC3\xBF");
    EXPECT_EQ(toUtf16(bytes, "a\xFF"), u"a\u00FF");
}

TEST(Codesets, ofAKindThatIsNotKnownArePlainBytes)
{
    Codeset const codeset = open("INTERNAL37");
    codeset->kind = 5;

    EXPECT_EQ(fromUtf8(codeset, "\xC3\xBF" + std::string(euro)), "\xFF?");
}

TEST(Codesets, ofUtf8LetWholeCharactersThrough)
{
    Codeset const utf8 = open("UTF8");
    std::string const text = "a" + std::string(euro) + "\xF0\x9F\x98\x80";

    EXPECT_EQ(fromUtf8(utf8, text), text);
    EXPECT_EQ(fromUtf8(utf8, "\xFF" + text), "?" + text);
    EXPECT_EQ(toUtf16(utf8, text), u"a\u20AC\U0001F600");
    EXPECT_EQ(fromUtf16(utf8, u"a\u20AC\U0001F600"), text);
}

TEST(Codesets, readTheCharacter2047InBothItsForms)
{
    EXPECT_EQ(toUtf16(open("UTF8"), "\xDF\xBF\xE0\x9F\xBF"), u"\u07FF\u07FF");
}

TEST(Codesets, cutWhatDoesNotFitBehindAWholeCharacter)
{
    std::string const text = "a" + std::string(euro) + "b";

    EXPECT_EQ(fromUtf8(open("UTF8"), text, 5), text);
    EXPECT_EQ(fromUtf8(open("UTF8"), text, 4), "a" + std::string(euro));
    EXPECT_EQ(fromUtf8(open("UTF8"), text, 3), "a");
    EXPECT_EQ(fromUtf8(open("UTF8"), text, 0), "");
    EXPECT_EQ(fromUtf8(open("932"), std::string(hiraganaA) + hiraganaA, 3), "\x82\xA0");
    EXPECT_EQ(toUtf8(open("1252"), "a\x80", 3), "a");
    EXPECT_EQ(toUtf16(open("UTF8"), "a\xF0\x9F\x98\x80", 2), u"a");
    EXPECT_EQ(fromUtf16(open("932"), u"\u3042\u3042", 3), "\x82\xA0");
}

TEST(Codesets, withAStateEndInTheInitialOne)
{
    Codeset const shifting = open("UTF-7");

    EXPECT_EQ(fromUtf8(shifting, "a" + std::string(hiraganaA)), "a+MEI-");
    EXPECT_EQ(fromUtf8(shifting, std::string(hiraganaA)), "+MEI-");
    EXPECT_EQ(toUtf8(shifting, "a+MEI-b"), "a" + std::string(hiraganaA) + "b");
    EXPECT_EQ(fromUtf8(shifting, "a" + std::string(hiraganaA), 5), "a") << "its end has to fit too";
    EXPECT_EQ(fromUtf8(shifting, "a" + std::string(hiraganaA), 6), "a+MEI-");
}

TEST(Codesets, convertUpToTheNulWithoutALength)
{
    char target[8] = "zzzzzzz";

    EXPECT_EQ(ccg_utf8ToCodeset(open("1252").get(), "a\xC3\xA9", -1, target, sizeof target), 2u);
    EXPECT_EQ(std::string(target), "a\xE9zzzzz");
    EXPECT_EQ(ccg_utf8ToCodeset(open("1252").get(), "a\0b", 3, target, sizeof target), 3u);
    EXPECT_EQ(ccg_utf8ToCodeset(open("1252").get(), nullptr, -1, target, sizeof target), 0u);
}

TEST(Codesets, convertOneCharacter)
{
    char target[4];

    EXPECT_EQ(ccg_characterToCodeset(open("932").get(), U'\u3042', target, 2), 2u);
    EXPECT_EQ(std::string(target, 2), "\x82\xA0");
    EXPECT_EQ(ccg_characterToCodeset(open("932").get(), U'\u3042', target, 1), 0u);
    EXPECT_EQ(ccg_characterToCodeset(open("1252").get(), U'\u3042', target, 4), 1u);
    EXPECT_EQ(target[0], '?');
    EXPECT_EQ(ccg_characterToCodeset(open("UTF8").get(), char32_t(0x110000), target, 4), 1u);
    EXPECT_EQ(target[0], '?');
}

TEST(Codesets, withoutOneAreTheDefaultOne)
{
    char target[8];

    EXPECT_EQ(ccg_utf8ToCodeset(nullptr, "\xC3\xBF", -1, target, sizeof target), 1u)
        << "plain bytes at first";

    ScopedEnvironment const wanted("QIS_CODESET", "932");
    ASSERT_TRUE(ccg_initManager(nullptr));
    EXPECT_EQ(ccg_utf8ToCodeset(nullptr, hiraganaA, -1, target, sizeof target), 2u);
    EXPECT_STREQ(ccg_defaultCodeset()->name, "932");
    CxStringBuff text;
    CCgPrintf(text, "%ls", L"\u3042");
    EXPECT_STREQ(text.text(), "\x82\xA0");
    ccg_shutdownManager();

    EXPECT_EQ(ccg_defaultCodeset()->kind, CCG_CODESET_BYTES);
    EXPECT_STREQ(ccg_defaultCodeset()->name, "OS");
}

TEST(Codesets, ofTheSystemAreOpenedAtTheStart)
{
    ScopedEnvironment const none("QIS_CODESET", nullptr);
    ASSERT_TRUE(ccg_initManager(nullptr));

    EXPECT_EQ(std::string(ccg_systemCodeset()->name), std::string(ccg_defaultCodeset()->name));
    EXPECT_EQ(std::string(ccg_systemCodeset()->name), open("OS")->name);
    ccg_shutdownManager();
}

TEST_F(CodesetFiles, areDefaultsForWhatIsNotKnown)
{
    folder_.write("codeset/DEFAULT", "932");
    ScopedEnvironment const wanted("QIS_CODESET", "NO-SUCH-SET");
    ASSERT_TRUE(ccg_initManager(nullptr));

    EXPECT_STREQ(ccg_defaultCodeset()->name, "932");
    ccg_shutdownManager();
}

TEST_F(CodesetFiles, nameOthersAsAliases)
{
    folder_.write("codeset/MINE", " 9\t3\r\n2\n");

    Codeset const codeset = open("mine");

    ASSERT_TRUE(codeset);
    EXPECT_EQ(fromUtf8(codeset, hiraganaA), "\x82\xA0");
}

TEST_F(CodesetFiles, nameTheFixedOnesAsAliases)
{
    folder_.write("codeset/MINE", "UTF8\n");
    folder_.write("codeset/BYTES", "INTERNAL37\n");

    EXPECT_EQ(open("MINE")->kind, CCG_CODESET_UTF8);
    EXPECT_EQ(open("BYTES")->kind, CCG_CODESET_BYTES);
}

TEST_F(CodesetFiles, areFollowedFiveTimes)
{
    for (int i = 0; i < 6; ++i)
        folder_.write("codeset/A" + std::to_string(i), "A" + std::to_string(i + 1));
    folder_.write("codeset/A6", converterFile());

    EXPECT_EQ(nameOf("A0"), "(none)");
    folder_.write("codeset/A5", "1252");
    EXPECT_EQ(nameOf("A1"), "1252");
    EXPECT_EQ(nameOf("A0"), "(none)");
}

TEST_F(CodesetFiles, thatNameThemselvesLeadNowhere)
{
    folder_.write("codeset/LOOP", "LOOP");
    folder_.write("codeset/EMPTY", " \n");
    folder_.write("codeset/LONG", std::string(100000, 'x'));

    EXPECT_EQ(nameOf("LOOP"), "(none)");
    EXPECT_EQ(nameOf("EMPTY"), "(none)");
    EXPECT_EQ(nameOf("LONG"), "(none)");
}

TEST_F(CodesetFiles, areFirstLookedForInCodesetAndThenBesideIt)
{
    folder_.write("MINE", "1250");
    EXPECT_EQ(nameOf("MINE"), "1250");

    folder_.write("codeset/MINE", "1251");
    EXPECT_EQ(nameOf("MINE"), "1251");
}

TEST_F(CodesetFiles, areLookedForBesideThePrograms)
{
    std::filesystem::create_directories(folder_.path("bin"));
    std::filesystem::create_directories(folder_.path("generic") + "/codeset");
    folder_.write("generic/codeset/MINE", "1253");
    ScopedEnvironment const noFolder("QISDIR", nullptr);
    ScopedEnvironment const programs("BINDIR", folder_.path("bin").c_str());

    EXPECT_EQ(nameOf("MINE"), "1253");
}

TEST_F(CodesetFiles, areLookedForInTheCurrentFolder)
{
    folder_.write("MINE", "1254");
    ScopedEnvironment const noFolder("QISDIR", nullptr);
    auto const before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path());

    EXPECT_EQ(nameOf("MINE"), "1254");
    std::filesystem::current_path(before);
}

TEST_F(CodesetFiles, areOpenedByTheirPath)
{
    folder_.write("mine.txt", "1255");
    folder_.write("codeset/1255", "1256");

    EXPECT_EQ(nameOf(folder_.path("mine.txt").c_str()), "1255");
    EXPECT_EQ(nameOf(folder_.path("missing.txt").c_str()), "(none)");
    EXPECT_EQ(nameOf(folder_.path("codeset").c_str()), "(none)");
}

TEST_F(CodesetFiles, thatAreConvertersStandForTheOneOfTheSystem)
{
    folder_.write("codeset/1257", converterFile());
    EXPECT_EQ(nameOf("1257"), "1257");
    EXPECT_EQ(open("1257")->kind, CCG_CODESET_SINGLE_BYTE);

    folder_.write("codeset/UNKNOWN", converterFile());
    EXPECT_EQ(nameOf("UNKNOWN"), "(none)");
}

TEST_F(CodesetFiles, areAliasesIfTheyAreTooShortForAConverter)
{
    std::string content = "1252";
    content.resize(1759, ' ');
    content.replace(8, 3, "ucv");
    folder_.write("codeset/SHORT", content);

    EXPECT_EQ(nameOf("SHORT"), "(none)") << "1252ucv is no code set";
}

TEST_F(CodesetFiles, haveAFolderThatCanBeSet)
{
    ASSERT_TRUE(ccg_setQisDir("elsewhere"));
    EXPECT_EQ(ccg_getQisDir(), "elsewhere");

    ASSERT_TRUE(ccg_setQisDir(nullptr));
    EXPECT_EQ(ccg_getQisDir(), std::nullopt);
}
