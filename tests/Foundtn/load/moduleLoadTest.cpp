// The module as a process meets it that is not linked with it.
#include "tests/Foundtn/load/frameUser.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/ProcessUsage.h"

#include <gtest/gtest.h>

namespace {

using zk::test::LoadedModule;
using zk::test::ProcessUsage;

constexpr char module[] = ZK_MODULE;
constexpr char userModule[] = FRAME_USER_MODULE;

// What the first load costs once and for all: the loader's own tables, and the
// language's library, which stays for its own reasons.
void loadOnce(char const* path)
{
    LoadedModule const first(path);
}

TEST(ModuleLoad, startsNoThreadAndLeavesNoFileOpen)
{
    ProcessUsage const before;

    LoadedModule const loaded(module);

    ProcessUsage const after;
    EXPECT_EQ(after.threads, before.threads);
    EXPECT_EQ(after.handles, before.handles);
}

TEST(ModuleLoad, allocatesLessThan64Kilobytes)
{
    loadOnce(module);
    ProcessUsage const before;

    LoadedModule const loaded(module);

    EXPECT_LT(ProcessUsage().memory, before.memory + 64 * 1024);
}

TEST(ModuleLoad, makesTheLibraryReadyBeforeTheModulesThatUseIt)
{
    LoadedModule const user(userModule);
    FrameUserReport report;

    user.function<ReportTo>("reportTo")(&report);

    EXPECT_TRUE(report.libraryWorkedAtLoad);
    user.function<ReportTo>("reportTo")(nullptr);
}

TEST(ModuleUnload, takesTheLibraryDownBehindTheModulesThatUseIt)
{
    LoadedModule user(userModule);
    FrameUserReport report;
    user.function<ReportTo>("reportTo")(&report);

    user.unload();

    EXPECT_TRUE(report.libraryWorkedAtUnload);
}

TEST(ModuleUnload, takesTheLibraryOutOfTheProcess)
{
    LoadedModule user(userModule);
    user.function<UseLibrary>("useLibrary")();
    ASSERT_TRUE(LoadedModule::isLoaded(module));

    user.unload();

    EXPECT_FALSE(LoadedModule::isLoaded(userModule));
    EXPECT_FALSE(LoadedModule::isLoaded(module));
}

TEST(ModuleUnload, leavesNothingBehindInAThousandTurns)
{
    loadOnce(module);
    ProcessUsage const before;

    for (int turn = 0; turn < 1000; ++turn)
        LoadedModule const loaded(module);

    ProcessUsage const after;
    EXPECT_LT(after.memory, before.memory + 16 * 1024);
    EXPECT_EQ(after.handles, before.handles);
    EXPECT_EQ(after.threads, before.threads);
}

TEST(ModuleUnload, leavesNothingBehindOfWhatWasUsedInAThousandTurns)
{
    auto const turn = [] {
        LoadedModule const user(userModule);
        return user.function<UseLibrary>("useLibrary")();
    };
    ASSERT_TRUE(turn());
    ProcessUsage const before;

    int done = 0;
    for (int i = 0; i < 1000; ++i)
        done += turn();

    ProcessUsage const after;
    EXPECT_EQ(done, 1000);
    EXPECT_LT(after.memory, before.memory + 16 * 1024);
    EXPECT_EQ(after.handles, before.handles);
    EXPECT_EQ(after.threads, before.threads);
}

TEST(ModuleFile, carriesItsVersion)
{
    EXPECT_EQ(LoadedModule::versionOf(module), ZK_MODULE_VERSION);
}

}  // namespace
