#include "logging/CCgFileState.h"
#include "logging/util/CxSystem.h"
#include "platform/os/fileDescriptors.h"
#include "tests/logging/FileHandlers.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/OutOfMemory.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/kernel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace zk::os;
using namespace zk::test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using Files = std::map<std::string, std::string>;

class MultiProcFileHandlerAndKernel : public FileHandlerTest {
protected:
    void startShared(std::string const& properties = "")
    {
        static int count = 0;
        auto const key = 0x60000000u | (CxProcessId() & 0x3FFFFF) << 7 | (++count & 0x7F);
        startFiles("out.MPFileSemKey=" + std::to_string(static_cast<std::int32_t>(key)) + "\n" + properties,
                   "ccg_multiproc_filehandler");
    }

    static void openFile()
    {
        Owned const handler = object("out");
        handler->objClass->handler.open(handler.get());
    }

    void checkEachEnd(bool isUsedMeanwhile);

    void beginAnew()
    {
        log_.reset();
        ccg_shutdownManager();
        fs::remove_all(files_.path("logs"));
        files_.makeFolder("logs");
    }
};

TEST_F(MultiProcFileHandlerAndKernel, keepTheFileFromChildren)
{
    startShared();
    log("one");
    Owned const handler = object("out");

    EXPECT_TRUE(isKeptFromChildren(zk::logging::fileStateOf(handler.get()).file.descriptor()));
}

TEST_F(MultiProcFileHandlerAndKernel, writeARecordInOneCall)
{
    startShared();
    log("one");
    FaultInjector<&SystemCalls::write> const counted({.onCall = always});

    log(std::string(100000, 'x').c_str());

    EXPECT_EQ(counted.calls(), 1);
}

TEST_F(MultiProcFileHandlerAndKernel, emptyTheFileThoughItsCopyCannotBeOpened)
{
    startShared("out.maxFileSize=4\nout.maxFiles=2\n");
    log("one");
    testing::internal::CaptureStdout();
    {
        FaultInjector<&SystemCalls::open> const refused({.error = EACCES, .times = always});
        log("two");
    }

    std::string const printed = testing::internal::GetCapturedStdout();
    EXPECT_THAT(printed, HasSubstr("ERR opening "));
    EXPECT_THAT(printed, HasSubstr("a1.log pre rollover\n"));
    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "two\n")));
    EXPECT_THAT(errorKeys(), ElementsAre(73));
    EXPECT_EQ(records("errors")[0].level, CCG_WARN);
    EXPECT_THAT(texts("errors")[0], HasSubstr("a1.log"));
}

TEST_F(MultiProcFileHandlerAndKernel, emptyTheFileThoughItsCopyIsCut)
{
    struct Row {
        char const* what;
        std::function<void(std::function<void()>)> with;
        std::int32_t key;
        char const* copy;
    };
    Row const rows[] = {
        {"read",
         [](auto work) {
             FaultInjector<&SystemCalls::read> const bad({.error = EIO, .onCall = 2, .times = always});
             work();
         },
         72, ""},
        {"write",
         [](auto work) {
             FaultInjector<&SystemCalls::write> const full({.error = ENOSPC});
             work();
         },
         73, ""},
        {"flush",
         [](auto work) {
             FaultInjector<&SystemCalls::fsync> const bad({.error = EIO});
             work();
         },
         73, "one\n"},
    };
    for (Row const& row : rows) {
        startShared("out.maxFileSize=4\nout.maxFiles=2\n");
        log("one");

        row.with([&] { log("two"); });

        EXPECT_THAT(files(), ElementsAre(Pair("a.log", "two\n"), Pair("a1.log", row.copy))) << row.what;
        EXPECT_THAT(errorKeys(), ElementsAre(row.key)) << row.what;
        beginAnew();
    }
}

TEST_F(MultiProcFileHandlerAndKernel, keepEveryFileWhicheverRenameFails)
{
    Files const before = {{"a.log", "r01\n"}, {"a1.log", "1"}, {"a2.log", "2"}, {"a3.log", "3"}};
    for (int call = 1; call <= 3; ++call) {
        for (auto const& [file, text] : before)
            write(file, text);
        startShared("out.maxFileSize=4\nout.maxFiles=4\n");
        openFile();
        {
            FaultInjector<&SystemCalls::rename> const refused({.error = EACCES, .onCall = call});
            log("r02");
            EXPECT_GE(refused.calls(), call);
        }
        Files kept = before;
        kept["a.log"] = "r01\nr02\n";
        EXPECT_EQ(files(), kept) << "call " << call;
        EXPECT_THAT(errorKeys(), ElementsAre(0)) << "call " << call;

        log("r03");
        EXPECT_EQ(files(),
                  Files({{"a.log", "r03\n"}, {"a1.log", "r01\nr02\n"}, {"a2.log", "1"}, {"a3.log", "2"}}))
            << "call " << call;
        beginAnew();
    }
}

