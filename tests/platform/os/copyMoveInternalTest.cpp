#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/expectFails.h"
#include "tests/support/openDescriptors.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>

using namespace zk::os;
using namespace zk::test;

namespace fs = std::filesystem;

namespace {

std::string const content = std::string(600'000, 'x') + "end";

class CopyFailures : public testing::Test {
protected:
    TemporaryFolder folder_;
    std::ptrdiff_t const descriptors_ = openDescriptors();

    CopyFailures() { folder_.write("from", content); }

    std::string path(std::string_view name) const { return folder_.path(name); }

    BOOL copy(std::string_view from = "from", std::string_view to = "to", BOOL failIfExists = FALSE) const
    {
        return CopyFileA(path(from).c_str(), path(to).c_str(), failIfExists);
    }

    BOOL move(DWORD flags, std::string_view from = "from", std::string_view to = "to") const
    {
        return MoveFileExA(path(from).c_str(), path(to).c_str(), flags);
    }

    std::size_t entryCount() const
    {
        return std::size_t(std::distance(fs::directory_iterator(folder_.path()), fs::directory_iterator()));
    }

    mode_t modeOf(std::string_view name) const
    {
        struct stat status = {};
        EXPECT_EQ(lstat(path(name).c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    // The old content survives, and nothing is left beside it.
    template <auto Entry>
    void expectCopyFails(Fault fault, DWORD error)
    {
        folder_.write("to", "old");
        {
            FaultInjector<Entry> const broken(fault);
            EXPECT_FAILS(copy(), error);
        }
        EXPECT_EQ(folder_.read("to"), "old");
        EXPECT_EQ(folder_.read("from"), content);
        EXPECT_EQ(entryCount(), 2u);
        EXPECT_EQ(openDescriptors(), descriptors_);
    }

    // The same for a move to another file system.
    template <auto Entry>
    void expectMoveFails(Fault fault, DWORD error)
    {
        folder_.write("to", "old");
        {
            FaultInjector<&SystemCalls::rename> const elsewhere({.error = EXDEV});
            FaultInjector<Entry> const broken(fault);
            EXPECT_FAILS(move(MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED), error);
        }
        EXPECT_EQ(folder_.read("to"), "old");
        EXPECT_EQ(folder_.read("from"), content);
        EXPECT_EQ(entryCount(), 2u);
        EXPECT_EQ(openDescriptors(), descriptors_);
    }
};

class CopyMeans : public CopyFailures { };
class MoveFailures : public CopyFailures { };
class MovesToAnotherFileSystem : public CopyFailures { };
class MovesOfLinks : public CopyFailures { };

}  // namespace

TEST_F(CopyFailures, loseNothingAndLeaveNothing)
{
    expectCopyFails<&SystemCalls::open>({.error = EMFILE, .onCall = 2, .times = always},
                                        ERROR_TOO_MANY_OPEN_FILES);
    expectCopyFails<&SystemCalls::open>({.error = EACCES, .onCall = 3}, ERROR_ACCESS_DENIED);
    expectCopyFails<&SystemCalls::open>({.error = ENOSPC, .onCall = 3}, ERROR_DISK_FULL);
    expectCopyFails<&SystemCalls::fstat>({.error = EIO}, ERROR_IO_DEVICE);
    expectCopyFails<&SystemCalls::copy_file_range>({.error = ENOSPC}, ERROR_DISK_FULL);
    expectCopyFails<&SystemCalls::copy_file_range>({.error = EIO}, ERROR_IO_DEVICE);
    expectCopyFails<&SystemCalls::fchmod>({.error = EIO}, ERROR_IO_DEVICE);
    expectCopyFails<&SystemCalls::futimens>({.error = EACCES}, ERROR_ACCESS_DENIED);
    expectCopyFails<&SystemCalls::rename>({.error = EACCES}, ERROR_ACCESS_DENIED);
    expectCopyFails<&SystemCalls::rename>({.error = ENOSPC}, ERROR_DISK_FULL);
    expectCopyFails<&SystemCalls::statx>({.error = EIO}, ERROR_IO_DEVICE);
    expectCopyFails<&SystemCalls::statx>({.error = EACCES, .onCall = 2}, ERROR_ACCESS_DENIED);
}

TEST_F(CopyFailures, ofALinkThatCannotBeResolvedAreReported)
{
    fs::create_symlink("real", path("link"));
    folder_.write("real", "old");
    FaultInjector<&SystemCalls::realpath> const broken({.error = EACCES});

    EXPECT_FAILS(copy("from", "link"), ERROR_ACCESS_DENIED);

    EXPECT_EQ(folder_.read("real"), "old");
}

TEST_F(CopyFailures, ofTheWayThroughABufferLoseNothingEither)
{
    FaultInjector<&SystemCalls::copy_file_range> const elsewhere({.error = EXDEV, .times = always});

    expectCopyFails<&SystemCalls::write>({.error = ENOSPC, .onCall = 2}, ERROR_DISK_FULL);
    expectCopyFails<&SystemCalls::write>({.error = EDQUOT}, ERROR_DISK_FULL);
    expectCopyFails<&SystemCalls::read>({.error = EIO, .onCall = 2}, ERROR_IO_DEVICE);
}

TEST_F(CopyFailures, areWhatClosingTheCopySays)
{
    folder_.write("to", "old");
    {
        // Closings: the look at the target, then the copy; the source is closed last.
        FaultInjector<&SystemCalls::close> const full({.error = ENOSPC, .onCall = 2});
        EXPECT_FAILS(copy(), ERROR_DISK_FULL);
    }

    EXPECT_EQ(folder_.read("to"), "old");
    EXPECT_EQ(entryCount(), 2u);
}

TEST_F(CopyFailures, bySignalsGoUnnoticed)
{
    FaultInjector<&SystemCalls::copy_file_range> const copies({.error = EINTR, .times = 2});
    FaultInjector<&SystemCalls::open> const opens({.error = EINTR, .times = 2});

    EXPECT_TRUE(copy());

    EXPECT_EQ(folder_.read("to"), content);
}

TEST_F(CopyFailures, inAFolderOfSomebodyElseLeaveTheOldContent)
{
    chmod(folder_.path().c_str(), 0755);
    chmod(path("from").c_str(), 0644);
    folder_.write("to", "old");
    chmod(path("to").c_str(), 0666);

    asOrdinaryUser([&] {
        if (access(folder_.path().c_str(), W_OK) == 0)
            return;  // the tests don't run as the superuser, and the folder is this user's
        EXPECT_FAILS(copy(), ERROR_ACCESS_DENIED);
        EXPECT_FAILS(copy("from", "new"), ERROR_ACCESS_DENIED);
        EXPECT_FAILS(move(0, "from", "new"), ERROR_ACCESS_DENIED);
        EXPECT_FAILS(move(MOVEFILE_REPLACE_EXISTING), ERROR_ACCESS_DENIED);
        EXPECT_FAILS(DeleteFileA(path("to").c_str()), ERROR_ACCESS_DENIED);
    });

    EXPECT_EQ(folder_.read("to"), "old");
    EXPECT_EQ(entryCount(), 2u);
}

TEST_F(CopyFailures, ofAReadOnlyTargetHoldForTheSuperuserToo)
{
    folder_.write("to", "old");
    SetFileAttributesA(path("to").c_str(), FILE_ATTRIBUTE_READONLY);

    EXPECT_FAILS(copy(), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(move(MOVEFILE_REPLACE_EXISTING), ERROR_ACCESS_DENIED);

    EXPECT_EQ(folder_.read("to"), "old");
}

TEST_F(CopyFailures, areWhatSpecialFilesGive)
{
    ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);

    EXPECT_FAILS(copy("fifo", "to"), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(copy("from", "fifo"), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(CopyFileA(path("from").c_str(), "/dev/null", FALSE), ERROR_ACCESS_DENIED);

    EXPECT_EQ(entryCount(), 2u);
}

TEST_F(CopyFailures, meetATargetThatCameMeanwhile)
{
    BeforeCall<&SystemCalls::renameat2> const race([this] { folder_.write("to", "other"); });

    EXPECT_FAILS(copy("from", "to", TRUE), ERROR_FILE_EXISTS);

    EXPECT_EQ(folder_.read("to"), "other");
    EXPECT_EQ(entryCount(), 2u);
}

TEST_F(CopyMeans, takeTheBufferWhereTheKernelCannotCopy)
{
    int const errors[] = {EXDEV, EINVAL, ENOSYS, EOPNOTSUPP};
    for (int const error : errors) {
        FaultInjector<&SystemCalls::copy_file_range> const unable({.error = error, .times = always});
        FaultInjector<&SystemCalls::write> const interrupted({.error = EINTR});

        EXPECT_TRUE(copy());

        EXPECT_EQ(folder_.read("to"), content) << error;
    }
}

TEST_F(CopyMeans, goOnWhereTheKernelStopped)
{
    ShortTransfers<&SystemCalls::copy_file_range> const pieces(100'000);
    FaultInjector<&SystemCalls::copy_file_range> const stops({.error = EXDEV, .onCall = 3, .times = always});
    ShortTransfers<&SystemCalls::write> const drops(999);

    EXPECT_TRUE(copy());

    EXPECT_EQ(folder_.read("to"), content);
}

TEST_F(CopyMeans, readFilesThatClaimToBeEmpty)
{
    EXPECT_TRUE(CopyFileA("/proc/self/status", path("to").c_str(), FALSE));

    EXPECT_NE(folder_.read("to").find("Pid:"), std::string::npos);
}

TEST_F(CopyMeans, keepTheModeButNotTheBitsThatLendRights)
{
    chmod(path("from").c_str(), 0750);
    EXPECT_TRUE(copy());
    EXPECT_EQ(modeOf("to"), 0750u);

    chmod(path("from").c_str(), 06755);
    EXPECT_TRUE(copy());
    EXPECT_EQ(modeOf("to"), 0755u);
}

TEST_F(CopyMeans, passOverATemporaryNameThatIsTaken)
{
    FaultInjector<&SystemCalls::open> const taken({.error = EEXIST, .onCall = 2});

    EXPECT_TRUE(copy());

    EXPECT_EQ(folder_.read("to"), content);
    EXPECT_EQ(entryCount(), 2u);
}

TEST_F(CopyMeans, worksForTheLongestNames)
{
    std::string const longest(255, 'n');

    EXPECT_TRUE(copy("from", longest));
    EXPECT_TRUE(copy("from", longest));

    EXPECT_EQ(folder_.read(longest), content);
}

TEST_F(CopyMeans, followLinksOnBothSides)
{
    folder_.write("real", "old");
    fs::create_symlink("from", path("source"));
    fs::create_symlink("real", path("target"));

    EXPECT_TRUE(copy("source", "target"));

    EXPECT_EQ(folder_.read("real"), content);
    EXPECT_TRUE(fs::is_symlink(path("target")));
    EXPECT_TRUE(fs::is_symlink(path("source")));
    EXPECT_FAILS(copy("from", "source"), ERROR_SHARING_VIOLATION);
}

TEST_F(CopyMeans, doNotWriteWhereALinkLeadsNowhere)
{
    fs::create_symlink(path("elsewhere"), path("target"));

    EXPECT_FAILS(copy("from", "target"), ERROR_FILE_NOT_FOUND);

    EXPECT_FALSE(folder_.exists("elsewhere"));
    EXPECT_TRUE(fs::is_symlink(path("target")));
}

TEST_F(MoveFailures, areWhatOtherFlagsGive)
{
    DWORD const flags[] = {4, 0x10, 0x20, 0x40, 0x80000000};
    for (DWORD const flag : flags)
        EXPECT_FAILS(move(flag | MOVEFILE_COPY_ALLOWED), ERROR_INVALID_PARAMETER);

    EXPECT_FALSE(folder_.exists("to"));
}

TEST_F(MoveFailures, areReported)
{
    struct Row {
        int error;
        DWORD expected;
    };
    Row const rows[] = {{EACCES, ERROR_ACCESS_DENIED}, {EROFS, ERROR_WRITE_PROTECT},
                        {ENOSPC, ERROR_DISK_FULL},     {EIO, ERROR_IO_DEVICE},
                        {EBUSY, ERROR_BUSY},           {EEXIST, ERROR_ALREADY_EXISTS}};
    for (Row const& row : rows) {
        FaultInjector<&SystemCalls::renameat2> const broken({.error = row.error});
        EXPECT_FAILS(move(0), row.expected);
    }
    EXPECT_EQ(folder_.read("from"), content);
}

TEST_F(MoveFailures, areWhatTheNamesForAFolderAndItsParentGive)
{
    folder_.makeFolder("sub");
    folder_.makeFolder("sub/inner");

    EXPECT_FAILS(move(0, "sub/.", "to"), ERROR_SHARING_VIOLATION);
    EXPECT_FAILS(move(0, "sub/inner/..", "to"), ERROR_SHARING_VIOLATION);

    EXPECT_TRUE(folder_.exists("sub/inner"));
}

TEST_F(MoveFailures, meetATargetThatCameMeanwhile)
{
    BeforeCall<&SystemCalls::renameat2> const race([this] { folder_.write("to", "other"); });

    EXPECT_FAILS(move(0), ERROR_ALREADY_EXISTS);

    EXPECT_EQ(folder_.read("to"), "other");
    EXPECT_EQ(folder_.read("from"), content);
}

TEST_F(MoveFailures, meetASourceThatWentMeanwhile)
{
    BeforeCall<&SystemCalls::renameat2> const race([this] { fs::remove(path("from")); });

    EXPECT_FAILS(move(0), ERROR_FILE_NOT_FOUND);
}

TEST_F(MoveFailures, areNoneWhereTheFileSystemCannotRenameWithoutReplacing)
{
    int const errors[] = {EINVAL, ENOSYS};
    for (int const error : errors) {
        FaultInjector<&SystemCalls::renameat2> const unable({.error = error, .times = always});
        EXPECT_TRUE(move(0));
        EXPECT_TRUE(move(0, "to", "from"));
        {
            FaultInjector<&SystemCalls::link> const unlinked({.error = EPERM, .times = always});
            EXPECT_TRUE(move(0));
            BeforeCall<&SystemCalls::lstat> const race([this] { folder_.write("from", "other"); });
            EXPECT_FAILS(move(0, "to", "from"), ERROR_ALREADY_EXISTS);
            fs::remove(path("from"));
        }
        {
            BeforeCall<&SystemCalls::link> const race([this] { folder_.write("from", "other"); });
            EXPECT_FAILS(move(0, "to", "from"), ERROR_ALREADY_EXISTS);
            fs::remove(path("from"));
        }
        EXPECT_TRUE(move(0, "to", "from"));
    }
    EXPECT_EQ(folder_.read("from"), content);
    EXPECT_EQ(entryCount(), 1u);
}

TEST_F(MoveFailures, ofAFolderInThePlaceOfAFileLoseNeither)
{
    folder_.makeFolder("folder");
    {
        FaultInjector<&SystemCalls::renameat2> const unable({.error = EINVAL});
        EXPECT_FAILS(move(MOVEFILE_REPLACE_EXISTING, "folder", "from"), ERROR_INVALID_PARAMETER);
    }

    EXPECT_TRUE(fs::is_directory(path("folder")));
    EXPECT_EQ(folder_.read("from"), content);
    {
        FaultInjector<&SystemCalls::unlink> const stuck({.error = EPERM});
        EXPECT_FAILS(move(MOVEFILE_REPLACE_EXISTING, "folder", "from"), ERROR_ACCESS_DENIED);
    }

    EXPECT_TRUE(fs::is_directory(path("folder"))) << "both stand where they stood";
    EXPECT_EQ(folder_.read("from"), content);
}

TEST_F(MoveFailures, leaveOneNameWhereTheOldOneCannotGo)
{
    FaultInjector<&SystemCalls::renameat2> const unable({.error = EINVAL});
    FaultInjector<&SystemCalls::unlink> const stuck({.error = EPERM});

    EXPECT_FAILS(move(0), ERROR_ACCESS_DENIED);

    EXPECT_EQ(folder_.read("from"), content);
    EXPECT_EQ(entryCount(), 1u);
}

TEST_F(MoveFailures, areNotWhatTheDiskSaysToAMoveThatIsDone)
{
    struct Row {
        int openError;
        int flushError;
    };
    Row const rows[] = {{0, EIO}, {0, ENOSPC}, {0, EINVAL}, {EACCES, 0}, {EMFILE, 0}};
    for (Row const& row : rows) {
        {
            // The first opening looks whether somebody has the file open.
            FaultInjector<&SystemCalls::open> const opens(
                {.error = row.openError, .onCall = 2, .times = row.openError != 0});
            FaultInjector<&SystemCalls::fsync> const flushes(
                {.error = row.flushError, .times = row.flushError != 0});
            EXPECT_SUCCEEDS(move(MOVEFILE_WRITE_THROUGH));
            EXPECT_EQ(opens.calls(), 2);
        }
        EXPECT_FALSE(folder_.exists("from"));
        EXPECT_TRUE(move(0, "to", "from"));
    }
    EXPECT_EQ(folder_.read("from"), content);
}

TEST_F(MoveFailures, areWhatCannotBeFoundOutAboutOthers)
{
    FaultInjector<&SystemCalls::open> const full({.error = EMFILE, .times = always});

    EXPECT_FAILS(move(0), ERROR_TOO_MANY_OPEN_FILES);
    EXPECT_FAILS(DeleteFileA(path("from").c_str()), ERROR_TOO_MANY_OPEN_FILES);

    EXPECT_TRUE(folder_.exists("from"));
}

TEST_F(MoveFailures, areNoneInAFolderThatMayBeWrittenButNotRead)
{
    chmod(folder_.path().c_str(), 0755);
    folder_.makeFolder("drop");
    folder_.write("drop/file", content);
    chmod(path("drop/file").c_str(), 0666);
    chmod(path("drop").c_str(), 0333);

    asOrdinaryUser([&] {
        WIN32_FIND_DATAA entry;
        EXPECT_FAILS(FindFirstFileA(path("drop/*").c_str(), &entry), ERROR_ACCESS_DENIED);
        EXPECT_TRUE(FindClose(FindFirstFileA(path("drop/file").c_str(), &entry)));
        EXPECT_TRUE(writeText(openFile(path("drop/new"), GENERIC_WRITE, 0, CREATE_NEW).get(), "abc"));
        EXPECT_SUCCEEDS(copy("drop/file", "drop/copy"));
        EXPECT_SUCCEEDS(copy("drop/file", "drop/copy"));
        EXPECT_SUCCEEDS(move(MOVEFILE_WRITE_THROUGH, "drop/copy", "drop/moved"));
        EXPECT_SUCCEEDS(move(MOVEFILE_WRITE_THROUGH | MOVEFILE_REPLACE_EXISTING, "drop/new", "drop/moved"));
        {
            FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV});
            EXPECT_SUCCEEDS(move(MOVEFILE_COPY_ALLOWED, "drop/moved", "drop/last"));
        }
        EXPECT_FAILS(GetFileAttributesA(path("drop/moved").c_str()), ERROR_FILE_NOT_FOUND);
        EXPECT_SUCCEEDS(CreateDirectoryA(path("drop/sub").c_str(), nullptr));
        EXPECT_SUCCEEDS(RemoveDirectoryA(path("drop/sub").c_str()));
        EXPECT_SUCCEEDS(DeleteFileA(path("drop/last").c_str()));
    });

    chmod(path("drop").c_str(), 0700);
    EXPECT_EQ(folder_.read("drop/file"), content);
    EXPECT_FALSE(folder_.exists("drop/last"));
}

TEST_F(MovesToAnotherFileSystem, copyAndThenRemove)
{
    chmod(path("from").c_str(), 0640);
    FILETIME const written = {0, 0x01C00000};
    SetFileTime(openFile(path("from"), GENERIC_WRITE).get(), nullptr, nullptr, &written);
    {
        FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV});
        EXPECT_TRUE(move(MOVEFILE_COPY_ALLOWED));
    }

    EXPECT_EQ(folder_.read("to"), content);
    EXPECT_EQ(modeOf("to"), 0640u);
    WIN32_FILE_ATTRIBUTE_DATA data;
    GetFileAttributesExA(path("to").c_str(), GetFileExInfoStandard, &data);
    EXPECT_EQ(CompareFileTime(&data.ftLastWriteTime, &written), 0);
    EXPECT_EQ(entryCount(), 1u);
}

TEST_F(MovesToAnotherFileSystem, replaceWhereTheyMay)
{
    folder_.write("to", "old");
    FaultInjector<&SystemCalls::rename> const elsewhere({.error = EXDEV});

    EXPECT_TRUE(move(MOVEFILE_COPY_ALLOWED | MOVEFILE_REPLACE_EXISTING));

    EXPECT_EQ(folder_.read("to"), content);
    EXPECT_EQ(entryCount(), 1u);
}

TEST_F(MovesToAnotherFileSystem, needTheirFlag)
{
    FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV});

    EXPECT_FAILS(move(0), ERROR_NOT_SAME_DEVICE);

    EXPECT_EQ(folder_.read("from"), content);
    EXPECT_EQ(entryCount(), 1u);
}

TEST_F(MovesToAnotherFileSystem, areRefusedToFoldersAndSpecialFiles)
{
    folder_.makeFolder("folder");
    ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
    FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV, .times = always});

    EXPECT_FAILS(move(MOVEFILE_COPY_ALLOWED, "folder", "to"), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(move(MOVEFILE_COPY_ALLOWED, "fifo", "to"), ERROR_ACCESS_DENIED);

    EXPECT_EQ(entryCount(), 3u);
}

