#include "platform/os/fileWatch.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/openDescriptors.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

namespace {

namespace fs = std::filesystem;
using zk::os::FileWatch;
using zk::test::asOrdinaryUser;
using zk::test::inChildProcess;

class KernelsFileWatches : public testing::Test {
protected:
    KernelsFileWatches()
    {
        folder_.makeFolder("outer");
        folder_.makeFolder("outer/inner");
        folder_.write("outer/inner/a.log", "");
        fs::create_symlink(folder_.path("outer"), folder_.path("link"));
    }

    std::string path(std::string_view name) const { return folder_.path(name); }

    TemporaryFolder folder_;
    FileWatch watch_;
};

TEST_F(KernelsFileWatches, staySilentWhileTheFileIsWritten)
{
    watch_.start(path("outer/inner/a.log").c_str());

    std::ofstream(path("outer/inner/a.log"), std::ios::app) << "text";

    EXPECT_FALSE(watch_.mayHaveChanged());
}

TEST_F(KernelsFileWatches, staySilentWhenOthersComeAndGoBesideTheFile)
{
    watch_.start(path("outer/inner/a.log").c_str());

    folder_.write("outer/inner/b.log", "text");
    fs::remove(path("outer/inner/b.log"));

    EXPECT_FALSE(watch_.mayHaveChanged());
}

TEST_F(KernelsFileWatches, tellOfEveryNameOnTheWay)
{
    struct Row {
        char const* what;
        std::string watched;
        std::function<void()> change;
    };
    Row const rows[] = {
        {"file removed", "outer/inner/a.log", [&] { fs::remove(path("outer/inner/a.log")); }},
        {"file renamed", "outer/inner/a.log",
         [&] { fs::rename(path("outer/inner/a.log"), path("outer/inner/a1.log")); }},
        {"file replaced", "outer/inner/a.log",
         [&] {
             folder_.write("outer/inner/new", "");
             fs::rename(path("outer/inner/new"), path("outer/inner/a.log"));
         }},
        {"folder renamed", "outer/inner/a.log", [&] { fs::rename(path("outer/inner"), path("outer/old")); }},
        {"outer folder renamed", "outer/inner/a.log", [&] { fs::rename(path("outer"), path("old")); }},
        {"doubled separator", "outer//inner//a.log", [&] { fs::rename(path("outer"), path("old")); }},
        {"link removed", "link/inner/a.log", [&] { fs::remove(path("link")); }},
        {"folder behind a link renamed", "link/inner/a.log", [&] { fs::rename(path("outer"), path("old")); }},
        {"link turned elsewhere", "link/inner/a.log",
         [&] {
             fs::create_symlink(path("."), path("newLink"));
             fs::rename(path("newLink"), path("link"));
         }},
    };
    for (Row const& row : rows) {
        watch_.start(path(row.watched).c_str());
        EXPECT_FALSE(watch_.mayHaveChanged()) << row.what;

        row.change();

        EXPECT_TRUE(watch_.mayHaveChanged()) << row.what;
        EXPECT_FALSE(watch_.mayHaveChanged()) << row.what << ", told once";
        watch_.stop();
        fs::remove_all(path("outer"));
        fs::remove_all(path("old"));
        fs::remove(path("link"));
        folder_.makeFolder("outer");
        folder_.makeFolder("outer/inner");
        folder_.write("outer/inner/a.log", "");
        fs::create_symlink(path("outer"), path("link"));
    }
}

TEST_F(KernelsFileWatches, shareOneDescriptor)
{
    folder_.write("outer/b.log", "");
    watch_.start(path("outer/inner/a.log").c_str());
    auto const before = openDescriptors();
    FileWatch other;
    other.start(path("outer/b.log").c_str());
    EXPECT_EQ(openDescriptors(), before);

    fs::rename(path("outer"), path("old"));

    EXPECT_TRUE(watch_.mayHaveChanged());
    EXPECT_TRUE(other.mayHaveChanged());
}

TEST_F(KernelsFileWatches, goOnWhenAnotherOneOfTheSameFolderEnds)
{
    FileWatch other;
    watch_.start(path("outer/inner/a.log").c_str());
    other.start(path("outer/inner/a.log").c_str());
    other.stop();
    watch_.mayHaveChanged();

    fs::rename(path("outer/inner"), path("outer/old"));

    EXPECT_TRUE(watch_.mayHaveChanged());
}

TEST_F(KernelsFileWatches, ofAChildTakeNothingFromTheParent)
{
    watch_.start(path("outer/inner/a.log").c_str());

    inChildProcess([&] {
        EXPECT_TRUE(watch_.mayHaveChanged()) << "it begins anew";
        EXPECT_FALSE(watch_.mayHaveChanged());
        fs::remove(path("outer/inner/a.log"));
        EXPECT_TRUE(watch_.mayHaveChanged());
    });

    EXPECT_TRUE(watch_.mayHaveChanged());
}

TEST_F(KernelsFileWatches, asTheFileSystemWhereTheKernelGivesNone)
{
    asOrdinaryUser([&] {
        rlimit const none = {0, 0};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
        errno = 0;

        watch_.start(path("outer/inner/a.log").c_str());

        EXPECT_EQ(errno, 0);
        EXPECT_TRUE(watch_.mayHaveChanged());
        EXPECT_TRUE(watch_.mayHaveChanged());
    });
}

TEST_F(KernelsFileWatches, asTheFileSystemBehindAFolderThatMayNotBeRead)
{
    chmod(folder_.path().c_str(), 0755);
    asOrdinaryUser([&] {
        watch_.start(path("outer/inner/a.log").c_str());
        EXPECT_FALSE(watch_.mayHaveChanged());
    });
    chmod(path("outer").c_str(), 0711);
    asOrdinaryUser([&] {
        watch_.start(path("outer/inner/a.log").c_str());

        EXPECT_TRUE(watch_.mayHaveChanged());
        EXPECT_TRUE(watch_.mayHaveChanged());
    });
}

}  // namespace
