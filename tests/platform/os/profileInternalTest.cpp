#include "platform/os/posix/profileCache.h"
#include "platform/os/profileFile.h"

#include "tests/support/FaultInjector.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/expectFails.h"
#include "tests/support/openDescriptors.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <limits>
#include <thread>

namespace zk::test {
namespace {

// The clock stands far in the future: what was written now is then old enough to be kept.
class LaterClock : public Interceptor<&SystemCalls::clock_gettime, LaterClock> {
public:
    template <class Result, class Call>
    Result intercept(Call call, clockid_t clock, timespec* now)
    {
        Result const result = call(clock, now);
        now->tv_sec += 1000;
        return result;
    }
};

// All files say that they are larger than they can be.
class HugeFiles : public Interceptor<&SystemCalls::fstat, HugeFiles> {
public:
    template <class Result, class Call>
    Result intercept(Call call, int descriptor, struct stat* status)
    {
        Result const result = call(descriptor, status);
        status->st_size = std::numeric_limits<off_t>::max();
        return result;
    }
};

class ProfileFile : public testing::Test {
protected:
    std::string read(char const* key) const
    {
        char buffer[100];
        GetPrivateProfileStringA("S", key, "DEF", buffer, sizeof buffer, file_.c_str());
        return buffer;
    }
    BOOL set(char const* key, char const* value) const
    {
        return WritePrivateProfileStringA("S", key, value, file_.c_str());
    }
    std::size_t entries() const
    {
        return std::size_t(std::distance(std::filesystem::directory_iterator(folder_.path()), {}));
    }
    mode_t mode() const
    {
        struct stat status;
        EXPECT_EQ(stat(file_.c_str(), &status), 0);
        return status.st_mode & 0777;
    }

    TemporaryFolder const folder_;
    std::string const file_ = folder_.path("p.ini");
};

TEST_F(ProfileFile, isReadAgainForOneStat)
{
    folder_.write("p.ini", "[S]\nk=v\n");
    LaterClock const clock;
    read("k");

    FaultInjector<&SystemCalls::stat> const stats({.onCall = always});
    FaultInjector<&SystemCalls::open> const opens({.onCall = always});
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(read("k"), "v");

    EXPECT_EQ(stats.calls(), 10);
    EXPECT_EQ(opens.calls(), 0);
}

TEST_F(ProfileFile, isLookedAtAnewAfterEachChange)
{
    for (char value = '0'; value <= '9'; ++value) {
        // The same size within one step of the clock: the times alone would not tell.
        folder_.write("p.ini", std::string("[S]\nk=") + value + "\n");
        EXPECT_EQ(read("k"), std::string(1, value));
    }
}

TEST_F(ProfileFile, isLookedAtAnewThoughSizeAndTimeOfWritingAreAsBefore)
{
    folder_.write("p.ini", "[S]\nk=1\n");
    struct stat before;
    ASSERT_EQ(stat(file_.c_str(), &before), 0);
    timespec const times[] = {before.st_atim, before.st_mtim};
    LaterClock const clock;
    EXPECT_EQ(read("k"), "1");

    std::this_thread::sleep_for(std::chrono::milliseconds(30));  // the kernel's clock goes by steps
    folder_.write("p.ini", "[S]\nk=2\n");
    ASSERT_EQ(utimensat(AT_FDCWD, file_.c_str(), times, 0), 0);
    EXPECT_EQ(read("k"), "2");

    folder_.write("other", "[S]\nk=3\n");
    ASSERT_EQ(utimensat(AT_FDCWD, folder_.path("other").c_str(), times, 0), 0);
    std::filesystem::rename(folder_.path("other"), file_);
    EXPECT_EQ(read("k"), "3");
}

TEST_F(ProfileFile, givesWayToOthersAndIsReadAgain)
{
    LaterClock const clock;
    for (int round = 0; round < 2; ++round)
        for (int number = 0; number < 20; ++number) {
            std::string const name = "p" + std::to_string(number) + ".ini";
            if (round == 0)
                folder_.write(name, "[S]\nk=" + std::to_string(number) + "\n");
            char value[8];
            GetPrivateProfileStringA("S", "k", "DEF", value, sizeof value, folder_.path(name).c_str());
            EXPECT_EQ(value, std::to_string(number));
        }
}

TEST_F(ProfileFile, isForgottenWhenItIsGone)
{
    folder_.write("p.ini", "[S]\nk=v\n");
    LaterClock const clock;
    read("k");

    unlink(file_.c_str());

    EXPECT_EQ(read("k"), "DEF");
}

TEST_F(ProfileFile, givesDefaultsWhenItCannotBeRead)
{
    folder_.write("p.ini", "[S]\nk=v\n");

    FaultInjector<&SystemCalls::read> const broken({.error = EIO});
    EXPECT_EQ(read("k"), "DEF");
    EXPECT_EQ(GetLastError(), ERROR_IO_DEVICE);
}

TEST_F(ProfileFile, isNeitherReadNorWrittenWhereItIsTooLarge)
{
    folder_.write("p.ini", "[S]\nk=old\n");
    {
        HugeFiles const huge;
        EXPECT_EQ(read("k"), "DEF");
        EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY);
        EXPECT_FAILS(set("k", "new"), ERROR_NOT_ENOUGH_MEMORY);
    }
    EXPECT_EQ(folder_.read("p.ini"), "[S]\nk=old\n");

