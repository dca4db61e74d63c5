#include "platform/os/fileDescriptors.h"

#include "platform/os/os.h"
#include "platform/os/textFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <ctime>
#include <filesystem>
#include <string>

using namespace zk::os;

namespace {

class Descriptors : public testing::Test {
protected:
    ~Descriptors() override
    {
        if (file_ != -1)
            closeDescriptor(file_);
    }

    bool open(std::string_view name, unsigned flags)
    {
        file_ = openDescriptor(folder_.path(name).c_str(), flags, 0644);
        return file_ != -1;
    }

    bool write(std::string_view text) const { return writeDescriptor(file_, text.data(), text.size()); }

    void close()
    {
        EXPECT_EQ(closeDescriptor(file_), 0);
        file_ = -1;
    }

    TemporaryFolder folder_;
    int file_ = -1;
};

constexpr unsigned toLog = openRead | openWrite | openCreate;

}  // namespace

TEST_F(Descriptors, writeWhatOthersMayReadMeanwhile)
{
    ASSERT_TRUE(open("a.log", toLog));

    EXPECT_TRUE(write("one\ntwo\n"));

    EXPECT_EQ(folder_.read("a.log"), "one\ntwo\n");
}

TEST_F(Descriptors, endLinesOfTextAsTheSystemDoes)
{
    ASSERT_TRUE(open("a.log", toLog | openText));

    EXPECT_TRUE(write("one\n\ntwo"));

    EXPECT_EQ(folder_.read("a.log"), textLinesEndInCrLf ? "one\r\n\r\ntwo" : "one\n\ntwo");
}

TEST_F(Descriptors, appendAtTheEndWhereverThePositionIs)
{
    folder_.write("a.log", "old ");
    ASSERT_TRUE(open("a.log", toLog | openAppend));
    EXPECT_EQ(seekDescriptor(file_, 0, SeekFrom::start), 0);

    EXPECT_TRUE(write("new"));

    EXPECT_EQ(folder_.read("a.log"), "old new");
}

TEST_F(Descriptors, emptyAFileIfAskedTo)
{
    folder_.write("a.log", "old");

    ASSERT_TRUE(open("a.log", toLog | openTruncate));

    EXPECT_EQ(folder_.read("a.log"), "");
}

TEST_F(Descriptors, makeAFileExclusivelyOrNot)
{
    folder_.write("old", "text");

    EXPECT_FALSE(open("old", toLog | openExclusive));
    EXPECT_EQ(errno, EEXIST);
    EXPECT_TRUE(open("new", toLog | openExclusive));
}

TEST_F(Descriptors, thatCannotBeOpenedTellWhy)
{
    folder_.makeFolder("sub");

    EXPECT_FALSE(open("missing", openRead));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(open("missing/a.log", toLog));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(open("sub", toLog));
    EXPECT_TRUE(errno == EACCES || errno == EISDIR) << errno;
}

TEST_F(Descriptors, readUpToTheEnd)
{
    folder_.write("a.log", "0123456789");
    ASSERT_TRUE(open("a.log", openRead));
    char buffer[8] = "";

    EXPECT_EQ(seekDescriptor(file_, 4, SeekFrom::start), 4);
    EXPECT_EQ(readDescriptor(file_, buffer, sizeof buffer), 6);
    EXPECT_EQ(std::string(buffer, 6), "456789");
    EXPECT_EQ(readDescriptor(file_, buffer, sizeof buffer), 0);
}

