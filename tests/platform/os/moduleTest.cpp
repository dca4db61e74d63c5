#include "platform/os/os.h"

#include "platform/os/commandLine.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

namespace {

#ifdef _WIN32
constexpr char const* library = "version.dll";  // on every system, and not yet loaded
constexpr char const* exported = "GetFileVersionInfoA";
constexpr char const* importedBy = "GetLastError";
#else
constexpr char const* library = "libutil.so.1";
constexpr char const* exported = "gnu_get_libc_version";
constexpr char const* importedBy = "malloc";
#endif

auto const nowhere = reinterpret_cast<HMODULE>(std::uintptr_t(0x12340));

std::string fileOf(HMODULE module)
{
    char file[1024] = {};
    EXPECT_GT(GetModuleFileNameA(module, file, sizeof file), 0u);
    return file;
}

// Some code of the library under test.
char const* insideTheLibrary()
{
    return reinterpret_cast<char const*>(&zk::os::splitCommandLine);
}

HMODULE moduleOf(char const* address)
{
    HMODULE module = nullptr;
    DWORD const flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    EXPECT_TRUE(GetModuleHandleExA(flags, address, &module));
    return module;
}

void* procedure(HMODULE module, char const* name)
{
    return reinterpret_cast<void*>(GetProcAddress(module, name));
}

}  // namespace

TEST(ModuleFile, isThatOfTheExecutableForNull)
{
    std::string const file = fileOf(nullptr);

    EXPECT_EQ(std::filesystem::path(file).stem(), "test_os");
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_TRUE(std::filesystem::path(file).is_absolute());
    EXPECT_EQ(fileOf(GetModuleHandleA(nullptr)), file);
}

TEST(ModuleFile, isCutWhenTheBufferIsTooSmall)
{
    std::string const file = fileOf(nullptr);
    auto const length = static_cast<DWORD>(file.size());
    std::string buffer(file.size() + 2, '\x5A');

    EXPECT_EQ(GetModuleFileNameA(nullptr, buffer.data(), length + 1), length);
    EXPECT_EQ(buffer.c_str(), file);

    SetLastError(zk::test::poisonedError);
    EXPECT_EQ(GetModuleFileNameA(nullptr, buffer.data(), length), length);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(buffer.substr(0, length - 1), file.substr(0, length - 1));
    EXPECT_EQ(buffer.back(), '\x5A');

    EXPECT_FAILS(GetModuleFileNameA(nullptr, buffer.data(), 0), ERROR_INSUFFICIENT_BUFFER);
}

TEST(ModuleFile, ofNoModuleDoesNotExist)
{
    char file[64];

    EXPECT_FAILS(GetModuleFileNameA(nowhere, file, sizeof file), ERROR_MOD_NOT_FOUND);
}

TEST(Modules, areFoundByAnAddressInThem)
{
    HMODULE const module = moduleOf(insideTheLibrary());

    EXPECT_NE(module, nullptr);
    EXPECT_NE(fileOf(module).find("ZK_UTIL_DLL"), std::string::npos);
    EXPECT_NE(moduleOf(reinterpret_cast<char const*>(&fileOf)), module);
    EXPECT_EQ(moduleOf(reinterpret_cast<char const*>(&fileOf)), GetModuleHandleA(nullptr));
}

TEST(Modules, areFoundByNameWithoutCase)
{
    HMODULE const module = moduleOf(insideTheLibrary());

    EXPECT_EQ(GetModuleHandleA("ZK_UTIL_DLL"), module);
    EXPECT_EQ(GetModuleHandleA("zk_util_dll.dll"), module);
    EXPECT_EQ(GetModuleHandleA(fileOf(module).c_str()), module);
    EXPECT_EQ(GetModuleHandleA("test_os.exe"), GetModuleHandleA(nullptr));
}

TEST(Modules, areNotFoundWhenNotLoaded)
{
    HMODULE module = nowhere;

    EXPECT_FAILS(GetModuleHandleA("nonesuch"), ERROR_MOD_NOT_FOUND);
    EXPECT_FAILS(GetModuleHandleA(""), ERROR_MOD_NOT_FOUND);
    EXPECT_FAILS(GetModuleHandleExA(0, "nonesuch", &module), ERROR_MOD_NOT_FOUND);
    EXPECT_EQ(module, nullptr);
    module = nowhere;
    EXPECT_FAILS(
        GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<char const*>(8), &module),
        ERROR_MOD_NOT_FOUND);
    EXPECT_EQ(module, nullptr);
}