    // A file that takes no room on the disk, but would in memory.
    ASSERT_EQ(truncate(file_.c_str(), off_t(3) << 30), 0);
    EXPECT_EQ(read("k"), "DEF");
    EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_FAILS(set("k", "new"), ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(entries(), 1u);
}

TEST_F(ProfileFile, holdsAValueOfAMegabyte)
{
    std::string const value(1 << 20, 'x');
    ASSERT_TRUE(set("before", "1"));
    ASSERT_TRUE(set("k", value.c_str()));
    ASSERT_TRUE(set("after", "2"));

    std::string buffer(value.size() + 1, '~');
    EXPECT_EQ(GetPrivateProfileStringA("S", "k", "", buffer.data(), DWORD(buffer.size()), file_.c_str()),
              value.size());
    EXPECT_TRUE(buffer.starts_with(value));
    EXPECT_EQ(read("after"), "2");
}

TEST_F(ProfileFile, isNoPipe)
{
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);

    EXPECT_EQ(read("k"), "DEF");
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(set("k", "v"), ERROR_ACCESS_DENIED);
}

TEST_F(ProfileFile, keepsItsMode)
{
    folder_.write("p.ini", "[S]\nk=1\n");
    for (mode_t const wanted : {0600u, 0644u, 0660u}) {
        chmod(file_.c_str(), wanted);
        EXPECT_TRUE(set("k", std::to_string(wanted).c_str()));
        EXPECT_EQ(mode(), wanted);
    }
}

TEST_F(ProfileFile, keepsItsOwnerAsFarAsThatIsAllowed)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can give a file away";
    constexpr uid_t other = 65534;
    folder_.write("p.ini", "[S]\nk=1\n");
    ASSERT_EQ(chown(file_.c_str(), other, other), 0);
    struct stat status;

    EXPECT_TRUE(set("k", "2"));
    ASSERT_EQ(stat(file_.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, other);
    EXPECT_EQ(status.st_gid, other);

    {
        FaultInjector<&SystemCalls::fchown> const refused({.error = EPERM});
        EXPECT_TRUE(set("k", "3"));
        EXPECT_EQ(refused.calls(), 2) << "the second time for the group alone";
    }
    ASSERT_EQ(stat(file_.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, geteuid());
    EXPECT_EQ(status.st_gid, other);
}

TEST_F(ProfileFile, isOnTheDiskBeforeAndBehindItsRenaming)
{
    int flushed = 0;
    int flushedBefore = 0;
    {
        BeforeCall<&SystemCalls::fsync> const flushes([&] { ++flushed; });
        BeforeCall<&SystemCalls::rename> const renames([&] { flushedBefore = flushed; });
        EXPECT_TRUE(set("k", "1"));
    }
    EXPECT_EQ(flushedBefore, 1);
    EXPECT_EQ(flushed, 2) << "the folder too";

    FaultInjector<&SystemCalls::fsync> const lost({.error = EIO, .onCall = 2});
    EXPECT_TRUE(set("k", "2")) << "it is in place already";
}

TEST_F(ProfileFile, staysALink)
{
    folder_.makeFolder("real");
    folder_.write("real/target.ini", "[S]\nk=1\n");
    ASSERT_EQ(symlink("real/target.ini", folder_.path("second").c_str()), 0);
    ASSERT_EQ(symlink(folder_.path("second").c_str(), file_.c_str()), 0);

    EXPECT_TRUE(set("k", "2"));

    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.path("second")));
    EXPECT_EQ(folder_.read("real/target.ini"), "[S]\nk=2\n");
}

