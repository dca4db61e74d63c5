#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>

using namespace std::string_literals;
using zk::test::poisonedError;

namespace {

class Profile : public testing::Test {
protected:
    // What a read gives; the byte behind the room must stay as it was.
    std::string read(char const* section, char const* key, char const* defaultValue = "DEF",
                     DWORD room = 4000) const
    {
        std::string buffer(room + 1, '~');
        DWORD const length =
            GetPrivateProfileStringA(section, key, defaultValue, buffer.data(), room, file_.c_str());
        EXPECT_EQ(buffer[room], '~');
        EXPECT_LT(length, room);
        EXPECT_EQ(buffer[length], '\0');
        return buffer.substr(0, length);
    }

    bool set(char const* section, char const* key, char const* value) const
    {
        return WritePrivateProfileStringA(section, key, value, file_.c_str()) != FALSE;
    }

    // The system may keep what it read; a call of this kind makes it look anew.
    void write(std::string_view content) const
    {
        folder_.write("p.ini", content);
        WritePrivateProfileStringA(nullptr, nullptr, nullptr, file_.c_str());
    }

    TemporaryFolder const folder_;
    std::string const file_ = folder_.path("p.ini");
};

struct ReadRow {
    std::string content;
    char const* expected;  // of key "k" in section "S", with the default "DEF"
};

// Measured: what each text gives.
ReadRow const plainRows[] = {
    {"[S]\r\nk=v\r\n", "v"},
    {"[S]\nk=v\n", "v"},
    {"[S]\rk=v\r", "v"},
    {"[S]\nk=v", "v"},
    {"\r\n\r\n[S]\r\nk=v", "v"},
    {"[S]\nk=v\r\r\n", "v"},
    {"[S]\nk=a\rb\n", "a"},
    {"[s]\nK=v\n", "v"},
    {"", "DEF"},
    {"k=v\n", "DEF"},
    {"[S]\nk==v\n", "=v"},
    {"[S]\nk=v=w\n", "v=w"},
    {"[S]\nk=1\nk=2\n", "1"},
    {"[S]\nk=1\n[S]\nk=2\n", "1"},
    {"[S]\nj=1\n[T]\n[S]\nk=2\n", "DEF"},
    {"[s]\nk=1\n[S]\nk=2\n", "1"},
    {"[S]\nK=1\nk=2\n", "1"},
};

ReadRow const blankRows[] = {
    {"[ S ]\nk=v\n", "v"},       {" [S]\nk=v\n", "v"},    {"\t[S]\nk=v\n", "v"},   {"[S]\n\n k = v \n", "v"},
    {"[S]\n\tk\t=\tv\t\n", "v"}, {"[S]\nk=\vv\f\n", "v"}, {"[S]\n\vk\f=v\n", "v"}, {"[S]\nk=a  b\n", "a  b"},
    {"[S]\nk=\n", ""},           {"[S]\nk= \n", ""},      {"\x1a[S]\nk=v\n", "v"},
};

ReadRow const headerRows[] = {
    {"[S] x\nk=v\n", "v"},      {"[S];c\nk=v\n", "v"},        {"[S\nk=v\n", "DEF"},
    {"[S]]\nk=v\n", "DEF"},     {"[[S]\nk=v\n", "DEF"},       {"[S]k=v\n", "DEF"},
    {"[S]\nk=v\n[", "v"},       {"[S]\nk=v\n[]\nj=2\n", "v"}, {"[S]\nj=[T]\nk=v\n", "v"},
    {"[S]\nj [T]\nk=v\n", "v"}, {"x[S]\nk=v\n", "DEF"},       {"x[[S]\nk=v\n", "DEF"},
    {"x[ [S]\nk=v\n", "DEF"},
};

ReadRow const lineRows[] = {
    {"[S]\nk\n", "DEF"},    {"[S]\nk\nk=2\n", "DEF"},    {"[S]\n;k=v\n", "DEF"},  {"[S]\n ;k=v\n", "DEF"},
    {"[S]\n#k=v\n", "DEF"}, {"[S]\nk=v ; c\n", "v ; c"}, {"[S]\nk=v;c\n", "v;c"},
};

ReadRow const quoteRows[] = {
    {"[S]\nk=\"v\"\n", "v"},
    {"[S]\nk='v'\n", "v"},
    {"[S]\nk=\"v\n", "\"v"},
    {"[S]\nk=v\"\n", "v\""},
    {"[S]\nk=\"\"v\"\"\n", "\"v\""},
    {"[S]\nk=\" v \"\n", " v "},
    {"[S]\nk=\"\n", "\""},
    {"[S]\nk=\"\"\n", ""},
    {"[S]\nk=\"a\"b\"\n", "a\"b"},
    {"[S]\nk='a\"\n", "'a\""},
    {"[S]\nk=\"v\" ; c\n", "\"v\" ; c"},
    {"[S]\nk=  \"v\"  \n", "v"},
    {"[S]\nk='\n", "'"},
    {"[S]\nk=''\n", ""},
    {"[S]\nk=\"'v'\"\n", "'v'"},
    {"[S]\nk=\" \"\n", " "},
    {"[S]\nk=\"v\"x\n", "\"v\"x"},
};

ReadRow const strayRows[] = {
    {"\xEF\xBB\xBF[S]\nk=v\n", "v"},
    {"\xEF\xBB\xBFj=1\n[S]\nk=v\n", "v"},
    {"\xff\xfe[S]\nk=v\n", "DEF"},
    {"[S]\n\x01k=v\n", "DEF"},
    {"[S]\nk=\x01v\x01\n", "\x01v\x01"},
    {"[S]\nk=a\x1a"
     "b\n",
     "a\x1a"
     "b"},
    {"[S]\nk=a\0b\n"s, "a"},
    {"[S]\nj=a\0b\nk=v\n"s, "v"},
    {"[S\0]\nk=v\n"s, "v"},
    {"[\0S\0]\0\n\0k\0=\0v\0\n\0"s, "DEF"},
};

TEST_F(Profile, readsEachRowAsMeasured)
{
    auto const expectRows = [&](auto const& rows) {
        for (ReadRow const& row : rows) {
            write(row.content);
            EXPECT_EQ(read("S", "k"), row.expected) << testing::PrintToString(row.content);
        }
    };
    expectRows(plainRows);
    expectRows(blankRows);
    expectRows(headerRows);
    expectRows(lineRows);
    expectRows(quoteRows);
    expectRows(strayRows);
}

// A text of ASCII in UTF-16 with its mark.
std::string wide(std::string const& text, bool isBigEndian = false)
{
    std::string bytes = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (char const c : text)
        bytes.append(isBigEndian ? std::string{'\0', c} : std::string{c, '\0'});
    return bytes;
}

ReadRow const wideRows[] = {
    {wide("[S]\r\nk=v\r\n"), "v"},
    {wide("[S]\r\nk=v\r\n", true), "v"},
    {wide("[S]\nk=v\n"), "v"},
    {wide("[S]\rk=v\r"), "v"},
    {wide("[S]\nk=v"), "v"},
    {wide("[S]\nk=v", true), "v"},
    {wide("\n\n[ S ]\n\n k = \"v\" \n"), "v"},
    {wide("[S]\n;k=1\nk=v ; c\n"), "v ; c"},
    {wide("[S]\nk=a\0b\n"s), "a"},
#ifndef _WIN32
    // Wine takes the odd byte's other half from behind the file, which holds what chance put there.
    {wide("[S]\nk=v") + "x", "vx"},
#endif
    {wide("[S]\nk=v\n") + "x", "v"},
    {wide("[S]\nk=v\n").substr(2), "DEF"},
    {wide(""), "DEF"},
    {wide("", true), "DEF"},
    {wide("") + "x", "DEF"},
    {wide("") + wide("[S]\nk=v\n"), "DEF"},
    {wide("") + wide("\n[S]\nk=v\n"), "v"},
    {wide("") + "[S]\nk=v\n", "DEF"},
};

TEST_F(Profile, readsTextsInUtf16AsMeasured)
{
    for (ReadRow const& row : wideRows) {
        write(row.content);
        EXPECT_EQ(read("S", "k"), row.expected) << testing::PrintToString(row.content);
    }
}

TEST_F(Profile, givesTextsInUtf16InTheCodePageOfTheProcess)
{
    char expected[16] = {};
    WideCharToMultiByte(CP_ACP, 0, L"\u00E9\u20AC", -1, expected, sizeof expected, nullptr, nullptr);
    write(wide("[S]\nk=") + "\xE9\0\xAC\x20"s);

    EXPECT_EQ(read("S", "k"), expected);

    EXPECT_TRUE(set("S", "j", expected));
    EXPECT_EQ(read("S", "j"), expected);
    EXPECT_THAT(folder_.read("p.ini"), testing::HasSubstr("j\0=\0\xE9\0\xAC\x20"s));
}

TEST_F(Profile, leavesAFileInUtf16WhatItIs)
{
    for (bool const isBigEndian : {false, true}) {
        write(wide("; c\r\n[S]\r\nk=1\r\nj=2\r\n[T]\r\n", isBigEndian));
        EXPECT_TRUE(set("S", "k", "v"));
        EXPECT_TRUE(set("T", "m", "w"));
        EXPECT_TRUE(set("S", "j", nullptr));
        EXPECT_TRUE(set("U", "n", "x"));
        WritePrivateProfileStringA(nullptr, nullptr, nullptr, file_.c_str());

        EXPECT_EQ(folder_.read("p.ini"),
                  wide("; c\r\n[S]\r\nk=v\r\n[T]\r\nm=w\r\n[U]\r\nn=x\r\n", isBigEndian));
    }
}

TEST_F(Profile, ignoresBlanksAroundTheNamesAskedFor)
{
    write("[ S]\nk =v\n");

    EXPECT_EQ(read(" S ", "\tk "), "v");
    EXPECT_EQ(read("S", " k"), "v");
}

TEST_F(Profile, hasASectionWithoutNameAtItsTop)
{
    write("k=1\n[]\nj=2\n[S]\n=3\n");

    EXPECT_EQ(read("", "k"), "1");
    EXPECT_EQ(read("", "j"), "DEF");
    EXPECT_EQ(read("S", ""), "3");
}

TEST_F(Profile, distinguishesLettersOutsideOfAsciiByCase)
{
    write("[S]\n\xC3\x84=v\n");

    EXPECT_EQ(read("S", "\xC3\xA4"), "DEF");
}

TEST_F(Profile, cutsAValueAtTheRoom)
{
    write("[S]\nk=12345\nq=\"12345\"\n");

    EXPECT_EQ(read("S", "k", "DEF", 1), "");
    EXPECT_EQ(read("S", "k", "DEF", 2), "1");
    EXPECT_EQ(read("S", "k", "DEF", 5), "1234");
    EXPECT_EQ(read("S", "k", "DEF", 6), "12345");
    EXPECT_EQ(read("S", "k", "DEF", 7), "12345");
    EXPECT_EQ(read("S", "q", "DEF", 2), "1");
    EXPECT_EQ(read("S", "q", "DEF", 8), "12345");
    EXPECT_EQ(read("S", "x", "DEF", 1), "");
    EXPECT_EQ(read("S", "x", "DEF", 3), "DE");
    EXPECT_EQ(read("S", "x", "DEF", 4), "DEF");
}

TEST_F(Profile, givesNothingWithoutRoom)
{
    write("[S]\nk=12345\n");
    char buffer[2] = {'~', '~'};

    SetLastError(poisonedError);
    EXPECT_EQ(GetPrivateProfileStringA("S", "k", "DEF", buffer, 0, file_.c_str()), 0u);
    EXPECT_EQ(GetPrivateProfileStringA("S", "k", "DEF", nullptr, 20, file_.c_str()), 0u);

    EXPECT_EQ(GetLastError(), poisonedError);
    EXPECT_EQ(buffer[0], '~');
}

TEST_F(Profile, takesSpacesAtTheEndAndQuotesOffTheDefault)
{
    write("[S]\nk=\n");

    EXPECT_EQ(read("S", "x", nullptr), "");
    EXPECT_EQ(read("S", "x", "d  "), "d");
    EXPECT_EQ(read("S", "x", "  d \t"), "  d \t");
    EXPECT_EQ(read("S", "x", "\"d\""), "d");
    EXPECT_EQ(read("S", "k", "d"), "");
}

constexpr char manyNames[] = "[S]\nab=1\ncd=2\n;c\nee\n\nff=\n[T]\nx=1\n[S]\ngg=2\nab=3\n[EMPTY]\n";

TEST_F(Profile, listsTheKeysThatHaveAValue)
{
    write(manyNames);

    EXPECT_EQ(read("S", nullptr), "ab\0cd\0ff\0"s);
    EXPECT_EQ(read("T", nullptr), "x\0"s);
}

TEST_F(Profile, givesTheDefaultForASectionWithoutKeys)
{
    write(manyNames);

    EXPECT_EQ(read("EMPTY", nullptr), "DEF");
    EXPECT_EQ(read("X", nullptr), "DEF");
    EXPECT_EQ(read("X", nullptr, nullptr), "");
}

TEST_F(Profile, listsKeysAsTheyAreWritten)
{
    write("[S]\n C d = 1\n#x=1\nnoeq\n");

    EXPECT_EQ(read("S", nullptr), "C d\0#x\0"s);
}

TEST_F(Profile, listsTheSectionsEachTimeTheyBegin)
{
    write("k=1\n[A]\n[ B ]\n[]\n[A]\n[a]\n[C\n");

    EXPECT_EQ(read(nullptr, nullptr), "A\0B\0A\0a\0"s);
    EXPECT_EQ(read(nullptr, "k"), "A\0B\0A\0a\0"s);
}

TEST_F(Profile, givesNoDefaultForAListOfSections)
{
    write("");

    EXPECT_EQ(read(nullptr, nullptr), "");
}

TEST_F(Profile, cutsAListTwoBytesBeforeTheRoom)
{
    write(manyNames);

    EXPECT_EQ(read("S", nullptr, "DEF", 3), "a");
    EXPECT_EQ(read("S", nullptr, "DEF", 6), "ab\0c"s);
    EXPECT_EQ(read("S", nullptr, "DEF", 10), "ab\0cd\0ff"s);
    EXPECT_EQ(read("S", nullptr, "DEF", 11), "ab\0cd\0ff\0"s);
    EXPECT_EQ(read("S", nullptr, "DEF", 12), "ab\0cd\0ff\0"s);
    EXPECT_EQ(read(nullptr, nullptr, "DEF", 2), "");
    EXPECT_EQ(read(nullptr, nullptr, "DEF", 13), "S\0T\0S\0EMPTY"s);
    EXPECT_EQ(read(nullptr, nullptr, "DEF", 14), "S\0T\0S\0EMPTY\0"s);
}

TEST_F(Profile, clearsTheLastErrorOnReading)
{
    write("[S]\nk=v\n");

    SetLastError(poisonedError);
    read("S", "k");

    EXPECT_EQ(GetLastError(), 0u);
}

TEST_F(Profile, givesDefaultsForAFileThatCannotBeRead)
{
    std::string const missingFolder = folder_.path("none") + "/p.ini";
    char buffer[8];
    auto const readFrom = [&](std::string const& file) {
        SetLastError(poisonedError);
        EXPECT_EQ(GetPrivateProfileStringA("S", "k", "DEF", buffer, 8, file.c_str()), 3u);
        return GetLastError();
    };

    EXPECT_EQ(readFrom(file_), DWORD(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(readFrom(missingFolder), DWORD(ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(readFrom(folder_.path()), DWORD(ERROR_ACCESS_DENIED));
    EXPECT_EQ(readFrom(""), DWORD(ERROR_ACCESS_DENIED));
}

TEST_F(Profile, holdsALongValue)
{
    std::string const value(20'000, 'x');
    ASSERT_TRUE(set("S", "before", "1"));
    ASSERT_TRUE(set("S", "k", value.c_str()));
    ASSERT_TRUE(set("S", "after", "2"));

    EXPECT_TRUE(read("S", "k", "", 21'000) == value);
    EXPECT_EQ(read("S", "after"), "2");
}

struct WriteRow {
    char const* content;
    char const* section;
    char const* key;
    char const* value;
    char const* readBack;
};

TEST_F(Profile, readsBackWhatItWrites)
{
    WriteRow const rows[] = {
        {"", "S", "k", "v", "v"},
        {"[S]\nk=1\n", "S", "k", "v", "v"},
        {"[S]\nk=1\n", "s", "K", "v", "v"},
        {"[S]\n k = 1 \n", "S", "k", "v", "v"},
        {"[S]\nk=1", "S", "k", "v", "v"},
        {"[S]\nk=1", "S", "j", "v", "v"},
        {"[S]\nk=1", "T", "j", "v", "v"},
        {"[S]\nk=1\n\n;c\n[T]\nj=2\n", "S", "j", "v", "v"},
        {"[S]\nk\nk=1\n", "S", "k", "v", "v"},
        {"[S]\nk=1\n[T]\n[S]\nj=2\n", "S", "j", "v", "v"},
        {"k=1\n[S]\n", "S", "k", "2", "2"},
        {"k=1\n", "", "k", "2", "2"},
        {"[S]\n", "", "k", "2", "2"},
        {"[S]\nk=1\n", "S", "k", "", ""},
        {"[S]\nk=1\n", "S", "k", "  v ", "v"},
        {"[S]\nk=1\n", "S", "k", "\"v\"", "v"},
        {"[S]\n", "S", " a ", "v", "v"},
        {"[S]\n a =1\n", "S", " a ", "v", "v"},
        {"[S]\n", "S", "", "v", "v"},
        {"[S]\n", "S", "[a", "v", "v"},
        {"[S]\n", "S", "#a", "v", "v"},
        {"", "S]T", "a", "v", "v"},
        {"", "[S]", "a", "v", "v"},
        {"", " S ", "a", "v", "v"},
        {"\xEF\xBB\xBF[S]\nk=1\n", "S", "k", "v", "v"},
    };
    for (WriteRow const& row : rows) {
        write(row.content);
        EXPECT_TRUE(set(row.section, row.key, row.value));
        EXPECT_EQ(read(row.section, row.key), row.readBack)
            << testing::PrintToString(row.content) << " " << row.section << "/" << row.key;
    }
}

TEST_F(Profile, makesTheFile)
{
    EXPECT_TRUE(set("S", "k", "v"));

    EXPECT_EQ(read("S", "k"), "v");
    EXPECT_TRUE(folder_.exists("p.ini"));
}

TEST_F(Profile, removesTheFirstOfTheKeysWithAName)
{
    write("[S]\nk=1\nk=2\n");

    EXPECT_TRUE(set("S", "k", nullptr));
    EXPECT_EQ(read("S", "k"), "2");
    EXPECT_TRUE(set("S", "k", nullptr));
    EXPECT_EQ(read("S", "k"), "DEF");
}

TEST_F(Profile, removesTheFirstOfTheSectionsWithAName)
{
    write("[S]\nk=1\n[T]\nj=1\n[S]\nk=2\n");

    EXPECT_TRUE(set("S", nullptr, nullptr));
    EXPECT_EQ(read("S", "k"), "2");
    EXPECT_TRUE(set("S", nullptr, "v"));
    EXPECT_EQ(read(nullptr, nullptr), "T\0"s);
    EXPECT_EQ(read("T", "j"), "1");
}

TEST_F(Profile, removesNothingWithSuccessWhereNothingIs)
{
    EXPECT_TRUE(set("S", "k", nullptr));
    EXPECT_TRUE(set("S", nullptr, nullptr));
    EXPECT_FALSE(folder_.exists("p.ini"));

    write("[S]\nk=1\n");
    EXPECT_TRUE(set("S", "x", nullptr));
    EXPECT_TRUE(set("X", "k", nullptr));
    EXPECT_TRUE(set("X", nullptr, nullptr));
    EXPECT_EQ(folder_.read("p.ini"), "[S]\nk=1\n");
}

TEST_F(Profile, withAMarkKeepsItsFirstLineWhereNothingIsRemoved)
{
    write("\xEF\xBB\xBF[S]\r\nk=1\r\n");

    EXPECT_TRUE(set("S", "x", nullptr));

    EXPECT_EQ(read("S", "k"), "1");
    EXPECT_EQ(folder_.read("p.ini"), "\xEF\xBB\xBF[S]\r\nk=1\r\n");
}

TEST_F(Profile, leavesAFileAloneWhoseValueIsTheNewOne)
{
    write("[S]\nk=v\n");

    EXPECT_TRUE(set("S", "k", "v"));

    EXPECT_EQ(folder_.read("p.ini"), "[S]\nk=v\n");
}

TEST_F(Profile, isNotWrittenWhereItCannotBe)
{
    std::string const missing = folder_.path("none") + "/p.ini";

    EXPECT_FAILS(WritePrivateProfileStringA("S", "k", "v", missing.c_str()), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(WritePrivateProfileStringA("S", "k", "v", folder_.path().c_str()), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(WritePrivateProfileStringA("S", "k", "v", ""), ERROR_ACCESS_DENIED);
    EXPECT_FALSE(WritePrivateProfileStringA(nullptr, "k", "v", file_.c_str()));
}

// -- Structures ------------------------------------------------------------------------

TEST_F(Profile, writesAStructureAsDigitsWithTheirSum)
{
    unsigned char bytes[] = {1, 2, 0xAB, 0xFF};

    EXPECT_TRUE(WritePrivateProfileStructA("S", "k", bytes, 4, file_.c_str()));
    EXPECT_TRUE(WritePrivateProfileStructA("S", "empty", bytes, 0, file_.c_str()));

    EXPECT_EQ(read("S", "k"), "0102ABFFAD");
    EXPECT_EQ(read("S", "empty"), "00");
}

TEST_F(Profile, readsAStructureOfTheRightSizeAndSumAlone)
{
    struct {
        char const* line;
        UINT size;
        bool isRead;
    } const rows[] = {
        {"k=0102ABFFAD", 4, true},  {"k=0102ABFFAD", 0, false}, {"k=0102ABFFAD", 3, false},
        {"k=0102ABFFAD", 5, false}, {"k=0102abffad", 4, true},  {"k= 0102ABFFAD ", 4, true},
        {"k=0102ABFFAE", 4, false}, {"k=0102ABFF", 4, false},   {"k=0102ABFFA", 4, false},
        {"k=0102AxFFAD", 4, false}, {"k=ZZ02ABFFAD", 4, false}, {"k=\"0102ABFFAD\"", 4, false},
        {"k=00", 0, true},          {"k=", 4, false},           {"", 4, false},
    };
    for (auto const& row : rows) {
        write("[S]\n"s + row.line + "\n");
        unsigned char bytes[8] = {};
        EXPECT_EQ(GetPrivateProfileStructA("S", "k", bytes, row.size, file_.c_str()) != FALSE, row.isRead)
            << row.line << " " << row.size;
        if (row.isRead && row.size == 4) {
            EXPECT_EQ(std::string(bytes, bytes + 5), "\x01\x02\xAB\xFF\0"s);
        }
    }
}

TEST_F(Profile, removesAStructureByNull)
{
    write("[S]\nk=0102ABFFAD\nj=1\n");
    unsigned char bytes[4] = {};

    EXPECT_TRUE(WritePrivateProfileStructA("S", "k", nullptr, 4, file_.c_str()));
    EXPECT_EQ(read("S", nullptr), "j\0"s);
    EXPECT_TRUE(WritePrivateProfileStructA("S", nullptr, bytes, 4, file_.c_str()));
    EXPECT_EQ(read(nullptr, nullptr), "");
}

TEST_F(Profile, readsNoStructureWithoutItsNames)
{
    write("[S]\nk=00\n");
    char byte = 0;

    EXPECT_FALSE(GetPrivateProfileStructA(nullptr, "k", &byte, 0, file_.c_str()));
    EXPECT_FALSE(GetPrivateProfileStructA("S", nullptr, &byte, 0, file_.c_str()));
}

}  // namespace
