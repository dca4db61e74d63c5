// The long runs of the handler that many processes share.
#include "logging/util/CxMutex.h"
#include "logging/util/CxSystem.h"
#include "tests/logging/FileHandlers.h"
#include "tests/logging/Writers.h"
#include "tests/support/ChildProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using testing::ElementsAre;
using zk::test::ChildProcess;

class MultiProcFileHandlerAtLength : public FileHandlerTest {
protected:
    std::int32_t const key_ = static_cast<std::int32_t>(0x20000000 | (CxProcessId() & 0xFFFFFF));
};

ZK_CHILD(holdsATurnForLong)
{
    CxMutex mutex;
    bool const held =
        CxMutexCreateNamed(mutex, std::stoi(parent.argument())).ok() && CxMutexLockNamed(mutex).ok();
    parent.say("held");
    parent.awaits("go");
    return held ? 0 : 1;
}

TEST_F(MultiProcFileHandlerAtLength, dropsWithAReportWhatItGetsNoTurnFor)
{
    startFiles("out.MPFileSemKey=" + std::to_string(key_) + "\nout.listenerNames=recorder\n",
               "ccg_multiproc_filehandler");
    log("one");
    ChildProcess child("holdsATurnForLong", std::to_string(key_));
    child.awaits("held");

    log("two");

    EXPECT_EQ(content("a.log"), "one\n");
    EXPECT_THAT(errorKeys(), ElementsAre(0));
    child.say("go");
    EXPECT_EQ(child.exitCode(), 0);
    log("three");
    EXPECT_EQ(content("a.log"), "one\nthree\n");
}

TEST_F(MultiProcFileHandlerAtLength, losesAndTearsNothingOfEightProcessesThatAreKilled)
{
    zk::test::WriterTask const task = {.folder = files_.path("logs"),
                                       .key = key_,
                                       .records = ZK_STRESS_RECORDS,
                                       .maxFileSize = ZK_STRESS_RECORDS * 50,
                                       .maxFiles = 50};

    zk::test::WriterResult const result = runWriters(8, task, std::chrono::milliseconds(50));

    EXPECT_EQ(result.faults, "");
    EXPECT_GT(result.kills, 0);
    EXPECT_GT(result.files, 10);
    RecordProperty("kills", result.kills);
    RecordProperty("files", result.files);
}

}  // namespace