TEST(Modules, areNotAskedForWithContraryFlags)
{
    HMODULE module = nullptr;

    EXPECT_FAILS(GetModuleHandleExA(0, "ZK_UTIL_DLL", nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(GetModuleHandleExA(8, "ZK_UTIL_DLL", &module), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(GetModuleHandleExA(3, "ZK_UTIL_DLL", &module), ERROR_INVALID_PARAMETER);
}

TEST(Modules, areLoadedUntilTheyAreFreed)
{
    HMODULE const module = LoadLibraryA(library);
    ASSERT_NE(module, nullptr);

    EXPECT_EQ(LoadLibraryA(library), module);
    EXPECT_EQ(GetModuleHandleA(library), module);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleA(library), module);
    EXPECT_TRUE(FreeLibrary(module));
}

TEST(Modules, areHeldByAHandleThatCounts)
{
    HMODULE const module = LoadLibraryA(library);
    HMODULE again = nullptr;
    EXPECT_TRUE(GetModuleHandleExA(0, library, &again));
    EXPECT_EQ(again, module);

    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleA(library), module);
    EXPECT_TRUE(FreeLibrary(module));
}

TEST(Modules, areNotLoadedFromWhatIsNoModule)
{
    TemporaryFolder const folder;
    folder.write("text.dll", "this is a text, and no module at all; so it goes on for a while");

    EXPECT_FAILS(LoadLibraryA("nonesuch.dll"), ERROR_MOD_NOT_FOUND);
    EXPECT_FAILS(LoadLibraryA(""), ERROR_MOD_NOT_FOUND);
    EXPECT_FAILS(LoadLibraryA(nullptr), ERROR_MOD_NOT_FOUND);
    EXPECT_FAILS(LoadLibraryA(folder.path("missing.dll").c_str()), ERROR_MOD_NOT_FOUND);
    EXPECT_FAILS(LoadLibraryA(folder.path("nofolder/missing.dll").c_str()), ERROR_MOD_NOT_FOUND);
    EXPECT_FAILS(LoadLibraryA(folder.path().c_str()), ERROR_MOD_NOT_FOUND);
    EXPECT_FAILS(LoadLibraryA(folder.path("text.dll").c_str()), ERROR_BAD_EXE_FORMAT);
}

TEST(Modules, areNotFreedWhenTheyAreNone)
{
    EXPECT_FAILS(FreeLibrary(nullptr), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(FreeLibrary(nowhere), ERROR_MOD_NOT_FOUND);
}

TEST(Modules, thatCameWithTheProgramStayWhenFreed)
{
    HMODULE const module = moduleOf(insideTheLibrary());

    EXPECT_TRUE(FreeLibrary(module));

    EXPECT_EQ(GetModuleHandleA("ZK_UTIL_DLL"), module);
}

TEST(Procedures, areFoundByName)
{
#ifdef _WIN32
    HMODULE const module = LoadLibraryA(library);
#else
    HMODULE const module = LoadLibraryA("libc.so.6");
#endif

    EXPECT_NE(procedure(module, exported), nullptr);
    FreeLibrary(module);
}

TEST(Procedures, areNotFoundInModulesThatMerelyImportThem)
{
    HMODULE const module = moduleOf(insideTheLibrary());

    EXPECT_FAILS(procedure(module, "noSuchThing"), ERROR_PROC_NOT_FOUND);
    EXPECT_FAILS(procedure(module, importedBy), ERROR_PROC_NOT_FOUND);
    EXPECT_FAILS(procedure(module, ""), ERROR_PROC_NOT_FOUND);
    EXPECT_FAILS(procedure(nullptr, "noSuchThing"), ERROR_PROC_NOT_FOUND);
    EXPECT_FAILS(procedure(nowhere, exported), ERROR_MOD_NOT_FOUND);
}

TEST(CommandLineOfTheProcess, beginsWithTheProgramAndStaysTheSame)
{
    char* const line = GetCommandLineA();

    ASSERT_NE(line, nullptr);
    std::string const program = zk::os::splitCommandLine(line).front();
    EXPECT_EQ(std::filesystem::path(program).stem(), "test_os");
    EXPECT_EQ(GetCommandLineA(), line);
}
