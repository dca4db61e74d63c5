#include "logging/CCgFileState.h"
#include "platform/os/fileDescriptors.h"
#include "tests/logging/FileHandlers.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/OutOfMemory.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/kernel.h"
#include "tests/support/openDescriptors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace {

namespace fs = std::filesystem;
using namespace zk::os;
using namespace zk::test;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using Files = std::map<std::string, std::string>;

class FileHandlerAndKernel : public FileHandlerTest {
protected:
    static int descriptor()
    {
        Owned const handler = object("out");
        return zk::logging::fileStateOf(handler.get()).file.descriptor();
    }
};

TEST_F(FileHandlerAndKernel, keepTheFileFromChildren)
{
    startFiles();
    log("one");

    EXPECT_TRUE(isKeptFromChildren(descriptor()));
}

TEST_F(FileHandlerAndKernel, giveNewFilesAndFoldersThePermissionsAskedFor)
{
    NoMask const mask;
    startFiles("out.filePermission=0640\nout.dirPermission=0750\nout.fileName=" + path("x/y/a.log") + "\n");
    log("one");
    set("filePermission", "nothing");
    set("fileName", path("x/y/b.log"));
    log("two");

    EXPECT_EQ(permissionsOf(files_.path("logs/x/y/a.log")), 0640u);
    EXPECT_EQ(permissionsOf(files_.path("logs/x/y/b.log")), 0640u) << "the old value is kept";
    EXPECT_EQ(permissionsOf(files_.path("logs/x")), 0750u);
}

TEST_F(FileHandlerAndKernel, haveDefaultPermissions)
{
    NoMask const mask;
    startFiles("out.fileName=" + path("x/a.log") + "\n");
    log("one");

    EXPECT_EQ(permissionsOf(files_.path("logs/x/a.log")), 0744u);
    EXPECT_EQ(permissionsOf(files_.path("logs/x")), 0771u);
}

TEST_F(FileHandlerAndKernel, openTheFileAnewThatTheProgramClosed)
{
    startFiles("out.appending=false\n");
    log("one");
    closeDescriptor(descriptor());

    log("two");

    EXPECT_EQ(content("a.log"), "one\ntwo\n");
    EXPECT_THAT(errorKeys(), IsEmpty());
}

TEST_F(FileHandlerAndKernel, leaveAFileAloneThatGotTheDescriptor)
{
    startFiles();
    log("one");
    write("data", "data of another kind");
    int const other = openDescriptor(files_.path("logs/data").c_str(), openRead | openWrite | openAppend, 0);
    int const reused = descriptor();
    ASSERT_TRUE(giveDescriptorTo(reused, other));

    log("two");
    set("maxFiles", "4");
    log("three");

    EXPECT_EQ(content("data"), "data of another kind");
    EXPECT_EQ(content("a.log"), "one\ntwo\nthree\n");
    EXPECT_TRUE(isOpenDescriptor(reused));
    closeDescriptor(reused);
    closeDescriptor(other);
}

TEST_F(FileHandlerAndKernel, leaveAPipeAloneThatGotTheDescriptor)
{
    startFiles();
    log("one");
    Pipe const pipe;
    int const reused = descriptor();
    ASSERT_TRUE(pipe.isOpen && giveDescriptorTo(reused, pipe.ends[1]));

    log("two");

    EXPECT_TRUE(pipe.isEmpty());
    EXPECT_EQ(content("a.log"), "one\ntwo\n");
    closeDescriptor(reused);
}

TEST_F(FileHandlerAndKernel, closeNoDescriptorThatIsAnotherFilesByNow)
{
    startFiles();
    log("one");
    write("data", "data");
    int const other = openDescriptor(files_.path("logs/data").c_str(), openRead | openWrite, 0);
    int const reused = descriptor();
    ASSERT_TRUE(giveDescriptorTo(reused, other));

    set("maxFiles", "4");

    EXPECT_TRUE(isOpenDescriptor(reused));
    closeDescriptor(reused);
    closeDescriptor(other);
}

TEST_F(FileHandlerAndKernel, writeToDevices)
{
    startFiles("out.fileName=/dev/null\nout.maxFileSize=1\nout.maxFiles=2\n");

    log("one");
    log("two");
    closeDescriptor(descriptor());
    log("three");

    EXPECT_THAT(errorKeys(), IsEmpty());
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_FALSE(fs::exists("/dev/null1"));
}

TEST_F(FileHandlerAndKernel, reportAFullDeviceWithEachRecord)
{
    startFiles("out.fileName=/dev/full\n");

    log("one");
    log("two");

    EXPECT_THAT(texts("errors"), ElementsAre(std::strerror(ENOSPC), std::strerror(ENOSPC)));
}