TEST_F(ProfileFile, isMadeBehindALinkThatLeadsNowhere)
{
    ASSERT_EQ(symlink("target.ini", file_.c_str()), 0);

    EXPECT_TRUE(set("k", "2"));

    EXPECT_EQ(folder_.read("target.ini"), "[S]\nk=2\n");
}

TEST_F(ProfileFile, isNotLookedForInACircleOfLinks)
{
    ASSERT_EQ(symlink("p.ini", file_.c_str()), 0);

    EXPECT_FAILS(set("k", "2"), ERROR_CANT_RESOLVE_FILENAME);
}

TEST_F(ProfileFile, leavesNothingBesideIt)
{
    EXPECT_TRUE(set("k", "1"));
    std::ptrdiff_t const before = openDescriptors();
    EXPECT_TRUE(set("k", "2"));
    EXPECT_FAILS(set("k", "a\nb"), ERROR_INVALID_PARAMETER);

    EXPECT_EQ(entries(), 1u);
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(ProfileFile, takesAwayWhatAKilledWriterLeft)
{
    folder_.write("p.ini", "[S]\nk=1\n");
    folder_.write(".p.ini.lock", "");
    folder_.write(".p.ini.new", "half");

    EXPECT_TRUE(set("k", "2"));

    EXPECT_EQ(entries(), 1u);
    EXPECT_EQ(read("k"), "2");
}

TEST_F(ProfileFile, isWrittenBesideTheLockFileOfAnotherUser)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can leave a file to another user";
    chmod(folder_.path().c_str(), 0777);
    folder_.write(".p.ini.lock", "");
    chmod(folder_.path(".p.ini.lock").c_str(), 0644);

    asOrdinaryUser([&] { EXPECT_TRUE(set("k", "1")); });

    EXPECT_EQ(read("k"), "1");
    EXPECT_EQ(entries(), 1u);
}

TEST_F(ProfileFile, isWrittenWhereTheFileSystemHasNoLocks)
{
    for (int const error : {ENOLCK, EOPNOTSUPP}) {
        FaultInjector<&SystemCalls::flock> const none({.error = error, .times = always});
        folder_.write(".p.ini.new", "of another writer");

        EXPECT_TRUE(set("k", std::to_string(error).c_str()));

        EXPECT_EQ(read("k"), std::to_string(error));
        EXPECT_EQ(folder_.read(".p.ini.new"), "of another writer");
        EXPECT_EQ(entries(), 2u);
    }
}

TEST_F(ProfileFile, followsNoLinkThatStandsInItsHelpersPlace)
{
    folder_.write("victim", "precious");
    ASSERT_EQ(symlink("victim", folder_.path(".p.ini.new").c_str()), 0);
    EXPECT_TRUE(set("k", "1"));

    ASSERT_EQ(symlink("victim", folder_.path(".p.ini.lock").c_str()), 0);
    EXPECT_FALSE(set("k", "2"));

    EXPECT_EQ(folder_.read("victim"), "precious");
    EXPECT_EQ(read("k"), "1");
}