TEST_F(Descriptors, moveThePositionFromThreePlaces)
{
    folder_.write("a.log", "0123456789");
    ASSERT_TRUE(open("a.log", openRead));

    EXPECT_EQ(seekDescriptor(file_, -3, SeekFrom::end), 7);
    EXPECT_EQ(seekDescriptor(file_, 2, SeekFrom::position), 9);
    EXPECT_EQ(seekDescriptor(file_, 1, SeekFrom::start), 1);
    EXPECT_EQ(seekDescriptor(file_, -1, SeekFrom::start), -1);
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(Descriptors, resizeAFileAndKeepThePosition)
{
    folder_.write("a.log", "0123456789");
    ASSERT_TRUE(open("a.log", openRead | openWrite));
    EXPECT_EQ(seekDescriptor(file_, 2, SeekFrom::start), 2);

    EXPECT_TRUE(resizeDescriptor(file_, 4));
    EXPECT_TRUE(write("x"));

    EXPECT_EQ(folder_.read("a.log"), "01x3");
    EXPECT_TRUE(resizeDescriptor(file_, 6));
    EXPECT_EQ(folder_.read("a.log"), std::string("01x3\0\0", 6));
}

TEST_F(Descriptors, tellTheStatusOfAFile)
{
    folder_.write("a.log", "12345");
    ASSERT_TRUE(open("a.log", openRead));
    DescriptorStatus status;

    ASSERT_TRUE(statusOfDescriptor(file_, status));

    EXPECT_EQ(status.size, 5u);
    EXPECT_TRUE(status.isRegular);
    EXPECT_FALSE(status.isFolder);
    for (std::int64_t const time : {status.modified, status.accessed, status.changed})
        EXPECT_NEAR(static_cast<double>(time), static_cast<double>(std::time(nullptr)), 60);
    DescriptorStatus ofPath;
    ASSERT_TRUE(statusOfPath(folder_.path("a.log").c_str(), ofPath));
    EXPECT_EQ(ofPath.size, 5u);
    EXPECT_EQ(ofPath.modified, status.modified);
    EXPECT_EQ(ofPath.number, status.number);
}

TEST_F(Descriptors, tellWhetherTheyAreOfAFile)
{
    folder_.write("b.log", "");
    ASSERT_TRUE(open("a.log", toLog));
    DescriptorStatus status, other;
    ASSERT_TRUE(statusOfDescriptor(file_, status));
    ASSERT_TRUE(statusOfPath(folder_.path("b.log").c_str(), other));

    EXPECT_TRUE(descriptorIsOf(file_, status.device, status.number));
    EXPECT_TRUE(descriptorIsOf(file_, 0, 0));
    EXPECT_EQ(descriptorIsOf(file_, other.device, other.number), other.number == 0);
    EXPECT_FALSE(descriptorIsOf(-1, 0, 0));
}

TEST_F(Descriptors, tellFoldersAndMissingFiles)
{
    DescriptorStatus status;

    ASSERT_TRUE(statusOfPath(folder_.path().c_str(), status));
    EXPECT_TRUE(status.isFolder);
    EXPECT_FALSE(status.isRegular);
    EXPECT_FALSE(statusOfPath(folder_.path("missing").c_str(), status));
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(Descriptors, bringWhatIsWrittenToTheDisk)
{
    ASSERT_TRUE(open("a.log", toLog));
    EXPECT_TRUE(write("text"));

    EXPECT_TRUE(flushDescriptor(file_));
    close();
}

TEST_F(Descriptors, thatAreNoneFail)
{
    DescriptorStatus status;
    char byte = 'x';

    EXPECT_EQ(closeDescriptor(-1), -1);
    EXPECT_EQ(errno, EBADF);
    EXPECT_FALSE(writeDescriptor(-1, &byte, 1));
    EXPECT_EQ(errno, EBADF);
    EXPECT_EQ(readDescriptor(-1, &byte, 1), -1);
    EXPECT_EQ(errno, EBADF);
    EXPECT_FALSE(resizeDescriptor(-1, 0));
    EXPECT_EQ(errno, EBADF);
    EXPECT_FALSE(statusOfDescriptor(-1, status));
    EXPECT_EQ(errno, EBADF);
    EXPECT_FAILS(flushDescriptor(-1), ERROR_INVALID_HANDLE);
}

TEST_F(Descriptors, makeFoldersOneAtATime)
{
    EXPECT_EQ(makeFolder(folder_.path("sub").c_str(), 0755), 0);
    EXPECT_TRUE(std::filesystem::is_directory(folder_.path("sub")));

    EXPECT_EQ(makeFolder(folder_.path("sub").c_str(), 0755), -1);
    EXPECT_EQ(errno, EEXIST);
    EXPECT_EQ(makeFolder(folder_.path("missing/sub").c_str(), 0755), -1);
    EXPECT_EQ(errno, ENOENT);
}