TEST_F(MultiProcFileHandlerAndKernel, takeBackWhatWasWrittenHalf)
{
    startShared();
    log("one");
    {
        ShortTransfers<&SystemCalls::write> const drops(2);
        FaultInjector<&SystemCalls::write> const full({.error = ENOSPC, .onCall = 3, .times = always});
        log("two and more");
    }
    log("three");

    EXPECT_EQ(content("a.log"), "one\nthree\n");
}

// Ends the process before its n-th call into the kernel, of those that change files.
class EndAtCall {
public:
    explicit EndAtCall(int number) : left_(number) { }

    int left() const { return left_; }

private:
    std::function<void()> step()
    {
        return [this] {
            if (--left_ == 0)
                endProcess(9);
        };
    }

    int left_;
    BeforeCall<&SystemCalls::write> const write_{step()};
    BeforeCall<&SystemCalls::rename> const rename_{step()};
    BeforeCall<&SystemCalls::open> const open_{step()};
    BeforeCall<&SystemCalls::ftruncate> const truncate_{step()};
    BeforeCall<&SystemCalls::unlink> const unlink_{step()};
    BeforeCall<&SystemCalls::fsync> const flush_{step()};
    BeforeCall<&SystemCalls::close> const close_{step()};
};

// Ends a process at each step of a record with a rollover. What the next process finds: one that uses the mutex
// meanwhile learns of the end; one that comes when nobody is left has the files alone to tell.
void MultiProcFileHandlerAndKernel::checkEachEnd(bool isUsedMeanwhile)
{
    Files const before = {{"a.log", "r01\n"}, {"a1.log", "1"}, {"a2.log", "2"}, {"a3.log", "3"}};
    bool hasEnded = true;
    int steps = 0;
    for (int call = 1; hasEnded; ++call, ++steps) {
        ASSERT_LT(call, 200);
        for (auto const& [file, text] : before)
            write(file, text);
        startShared("out.maxFileSize=4\nout.maxFiles=4\n");
        if (isUsedMeanwhile)
            openFile();
        int const code = exitCodeOf([&] {
            EndAtCall const end(call);
            log("r02");
            endProcess(0);
        });
        hasEnded = code == 9;

        log("r03");

        Files found = files();
        std::string const active = found["a.log"];
        found.erase("a.log");
        if (!isUsedMeanwhile && found.contains("a.log.dropped") && found["a.log.dropped"] == "3")
            found.erase("a.log.dropped");  // left until the next rollover
        Files const rolled = {{"a1.log", "r01\n"}, {"a2.log", "1"}, {"a3.log", "2"}};
        if (active == "r03\n" && found.contains("a1.log") && found["a1.log"] == "r02\n")
            EXPECT_EQ(found, Files({{"a1.log", "r02\n"}, {"a2.log", "r01\n"}, {"a3.log", "1"}}))
                << "call " << call;
        else
            EXPECT_EQ(found, rolled) << "call " << call;
        EXPECT_TRUE(active == "r03\n" || active == "r02\nr03\n") << "call " << call << ": " << active;
        EXPECT_THAT(errorKeys(), IsEmpty()) << "call " << call;
        beginAnew();
    }
    EXPECT_GT(steps, 10);
}

TEST_F(MultiProcFileHandlerAndKernel, loseNothingWhereverAProcessEndsInARolloverThatAnotherOneGoesOnWith)
{
    checkEachEnd(true);
}

TEST_F(MultiProcFileHandlerAndKernel, loseNothingWhereverTheLastProcessEndsInARollover)
{
    checkEachEnd(false);
}

TEST_F(MultiProcFileHandlerAndKernel, stayUsableWhereverMemoryEnds)
{
    for (int number = 1;; ++number) {
        startShared("out.maxFileSize=4\nout.maxFiles=3\n");
        log("r01");
        bool hasFailed = false;
        {
            FailingAllocation const failing(number);
            log("r02");
            hasFailed = failing.hasFailed();
        }
        log("r03");

        Files const found = files();
        std::string all;
        for (auto const& [name, text] : found)
            all += text;
        EXPECT_THAT(all, HasSubstr("r01\n")) << "allocation " << number;
        EXPECT_THAT(all, HasSubstr("r03\n")) << "allocation " << number;
        beginAnew();
        if (!hasFailed)
            break;
        ASSERT_LT(number, 500);
    }
}

}  // namespace