template <auto Entry>
void expectOldContentAfter(ProfileFile const&, std::string const& file, TemporaryFolder const& folder,
                           int error, DWORD expected)
{
    folder.write("p.ini", "[S]\nk=old\n");
    {
        FaultInjector<Entry> const fault({.error = error});
        EXPECT_FAILS(WritePrivateProfileStringA("S", "k", "new", file.c_str()), expected);
        EXPECT_GE(fault.calls(), 1);
    }
    EXPECT_EQ(folder.read("p.ini"), "[S]\nk=old\n");
    EXPECT_FALSE(folder.exists(".p.ini.new"));
    EXPECT_FALSE(folder.exists(".p.ini.lock"));
}

TEST_F(ProfileFile, keepsItsContentWhenAWriteFails)
{
    expectOldContentAfter<&SystemCalls::write>(*this, file_, folder_, ENOSPC, ERROR_DISK_FULL);
    expectOldContentAfter<&SystemCalls::fsync>(*this, file_, folder_, EIO, ERROR_IO_DEVICE);
    expectOldContentAfter<&SystemCalls::rename>(*this, file_, folder_, EROFS, ERROR_WRITE_PROTECT);
    expectOldContentAfter<&SystemCalls::fchmod>(*this, file_, folder_, EPERM, ERROR_ACCESS_DENIED);
    expectOldContentAfter<&SystemCalls::flock>(*this, file_, folder_, EIO, ERROR_IO_DEVICE);
    expectOldContentAfter<&SystemCalls::fstat>(*this, file_, folder_, EIO, ERROR_IO_DEVICE);
    expectOldContentAfter<&SystemCalls::read>(*this, file_, folder_, EIO, ERROR_IO_DEVICE);
    expectOldContentAfter<&SystemCalls::open>(*this, file_, folder_, EMFILE, ERROR_TOO_MANY_OPEN_FILES);
}

TEST_F(ProfileFile, isWrittenThroughInterruptionsAndShortWrites)
{
    ShortTransfers<&SystemCalls::write> const drops(3);
    FaultInjector<&SystemCalls::flock> const interrupted({.error = EINTR, .times = 3});

    EXPECT_TRUE(set("k", "a long value"));

    EXPECT_EQ(folder_.read("p.ini"), "[S]\nk=a long value\n");
}

TEST_F(ProfileFile, staysAsItIsWhereTheUserMayNotWrite)
{
    folder_.write("p.ini", "[S]\nk=old\n");
    chmod(file_.c_str(), 0444);
    chmod(folder_.path().c_str(), 0755);

    EXPECT_FAILS(set("k", "new"), ERROR_ACCESS_DENIED);
    chmod(file_.c_str(), 0644);
    if (geteuid() == 0)
        asOrdinaryUser([&] { EXPECT_FAILS(set("k", "new"), ERROR_ACCESS_DENIED); });

    EXPECT_EQ(folder_.read("p.ini"), "[S]\nk=old\n");
}

TEST_F(ProfileFile, isNotReplacedByWhoMayNotWriteIt)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can leave a file to another user";
    folder_.write("p.ini", "[S]\nk=old\n");
    chmod(file_.c_str(), 0644);
    chmod(folder_.path().c_str(), 0777);

    asOrdinaryUser([&] { EXPECT_FAILS(set("k", "new"), ERROR_ACCESS_DENIED); });

    struct stat status;
    ASSERT_EQ(stat(file_.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 0u);
    EXPECT_EQ(folder_.read("p.ini"), "[S]\nk=old\n");
    EXPECT_EQ(entries(), 1u);
}

TEST_F(ProfileFile, inUtf16TakesNoBytesThatAreNoUtf8)
{
    std::string const content("\xFF\xFE[\0S\0]\0\n\0", 10);
    folder_.write("p.ini", content);

    EXPECT_FAILS(set("k", "\xE9"), ERROR_INVALID_PARAMETER);

    EXPECT_EQ(folder_.read("p.ini"), content);
}

// -- Bare names ------------------------------------------------------------------------

class BareProfile : public testing::Test {
protected:
    BareProfile() { SetEnvironmentVariableA("XDG_CONFIG_HOME", folder_.path("config").c_str()); }
    ~BareProfile() override
    {
        SetEnvironmentVariableA("XDG_CONFIG_HOME", nullptr);
        SetEnvironmentVariableA("HOME", home_.c_str());
    }

