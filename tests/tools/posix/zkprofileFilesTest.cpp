// What is so on systems with users and modes of files.
#include "tests/support/asOrdinaryUser.h"
#include "tests/tools/zkprofileFixture.h"

using zk::test::asOrdinaryUser;
using zk::test::ProgramResult;

namespace {

void setMode(std::string const& path, unsigned mode)
{
    std::filesystem::permissions(path, std::filesystem::perms(mode));
}

TEST_F(ZkProfile, leavesAProfileInAReadOnlyFolderAsItIs)
{
    folder.write("p.ini", "[S]\nk=v\n");
    setMode(folder.path("p.ini"), 0644);
    setMode(folder.path(), 0555);

    asOrdinaryUser([&] {
        ProgramResult const result = run({"--file", folder.path("p.ini"), "set", "S", "k", "w"});
        EXPECT_EQ(result.code, 3);
        EXPECT_EQ(result.err, "zkprofile: cannot write '" + folder.path("p.ini") + "': Access is denied\n");
        EXPECT_EQ(run({"--file", folder.path("p.ini"), "get", "S", "k"}).out, "v\n");
        EXPECT_EQ(run({"--file", folder.path("new.ini"), "set", "S", "k", "w"}).code, 3);
    });

    setMode(folder.path(), 0755);
    EXPECT_EQ(folder.read("p.ini"), "[S]\nk=v\n");
    EXPECT_FALSE(folder.exists("new.ini"));
}

TEST_F(ZkProfile, namesAFileThatIsClosedToTheUser)
{
    folder.write("p.ini", "[S]\nk=v\n");
    setMode(folder.path("p.ini"), 0000);
    setMode(folder.path(), 0755);

    asOrdinaryUser([&] {
        for (char const* const command : {"list", "get", "origin"}) {
            std::vector<std::string> arguments{"--file", folder.path("p.ini"), command};
            if (std::string(command) != "list")
                arguments.insert(arguments.end(), {"S", "k"});
            ProgramResult const result = run(arguments);
            EXPECT_EQ(result.code, 3);
            EXPECT_EQ(result.err,
                      "zkprofile: cannot read '" + folder.path("p.ini") + "': Access is denied\n");
        }
    });
}

TEST_F(ZkProfile, makesTheUsersOwnProfile)
{
    EXPECT_EQ(start({"set", "S", "k", "v"}).code, 0);

    EXPECT_EQ(folder.read("config/zentrika/Zentrika.ini"), "[S]\nk=v\n");
    EXPECT_EQ(start({"origin", "S", "k"}).out,
              "profile " + folder.path("config/zentrika/Zentrika.ini") + ":2\n");
}

TEST_F(ZkProfile, hidesWhatATerminalWouldObeyInANameThatItTells)
{
    EXPECT_EQ(start({"--file", "a\x1B[2J.ini", "list"}).err,
              "zkprofile: there is no file '" + folder.path("a?[2J.ini") + "'\n");
}

TEST_F(ZkProfile, reachesAFileWhoseNameLooksLikeAPattern)
{
    folder.write("a1.ini", "[S]\nk=other\n");

    EXPECT_EQ(start({"--file", "a*.ini", "get", "S", "k"}).code, 3);
    EXPECT_EQ(start({"--file", "a*.ini", "set", "S", "k", "v"}).code, 0);

    EXPECT_EQ(start({"--file", "a*.ini", "get", "S", "k"}).out, "v\n");
    EXPECT_EQ(folder.read("a1.ini"), "[S]\nk=other\n");
}

TEST_F(ZkProfile, listsManySettingsWithoutDelay)
{
    std::string settings;
    for (int i = 0; i < 100'000; ++i)
        settings += "key" + std::to_string(i) + "=" + std::to_string(i * 7) + "\n";
    folder.write("p.ini", "[S]\n" + settings);

    EXPECT_TRUE(run({"--file", "p.ini", "list", "S"}).out == settings);
}

}  // namespace
