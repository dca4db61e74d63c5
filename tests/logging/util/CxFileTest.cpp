#include "logging/util/CxFile.h"

#include "platform/os/nativeSeparator.h"
#include "platform/os/textFiles.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <string>

namespace {

using zk::os::ScopedNativeSeparator;
using zk::test::ScopedEnvironment;

constexpr CCgResult success;
constexpr CCgResult invalid{'p', 22};

constexpr unsigned toAppend = CX_FILE_READ | CX_FILE_WRITE | CX_FILE_CREATE | CX_FILE_APPEND;

class CxFile : public testing::Test {
protected:
    ~CxFile() override
    {
        if (file_ != -1)
            CxFileClose(file_);
    }

    CCgResult open(std::string_view name, unsigned flags)
    {
        return CxFileOpen(file_, folder_.path(name).c_str(), flags);
    }

    TemporaryFolder folder_;
    std::int32_t file_ = -1;
};

std::string mapped(std::string const& path)
{
    CxMappedPath result;
    return CxMapPath(result, path.c_str()).ok() ? result.text : "(invalid)";
}

}  // namespace

TEST(CxMapPath, turnsSlashesWhereTheBackslashSeparates)
{
    ScopedNativeSeparator const backslash('\\');

    EXPECT_EQ(mapped("sub/a.log"), "sub\\a.log");
    EXPECT_EQ(mapped("C:/sub//a.log"), "C:\\sub\\\\a.log");
    EXPECT_EQ(mapped(""), "");
}

TEST(CxMapPath, putsTheSystemsDriveAndABackslashInFrontOfALeadingSlash)
{
    ScopedNativeSeparator const backslash('\\');
    ScopedEnvironment const drive("SystemDrive", "Q:");

    EXPECT_EQ(mapped("/sub/a.log"), "Q:\\\\sub\\a.log");
    EXPECT_EQ(mapped("\\sub"), "\\sub");
}

TEST(CxMapPath, refusesALeadingSlashWithoutASystemDrive)
{
    ScopedNativeSeparator const backslash('\\');
    ScopedEnvironment const none("SystemDrive", nullptr);
    CxMappedPath result;

    EXPECT_EQ(CxMapPath(result, "/sub/a.log"), invalid);
    EXPECT_EQ(mapped("sub/a.log"), "sub\\a.log");
}

TEST(CxMapPath, leavesAPathAloneWhereTheSlashSeparates)
{
    ScopedNativeSeparator const slash('/');
    ScopedEnvironment const none("SystemDrive", nullptr);

    EXPECT_EQ(mapped("/sub/a\\b.log"), "/sub/a\\b.log");
}

TEST(CxMapPath, cutsWhatComesOutAfter260Bytes)
{
    std::string const longest(260, 'p');
    ScopedNativeSeparator const backslash('\\');
    ScopedEnvironment const drive("SystemDrive", "Q:");

    EXPECT_EQ(mapped(longest), longest);
    EXPECT_EQ(mapped(longest + "q"), longest);
    EXPECT_EQ(mapped("/" + longest), "Q:\\\\" + std::string(256, 'p'));
}

TEST(CxMapPath, ofNullIsInvalid)
{
    CxMappedPath result;

    EXPECT_EQ(CxMapPath(result, nullptr), invalid);
}

TEST_F(CxFile, appendsWhatIsWritten)
{
    folder_.write("a.log", "old ");

    ASSERT_EQ(open("a.log", toAppend), success);
    EXPECT_EQ(CxFileWrite(file_, "new\n"), success);
    EXPECT_EQ(CxFileClose(file_), success);

    EXPECT_EQ(file_, -1);
    EXPECT_EQ(folder_.read("a.log"), "old new\n");
}

TEST_F(CxFile, writesLinesOfTextAsTheSystemDoes)
{
    ASSERT_EQ(open("a.log", toAppend | CX_FILE_TEXT), success);

    EXPECT_EQ(CxFileWrite(file_, "line\n"), success);

    EXPECT_EQ(folder_.read("a.log"), zk::os::textLinesEndInCrLf ? "line\r\n" : "line\n");
}

TEST_F(CxFile, isReadFromAPosition)
{
    folder_.write("a.log", "0123456789");
    ASSERT_EQ(open("a.log", CX_FILE_READ), success);
    char buffer[4] = "";
    std::size_t done = 99;

    EXPECT_EQ(CxFileSeek(file_, 8), success);
    EXPECT_EQ(CxFileRead(file_, buffer, sizeof buffer, done), success);
    EXPECT_EQ(std::string(buffer, done), "89");
    EXPECT_EQ(CxFileRead(file_, buffer, sizeof buffer, done), success);
    EXPECT_EQ(done, 0u);
}

TEST_F(CxFile, isEmptiedAndWrittenFromItsStart)
{
    folder_.write("a.log", "0123456789");
    ASSERT_EQ(open("a.log", CX_FILE_READ | CX_FILE_WRITE), success);
    EXPECT_EQ(CxFileSeek(file_, 5), success);

    EXPECT_EQ(CxFileTruncate(file_), success);
    EXPECT_EQ(CxFileWrite(file_, "new"), success);

    EXPECT_EQ(folder_.read("a.log"), "new");
}

