#include "Foundtn/util/IAppProfileService.h"
#include "Foundtn/util/IToolMode.h"
#include "Foundtn/util/globalFlags.h"

#include "platform/classlib/CWinApp.h"
#include "platform/classlib/clock.h"
#include "platform/os/os.h"
#include "tests/support/MachineRegistry.h"
#include "tests/support/ScopedTimeZone.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/freshProcess.h"
#include "tests/support/libraryVariable.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace {

using Places = std::vector<std::string>;

// Both the system's environment and the C library's copy of it, which may be another one.
void setVariable(char const* name, char const* value)
{
    SetEnvironmentVariableA(name, value);
    setLibraryVariable(name, value);
}

// A machine of the test's own: folders of a user, of all users, of the executable and of the registry,
// and a current directory. For a process of its own.
class Machine {
public:
    Machine()
    {
        for (char const* const name : {"current", "user", "everybody", "bin", "registry"})
            folder_.makeFolder(name);
        setVariable("USERPROFILE", folder_.path("user").c_str());
        setVariable("ALLUSERSPROFILE", folder_.path("everybody").c_str());
        char self[1000];
        GetModuleFileNameA(nullptr, self, sizeof self);
        std::filesystem::path const built =
            std::filesystem::path(self).parent_path() / "zk_searched_module.mod";
        std::filesystem::copy_file(built, folder_.path("bin/zksearched.mod"));
        module_ = LoadLibraryA(folder_.path("bin/zksearched.mod").c_str());
        EXPECT_NE(module_, nullptr);
        SetCurrentDirectoryA(folder_.path("current").c_str());
    }
    ~Machine()
    {
        SetCurrentDirectoryA(std::filesystem::temp_directory_path().string().c_str());
        FreeLibrary(module_);
    }
    Machine(Machine const&) = delete;
    Machine& operator=(Machine const&) = delete;

    void offerRegistry()
    {
        registry_.emplace("SOFTWARE\\Meridane\\Zentrika\\8.4");
        std::string const separator = folder_.path("x").substr(folder_.path().size(), 1);
        registry_->setText("UserDirectory", folder_.path("registry") + separator);
    }

    std::string moduleName() const { return folder_.path("bin/zksearched.mod"); }
    std::string path(std::string const& entry) const { return folder_.path(entry); }
    void write(std::string const& entry) const
    {
        std::filesystem::create_directories(std::filesystem::path(folder_.path(entry)).parent_path());
        folder_.write(entry, "");
    }
    void remove(std::string const& entry) const { std::filesystem::remove(folder_.path(entry)); }

    // The name that a search selects.
    std::string search(char const* requested)
    {
        IAppProfileService service(true);
        service.InitProfileName(requested, moduleName().c_str(), nullptr);
        return service.GetProfileName().GetString();
    }

    // Makes each place in turn the first that exists; in the end none does.
    void expectInOrder(char const* requested, Places const& places, std::string const& bare)
    {
        for (std::string const& place : places)
            write(place);
        for (std::string const& place : places) {
            EXPECT_EQ(search(requested), path(place));
            remove(place);
        }
        EXPECT_EQ(search(requested), bare);
    }

private:
    TemporaryFolder const folder_;
    HMODULE module_ = nullptr;
    std::optional<MachineRegistry> registry_;
};