TEST_F(MovesToAnotherFileSystem, thatFailLoseNothing)
{
    expectMoveFails<&SystemCalls::copy_file_range>({.error = ENOSPC}, ERROR_DISK_FULL);
    expectMoveFails<&SystemCalls::fsync>({.error = EIO}, ERROR_IO_DEVICE);
    expectMoveFails<&SystemCalls::fchmod>({.error = EIO}, ERROR_IO_DEVICE);
    expectMoveFails<&SystemCalls::open>({.error = EMFILE, .onCall = 3, .times = always},
                                        ERROR_TOO_MANY_OPEN_FILES);
}

TEST_F(MovesToAnotherFileSystem, keepTheSourceUntilTheCopyIsOnTheDisk)
{
    FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV});
    FaultInjector<&SystemCalls::fsync> const broken({.error = EIO, .onCall = 2});  // of the folder

    EXPECT_SUCCEEDS(move(MOVEFILE_COPY_ALLOWED));

    EXPECT_EQ(folder_.read("to"), content);
    EXPECT_EQ(folder_.read("from"), content) << "the new name may not outlive a crash";
}

TEST_F(MovesToAnotherFileSystem, keepOwnerAndGroupAsFarAsTheyMay)
{
    FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV});
    FaultInjector<&SystemCalls::fchown> const forbidden({.error = EPERM, .times = always});

    EXPECT_SUCCEEDS(move(MOVEFILE_COPY_ALLOWED));

    EXPECT_EQ(forbidden.calls(), 2);
    EXPECT_EQ(folder_.read("to"), content);
}

