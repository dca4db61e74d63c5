#include "logging/CCgFileName.h"

#include "platform/os/nativeSeparator.h"
#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using namespace zk::logging;
using zk::os::ScopedNativeSeparator;

std::string currentDirectory()
{
    return std::filesystem::current_path().string();
}

FileName parsed(std::string_view name)
{
    FileName result;
    EXPECT_EQ(parseFileName(name, result), FileNameFault::none) << name;
    return result;
}

TEST(FileNames, areMarkedBehindADigitAtTheirEnd)
{
    struct Row {
        char const* name;
        char const* marked;
    };
    for (auto const& [name, marked] : {Row{"trace12.log", "trace12_.log"},
                                       {"log7", "log7_"},
                                       {"a.log", "a.log"},
                                       {"a1b.log", "a1b.log"},
                                       {"7", "7_"},
                                       {"", ""},
                                       {".log", ".log"},
                                       {"a.1", "a.1"},
                                       {"a1.", "a1_."},
                                       {"sub/b2.x.log", "sub/b2.x.log"},
                                       {"sub/b2.log", "sub/b2_.log"},
                                       {"v1.2/log", "v1.2/log"},
                                       {"v1.2/log3", "v1.2/log3_"}})
        EXPECT_EQ(markedFileName(name), marked) << name;
}

TEST(FileNames, areTakenApart)
{
    ScopedNativeSeparator const separator('/');

    FileName const name = parsed("/var/log/trace.old.log");

    EXPECT_EQ(name.directory, "/var/log");
    EXPECT_EQ(name.baseName, "/trace.old");
    EXPECT_EQ(name.extension, "log");
    EXPECT_EQ(name.number, 0);
    EXPECT_EQ(name.path(0), "/var/log//trace.old.log");
    EXPECT_EQ(name.path(3), "/var/log//trace.old3.log");
}

TEST(FileNames, giveTheirLastDigitsAsTheNumber)
{
    FileName const name = parsed("default12.log");

    EXPECT_EQ(name.baseName, "default");
    EXPECT_EQ(name.number, 12);
    EXPECT_EQ(parsed("x99999999999").number, 2147483647);
}

TEST(FileNames, withoutAFolderLieInTheCurrentDirectory)
{
    FileName const name = parsed("a.log");

    EXPECT_EQ(name.directory, currentDirectory());
    EXPECT_EQ(name.baseName, "a");
    EXPECT_EQ(name.path(0), currentDirectory() + "/a.log");
}

TEST(FileNames, withARelativeFolderCountFromTheCurrentDirectory)
{
    ScopedNativeSeparator const separator('/');

    FileName const name = parsed("sub/a.log");

    EXPECT_EQ(name.directory, currentDirectory() + "/sub");
    EXPECT_EQ(name.path(1), currentDirectory() + "/sub//a1.log");
}

TEST(FileNames, mayLackTheirParts)
{
    ScopedNativeSeparator const separator('/');

    EXPECT_EQ(parsed("/tmp/.log").path(0), "/tmp//.log");
    EXPECT_EQ(parsed("/tmp/.log").path(1), "/tmp//1.log");
    EXPECT_EQ(parsed("/tmp/log").path(2), "/tmp//log2");
    EXPECT_EQ(parsed("/tmp/a.").path(2), "/tmp//a2.");
    EXPECT_EQ(parsed("/a.log").directory, "");
    EXPECT_EQ(parsed("/a.log").path(0), "//a.log");
    EXPECT_EQ(parsed("/tmp/v1.2/log").path(1), "/tmp/v1.2//log1");
}

TEST(FileNames, thatAreMissingOrTooLongLeaveNothing)
{
    FileName name;
    EXPECT_EQ(parseFileName("", name), FileNameFault::missing);
    EXPECT_EQ(parseFileName(std::string(260, 'a'), name), FileNameFault::none);
    EXPECT_EQ(parseFileName(std::string(261, 'a'), name), FileNameFault::tooLong);

    EXPECT_EQ(name.directory, "");
    EXPECT_EQ(name.baseName, "");
}

TEST(FileNames, haveBackslashesWhereThatIsTheSeparator)
{
    ScopedNativeSeparator const separator('\\');

    FileName const name = parsed("C:/logs/today\\a.log");

    EXPECT_EQ(name.directory, "C:\\logs\\today");
    EXPECT_EQ(name.baseName, "\\a");
    EXPECT_EQ(name.path(1), "C:\\logs\\today/\\a1.log");
    EXPECT_EQ(parsed("logs/a.log").directory, currentDirectory() + "/logs");
}

TEST(FileNames, keepABackslashWhereItIsNone)
{
    ScopedNativeSeparator const separator('/');

    EXPECT_EQ(parsed("/tmp/a\\b.log").baseName, "/a\\b");
}

TEST(FileNames, inTheRootOfADriveNeedTheSystemsDrive)
{
    ScopedNativeSeparator const separator('\\');
    FileName name;
    {
        zk::test::ScopedEnvironment const drive("SystemDrive", nullptr);
        EXPECT_EQ(parseFileName("/logs/a.log", name), FileNameFault::invalid);
        EXPECT_EQ(parseFileName("\\logs\\a.log", name), FileNameFault::none);
    }
    zk::test::ScopedEnvironment const drive("SystemDrive", "C:");

    EXPECT_EQ(parseFileName("/logs/a.log", name), FileNameFault::none);

    EXPECT_EQ(name.directory, "\\logs");
}

}  // namespace