TEST_F(FileHandlerAndKernel, noticeARemovedFileWithoutAWatch)
{
    FaultInjector<&SystemCalls::realpath> const none({.error = ENOENT, .times = always});
    startFiles("out.maxFileSize=8\n");
    log("one");
    fs::remove(files_.path("logs/a.log"));

    log("two");
    log("six");
    log("ten");

    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "ten\n"), Pair("a1.log", "two\nsix\n")));
}

TEST_F(FileHandlerAndKernel, makeARecordOfSeveralWritesOneCallIfTheKernelTakesIt)
{
    startFiles();
    log("one");
    FaultInjector<&SystemCalls::write> const counted({.onCall = always});

    log(std::string(100000, 'x').c_str());

    EXPECT_EQ(counted.calls(), 1);
}

TEST_F(FileHandlerAndKernel, takeBackWhatWasWrittenHalf)
{
    startFiles();
    log("one");
    {
        ShortTransfers<&SystemCalls::write> const drops(2);
        FaultInjector<&SystemCalls::write> const full({.error = ENOSPC, .onCall = 3, .times = always});

        log("two and more");

        EXPECT_EQ(content("a.log"), "one\n");
        EXPECT_THAT(texts("errors"), ElementsAre(std::strerror(ENOSPC)));
    }
    log("three");

    EXPECT_EQ(content("a.log"), "one\nthree\n");
}

TEST_F(FileHandlerAndKernel, takeNothingBackThatOthersWrote)
{
    startFiles();
    log("one");
    bool wrote = false;
    ShortTransfers<&SystemCalls::write> const drops(2);
    FaultInjector<&SystemCalls::write> const full({.error = ENOSPC, .onCall = 2, .times = always});
    BeforeCall<&SystemCalls::write> const other([&] {
        if (!std::exchange(wrote, true)) {
            std::ofstream(files_.path("logs/a.log"), std::ios::app) << "T\n";
        }
    });

    log("two and more");

    EXPECT_EQ(content("a.log"), "one\nT\ntw");
}

// What rename stands for: names in the folder with the text of each.
TEST_F(FileHandlerAndKernel, keepEveryFileWhicheverRenameFails)
{
    Files const before = {{"a.log", "r01\n"}, {"a1.log", "1"}, {"a2.log", "2"}, {"a3.log", "3"}};
    Files const after = {{"a.log", "r02\n"}, {"a1.log", "r01\n"}, {"a2.log", "1"}, {"a3.log", "2"}};
    bool hasFailed = true;
    for (int call = 1; hasFailed; ++call) {
        ASSERT_LT(call, 10);
        for (auto const& [file, text] : before)
            write(file, text);
        startFiles("out.maxFileSize=4\nout.maxFiles=4\n");
        {
            FaultInjector<&SystemCalls::rename> const refused({.error = EACCES, .onCall = call});
            log("r02");
            hasFailed = refused.calls() >= call;
        }
        if (hasFailed) {
            Files kept = before;
            kept["a.log"] = "r01\nr02\n";
            EXPECT_EQ(files(), kept) << "call " << call;
            EXPECT_THAT(errorKeys(), ElementsAre(0)) << "call " << call;
            log("r03");
            EXPECT_EQ(files(),
                      Files({{"a.log", "r03\n"}, {"a1.log", "r01\nr02\n"}, {"a2.log", "1"}, {"a3.log", "2"}}))
                << "call " << call;
        } else {
            EXPECT_EQ(files(), after);
            EXPECT_EQ(call, 5) << "one put aside, three renamed";
        }
        log_.reset();
        ccg_shutdownManager();
    }
}

TEST_F(FileHandlerAndKernel, loseNothingIfNothingCanBeRenamedFromSomeStepOn)
{
    Files const before = {{"a.log", "r01\n"}, {"a1.log", "1"}, {"a2.log", "2"}, {"a3.log", "3"}};
    for (int call = 1; call < 5; ++call) {
        fs::remove_all(files_.path("logs"));
        files_.makeFolder("logs");
        for (auto const& [file, text] : before)
            write(file, text);
        startFiles("out.maxFileSize=4\nout.maxFiles=4\n");
        FaultInjector<&SystemCalls::rename> const refused({.error = EACCES, .onCall = call, .times = always});

        log("r02");

        std::vector<std::string> left;
        for (auto const& [name, text] : files())
            left.push_back(text);
        EXPECT_THAT(left, testing::UnorderedElementsAre("r01\nr02\n", "1", "2", "3")) << "call " << call;
        log_.reset();
        ccg_shutdownManager();
    }
}

