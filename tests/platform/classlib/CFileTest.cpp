#include "platform/classlib/CFile.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace {

// The cause of what `call` throws; none if it throws nothing.
template <class Call>
int causeOf(Call call)
{
    try {
        call();
    } catch (CFileException* exception) {
        int const cause = exception->m_cause;
        exception->Delete();
        return cause;
    }
    return CFileException::none;
}

std::string readFrom(CFile& file, UINT count)
{
    std::string text(count, '\0');
    text.resize(file.Read(text.data(), count));
    return text;
}

class FileTest : public testing::Test {
protected:
    CString path(char const* entry) const { return CString(folder.path(entry).c_str()); }

    TemporaryFolder folder;
};

using FileOpen = FileTest;
using FileReadWrite = FileTest;
using FileSharing = FileTest;
using FileStatusOf = FileTest;
using FileNames = FileTest;

}  // namespace

TEST_F(FileOpen, readsAnExistingFile)
{
    folder.write("a.txt", "abc");
    CFile file;

    ASSERT_TRUE(file.Open(path("a.txt"), CFile::modeRead));

    EXPECT_NE(file.m_hFile, CFile::hFileNull);
    EXPECT_EQ(readFrom(file, 10), "abc");
}

TEST_F(FileOpen, failsWithTheCauseForAMissingFile)
{
    CFileException failure;
    CFile file;

    EXPECT_FALSE(file.Open(path("missing.txt"), CFile::modeRead, &failure));

    EXPECT_EQ(failure.m_cause, CFileException::fileNotFound);
    EXPECT_EQ(failure.m_lOsError, LONG(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(failure.m_strFileName, path("missing.txt"));
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
    EXPECT_TRUE(file.GetFilePath().IsEmpty());
}

TEST_F(FileOpen, failsWithTheCauseForAMissingFolder)
{
    CFileException failure;
    CFile file;

    EXPECT_FALSE(file.Open(path("none/a.txt"), CFile::modeCreate | CFile::modeWrite, &failure));

    EXPECT_EQ(failure.m_cause, CFileException::badPath);
    EXPECT_EQ(failure.m_lOsError, LONG(ERROR_PATH_NOT_FOUND));
}

TEST_F(FileOpen, failsForAFolder)
{
    folder.makeFolder("sub");
    CFileException failure;
    CFile file;

    EXPECT_FALSE(file.Open(path("sub"), CFile::modeRead, &failure));

    EXPECT_EQ(failure.m_cause, CFileException::accessDenied);
}

TEST_F(FileOpen, failsWithoutAName)
{
    CFile file;
    CFileException failure;

    EXPECT_FALSE(file.Open("", CFile::modeRead));
    EXPECT_FALSE(file.Open(nullptr, CFile::modeRead, &failure));

    EXPECT_TRUE(failure.m_strFileName.IsEmpty());
}

TEST_F(FileOpen, failsForAModeThatDoesNotExist)
{
    folder.write("a.txt", "abc");
    CFile file;
    CFileException failure;

    EXPECT_FALSE(file.Open(path("a.txt"), 3, &failure));

    EXPECT_EQ(failure.m_lOsError, LONG(ERROR_INVALID_PARAMETER));
}

TEST_F(FileOpen, failsForWritingToAReadOnlyFileAsTheSystemDoes)
{
    folder.write("a.txt", "abc");
    ASSERT_TRUE(SetFileAttributesA(path("a.txt"), FILE_ATTRIBUTE_READONLY));
    HANDLE const handle = CreateFileA(path("a.txt"), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    bool const refused = handle == INVALID_HANDLE_VALUE;  // not to root under Wine
    CloseHandle(handle);
    CFile file;
    CFileException failure;

    EXPECT_EQ(file.Open(path("a.txt"), CFile::modeWrite, &failure) == FALSE, refused);
    EXPECT_EQ(failure.m_cause, refused ? CFileException::accessDenied : CFileException::none);
    EXPECT_TRUE(file.Open(path("a.txt"), CFile::modeRead));

    file.Close();
    SetFileAttributesA(path("a.txt"), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(FileOpen, throwsFromTheConstructor)
{
    try {
        CFile const file(path("missing.txt"), CFile::modeRead);
        FAIL() << "nothing was thrown";
    } catch (CFileException* exception) {
        EXPECT_EQ(exception->m_cause, CFileException::fileNotFound);
        EXPECT_EQ(exception->m_strFileName, path("missing.txt"));
        exception->Delete();
    }
}

TEST_F(FileOpen, createsAMissingFile)
{
    CFile file(path("new.txt"), CFile::modeCreate | CFile::modeWrite);

    EXPECT_EQ(file.GetLength(), 0u);
    EXPECT_TRUE(folder.exists("new.txt"));
}

TEST_F(FileOpen, emptiesAnExistingFileWithCreate)
{
    folder.write("a.txt", "old content");

    CFile(path("a.txt"), CFile::modeCreate | CFile::modeWrite).Close();

    EXPECT_EQ(folder.read("a.txt"), "");
}

TEST_F(FileOpen, keepsTheContentWithNoTruncate)
{
    folder.write("a.txt", "old");

    CFile file(path("a.txt"), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeReadWrite);

    EXPECT_EQ(readFrom(file, 10), "old");
}

TEST_F(FileOpen, closesTheFileThatWasOpen)
{
    folder.write("a.txt", "A");
    folder.write("b.txt", "B");
    CFile file(path("a.txt"), CFile::modeRead);

    ASSERT_TRUE(file.Open(path("b.txt"), CFile::modeRead));

    EXPECT_EQ(readFrom(file, 1), "B");
    EXPECT_EQ(causeOf([&] { CFile(path("a.txt"), CFile::modeWrite); }), CFileException::none);
}

TEST_F(FileOpen, takesOverAHandleThatTheDestructorLeavesOpen)
{
    folder.write("a.txt", "abc");
    HANDLE const handle = CreateFileA(path("a.txt"), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    {
        CFile file(handle);
        EXPECT_EQ(readFrom(file, 2), "ab");
    }

    EXPECT_TRUE(CloseHandle(handle));
}

TEST_F(FileOpen, letsChildrenInheritTheHandleUnlessToldNot)
{
    folder.write("a.txt", "");
    CFile const inherited(path("a.txt"), CFile::modeRead | CFile::shareDenyNone);
    CFile const kept(path("a.txt"), CFile::modeRead | CFile::shareDenyNone | CFile::modeNoInherit);
    DWORD flags[2] = {9, 9};

    ASSERT_TRUE(GetHandleInformation(inherited.m_hFile, &flags[0]));
    ASSERT_TRUE(GetHandleInformation(kept.m_hFile, &flags[1]));

    EXPECT_EQ(flags[0] & HANDLE_FLAG_INHERIT, DWORD(HANDLE_FLAG_INHERIT));
    EXPECT_EQ(flags[1] & HANDLE_FLAG_INHERIT, 0u);
}

TEST_F(FileReadWrite, givesTheNumberOfBytesRead)
{
    folder.write("a.txt", "abcde");
    CFile file(path("a.txt"), CFile::modeRead);
    char buffer[4] = "";

    EXPECT_EQ(file.Read(buffer, 4), 4u);
    EXPECT_EQ(file.Read(buffer, 4), 1u);
    EXPECT_EQ(file.Read(buffer, 4), 0u);
    EXPECT_EQ(file.Read(nullptr, 0), 0u);
}

TEST_F(FileReadWrite, leavesTheBufferBehindTheBytesAlone)
{
    folder.write("a.txt", "ab");
    CFile file(path("a.txt"), CFile::modeRead);
    char buffer[] = "~~~~";

    file.Read(buffer, 4);

    EXPECT_STREQ(buffer, "ab~~");
}

TEST_F(FileReadWrite, writesEveryByteAsItIs)
{
    CFile file(path("a.bin"), CFile::modeCreate | CFile::modeWrite);

    file.Write("a\n\r\n\0\x1A\xFFz", 8);
    file.Write(nullptr, 0);
    file.Close();

    EXPECT_EQ(folder.read("a.bin"), std::string("a\n\r\n\0\x1A\xFFz", 8));
}

TEST_F(FileReadWrite, throwsWhenTheFileIsNotOpenForIt)
{
    folder.write("a.txt", "abc");
    char buffer[4];

    EXPECT_EQ(causeOf([&] { CFile(path("a.txt"), CFile::modeRead).Write("x", 1); }),
              CFileException::accessDenied);
    EXPECT_EQ(causeOf([&] { CFile(path("a.txt"), CFile::modeWrite).Read(buffer, 1); }),
              CFileException::accessDenied);
    EXPECT_EQ(folder.read("a.txt"), "abc");
}

TEST_F(FileReadWrite, throwsOnAFileThatIsNotOpen)
{
    CFile file;
    char buffer[4];

    EXPECT_EQ(causeOf([&] { file.Read(buffer, 1); }), CFileException::invalidFile);
    EXPECT_EQ(causeOf([&] { file.Write(buffer, 1); }), CFileException::invalidFile);
    EXPECT_EQ(causeOf([&] { file.Seek(0, CFile::begin); }), CFileException::invalidFile);
    EXPECT_EQ(causeOf([&] { file.GetPosition(); }), CFileException::invalidFile);
    EXPECT_EQ(causeOf([&] { file.GetLength(); }), CFileException::invalidFile);
    EXPECT_EQ(causeOf([&] { file.SetLength(1); }), CFileException::invalidFile);
    EXPECT_EQ(causeOf([&] { file.LockRange(0, 1); }), CFileException::invalidFile);
    EXPECT_EQ(causeOf([&] { file.UnlockRange(0, 1); }), CFileException::invalidFile);
    CFileStatus status;
    EXPECT_FALSE(file.GetStatus(status));
}

TEST_F(FileReadWrite, letsAFileThatIsNotOpenBeClosedAndFlushed)
{
    CFile file;

    file.Close();
    file.Flush();
    file.Abort();

    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
}

TEST_F(FileReadWrite, seeksFromBeginCurrentAndEnd)
{
    folder.write("a.txt", "0123456789");
    CFile file(path("a.txt"), CFile::modeRead);

    EXPECT_EQ(file.Seek(4, CFile::begin), 4u);
    EXPECT_EQ(readFrom(file, 1), "4");
    EXPECT_EQ(file.Seek(-2, CFile::current), 3u);
    EXPECT_EQ(file.Seek(-1, CFile::end), 9u);
    EXPECT_EQ(readFrom(file, 5), "9");
    EXPECT_EQ(file.SeekToEnd(), 10u);
    file.SeekToBegin();
    EXPECT_EQ(file.GetPosition(), 0u);
}

TEST_F(FileReadWrite, seeksBehindTheEndButNotBeforeTheBeginning)
{
    folder.write("a.txt", "abc");
    CFile file(path("a.txt"), CFile::modeRead);

    EXPECT_EQ(file.Seek(5000000000, CFile::begin), 5000000000u);
    EXPECT_EQ(readFrom(file, 1), "");
    EXPECT_EQ(causeOf([&] { file.Seek(-4, CFile::end); }), CFileException::badSeek);
}

TEST_F(FileReadWrite, fillsAGapWithZeroBytes)
{
    CFile file(path("a.txt"), CFile::modeCreate | CFile::modeReadWrite);

    file.Seek(2, CFile::begin);
    file.Write("x", 1);
    file.Close();

    EXPECT_EQ(folder.read("a.txt"), std::string("\0\0x", 3));
}

TEST_F(FileReadWrite, setsTheLengthAndStandsAtTheNewEnd)
{
    folder.write("a.txt", "abcdef");
    CFile file(path("a.txt"), CFile::modeReadWrite);

    file.SetLength(2);
    EXPECT_EQ(file.GetLength(), 2u);
    EXPECT_EQ(file.GetPosition(), 2u);
    file.SetLength(4);
    EXPECT_EQ(file.GetPosition(), 4u);
    file.Flush();
    file.Close();

    EXPECT_EQ(folder.read("a.txt"), std::string("ab\0\0", 4));
}

TEST_F(FileReadWrite, sharesThePositionWithItsDuplicate)
{
    folder.write("a.txt", "abcd");
    CFile file(path("a.txt"), CFile::modeRead);

    std::unique_ptr<CFile> const copy(file.Duplicate());

    EXPECT_EQ(readFrom(file, 2), "ab");
    EXPECT_EQ(readFrom(*copy, 2), "cd");
    EXPECT_EQ(copy->GetFilePath(), file.GetFilePath());
    file.Close();
    copy->SeekToBegin();
    EXPECT_EQ(readFrom(*copy, 1), "a");
}

TEST_F(FileSharing, refusesASecondOpenerThatIsNotShared)
{
    folder.write("a.txt", "abc");
    struct {
        UINT first;
        UINT second;
        int cause;
    } const rows[] = {
        {CFile::modeRead, CFile::modeRead, CFileException::sharingViolation},
        {CFile::modeRead | CFile::shareExclusive, CFile::modeRead | CFile::shareDenyNone,
         CFileException::sharingViolation},
        {CFile::modeRead | CFile::shareDenyNone, CFile::modeRead | CFile::shareExclusive,
         CFileException::sharingViolation},
        {CFile::modeRead | CFile::shareDenyWrite, CFile::modeRead | CFile::shareDenyWrite,
         CFileException::none},
        {CFile::modeWrite | CFile::shareDenyNone, CFile::modeRead | CFile::shareDenyNone,
         CFileException::none},
        {CFile::modeRead | CFile::shareDenyNone, CFile::modeWrite | CFile::shareDenyNone,
         CFileException::none},
    };
    for (auto const& row : rows) {
        CFile const first(path("a.txt"), row.first);

        EXPECT_EQ(causeOf([&] { CFile(path("a.txt"), row.second); }), row.cause)
            << "first " << row.first << ", second " << row.second;
    }
}

TEST_F(FileSharing, givesTheFileFreeWithTheObject)
{
    folder.write("a.txt", "abc");
    {
        CFile const file(path("a.txt"), CFile::modeReadWrite);
    }

    EXPECT_EQ(causeOf([&] { CFile(path("a.txt"), CFile::modeReadWrite); }), CFileException::none);
}

TEST_F(FileSharing, tellsOfASharingViolationInItsText)
{
    folder.write("a.txt", "abc");
    CFile const holder(path("a.txt"), CFile::modeReadWrite);
    CFileException failure;
    CFile file;

    ASSERT_FALSE(file.Open(path("a.txt"), CFile::modeRead, &failure));
    char text[1024];
    failure.GetErrorMessage(text, sizeof text);

    EXPECT_EQ(CString(text), "A sharing violation occurred while accessing " + path("a.txt") + ".");
}

TEST_F(FileSharing, locksBytesAgainstOtherHandles)
{
    folder.write("a.txt", "abcdef");
    UINT const flags = CFile::modeReadWrite | CFile::shareDenyNone;
    CFile owner(path("a.txt"), flags);
    CFile other(path("a.txt"), flags);

    owner.LockRange(2, 2);

    EXPECT_EQ(causeOf([&] { other.LockRange(3, 2); }), CFileException::lockViolation);
    EXPECT_EQ(causeOf([&] { other.LockRange(4, 2); }), CFileException::none);
    owner.UnlockRange(2, 2);
    EXPECT_EQ(causeOf([&] { other.LockRange(2, 2); }), CFileException::none);
}

TEST_F(FileNames, tellsNameTitleAndFullPath)
{
    folder.makeFolder("sub.dir");
    CFile const file(path("sub.dir/model.tar.gz"), CFile::modeCreate | CFile::modeWrite);

    EXPECT_EQ(file.GetFileName(), "model.tar.gz");
    EXPECT_EQ(file.GetFileTitle(), "model.tar");
    EXPECT_EQ(file.GetFilePath(), path("sub.dir/model.tar.gz"));
}

TEST_F(FileNames, makesARelativeNameFull)
{
    char before[MAX_PATH];
    ASSERT_NE(GetCurrentDirectoryA(sizeof before, before), 0u);
    ASSERT_TRUE(SetCurrentDirectoryA(folder.path().c_str()));
    {
        CFile const file("plain", CFile::modeCreate | CFile::modeWrite);

        EXPECT_EQ(file.GetFileTitle(), "plain");
        EXPECT_NE(file.GetFilePath(), "plain");
        EXPECT_EQ(file.GetFilePath().Right(6), CString(zk::os::nativeSeparator()) + "plain");
    }
    SetCurrentDirectoryA(before);
}

TEST_F(FileNames, areEmptyAfterClose)
{
    CFile file(path("a.txt"), CFile::modeCreate | CFile::modeWrite);

    file.Close();

    EXPECT_TRUE(file.GetFileName().IsEmpty());
    EXPECT_TRUE(file.GetFileTitle().IsEmpty());
    EXPECT_TRUE(file.GetFilePath().IsEmpty());
}

TEST_F(FileNames, followsTheNameThatWasSet)
{
    CFile file;

    file.SetFilePath("some/.profile");

    EXPECT_EQ(file.GetFileName(), ".profile");
    EXPECT_EQ(file.GetFileTitle(), ".profile");
}

TEST_F(FileNames, renamesAndRemovesAFile)
{
    folder.write("a.txt", "abc");

    CFile::Rename(path("a.txt"), path("b.txt"));
    EXPECT_FALSE(folder.exists("a.txt"));
    EXPECT_EQ(folder.read("b.txt"), "abc");
    CFile::Remove(path("b.txt"));

    EXPECT_FALSE(folder.exists("b.txt"));
}

TEST_F(FileNames, renamesOverNoOtherFile)
{
    folder.write("a.txt", "A");
    folder.write("b.txt", "B");

    EXPECT_EQ(causeOf([&] { CFile::Rename(path("a.txt"), path("b.txt")); }), CFileException::accessDenied);

    EXPECT_EQ(folder.read("b.txt"), "B");
    EXPECT_EQ(folder.read("a.txt"), "A");
}

TEST_F(FileNames, throwsForAMissingFile)
{
    EXPECT_EQ(causeOf([&] { CFile::Rename(path("a"), path("b")); }), CFileException::fileNotFound);
    EXPECT_EQ(causeOf([&] { CFile::Remove(path("a")); }), CFileException::fileNotFound);
    EXPECT_EQ(causeOf([&] { CFile::SetStatus(path("a"), CFileStatus()); }), CFileException::fileNotFound);
}

TEST_F(FileStatusOf, anOpenFileAndItsNameAreTheSame)
{
    folder.write("a.txt", "12345");
    CFile const file(path("a.txt"), CFile::modeRead | CFile::shareDenyNone);
    CFileStatus open, named;

    ASSERT_TRUE(file.GetStatus(open));
    ASSERT_TRUE(CFile::GetStatus(path("a.txt"), named));

    EXPECT_EQ(open.m_size, 5u);
    EXPECT_EQ(open.m_szFullName, path("a.txt"));
    EXPECT_EQ(named.m_size, 5u);
    EXPECT_EQ(named.m_szFullName, path("a.txt"));
    EXPECT_EQ(open.m_mtime, named.m_mtime);
    EXPECT_EQ(open.m_attribute, named.m_attribute);
}

TEST_F(FileStatusOf, aFolderSaysSo)
{
    folder.makeFolder("sub");
    CFileStatus status;

    ASSERT_TRUE(CFile::GetStatus(path("sub"), status));

    EXPECT_EQ(status.m_attribute & CFile::directory, CFile::directory);
    EXPECT_EQ(status.m_size, 0u);
}

TEST_F(FileStatusOf, aMissingFileFailsAndLeavesTheResultAlone)
{
    CFileStatus status;
    status.m_size = 77;

    EXPECT_FAILS(CFile::GetStatus(path("missing"), status), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(CFile::GetStatus(nullptr, status));

    EXPECT_EQ(status.m_size, 77u);
}

TEST_F(FileStatusOf, aNameLongerThanAClassicBufferIsWhole)
{
    CString name(folder.path().c_str());
    for (int i = 0; i < 3; ++i) {
        name += CString(zk::os::nativeSeparator()) + CString('d', 60);
        ASSERT_TRUE(CreateDirectoryA(name, nullptr));
    }
    CFileStatus status;

    ASSERT_TRUE(CFile::GetStatus(name, status));

    EXPECT_EQ(status.m_szFullName, name);
}

TEST_F(FileStatusOf, timesAndReadOnlyBitAreSet)
{
    folder.write("a.txt", "abc");
    CFileStatus wanted, seen;
    wanted.m_mtime = CTime(2001, 9, 9, 12, 0, 0);
    wanted.m_atime = CTime(2002, 2, 2, 12, 0, 2);
    wanted.m_attribute = CFile::readOnly;

    CFile::SetStatus(path("a.txt"), wanted);
    ASSERT_TRUE(CFile::GetStatus(path("a.txt"), seen));

    EXPECT_EQ(seen.m_mtime, wanted.m_mtime);
    EXPECT_EQ(seen.m_atime, wanted.m_atime);
    EXPECT_EQ(seen.m_attribute & CFile::readOnly, CFile::readOnly);
    wanted = CFileStatus();
    CFile::SetStatus(path("a.txt"), wanted);
    ASSERT_TRUE(CFile::GetStatus(path("a.txt"), seen));
    EXPECT_EQ(seen.m_attribute & CFile::readOnly, 0);
    EXPECT_EQ(seen.m_mtime, CTime(2001, 9, 9, 12, 0, 0));
}

TEST_F(FileStatusOf, timesOfAReadOnlyFileCanBeSet)
{
    folder.write("a.txt", "abc");
    ASSERT_TRUE(SetFileAttributesA(path("a.txt"), FILE_ATTRIBUTE_READONLY));
    CFileStatus wanted, seen;
    wanted.m_mtime = CTime(2001, 9, 9, 12, 0, 0);

    EXPECT_EQ(causeOf([&] { CFile::SetStatus(path("a.txt"), wanted); }), CFileException::none);
    ASSERT_TRUE(CFile::GetStatus(path("a.txt"), seen));

    EXPECT_EQ(seen.m_mtime, wanted.m_mtime);
}

TEST_F(FileStatusOf, timesThatNoFileCanHaveAreRefused)
{
    folder.write("a.txt", "abc");
    LONGLONG const times[] = {INT64_MAX, INT64_MAX / 10'000'000, INT64_MIN, -11'644'473'600};
    for (LONGLONG const time : times) {
        CFileStatus wanted, before, after;
        wanted.m_mtime = CTime(time_t(time));
        wanted.m_attribute = CFile::readOnly;
        ASSERT_TRUE(CFile::GetStatus(path("a.txt"), before));

        EXPECT_EQ(causeOf([&] { CFile::SetStatus(path("a.txt"), wanted); }), CFileException::badPath) << time;

        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
        ASSERT_TRUE(CFile::GetStatus(path("a.txt"), after));
        EXPECT_EQ(after.m_mtime, before.m_mtime) << time;
        EXPECT_EQ(after.m_attribute, before.m_attribute) << time;
    }
}

#ifndef _WIN32  // the other system lets programs make no links

TEST_F(FileStatusOf, aLinkIsThatOfItsFileAndCanBeSetAgain)
{
    folder.write("a.txt", "abc");
    ASSERT_TRUE(SetFileAttributesA(path("a.txt"), FILE_ATTRIBUTE_READONLY));
    std::filesystem::create_symlink("a.txt", folder.path("link"));
    CFileStatus status, seen;

    ASSERT_TRUE(CFile::GetStatus(path("link"), status));
    EXPECT_EQ(status.m_attribute & CFile::readOnly, CFile::readOnly);
    EXPECT_EQ(status.m_size, 3u);
    status.m_mtime = CTime(2001, 9, 9, 12, 0, 0);
    EXPECT_EQ(causeOf([&] { CFile::SetStatus(path("link"), status); }), CFileException::none);

    ASSERT_TRUE(CFile::GetStatus(path("a.txt"), seen));
    EXPECT_EQ(seen.m_mtime, status.m_mtime);
    EXPECT_EQ(seen.m_attribute, status.m_attribute);
}

#endif