TEST_F(MovesToAnotherFileSystem, succeedEvenIfTheSourceCannotGo)
{
    FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV});
    FaultInjector<&SystemCalls::unlink> const stuck({.error = EACCES});

    EXPECT_TRUE(move(MOVEFILE_COPY_ALLOWED));

    EXPECT_EQ(folder_.read("from"), content);
    EXPECT_EQ(folder_.read("to"), content);
}

TEST_F(MovesToAnotherFileSystem, meetATargetThatCameMeanwhile)
{
    FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV});
    BeforeCall<&SystemCalls::fchmod> const race([this] { folder_.write("to", "other"); });

    EXPECT_FAILS(move(MOVEFILE_COPY_ALLOWED), ERROR_ALREADY_EXISTS);

    EXPECT_EQ(folder_.read("to"), "other");
    EXPECT_EQ(folder_.read("from"), content);
    EXPECT_EQ(entryCount(), 2u);
}

TEST_F(MovesOfLinks, moveTheLinkWithASeparatorBehindItsNameToo)
{
    folder_.makeFolder("sub");
    fs::create_directory_symlink("sub", path("link"));

    EXPECT_SUCCEEDS(move(0, "link/", "moved"));

    EXPECT_EQ(fs::read_symlink(path("moved")), "sub");
    EXPECT_FALSE(folder_.exists("link"));
    EXPECT_SUCCEEDS(move(0, "sub/", "other"));
    EXPECT_TRUE(fs::is_directory(path("other")));
}