    TemporaryFolder const folder_;
    std::string const home_ = getenv("HOME") ? getenv("HOME") : "/";
};

TEST_F(BareProfile, liesInTheUsersConfiguration)
{
    EXPECT_EQ(os::profileFile("my.ini"), folder_.path("config/zentrika/my.ini"));
    EXPECT_EQ(os::profileFile("./my.ini"), "./my.ini");
}

TEST_F(BareProfile, withoutNameIsNoFile)
{
    EXPECT_EQ(os::profileFile(""), "");
    EXPECT_FAILS(WritePrivateProfileStringA("S", "k", "v", ""), ERROR_ACCESS_DENIED);
}

TEST_F(BareProfile, hasANameWhereNoneIsGiven)
{
    EXPECT_TRUE(WritePrivateProfileStringA("S", "k", "v", nullptr));

    char buffer[8] = {};
    EXPECT_EQ(GetPrivateProfileStringA("S", "k", "DEF", buffer, 8, "win.ini"), 1u);
    EXPECT_STREQ(buffer, "v");
    EXPECT_EQ(GetPrivateProfileStringA("S", "k", "DEF", buffer, 8, nullptr), 1u);
}

TEST_F(BareProfile, makesAllFoldersThatAreMissing)
{
    SetEnvironmentVariableA("XDG_CONFIG_HOME", folder_.path("none/deeper/config").c_str());

    EXPECT_TRUE(WritePrivateProfileStringA("S", "k", "v", "my.ini"));

    EXPECT_EQ(folder_.read("none/deeper/config/zentrika/my.ini"), "[S]\nk=v\n");
    struct stat status;
    ASSERT_EQ(stat(folder_.path("none").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
}

TEST_F(BareProfile, liesBelowTheHomeFolderOtherwise)
{
    SetEnvironmentVariableA("HOME", folder_.path().c_str());
    for (char const* const unusable : {static_cast<char const*>(nullptr), "", "relative"}) {
        SetEnvironmentVariableA("XDG_CONFIG_HOME", unusable);
        EXPECT_EQ(os::profileFile("my.ini"), folder_.path(".config/zentrika/my.ini"));
    }
}

TEST_F(BareProfile, asksTheUsersEntryForAMissingHome)
{
    SetEnvironmentVariableA("XDG_CONFIG_HOME", nullptr);
    SetEnvironmentVariableA("HOME", nullptr);
    EXPECT_NE(os::profileFile("my.ini"), "");

    FaultInjector<&SystemCalls::getpwuid_r> const unknown({.error = ENOENT, .times = always});
    EXPECT_EQ(os::profileFile("my.ini"), "");
    EXPECT_FAILS(WritePrivateProfileStringA("S", "k", "v", "my.ini"), ERROR_PATH_NOT_FOUND);
    char buffer[8];
    EXPECT_EQ(GetPrivateProfileStringA("S", "k", "DEF", buffer, 8, "my.ini"), 3u);
}

TEST_F(BareProfile, isMadeAtTheFirstWriteForTheUserAlone)
{
    char buffer[8];
    EXPECT_EQ(GetPrivateProfileStringA("S", "k", "DEF", buffer, 8, "my.ini"), 3u);
    EXPECT_TRUE(WritePrivateProfileStringA("S", "k", nullptr, "my.ini"));
    EXPECT_FALSE(folder_.exists("config"));

    EXPECT_TRUE(WritePrivateProfileStringA("S", "k", "v", "my.ini"));

    EXPECT_EQ(GetPrivateProfileStringA("S", "k", "DEF", buffer, 8, "my.ini"), 1u);
    struct stat status;
    ASSERT_EQ(stat(folder_.path("config/zentrika").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
}

TEST_F(ProfileFile, isReadAndWrittenByManyThreads)
{
    ASSERT_TRUE(set("k", "0"));
    std::atomic<int> bad = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < 50; ++i) {
                if (t == 0)
                    set("k", std::to_string(i).c_str());
                else if (read("k") == "DEF")
                    ++bad;
            }
        });
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(bad, 0);
    EXPECT_EQ(read("k"), "49");
}

}  // namespace
}  // namespace zk::test