Places operator+(Places a, Places const& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

Places const ofUser = {"user/Application Data/Zentrika/my.8.4.ini", "user/Application Data/Zentrika/my.ini",
                       "user/Norvane/Calderis/Zentrika/8.4x64/my.ini"};
Places const ofEverybody = {"everybody/Norvane/Calderis/Zentrika/8.4x64/my.8.4.ini",
                            "everybody/Norvane/Calderis/Zentrika/8.4x64/my.ini"};
Places const current = {"current/my.ini"};
Places const fixedName = {"bin/Zentrika.ini"};
Places const inRegistry = {"registry/my.ini"};
Places const besideExecutable = {"bin/my.ini"};

TEST_IN_FRESH_PROCESS(ProfileSearch, goesThroughAllPlacesInOrder)
{
    Machine machine;
    machine.offerRegistry();

    machine.expectInOrder(
        "my.ini", current + ofUser + ofEverybody + fixedName + inRegistry + besideExecutable, "my.ini");
}

TEST_IN_FRESH_PROCESS(ProfileSearch, looksForTheDefaultNameWithoutAnother)
{
    Machine machine;
    machine.offerRegistry();

    machine.expectInOrder(nullptr,
                          {"current/Zentrika.ini", "user/Application Data/Zentrika/Zentrika.8.4.ini",
                           "user/Application Data/Zentrika/Zentrika.ini",
                           "user/Norvane/Calderis/Zentrika/8.4x64/Zentrika.ini",
                           "everybody/Norvane/Calderis/Zentrika/8.4x64/Zentrika.8.4.ini",
                           "everybody/Norvane/Calderis/Zentrika/8.4x64/Zentrika.ini", "bin/Zentrika.ini",
                           "registry/Zentrika.ini"},
                          "Zentrika.ini");
}

TEST_IN_FRESH_PROCESS(ProfileSearch, passesOverTheUserWithoutTheVariable)
{
    Machine machine;
    setVariable("USERPROFILE", nullptr);
    for (std::string const& place : ofUser)
        machine.write(place);

    machine.expectInOrder("my.ini", current + ofEverybody + fixedName + besideExecutable, "my.ini");
}

TEST_IN_FRESH_PROCESS(ProfileSearch, passesOverAllUsersWithoutTheVariable)
{
    Machine machine;
    setVariable("ALLUSERSPROFILE", nullptr);
    for (std::string const& place : ofEverybody)
        machine.write(place);

    machine.expectInOrder("my.ini", current + ofUser + fixedName + besideExecutable, "my.ini");
}

TEST_IN_FRESH_PROCESS(ProfileSearch, goesToTheExecutableWithoutBothVariables)
{
    Machine machine;
    setVariable("USERPROFILE", nullptr);
    setVariable("ALLUSERSPROFILE", nullptr);

    machine.expectInOrder("my.ini", current + fixedName + besideExecutable, "my.ini");
}

TEST_IN_FRESH_PROCESS(ProfileSearch, asksFewPlacesInModelServerMode)
{
    Machine machine;
    machine.offerRegistry();
    IToolMode::setIsInModelServerMode(true);
    for (std::string const& place : ofUser + ofEverybody + fixedName + inRegistry)
        machine.write(place);

    machine.expectInOrder("my.ini", current + besideExecutable, "Zentrika.ini");
}

TEST_IN_FRESH_PROCESS(ProfileSearch, setsTheRootsInModelServerModeIfNothingIsFound)
{
    Machine machine;
    IToolMode::setIsInModelServerMode(true);
    machine.search("my.ini");

    CString value;
    EXPECT_TRUE(IAppProfileService::GetEnvironmentVariableA("OMROOT", value, nullptr));
    EXPECT_EQ(value, machine.path("bin/Share").c_str());
    EXPECT_TRUE(IAppProfileService::GetEnvironmentVariableA("APPLICATION_ROOT", value, nullptr));
    EXPECT_EQ(value, machine.path("bin").c_str());
}

TEST_IN_FRESH_PROCESS(ProfileSearch, leavesTheRootsAloneOtherwise)
{
    Machine machine;
    setVariable("OMROOT", nullptr);
    setVariable("APPLICATION_ROOT", nullptr);
    auto const isOneSet = [] {
        CString value;
        return IAppProfileService::GetEnvironmentVariableA("OMROOT", value, nullptr) ||
            IAppProfileService::GetEnvironmentVariableA("APPLICATION_ROOT", value, nullptr);
    };

    EXPECT_EQ(machine.search("my.ini"), "my.ini");
    EXPECT_FALSE(isOneSet()) << "without a hit in normal mode";

    IToolMode::setIsInModelServerMode(true);
    machine.write("current/my.ini");
    EXPECT_EQ(machine.search("my.ini"), machine.path("current/my.ini"));
    EXPECT_FALSE(isOneSet()) << "with a hit in model-server mode";
}

TEST_IN_FRESH_PROCESS(ProfileSearch, keepsAnEarlierSelectionInModelServerModeIfNothingIsFound)
{
    Machine machine;
    machine.write("current/my.ini");
    IAppProfileService service(true);
    service.InitProfileName("my.ini", machine.moduleName().c_str(), nullptr);
    machine.remove("current/my.ini");
    IToolMode::setIsInModelServerMode(true);

    service.InitProfileName("my.ini", machine.moduleName().c_str(), nullptr);

    EXPECT_EQ(service.GetProfileName(), machine.path("current/my.ini").c_str());
}

TEST_IN_FRESH_PROCESS(ProfileSearch, passesOverARegistryTextThatNoPathIs)
{
    Machine machine;
    machine.offerRegistry();
    machine.write("registry/my.ini");
    machine.write("bin/my.ini");
    EXPECT_EQ(machine.search("my.ini"), machine.path("registry/my.ini"));

    MachineRegistry const registry("SOFTWARE\\Meridane\\Zentrika\\8.4");
    registry.setText("UserDirectory", std::string(40'000, 'x'));

    EXPECT_EQ(machine.search("my.ini"), machine.path("bin/my.ini"));
}

TEST_IN_FRESH_PROCESS(ProfileSearch, takesTheApplicationObjectThatIsGiven)
{
    Machine machine;
    machine.write("first.ini");
    machine.write("second.ini");
    machine.write("flag.ini");
    std::string firstLine = "-iniFile=" + machine.path("first.ini");
    std::string secondLine = "-iniFile=" + machine.path("second.ini");
    CWinApp first("first");
    CWinApp second("second");
    ASSERT_EQ(AfxGetApp(), &first);
    first.m_lpCmdLine = firstLine.data();
    second.m_lpCmdLine = secondLine.data();
    IAppProfileService service(false);
    auto const search = [&] { service.InitProfileName("my.ini", machine.moduleName().c_str(), &second); };

    search();
    EXPECT_STREQ(second.m_pszProfileName, machine.path("second.ini").c_str()) << "by its own flag";

    second.m_lpCmdLine = nullptr;
    globalFlags::instance()->setFlag("CommandLine", ("-iniFile=" + machine.path("flag.ini")).c_str());
    search();
    EXPECT_STREQ(second.m_pszProfileName, machine.path("flag.ini").c_str()) << "by the global flag";

    globalFlags::instance()->removeFlag("CommandLine");
    machine.write("current/my.ini");
    search();
    EXPECT_STREQ(second.m_pszProfileName, machine.path("current/my.ini").c_str());

    machine.remove("current/my.ini");
    search();
    EXPECT_STREQ(second.m_pszProfileName, "my.ini");
    EXPECT_EQ(first.m_pszProfileName, nullptr);
}

TEST_IN_FRESH_PROCESS(ProfileSearch, prefersTheFlags)
{
    Machine machine;
    machine.write("flag.ini");
    machine.write("host.ini");
    machine.write("current/my.ini");
    std::string line = "x -iniFile=\"" + machine.path("host.ini") + "\"";
    CWinApp host("host");
    host.m_lpCmdLine = line.data();
    globalFlags::instance()->setFlag("CommandLine", ("-iniFile=" + machine.path("flag.ini")).c_str());

    for (bool const isServer : {false, true}) {
        IToolMode::setIsInModelServerMode(isServer);
        EXPECT_EQ(machine.search("my.ini"), machine.path("host.ini"));
        // Without a name asked for, the application's line does not count.
        EXPECT_EQ(machine.search(nullptr), machine.path("flag.ini"));
    }
    machine.remove("host.ini");
    EXPECT_EQ(machine.search("my.ini"), machine.path("flag.ini"));
    machine.remove("flag.ini");
    EXPECT_EQ(machine.search("my.ini"), machine.path("current/my.ini"));
    host.m_lpCmdLine = nullptr;
    EXPECT_EQ(machine.search("my.ini"), machine.path("current/my.ini"));
}

TEST_IN_FRESH_PROCESS(ProfileSearch, dropsTheFolderOfTheNameAskedFor)
{
    Machine machine;
    machine.write("elsewhere/my.ini");
    machine.write("current/my.ini");

    EXPECT_EQ(machine.search(machine.path("elsewhere/my.ini").c_str()), machine.path("current/my.ini"));
}

TEST_IN_FRESH_PROCESS(ProfileSearch, versionsAShortName)
{
    Machine machine;
    machine.write("user/Application Data/Zentrika/8.4.ini");

    EXPECT_EQ(machine.search("a"), machine.path("user/Application Data/Zentrika/8.4.ini"));
}

TEST_IN_FRESH_PROCESS(ProfileSearch, appendsTheExecutablesFolderToPath)
{
    Machine machine;
    auto const readPath = [] {
        char path[4096] = {};
        GetEnvironmentVariableA("Path", path, sizeof path);
        return std::string(path);
    };
    setVariable("Path", " x ");
    machine.search("my.ini");
    EXPECT_EQ(readPath(), " x ;" + machine.path("bin")) << "what was there is left as it was";

    setVariable("Path", nullptr);
    machine.search("my.ini");
    machine.search("my.ini");

    CString path;
    EXPECT_TRUE(IAppProfileService::GetEnvironmentVariableA("Path", path, nullptr));
    std::string const added = ";" + machine.path("bin");
    EXPECT_EQ(path, (added + added).c_str());
    EXPECT_EQ(getExcecutableFolder(), machine.path("bin").c_str());
    EXPECT_STREQ(getExecutableFolder(), machine.path("bin").c_str());
}

TEST_IN_FRESH_PROCESS(ProfileSearch, tellsTheApplicationObject)
{
    Machine machine;
    machine.write("current/my.ini");
    CWinApp host("host");

    IAppProfileService local(true);
    local.InitProfileName("my.ini", machine.moduleName().c_str(), &host);
    EXPECT_EQ(host.m_pszProfileName, nullptr);

    IAppProfileService service(false);
    service.InitProfileName("my.ini", machine.moduleName().c_str(), nullptr);
    EXPECT_STREQ(host.m_pszProfileName, machine.path("current/my.ini").c_str());
    machine.remove("current/my.ini");
    service.InitProfileName("my.ini", machine.moduleName().c_str(), &host);
    EXPECT_STREQ(host.m_pszProfileName, "my.ini");
}

// A service that hears of each selection.
class ListeningService : public IAppProfileService {
public:
    ListeningService() : IAppProfileService(true) { }

    CString selected;

private:
    void SetProfileName(CString const& name, CWinApp*) override { selected = name; }
};

TEST_IN_FRESH_PROCESS(ProfileSearch, selectsThroughTheVirtualCall)
{
    Machine machine;
    machine.write("current/my.ini");
    ListeningService service;

    service.InitProfileName("my.ini", machine.moduleName().c_str(), nullptr);

    EXPECT_EQ(service.selected, machine.path("current/my.ini").c_str());
    EXPECT_EQ(service.GetProfileName(), "Zentrika.ini");
}

TEST_IN_FRESH_PROCESS(ProfileSearch, leavesATraceInAFileThatExists)
{
    Machine machine;
    machine.search("my.ini");
    EXPECT_FALSE(std::filesystem::exists(machine.path("current/IniFileNameLog.txt")));

    machine.write("current/IniFileNameLog.txt");
    machine.search("first.ini");
    machine.search("second.ini");

    std::ifstream trace(machine.path("current/IniFileNameLog.txt"), std::ios::binary);
    std::string const text((std::istreambuf_iterator<char>(trace)), {});
    EXPECT_TRUE(
        std::regex_match(text,
                         std::regex("\\d\\d, \\d\\d, \\d{4} \\(\\d\\d:\\d\\d:\\d\\d\\): first\\.ini\n"
                                    "\\d\\d, \\d\\d, \\d{4} \\(\\d\\d:\\d\\d:\\d\\d\\): second\\.ini\n")))
        << text;
}

TEST_IN_FRESH_PROCESS(ProfileSearch, tracesTheLocalTimeAndSharesTheFile)
{
    Machine machine;
    machine.write("current/IniFileNameLog.txt");
    ScopedTimeZone const zone("ABC-2");
    zk::ScopedClock const clock(1000000000);  // 2001-09-09 01:46:40 UTC
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE;
    HANDLE const other = CreateFileA("IniFileNameLog.txt", GENERIC_WRITE, shared, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);

    machine.search("my.ini");

    CloseHandle(other);
    std::ifstream trace(machine.path("current/IniFileNameLog.txt"), std::ios::binary);
    EXPECT_EQ(std::string((std::istreambuf_iterator<char>(trace)), {}), "09, 09, 2001 (03:46:40): my.ini\n");
}

TEST_IN_FRESH_PROCESS(ProfileSearch, goesOnWhereTheTraceCannotBeWritten)
{
    Machine machine;
    machine.write("current/IniFileNameLog.txt");
    HANDLE const other = CreateFileA("IniFileNameLog.txt", GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    EXPECT_EQ(machine.search("my.ini"), "my.ini");
    CloseHandle(other);
    EXPECT_EQ(std::filesystem::file_size(machine.path("current/IniFileNameLog.txt")), 0u);

    machine.remove("current/IniFileNameLog.txt");
    std::filesystem::create_directory(machine.path("current/IniFileNameLog.txt"));
    EXPECT_EQ(machine.search("my.ini"), "my.ini");
}

// The executable in a folder whose path is longer than 260 bytes.
TEST_IN_FRESH_PROCESS(ProfileFolders, tellTheExecutablesFolderHoweverLongItsPathIs)
{
    TemporaryFolder const folder;
    std::string const part(100, 'x');
    std::string const deep = part + "/" + part + "/" + part;
    char self[1000];
    GetModuleFileNameA(nullptr, self, sizeof self);
    std::error_code error;
    std::filesystem::create_directories(folder.path(deep), error);
    std::filesystem::copy_file(std::filesystem::path(self).parent_path() / "zk_searched_module.mod",
                               folder.path(deep + "/zkdeep.mod"), error);
    HMODULE const module = error ? nullptr : LoadLibraryA(folder.path(deep + "/zkdeep.mod").c_str());
    if (!module)
        GTEST_SKIP() << "the system loads no module from a path of that length";
    CString dir;

    EXPECT_TRUE(IAppProfileService::GetExecutableDir(folder.path(deep + "/zkdeep.mod").c_str(), dir));

    EXPECT_EQ(dir, folder.path(deep).c_str());
    FreeLibrary(module);
}

}  // namespace
