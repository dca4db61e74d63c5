#include "platform/os/fileWatch.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using zk::os::FileWatch;

class FileWatches : public testing::Test {
protected:
    FileWatches() { folder_.write("a.log", ""); }

    TemporaryFolder folder_;
    FileWatch watch_;
};

TEST_F(FileWatches, tellThatAPathMayHaveChangedWhenItHas)
{
    watch_.start(folder_.path("a.log").c_str());
    watch_.mayHaveChanged();

    std::filesystem::rename(folder_.path("a.log"), folder_.path("b.log"));

    EXPECT_TRUE(watch_.mayHaveChanged());
}

TEST_F(FileWatches, thatWatchNothingAlwaysTellSo)
{
    EXPECT_TRUE(watch_.mayHaveChanged());
    watch_.start(nullptr);
    EXPECT_TRUE(watch_.mayHaveChanged());
    watch_.start("a.log");
    EXPECT_TRUE(watch_.mayHaveChanged());
    watch_.start(folder_.path("missing").c_str());
    EXPECT_TRUE(watch_.mayHaveChanged());
    watch_.start(folder_.path("a.log").c_str());
    watch_.stop();
    EXPECT_TRUE(watch_.mayHaveChanged());
}

}  // namespace
