// What is told where the current directory cannot be told: it has been removed.
#include "Foundtn/util/IAppProfileService.h"
#include "Foundtn/util/getEnv.h"
#include "files/fileQueries.h"
#include "files/logicalPaths.h"
#include "tests/support/MemoryProfile.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/freshProcess.h"

using zk::test::MemoryProfile;
using zk::test::ScopedEnvironment;

namespace {

void enterARemovedFolder()
{
    TemporaryFolder const folder;
    std::filesystem::current_path(folder.path());
}

TEST_IN_FRESH_PROCESS(RemovedCurrentFolder, makesAllFoldersExist)
{
    enterARemovedFolder();
    CString error("old");

    EXPECT_EQ(omDirExist("/no such folder", &error), 1);

    EXPECT_STREQ(error, "old");
}

TEST_IN_FRESH_PROCESS(RemovedCurrentFolder, hasNoFullPath)
{
    enterARemovedFolder();
    CString error;

    EXPECT_STREQ(omGetFullPathOfDirectory("", error), "");
    EXPECT_FALSE(error.IsEmpty());
    error.Empty();
    EXPECT_STREQ(omGetFullPathOfDirectory("/tmp", error), "");
    EXPECT_FALSE(error.IsEmpty());
    CString folder("old");
    EXPECT_FALSE(IAppProfileService::GetCurrentDir(folder));
    EXPECT_STREQ(folder, "");
}

TEST_IN_FRESH_PROCESS(RemovedCurrentFolder, leavesNoPlaceForTheDocuments)
{
    ScopedEnvironment const noDoc("OMDOCROOT", nullptr);
    enterARemovedFolder();
    CString value("old");

    EXPECT_EQ(omGetDocRoot(value), 0);

    EXPECT_STREQ(value, "");
}

TEST_IN_FRESH_PROCESS(RemovedCurrentFolder, isPassedOverInTheSearchForTheProfile)
{
    enterARemovedFolder();
    ScopedEnvironment const user("USERPROFILE", nullptr);
    ScopedEnvironment const everybody("ALLUSERSPROFILE", nullptr);
    IAppProfileService service(true);

    service.InitProfileName("nowhere.ini", nullptr, nullptr);

    EXPECT_STREQ(service.GetProfileName(), "nowhere.ini");
}

// The system tells no folder for temporary files if that is named from the current one.
TEST_IN_FRESH_PROCESS(RemovedCurrentFolder, makesTheSettingTheFolderForTemporaryFiles)
{
    enterARemovedFolder();
    ScopedEnvironment const relative("TMPDIR", "relative");
    MemoryProfile profile;
    profile.set("General", "TEMP_DIR", "/set//");

    EXPECT_STREQ(omGetTempDir(), "/set");

    EXPECT_EQ(profile.text("General", "TEMP_DIR"), "/set//");
}

TEST_IN_FRESH_PROCESS(RemovedCurrentFolder, writesTheSettingForTemporaryFilesIfItIsAbsent)
{
    enterARemovedFolder();
    ScopedEnvironment const relative("TMPDIR", "relative");
    EXPECT_STREQ(omGetTempDir(), "/tmp") << "without a profile";
    MemoryProfile profile;

    EXPECT_STREQ(omGetTempDir(), "/tmp");

    EXPECT_EQ(profile.text("General", "TEMP_DIR"), "/tmp");
}

}  // namespace
