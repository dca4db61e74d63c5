#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/expectFails.h"
#include "tests/support/openDescriptors.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <optional>

using namespace zk::os;
using namespace zk::test;

namespace {

class TemporaryPath : public testing::Test {
protected:
    std::optional<std::string> const before_ =
        std::getenv("TMPDIR") ? std::optional<std::string>(std::getenv("TMPDIR")) : std::nullopt;

    ~TemporaryPath() override { SetEnvironmentVariableA("TMPDIR", before_ ? before_->c_str() : nullptr); }

    static std::string ask()
    {
        char buffer[5000];
        SetLastError(poisonedError);
        DWORD const length = GetTempPathA(sizeof buffer, buffer);
        EXPECT_EQ(GetLastError(), poisonedError);
        return std::string(buffer, length);
    }
};

class TemporaryNames : public testing::Test {
protected:
    TemporaryFolder folder_;
    char name_[MAX_PATH] = {};

    UINT make(UINT number = 0) { return GetTempFileNameA(folder_.path().c_str(), "zk", number, name_); }
};

}  // namespace

TEST_F(TemporaryPath, comesFromTheEnvironment)
{
    std::string const here = std::filesystem::current_path().string();
    struct Row {
        char const* value;
        std::string path;
    };
    Row const rows[] = {
        {nullptr, "/tmp/"},
        {"", "/tmp/"},
        {"/var/tmp", "/var/tmp/"},
        {"/var//tmp///", "/var/tmp/"},
        {"relative", here + "/relative/"},
        {"/a/../b", "/b/"},
        {"/", "/"},
    };
    for (Row const& row : rows) {
        SetEnvironmentVariableA("TMPDIR", row.value);

        EXPECT_EQ(ask(), row.path) << (row.value ? row.value : "(none)");
    }
}

TEST_F(TemporaryPath, keepsABackslashAsACharacter)
{
    SetEnvironmentVariableA("TMPDIR", "/a\\b");

    EXPECT_EQ(ask(), "/a\\b/");
}

TEST_F(TemporaryNames, areForTheirOwnerAlone)
{
    mode_t const before = umask(0);

    EXPECT_NE(make(), 0u);

    umask(before);
    struct stat status;
    ASSERT_EQ(stat(name_, &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
}

TEST_F(TemporaryNames, passOverThoseThatAreTaken)
{
    FaultInjector<&SystemCalls::open> const taken({.error = EEXIST, .times = 1000});

    EXPECT_NE(make(), 0u);

    EXPECT_EQ(taken.calls(), 1001);
    EXPECT_TRUE(std::filesystem::exists(name_));
}

TEST_F(TemporaryNames, runOut)
{
    FaultInjector<&SystemCalls::open> const taken({.error = EEXIST, .times = always});

    EXPECT_FAILS(make(), ERROR_FILE_EXISTS);

    EXPECT_EQ(taken.calls(), 0xFFFF) << "each number but 0 once";
}

TEST_F(TemporaryNames, thatCannotBeCreatedSayWhy)
{
    struct Row {
        int error;
        DWORD expected;
    };
    Row const rows[] = {{EMFILE, ERROR_TOO_MANY_OPEN_FILES},
                        {ENOSPC, ERROR_DISK_FULL},
                        {EACCES, ERROR_ACCESS_DENIED},
                        {EROFS, ERROR_WRITE_PROTECT}};
    for (Row const& row : rows) {
        FaultInjector<&SystemCalls::open> const broken({.error = row.error});
        EXPECT_FAILS(make(), row.expected);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(TemporaryNames, areCreatedAnewAfterASignal)
{
    std::ptrdiff_t const before = openDescriptors();
    FaultInjector<&SystemCalls::open> const signals({.error = EINTR, .times = 2});

    EXPECT_NE(make(), 0u);

    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(TemporaryNames, needAFolderWhosePathLeavesRoom)
{
    std::string folder = folder_.path();
    folder += '/' + std::string(MAX_PATH - 14 - folder.size() - 1, 'n');
    std::filesystem::create_directory(folder);

    EXPECT_NE(GetTempFileNameA(folder.c_str(), "pre", 0xFFFF, name_), 0u);
    EXPECT_EQ(std::string(name_), folder + "/preFFFF.tmp");

    std::filesystem::create_directory(folder + "n");
    EXPECT_FAILS(GetTempFileNameA((folder + "n").c_str(), "pre", 0xFFFF, name_), ERROR_BUFFER_OVERFLOW);
}

TEST_F(TemporaryNames, inAFolderOfSomebodyElseAreRefused)
{
    chmod(folder_.path().c_str(), 0755);

    asOrdinaryUser([&] {
        if (access(folder_.path().c_str(), W_OK) != 0) {
            EXPECT_FAILS(make(), ERROR_ACCESS_DENIED);
        }
    });
}

TEST(FullPaths, takeABackslashForACharacter)
{
    char buffer[100];
    char* part = nullptr;

    GetFullPathNameA("/a\\..\\b/c\\d", sizeof buffer, buffer, &part);

    EXPECT_STREQ(buffer, "/a\\..\\b/c\\d");
    EXPECT_STREQ(part, "c\\d");
}

TEST(FullPaths, areAsLongAsTheyComeOut)
{
    std::string name = "/";
    for (int repeat = 0; repeat < 100'000; ++repeat)
        name += "a/../";
    char buffer[10];

    EXPECT_EQ(GetFullPathNameA(name.c_str(), sizeof buffer, buffer, nullptr), 1u);

    EXPECT_STREQ(buffer, "/");
}

TEST(FullPaths, needTheCurrentDirectory)
{
    FaultInjector<&SystemCalls::getcwd> const broken({.error = EACCES});
    char buffer[10];

    EXPECT_FAILS(GetFullPathNameA("x", sizeof buffer, buffer, nullptr), ERROR_ACCESS_DENIED);
}
