// Many writers of one profile, and writers that end suddenly.
#include "platform/os/os.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <unistd.h>

#include <random>

namespace zk::test {
namespace {

class WrittenProfile : public testing::Test {
protected:
    std::string read(std::string const& key) const
    {
        char value[32];
        GetPrivateProfileStringA("S", key.c_str(), "DEF", value, sizeof value, file_.c_str());
        return value;
    }

    std::ptrdiff_t entries() const
    {
        return std::distance(std::filesystem::directory_iterator(folder_.path()), {});
    }

    TemporaryFolder const folder_;
    std::string const file_ = folder_.path("p.ini");
};

constexpr int keysEach = 500;

ZK_CHILD(writesManyKeys)
{
    std::string const prefix = parent.hear();
    for (int i = 0; i < keysEach; ++i)
        if (!WritePrivateProfileStringA("S", (prefix + std::to_string(i)).c_str(), "v",
                                        parent.argument().c_str()))
            return 1;
    return 0;
}

TEST_F(WrittenProfile, losesNoKeyOfTwoWriters)
{
    ChildProcess first("writesManyKeys", file_);
    ChildProcess second("writesManyKeys", file_);
    first.say("a");
    second.say("b");
    EXPECT_EQ(first.exitCode(), 0);
    EXPECT_EQ(second.exitCode(), 0);

    for (int i = 0; i < keysEach; ++i) {
        EXPECT_EQ(read("a" + std::to_string(i)), "v");
        EXPECT_EQ(read("b" + std::to_string(i)), "v");
    }
    EXPECT_EQ(entries(), 1);
}

ZK_CHILD(writesUntilItIsKilled)
{
    parent.say("ready");
    for (int i = 1;; ++i)
        WritePrivateProfileStringA("S", "k", i % 2 ? "new" : "old", parent.argument().c_str());
}

TEST_F(WrittenProfile, isWholeWheneverItsWriterIsKilled)
{
    std::string const rest = std::string(100'000, 'x') + "\nlast=1\n";
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        folder_.write("p.ini", "[S]\nk=old\nbig=" + rest);
        ChildProcess child("writesUntilItIsKilled", file_);
        child.awaits("ready");
        usleep(useconds_t(random() % 2000));  // what is tested is a random moment
        child.kill();

        std::string const content = folder_.read("p.ini");
        EXPECT_TRUE(content == "[S]\nk=old\nbig=" + rest || content == "[S]\nk=new\nbig=" + rest);
    }
    EXPECT_TRUE(WritePrivateProfileStringA("S", "k", "end", file_.c_str()));
    EXPECT_EQ(entries(), 1);
}

TEST_F(WrittenProfile, losesNoKeyOfOneWriterWhenAnotherIsKilled)
{
    ChildProcess writer("writesManyKeys", file_);
    writer.say("a");
    std::mt19937 random(11);
    for (int round = 0; round < 50; ++round) {
        ChildProcess child("writesUntilItIsKilled", file_);
        child.awaits("ready");
        usleep(useconds_t(random() % 5000));
        child.kill();
    }
    EXPECT_EQ(writer.exitCode(), 0);

    for (int i = 0; i < keysEach; ++i)
        EXPECT_EQ(read("a" + std::to_string(i)), "v");
}

}  // namespace
}  // namespace zk::test
