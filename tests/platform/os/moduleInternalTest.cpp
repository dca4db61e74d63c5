#include "platform/os/os.h"

#include "platform/os/commandLine.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

#include <unistd.h>

using namespace zk::os;
using namespace zk::test;

namespace {

std::string linkTarget;

// The kernel tells a path of the test's choice for the executable.
class ExecutableLink {
public:
    explicit ExecutableLink(std::string target) noexcept : original_(systemCalls().readlink)
    {
        linkTarget = std::move(target);
        systemCalls().readlink = [](char const*, char* buffer, std::size_t length) {
            return static_cast<ssize_t>(linkTarget.copy(buffer, length));
        };
    }
    ~ExecutableLink() { systemCalls().readlink = original_; }

private:
    decltype(SystemCalls::readlink) original_;
};

void* procedure(HMODULE module, char const* name)
{
    return reinterpret_cast<void*>(GetProcAddress(module, name));
}

}  // namespace

TEST(ExecutablePath, losesTheKernelsMarkOfADeletedFile)
{
    ExecutableLink const link("/no/such/zk (deleted)");

    EXPECT_EQ(executablePath(), "/no/such/zk");
}

TEST(ExecutablePath, keepsTheMarkWhenTheFileIsCalledSo)
{
    TemporaryFolder const folder;
    folder.write("zk (deleted)", "");
    ExecutableLink const link(folder.path("zk (deleted)"));

    EXPECT_EQ(executablePath(), folder.path("zk (deleted)"));
}

TEST(ExecutablePath, mayBeLong)
{
    std::string const path = "/" + std::string(3000, 'x');
    ExecutableLink const link(path);

    EXPECT_EQ(executablePath(), path);
}

TEST(ExecutablePath, isCutWithANul)
{
    ExecutableLink const link("/bin/zk");
    char file[] = "xxxxxxxx";

    EXPECT_EQ(GetModuleFileNameA(nullptr, file, 5), 5u);

    EXPECT_EQ(std::string(file, 6), std::string("/bin\0x", 6));
}

TEST(ExecutablePath, isMissingWithoutTheKernelsHelp)
{
    FaultInjector<&SystemCalls::readlink> const broken({.error = ENOENT, .times = always});
    char file[64];

    EXPECT_FAILS(GetModuleFileNameA(nullptr, file, sizeof file), ERROR_FILE_NOT_FOUND);
}

TEST(CommandLineOfTheProcess, isThatOfTheKernel)
{
    auto const arguments = splitCommandLine(readCommandLine());

    EXPECT_EQ(std::filesystem::path(arguments.front()).filename(), "test_os_internals");
}

TEST(CommandLineOfTheProcess, isReadToItsEndInPieces)
{
    std::string const whole = readCommandLine();
    ShortTransfers<&SystemCalls::read> const drops(3);
    FaultInjector<&SystemCalls::open> const interrupted({.error = EINTR});

    EXPECT_EQ(readCommandLine(), whole);
}

TEST(CommandLineOfTheProcess, isTheProgramAloneWithoutTheKernelsHelp)
{
    auto const program = joinCommandLine({executablePath()});
    {
        FaultInjector<&SystemCalls::open> const broken({.error = EACCES});
        EXPECT_EQ(readCommandLine(), program);
    }
    {
        FaultInjector<&SystemCalls::read> const broken({.error = EIO});
        EXPECT_EQ(readCommandLine(), program);
    }
}

TEST(Modules, areLoadedByANameWithoutPrefixAndSuffix)
{
    TemporaryFolder const folder;

    EXPECT_FAILS(LoadLibraryA("zk-no-such-module"), ERROR_MOD_NOT_FOUND);
    HMODULE const byStem = LoadLibraryA("libm.so.6");
    ASSERT_NE(byStem, nullptr);
    EXPECT_EQ(GetModuleHandleA("m"), byStem);
    EXPECT_TRUE(FreeLibrary(byStem));
}

TEST(Modules, stayWhenPinned)
{
    HMODULE const module = LoadLibraryA("libanl.so.1");
    ASSERT_NE(module, nullptr);
    HMODULE pinned = nullptr;
    EXPECT_TRUE(GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN, "libanl.so.1", &pinned));

    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(FreeLibrary(module));

    EXPECT_EQ(GetModuleHandleA("anl"), module);
}

TEST(Procedures, haveNoNumbers)
{
    EXPECT_FAILS(procedure(nullptr, reinterpret_cast<char const*>(1)), ERROR_PROC_NOT_FOUND);
}