TEST_F(CxFile, tellsItsSize)
{
    folder_.write("a.log", "12345");
    ASSERT_EQ(open("a.log", toAppend), success);
    std::uint64_t size = 0;

    EXPECT_EQ(CxFileSize(file_, size), success);
    EXPECT_EQ(size, 5u);
    CxFileWrite(file_, "678");
    EXPECT_EQ(CxFileSizeOfPath(folder_.path("a.log").c_str(), size), success);
    EXPECT_EQ(size, 8u);
    EXPECT_EQ(CxFileSizeOfPath(folder_.path("missing").c_str(), size), (CCgResult{'p', 2}));
    EXPECT_EQ(size, 8u);
}

TEST_F(CxFile, tellsItsStatus)
{
    folder_.write("a.log", "12345");
    CxFileStatus status;

    ASSERT_EQ(CxFileStat(folder_.path("a.log").c_str(), status), success);

    EXPECT_EQ(status.size, 5u);
    EXPECT_TRUE(status.isRegular);
    for (std::int64_t const time : {status.modified, status.accessed, status.changed})
        EXPECT_NEAR(static_cast<double>(time), static_cast<double>(std::time(nullptr)), 60);
    ASSERT_EQ(CxFileStat(folder_.path().c_str(), status), success);
    EXPECT_TRUE(status.isFolder);
    EXPECT_EQ(CxFileStat(folder_.path("missing").c_str(), status), (CCgResult{'p', 2}));
    ASSERT_EQ(open("a.log", CX_FILE_READ), success);
    ASSERT_EQ(CxFileStat(file_, status), success);
    EXPECT_TRUE(status.isRegular);
}

TEST_F(CxFile, isFlushedToTheDisk)
{
    ASSERT_EQ(open("a.log", toAppend), success);
    CxFileWrite(file_, "text");

    EXPECT_EQ(CxFileFlush(file_), success);
}

TEST_F(CxFile, isDeleted)
{
    folder_.write("a.log", "");

    EXPECT_EQ(CxFileDelete(folder_.path("a.log").c_str()), success);
    EXPECT_FALSE(folder_.exists("a.log"));
    EXPECT_EQ(CxFileDelete(folder_.path("a.log").c_str()), (CCgResult{'w', 2}));
}

TEST_F(CxFile, isRenamedAndReplacesTheOldOne)
{
    folder_.write("a.log", "new");
    folder_.write("a1.log", "old");

    EXPECT_EQ(CxFileRename(folder_.path("a.log").c_str(), folder_.path("a1.log").c_str()), success);

    EXPECT_FALSE(folder_.exists("a.log"));
    EXPECT_EQ(folder_.read("a1.log"), "new");
    EXPECT_EQ(CxFileRename(folder_.path("a.log").c_str(), folder_.path("a1.log").c_str()),
              (CCgResult{'w', 2}));
    EXPECT_EQ(folder_.read("a1.log"), "new");
}

TEST_F(CxFile, isMadeAnewIfAskedTo)
{
    folder_.write("a.log", "old");

    EXPECT_EQ(open("a.log", toAppend | CX_FILE_EXCLUSIVE), (CCgResult{'p', 17}));
    EXPECT_EQ(file_, -1);
    EXPECT_EQ(open("a.log", CX_FILE_WRITE | CX_FILE_CREATE | CX_FILE_TRUNCATE), success);
    EXPECT_EQ(folder_.read("a.log"), "");
}

TEST_F(CxFile, thatCannotBeOpenedTellsWhy)
{
    EXPECT_EQ(open("missing/a.log", toAppend), (CCgResult{'p', 2}));
    EXPECT_EQ(file_, -1);
}

TEST_F(CxFile, withoutADescriptorFails)
{
    CCgResult const noFile{'p', 9};
    std::int32_t none = -1;
    std::uint64_t size = 0;
    std::size_t done = 0;
    CxFileStatus status;
    char byte;

    EXPECT_EQ(CxFileWrite(none, "x"), noFile);
    EXPECT_EQ(CxFileRead(none, &byte, 1, done), noFile);
    EXPECT_EQ(CxFileSeek(none, 0), noFile);
    EXPECT_EQ(CxFileTruncate(none), noFile);
    EXPECT_EQ(CxFileSize(none, size), noFile);
    EXPECT_EQ(CxFileStat(none, status), noFile);
    EXPECT_EQ(CxFileClose(none), noFile);
    EXPECT_EQ(CxFileFlush(none), (CCgResult{'w', 6}));
}

TEST_F(CxFile, withoutAPathIsAnInvalidArgument)
{
    std::uint64_t size = 0;
    CxFileStatus status;

    EXPECT_EQ(CxFileOpen(file_, nullptr, toAppend), invalid);
    EXPECT_EQ(CxFileSizeOfPath(nullptr, size), invalid);
    EXPECT_EQ(CxFileStat(nullptr, status), invalid);
    EXPECT_EQ(CxFileDelete(nullptr), invalid);
    EXPECT_EQ(CxFileRename(nullptr, "x"), invalid);
    EXPECT_EQ(CxFileRename("x", nullptr), invalid);
}