TEST_F(MovesOfLinks, moveTheLinkAlone)
{
    fs::create_symlink("nowhere", path("link"));

    EXPECT_TRUE(move(0, "link", "moved"));
    EXPECT_EQ(fs::read_symlink(path("moved")), "nowhere");

    EXPECT_TRUE(move(MOVEFILE_REPLACE_EXISTING, "from", "moved"));
    EXPECT_FALSE(fs::is_symlink(path("moved"))) << "the link gives way, not what it leads to";
}

TEST_F(MovesOfLinks, copyTheLinkAloneToAnotherFileSystem)
{
    fs::create_symlink("from", path("link"));
    {
        FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV});
        EXPECT_TRUE(move(MOVEFILE_COPY_ALLOWED, "link", "moved"));
    }

    EXPECT_EQ(fs::read_symlink(path("moved")), "from");
    EXPECT_FALSE(folder_.exists("link"));
    EXPECT_EQ(entryCount(), 2u);
}

TEST_F(MovesOfLinks, thatFailLeaveTheLink)
{
    fs::create_symlink("from", path("link"));
    {
        FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV, .times = 2});
        FaultInjector<&SystemCalls::symlink> const full({.error = ENOSPC});
        EXPECT_FAILS(move(MOVEFILE_COPY_ALLOWED, "link", "moved"), ERROR_DISK_FULL);
    }
    {
        FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV});
        FaultInjector<&SystemCalls::readlink> const broken({.error = EIO});
        EXPECT_FAILS(move(MOVEFILE_COPY_ALLOWED, "link", "moved"), ERROR_IO_DEVICE);
    }

    EXPECT_EQ(fs::read_symlink(path("link")), "from");
    EXPECT_EQ(entryCount(), 2u);
}

TEST_F(MovesOfLinks, takeTheOldNameFromAFileWithTwo)
{
    fs::create_hard_link(path("from"), path("to"));

    EXPECT_FAILS(move(0), ERROR_ALREADY_EXISTS);
    EXPECT_TRUE(move(MOVEFILE_REPLACE_EXISTING));

    EXPECT_FALSE(folder_.exists("from"));
    EXPECT_EQ(folder_.read("to"), content);
}
