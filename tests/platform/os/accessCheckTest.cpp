#include "platform/os/accessCheck.h"

#include "tests/support/TemporaryFolder.h"

#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

class AccessCheck : public testing::Test {
protected:
    int access(char const* entry, int mode) const
    {
        errno = 0;
        return _access(folder.path(entry).c_str(), mode);
    }

    TemporaryFolder folder;
};

TEST_F(AccessCheck, allowsEverythingOnAnOrdinaryFileAndFolder)
{
    folder.write("file", "x");
    folder.makeFolder("folder");

    for (char const* const entry : {"file", "folder"}) {
        for (int const mode : {0, 2, 4, 6})
            EXPECT_EQ(access(entry, mode), 0) << entry << ' ' << mode;
    }
}

TEST_F(AccessCheck, findsNoMissingFile)
{
    for (int const mode : {0, 2, 4, 6}) {
        EXPECT_EQ(access("missing", mode), -1);
        EXPECT_EQ(errno, ENOENT);
    }
}

TEST_F(AccessCheck, refusesToWriteToAReadOnlyFileWhoeverAsks)
{
    folder.write("file", "x");
    SetFileAttributesA(folder.path("file").c_str(), FILE_ATTRIBUTE_READONLY);

    EXPECT_EQ(access("file", 0), 0);
    EXPECT_EQ(access("file", 4), 0);
    for (int const mode : {2, 6}) {
        EXPECT_EQ(access("file", mode), -1);
        EXPECT_EQ(errno, EACCES);
    }
    SetFileAttributesA(folder.path("file").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(AccessCheck, doesNotLookAtTheAttributeOfAFolder)
{
    folder.makeFolder("folder");
    SetFileAttributesA(folder.path("folder").c_str(), FILE_ATTRIBUTE_READONLY);

    EXPECT_EQ(access("folder", 0), 0);
    EXPECT_EQ(access("folder", 4), 0);

    SetFileAttributesA(folder.path("folder").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(AccessCheck, findsNothingBelowAFile)
{
    folder.write("file", "x");

    for (int const mode : {0, 2, 4, 6}) {
        EXPECT_EQ(access("file/deeper", mode), -1);
        EXPECT_EQ(errno, ENOENT);
    }
}

}  // namespace