TEST_F(FileHandlerAndKernel, goOnInAFolderThatMayNotBeChanged)
{
    write("a.log", "r01\n");
    write("a1.log", "1");
    ASSERT_TRUE(setPermissions(files_.path(), 0755) && setPermissions(files_.path("logs/a.log"), 0666) &&
                setPermissions(files_.path("logs"), 0555));
    startFiles("out.maxFileSize=4\nout.maxFiles=2\n");
    asOrdinaryUser([&] {
        log("r02");

        EXPECT_EQ(files(), Files({{"a.log", "r01\nr02\n"}, {"a1.log", "1"}}));
        EXPECT_THAT(errorKeys(), ElementsAre(0));
    });
    setPermissions(files_.path("logs"), 0755);
}

TEST_F(FileHandlerAndKernel, followNoLinkThatAnotherUserLaidIntoAFolderForEverybody)
{
    if (!isSuperuser())
        GTEST_SKIP() << "only the superuser can make another user's link";
    write("precious", "precious");
    fs::create_symlink(files_.path("logs/precious"), files_.path("logs/a.log"));
    ASSERT_TRUE(giveLinkToNobody(files_.path("logs/a.log")) && setPermissions(files_.path("logs"), 01777));
    startFiles();

    log("one");
    EXPECT_EQ(content("precious"), "precious");
    EXPECT_THAT(errorKeys(), ElementsAre(0));

    setPermissions(files_.path("logs"), 0755);
    log("two");
    EXPECT_EQ(content("precious"), "precioustwo\n");
}

TEST_F(FileHandlerAndKernel, goOnWhenAFileMayGrowAgain)
{
    startFiles();
    log("one");
    inChildProcess([&] {
        {
            FileSizeLimit const small(6);

            log("two");

            EXPECT_EQ(content("a.log"), "one\n") << "two bytes of it had been written";
            EXPECT_THAT(texts("errors"), ElementsAre(std::strerror(EFBIG)));
        }
        log("three");
        EXPECT_EQ(content("a.log"), "one\nthree\n");
    });
}

TEST_F(FileHandlerAndKernel, loseNoOlderLogOnAFullDiskAndGoOnWhenThereIsRoom)
{
    startFiles("out.maxFileSize=16384\nout.maxFiles=3\n");
    if (!canMountFileSystems(files_.path("logs")))
        GTEST_SKIP() << "this user may not mount file systems";
    inChildProcess([&] {
        ASSERT_TRUE(mountSmallFileSystem(files_.path("logs"), "64k"));
        write("a1.log", std::string(8192, '1'));
        write("ballast", std::string(32768, 'b'));
        std::string const record(4095, 'r');
        for (int i = 0; i < 12; ++i)
            log(record.c_str());

        // Each record is there wholly or not at all.
        EXPECT_EQ(content("a.log").size() % 4096, 0u);
        EXPECT_GT(content("a.log").size() + content("a1.log").size(), 8192u);
        EXPECT_EQ(content("a2.log"), std::string(8192, '1'));
        EXPECT_THAT(texts("errors"), Contains(std::strerror(ENOSPC)));
        fs::remove(files_.path("logs/ballast"));
        std::size_t const reports = errorKeys().size();
        log("goes on");
        EXPECT_THAT(content("a.log"), testing::EndsWith("goes on\n"));
        EXPECT_EQ(errorKeys().size(), reports);
    });
}

TEST_F(FileHandlerAndKernel, stayUsableWhereverMemoryEnds)
{
    for (int number = 1;; ++number) {
        startFiles("out.maxFileSize=4\nout.maxFiles=3\nout.formatterName=framed\n");
        auto const descriptors = openDescriptors();
        log("r01");
        bool hasFailed = false;
        {
            FailingAllocation const failing(number);
            log("r02");
            hasFailed = failing.hasFailed();
        }
        log("r03");

        EXPECT_THAT(content("a.log"), HasSubstr("r03\n")) << "allocation " << number;
        EXPECT_THAT(content("a1.log"), AllOf(HasSubstr("\n"), testing::Not(HasSubstr("r03"))));
        log_.reset();
        ccg_shutdownManager();
        EXPECT_LE(openDescriptors(), descriptors + 1) << "the watch's at most";
        fs::remove_all(files_.path("logs"));
        files_.makeFolder("logs");
        if (!hasFailed)
            break;
        ASSERT_LT(number, 500);
    }
}

}  // namespace
