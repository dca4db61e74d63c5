#include "Foundtn/util/IAppProfileService.h"
#include "Foundtn/util/IToolMode.h"
#include "Foundtn/util/globalFlags.h"

#include "platform/classlib/CWinApp.h"
#include "platform/os/os.h"
#include "tests/support/MachineRegistry.h"
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

}  // namespace
