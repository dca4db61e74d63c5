#include "Foundtn/util/IAppProfileService.h"

#include "platform/classlib/CWinApp.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/freshProcess.h"

#include "platform/os/os.h"

#include <cstring>
#include <filesystem>
#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace {

// A service on a file in a folder of its own, selected by the flag.
class ProfileService : public testing::Test {
protected:
    ProfileService()
    {
        folder_.write("p.ini", "[S]\n");
        std::string const commandLine = "-iniFile=" + folder_.path("p.ini");
        char line[600];
        std::snprintf(line, sizeof line, "%s", commandLine.c_str());
        CWinApp host("host");
        host.m_lpCmdLine = line;
        service_.InitProfileName("p.ini", nullptr, &host);
    }

    void write(std::string const& content) const { folder_.write("p.ini", content); }

    TemporaryFolder const folder_;
    IAppProfileService service_{true};
};

TEST_F(ProfileService, takesAnEmptyValueForAbsent)
{
    write("[S]\nk=\n");
    CString value("before");

    EXPECT_FALSE(service_.GetProfileValue("S", "k", value, "DEF"));
    EXPECT_EQ(value, "DEF");
    EXPECT_FALSE(service_.GetProfileValue("S", "k", value, nullptr));
    EXPECT_EQ(value, "");
}

TEST_F(ProfileService, trimsWhiteSpaceInQuotesToo)
{
    write("[S]\nk=\" v\t\"\n");
    CString value;

    EXPECT_TRUE(service_.GetProfileValue("S", "k", value, "DEF"));
    EXPECT_EQ(value, "v");
}

