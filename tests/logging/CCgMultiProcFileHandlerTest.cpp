#include "logging/util/CxMutex.h"
#include "logging/util/CxSystem.h"
#include "logging/util/CxThread.h"
#include "platform/os/os.h"
#include "tests/logging/FileHandlers.h"
#include "tests/logging/Writers.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScopedHandle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using zk::test::ChildProcess;
using Files = std::map<std::string, std::string>;

// A key of this process and test, so that runs side by side stay apart.
std::int32_t newKey()
{
    static std::int32_t count = 0;
    return static_cast<std::int32_t>(0x40000000 | (CxProcessId() & 0x3FFFFF) << 8 | (++count & 0xFF));
}

class MultiProcFileHandler : public FileHandlerTest {
protected:
    void startShared(std::string const& properties = "")
    {
        startFiles("out.MPFileSemKey=" + std::to_string(key_) + "\n" + properties,
                   "ccg_multiproc_filehandler");
    }

    std::int32_t const key_ = newKey();
};

TEST_F(MultiProcFileHandler, writesEachRecordAtOnce)
{
    startShared("out.listenerNames=recorder\n");

    log("one");
    EXPECT_EQ(content("a.log"), "one\n");
    log("two");

    EXPECT_EQ(content("a.log"), "one\ntwo\n");
    EXPECT_THAT(texts(), ElementsAre("one", "two"));
    EXPECT_EQ(files_.read("logs/a.log").find('\r') != std::string::npos, zk::os::textLinesEndInCrLf);
}

TEST_F(MultiProcFileHandler, appendsWhateverAppendingSays)
{
    write("a.log", "old\n");
    startShared("out.appending=false\n");

    log("one");

    EXPECT_EQ(content("a.log"), "old\none\n");
}

TEST_F(MultiProcFileHandler, framesNothing)
{
    startShared("out.formatterName=framed\n");

    log("one");
    set("maxFiles", "4");

    EXPECT_EQ(content("a.log"), "one\n");
}

TEST_F(MultiProcFileHandler, writesNothingWhileItIsOffOrWithoutAText)
{
    startShared("out.logging=off\nout.listenerNames=recorder\n");
    log("one");
    EXPECT_THAT(files(), IsEmpty());
    EXPECT_THAT(texts(), IsEmpty());

    set("logging", "on");
    set("formatterName", "recorder");
    log("two");

    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "")));
}

// Three records of four bytes fill a file of twelve.
TEST_F(MultiProcFileHandler, rollsOverByTheNumberOfFiles)
{
    struct Row {
        int maxFiles;
        Files before;
        Files after;
    };
    Row const rows[] = {
        {0, {}, {{"a.log", "r01\nr02\nr03\nr04\n"}}},
        {1, {{"a1.log", "old"}}, {{"a.log", "r01\nr02\nr03\nr04\n"}, {"a1.log", "old"}}},
        {2, {}, {{"a.log", "r04\n"}, {"a1.log", "r01\nr02\nr03\n"}}},
        {2,
         {{"a1.log", "a longer older log"}, {"a2.log", "not ours"}},
         {{"a.log", "r04\n"}, {"a1.log", "r01\nr02\nr03\n"}, {"a2.log", "not ours"}}},
        {3,
         {{"a1.log", "older"}, {"a2.log", "oldest"}},
         {{"a.log", "r04\n"}, {"a1.log", "r01\nr02\nr03\n"}, {"a2.log", "older"}}},
        {3, {{"a2.log", "oldest"}}, {{"a.log", "r04\n"}, {"a1.log", "r01\nr02\nr03\n"}}},
        {10,
         {{"a1.log", "1"}, {"a3.log", "3"}, {"a9.log", "9"}},
         {{"a.log", "r04\n"}, {"a1.log", "r01\nr02\nr03\n"}, {"a2.log", "1"}, {"a4.log", "3"}}},
    };
    int const lineEnd = zk::os::textLinesEndInCrLf ? 2 : 1;
    for (Row const& row : rows) {
        for (auto const& [name, text] : row.before)
            write(name, text);
        startShared("out.maxFileSize=" + std::to_string(3 * (3 + lineEnd)) +
                    "\nout.maxFiles=" + std::to_string(row.maxFiles) + "\n");

        for (char const* const record : {"r01", "r02", "r03", "r04"})
            log(record);

        EXPECT_EQ(files(), row.after) << "row " << &row - rows;
        EXPECT_THAT(errorKeys(), IsEmpty()) << "row " << &row - rows;
        log_.reset();
        ccg_shutdownManager();
        fs::remove_all(files_.path("logs"));
        files_.makeFolder("logs");
    }
}

TEST_F(MultiProcFileHandler, rollsOverOncePerRecordWithASizeOfZero)
{
    startShared("out.maxFileSize=0\nout.maxFiles=4\n");

    log("one");
    log("two");
    log("three");

    EXPECT_THAT(files(),
                ElementsAre(Pair("a.log", "three\n"), Pair("a1.log", "two\n"), Pair("a2.log", "one\n"),
                            Pair("a3.log", "")));
}

TEST_F(MultiProcFileHandler, copiesLargeFilesWhole)
{
    std::string whole;
    for (int i = 0; whole.size() < 50000; ++i)
        whole += std::to_string(i) + "\n";
    for (std::size_t const size : {std::size_t(8191), std::size_t(8192), std::size_t(8193), whole.size()}) {
        write("a.log", whole.substr(0, size));
        startShared("out.maxFileSize=100\nout.maxFiles=2\n");

        log("one");

        EXPECT_EQ(files_.read("logs/a1.log"), whole.substr(0, size));
        EXPECT_EQ(content("a.log"), "one\n");
        log_.reset();
        ccg_shutdownManager();
    }
}