TEST_F(ProfileService, readsValuesOfAnyLength)
{
    for (int length : {259, 260, 261, 1039, 1040, 1041, 20'000}) {
        std::string const text(static_cast<std::size_t>(length), 'x');
        service_.WriteProfileStringA("S", "k", text.c_str());
        EXPECT_EQ(service_.GetProfileStringA("S", "k", ""), text.c_str());
    }
}

TEST_F(ProfileService, givesTheDefaultOfATextThatIsAbsent)
{
    EXPECT_EQ(service_.GetProfileStringA("S", "x", "DEF"), "DEF");
    EXPECT_EQ(service_.GetProfileStringA("S", "x", nullptr), "");
}

TEST_F(ProfileService, readsBackEachKindThatItWrites)
{
    service_.WriteProfileInt("S", "int", -7);
    service_.WriteProfileDouble("S", "double", 1.5);
    service_.WriteProfileBool("S", "bool", 5);
    service_.WriteProfileColor("S", "color", 0x030201);
    service_.WriteProfileRect("S", "rect", CRect(1, 2, 3, 4));
    char bytes[] = "bytes";
    EXPECT_EQ(service_.WriteProfileBinary("S", "binary", bytes, 5), 1);

    EXPECT_EQ(service_.GetProfileStringA("S", "double", ""), "1.500000");
    EXPECT_EQ(service_.GetProfileStringA("S", "bool", ""), "TRUE");
    EXPECT_EQ(service_.GetProfileStringA("S", "color", ""), "1,2,3");
    EXPECT_EQ(service_.GetProfileStringA("S", "rect", ""), "(1,2,3,4)");
    EXPECT_EQ(service_.GetProfileIntA("S", "int", 3), -7);
    EXPECT_EQ(service_.GetProfileDouble("S", "double", 3), 1.5);
    EXPECT_EQ(service_.GetProfileBool("S", "bool", 0), 1);
    EXPECT_EQ(service_.GetProfileColor("S", "color", 9), 0x030201u);
    CRect rect;
    EXPECT_TRUE(service_.GetProfileRect("S", "rect", rect));
    EXPECT_EQ(rect, CRect(1, 2, 3, 4));
    char read[5];
    EXPECT_EQ(service_.GetProfileBinary("S", "binary", read, 5), 1);
    EXPECT_EQ(std::memcmp(read, bytes, 5), 0);
    EXPECT_EQ(service_.GetProfileBinary("S", "binary", read, 4), 0);
}

TEST_F(ProfileService, givesTheDefaultsOfWhatDoesNotConvert)
{
    write("[S]\nk=one\n");
    int number = 0;
    double real = 0;
    CRect rect(9, 9, 9, 9);

    EXPECT_FALSE(service_.GetProfileValue("S", "k", number, 3));
    EXPECT_EQ(number, 3);
    EXPECT_FALSE(service_.GetProfileValue("S", "k", real, 2.5));
    EXPECT_EQ(real, 2.5);
    EXPECT_EQ(service_.GetProfileBool("S", "k", 7), 7);
    EXPECT_EQ(service_.GetProfileColor("S", "k", 7), 7u);
    EXPECT_FALSE(service_.GetProfileRect("S", "k", rect));
    EXPECT_EQ(rect, CRect(9, 9, 9, 9));
}

// Keeps the texts that pass by.
class OverheardService : public IAppProfileService {
public:
    OverheardService() : IAppProfileService(true) { }

    void WriteProfileStringA(char const* section, char const* key, char const* value) override
    {
        written += std::string(section) + "/" + key + "=" + value + " ";
    }
    CString GetProfileStringA(char const*, char const*, char const*) override { return text; }

    std::string written;
    CString text;
};

TEST(OverriddenProfile, writesAndReadsConvertedKindsThroughItsTexts)
{
    OverheardService service;
    service.WriteProfileBool("S", "b", 1);
    service.WriteProfileColor("S", "c", 0x030201);
    service.WriteProfileRect("S", "r", CRect(1, 2, 3, 4));
    EXPECT_EQ(service.written, "S/b=TRUE S/c=1,2,3 S/r=(1,2,3,4) ");

    service.text = "TRUE";
    EXPECT_EQ(service.GetProfileBool("S", "b", 0), 1);
    service.text = "1,2,3";
    EXPECT_EQ(service.GetProfileColor("S", "c", 0), 0x030201u);
    service.text = "(1,2,3,4)";
    CRect rect;
    EXPECT_TRUE(service.GetProfileRect("S", "r", rect));
    EXPECT_EQ(rect, CRect(1, 2, 3, 4));
}

TEST_F(ProfileService, removesAKeyByNull)
{
    service_.WriteProfileStringA("S", "k", "v");
    service_.WriteProfileStringA("S", "k", nullptr);

    EXPECT_EQ(service_.GetProfileStringA("S", "k", "DEF"), "DEF");
}

// Which of the calls go through the two for texts.
class RecordingService : public IAppProfileService {
public:
    RecordingService() : IAppProfileService(true) { }

    void WriteProfileStringA(char const*, char const* key, char const* value) override
    {
        calls.push_back(std::string("write ") + key + "=" + value);
    }
    CString GetProfileStringA(char const*, char const* key, char const* defaultValue) override
    {
        EXPECT_EQ(defaultValue, nullptr);
        calls.push_back(std::string("read ") + key);
        return answer;
    }

    std::vector<std::string> calls;
    CString answer;
};

TEST(ProfileServiceCalls, ofBoolColorAndRectGoThroughTheTexts)
{
    RecordingService service;
    CRect rect;
    service.WriteProfileBool("S", "b", 1);
    service.WriteProfileColor("S", "c", 0x030201);
    service.WriteProfileRect("S", "r", CRect(1, 2, 3, 4));
    service.answer = "TRUE";
    EXPECT_EQ(service.GetProfileBool("S", "b", 0), 1);
    service.answer = "1,2,3";
    EXPECT_EQ(service.GetProfileColor("S", "c", 0), 0x030201u);
    service.answer = "(1,2,3,4)";
    EXPECT_TRUE(service.GetProfileRect("S", "r", rect));

    EXPECT_THAT(service.calls,
                testing::ElementsAre("write b=TRUE", "write c=1,2,3", "write r=(1,2,3,4)", "read b", "read c",
                                     "read r"));
}

TEST_F(ProfileService, writesNumbersAndBytesPastTheTexts)
{
    RecordingService service;
    std::string line = "-iniFile=" + folder_.path("p.ini");
    CWinApp host("host");
    host.m_lpCmdLine = line.data();
    service.InitProfileName("p.ini", nullptr, &host);

    service.WriteProfileInt("S", "i", 7);
    service.WriteProfileDouble("S", "d", 1.5);
    char bytes[] = "x";
    service.WriteProfileBinary("S", "x", bytes, 1);

    EXPECT_TRUE(service.calls.empty());
    EXPECT_EQ(service_.GetProfileIntA("S", "i", 0), 7);
    EXPECT_EQ(service_.GetProfileDouble("S", "d", 0), 1.5);
    EXPECT_EQ(service_.GetProfileBinary("S", "x", bytes, 1), 1);
}

// Other modules call by slot: a pointer to a virtual member holds 1 and eight times the slot's number.
template <class Member>
std::size_t slotOf(Member member)
{
    std::size_t place = 0;
    static_assert(sizeof member >= sizeof place);
    std::memcpy(&place, &member, sizeof place);
    return (place - 1) / sizeof(void*) + 1;
}

TEST(ProfileServiceSlots, standInTheirOrder)
{
    using I = IAppProfileInterface;
    EXPECT_EQ(slotOf(&I::WriteProfileStringA), 1u);
    EXPECT_EQ(
        slotOf(static_cast<bool (I::*)(char const*, char const*, double&, double)>(&I::GetProfileValue)), 2u);
    EXPECT_EQ(slotOf(static_cast<bool (I::*)(char const*, char const*, int&, int)>(&I::GetProfileValue)), 3u);
    EXPECT_EQ(slotOf(static_cast<bool (I::*)(char const*, char const*, CString&, char const*)>(
                  &I::GetProfileValue)),
              4u);
    EXPECT_EQ(slotOf(&I::GetProfileStringA), 5u);
    EXPECT_EQ(slotOf(&I::GetProfileName), 6u);
    EXPECT_EQ(slotOf(&I::WriteProfileInt), 7u);
    EXPECT_EQ(slotOf(&I::GetProfileIntA), 8u);
    EXPECT_EQ(slotOf(&I::WriteProfileDouble), 9u);
    EXPECT_EQ(slotOf(&I::GetProfileDouble), 10u);
    EXPECT_EQ(slotOf(&I::WriteProfileBinary), 11u);
    EXPECT_EQ(slotOf(&I::GetProfileBinary), 12u);
    EXPECT_EQ(slotOf(&I::WriteProfileBool), 13u);
    EXPECT_EQ(slotOf(&I::GetProfileBool), 14u);
    EXPECT_EQ(slotOf(&I::WriteProfileColor), 15u);
    EXPECT_EQ(slotOf(&I::GetProfileColor), 16u);
    EXPECT_EQ(slotOf(&I::WriteProfileRect), 17u);
    EXPECT_EQ(slotOf(&I::GetProfileRect), 18u);
}

TEST(ProfileServiceBeforeTheSearch, reachesTheDefaultName)
{
    IAppProfileService service(true);

    EXPECT_EQ(service.GetProfileName(), "Zentrika.ini");
}

TEST_IN_FRESH_PROCESS(ProfileServiceInstance, isTheFirstThatIsNotLocal)
{
    EXPECT_EQ(IAppProfileInterface::Instance(), nullptr);
    IAppProfileService const local(true);
    EXPECT_EQ(IAppProfileInterface::Instance(), nullptr);
    {
        auto first = std::make_unique<IAppProfileService>(false);
        {
            IAppProfileService const second(false);
            EXPECT_EQ(IAppProfileInterface::Instance(), first.get());
        }
        EXPECT_EQ(IAppProfileInterface::Instance(), first.get());
    }
    EXPECT_EQ(IAppProfileInterface::Instance(), nullptr);
}

// -- What the search is made of --------------------------------------------------------

struct FlagRow {
    char const* before;
    char const* behind;  // what follows the file's name
    bool isFound;
};

TEST(ProfileFlag, takesAllTextBehindIt)
{
    TemporaryFolder const folder;
    folder.write("a b.ini", "");
    CString const file(folder.path("a b.ini").c_str());
    FlagRow const rows[] = {
        {"-iniFile=", "", true},           {"x -y -iniFile=", "", true},
        {"-iniFile=\"", "\"", true},       {"-iniFile= \" ", "", false},
        {"-iniFile=  \"", " \t", true},    {"-iniFile=", "\"", true},
        {"-iniFile=\"", "\" -x", false},   {"-iniFile=", "x", false},
        {"-inifile=", "", false},          {"", "", false},
        {"-iniFile=-iniFile=", "", false},
    };
    for (FlagRow const& row : rows) {
        CString path("before");
        EXPECT_EQ(IAppProfileService::GetProfileNameFromCmdLineFlag(row.before + file + row.behind, path),
                  row.isFound)
            << row.before << "FILE" << row.behind;
        EXPECT_EQ(path, row.isFound ? file : CString("before"));
    }
}

TEST(ProfileFlag, withoutNameFindsNothing)
{
    CString path("before");

    EXPECT_FALSE(IAppProfileService::GetProfileNameFromCmdLineFlag("-iniFile=", path));
    EXPECT_FALSE(IAppProfileService::GetProfileNameFromCmdLineFlag("-iniFile=\"\"", path));
    EXPECT_EQ(path, "before");
}

TEST(ProfileEnvironment, readsVariablesOfAnyLengthTrimmed)
{
    for (std::size_t length : {1u, 259u, 260u, 261u, 1041u, 5000u}) {
        std::string const text(length, 'x');
        SetEnvironmentVariableA("ZK_TEST_VARIABLE", (" " + text + "\t").c_str());
        CString value;
        EXPECT_TRUE(IAppProfileService::GetEnvironmentVariableA("ZK_TEST_VARIABLE", value, "DEF"));
        EXPECT_EQ(value, text.c_str());
    }
    SetEnvironmentVariableA("ZK_TEST_VARIABLE", nullptr);
}

TEST(ProfileEnvironment, takesWhiteSpaceAloneForAValueThatIsThere)
{
    SetEnvironmentVariableA("ZK_TEST_VARIABLE", " \t");
    CString value("before");

    EXPECT_TRUE(IAppProfileService::GetEnvironmentVariableA("ZK_TEST_VARIABLE", value, "DEF"));

    EXPECT_EQ(value, "");
    SetEnvironmentVariableA("ZK_TEST_VARIABLE", nullptr);
}

TEST(ProfileEnvironment, givesTheDefaultOfAnAbsentVariable)
{
    CString value("before");

    EXPECT_FALSE(IAppProfileService::GetEnvironmentVariableA("ZK_TEST_ABSENT", value, "DEF"));
    EXPECT_EQ(value, "DEF");
    EXPECT_FALSE(IAppProfileService::GetEnvironmentVariableA("ZK_TEST_ABSENT", value, nullptr));
    EXPECT_EQ(value, "");
}

TEST(ProfileEnvironment, takesAVariableOfWhiteSpaceForPresent)
{
    SetEnvironmentVariableA("ZK_TEST_VARIABLE", " \t");
    CString value("before");

    EXPECT_TRUE(IAppProfileService::GetEnvironmentVariableA("ZK_TEST_VARIABLE", value, "DEF"));

    EXPECT_EQ(value, "");
    SetEnvironmentVariableA("ZK_TEST_VARIABLE", nullptr);
}

TEST(ProfileFolders, tellTheExecutablesAndTheCurrentOne)
{
    CString dir;
    EXPECT_TRUE(IAppProfileService::GetExecutableDir(nullptr, dir));
    EXPECT_TRUE(std::filesystem::exists(dir.GetString()));
    CString other;
    EXPECT_TRUE(IAppProfileService::GetExecutableDir("no such module", other));
    EXPECT_EQ(other, dir);
    CString current;
    EXPECT_TRUE(IAppProfileService::GetCurrentDir(current));
    EXPECT_EQ(current, IAppProfileService::GetCurrentDir());
}

}  // namespace