TEST_F(MultiProcFileHandler, keepsTheFileThatOthersHaveOpen)
{
    startShared("out.maxFileSize=4\nout.maxFiles=2\n");
    log("one");
    ScopedHandle const other(CreateFileA(files_.path("logs/a.log").c_str(), FILE_APPEND_DATA,
                                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(other);

    log("two");
    DWORD done;
    EXPECT_TRUE(WriteFile(other.get(), "other", 5, &done, nullptr));

    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "two\nother"), Pair("a1.log", "one\n")));
}

TEST_F(MultiProcFileHandler, leavesAFolderInTheWayOfTheOldestFile)
{
    startShared("out.maxFileSize=4\nout.maxFiles=2\n");
    files_.makeFolder("logs/a1.log");
    log("one");
    log("two");
    EXPECT_EQ(content("a.log"), "one\ntwo\n");
    EXPECT_THAT(errorKeys(), ElementsAre(0));
}

TEST_F(MultiProcFileHandler, keepsEveryFileWhereOneCannotBeRenamed)
{
    Files const before = {{"a.log", "r01\n"}, {"a1.log", "1"}, {"a2.log", "2"}, {"a3.log", "3"}};
    for (char const* const name : {"a1.log", "a2.log", "a3.log"}) {
        for (auto const& [file, text] : before)
            write(file, text);
        startShared("out.maxFileSize=4\nout.maxFiles=4\n");
        {
            ScopedHandle const holder(CreateFileA(files_.path(std::string("logs/") + name).c_str(),
                                                  GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
            ASSERT_TRUE(holder);
            log("r02");
            EXPECT_THAT(errorKeys(), ElementsAre(0)) << name;
        }
        Files expected = before;
        expected["a.log"] = "r01\nr02\n";
        EXPECT_EQ(files(), expected) << name;
        log("r03");
        EXPECT_EQ(files(),
                  Files({{"a.log", "r03\n"}, {"a1.log", "r01\nr02\n"}, {"a2.log", "1"}, {"a3.log", "2"}}))
            << name;
        log_.reset();
        ccg_shutdownManager();
    }
}

ZK_CHILD(holdsATurn)
{
    CxMutex mutex;
    bool const held =
        CxMutexCreateNamed(mutex, std::stoi(parent.argument())).ok() && CxMutexLockNamed(mutex).ok();
    parent.say("held");
    parent.awaits("go");
    return held ? 0 : 1;
}

TEST_F(MultiProcFileHandler, goesOnAfterAnOwnerThatWasKilled)
{
    startShared();
    log("one");
    write("a.log", "one\ntorn");
    ChildProcess child("holdsATurn", std::to_string(key_));
    child.awaits("held");
    child.kill();

    log("two");
    log("three");

    EXPECT_EQ(content("a.log"), "one\ntorn\ntwo\nthree\n");
    EXPECT_THAT(errorKeys(), IsEmpty());
}

TEST_F(MultiProcFileHandler, doesNotCopyTwiceWhatAnOwnerThatEndedHadCopied)
{
    for (char const* const copied : {"r01\n", "r0", ""}) {
        write("a.log", "r01\n");
        write("a1.log", copied);
        write("a2.log", "older");
        startShared("out.maxFileSize=4\nout.maxFiles=5\n");

        log("r02");

        EXPECT_EQ(files(), Files({{"a.log", "r02\n"}, {"a1.log", "r01\n"}, {"a2.log", "older"}})) << copied;
        log_.reset();
        ccg_shutdownManager();
    }
}

TEST_F(MultiProcFileHandler, noticesAFileThatWasRemoved)
{
    startShared();
    log("one");
    std::error_code error;
    fs::remove(files_.path("logs/a.log"), error);

    log("two");

    EXPECT_EQ(content("a.log"), error ? "one\ntwo\n" : "two\n");
}

TEST_F(MultiProcFileHandler, reportsWhatItCannotOpenAndKeepsIt)
{
    write("inTheWay", "");
    startShared("out.listenerNames=recorder\nout.fileName=" + path("inTheWay/a.log") + "\n");

    log("one");
    EXPECT_THAT(errorKeys(), ElementsAre(32, 0));
    EXPECT_THAT(texts(), IsEmpty());
    log("two");
    EXPECT_THAT(errorKeys(), ElementsAre(32, 0, 32, 0));
    fs::remove(files_.path("logs/inTheWay"));
    log("three");

    EXPECT_THAT(files(), ElementsAre(Pair("inTheWay/a.log", "three\n")));
    EXPECT_THAT(texts(), ElementsAre("three"));
}

TEST_F(MultiProcFileHandler, ofSeveralProcessesLosesAndTearsNothing)
{
    zk::test::WriterTask const task = {
        .folder = files_.path("logs"), .key = key_, .records = 300, .maxFileSize = 20000, .maxFiles = 50};

    zk::test::WriterResult const result = runWriters(4, task, std::chrono::milliseconds(0));

    EXPECT_EQ(result.faults, "");
    EXPECT_GT(result.files, 2);
}

TEST_F(MultiProcFileHandler, losesAndTearsNothingThatIsNotBeingWrittenWhenAProcessIsKilled)
{
    zk::test::WriterTask const task = {
        .folder = files_.path("logs"), .key = key_, .records = 500, .maxFileSize = 20000, .maxFiles = 50};

    zk::test::WriterResult const result = runWriters(3, task, std::chrono::milliseconds(20));

    EXPECT_EQ(result.faults, "");
    EXPECT_GT(result.kills, 0);
}

}  // namespace
