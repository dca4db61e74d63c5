// A profile with very many keys.
#include "platform/os/os.h"
#include "tests/support/TemporaryFolder.h"

#include <string>

namespace {

constexpr int keyCount = 100'000;

class BigProfile : public testing::Test {
protected:
    BigProfile()
    {
        std::string content = "[S]\r\n";
        for (int i = 0; i < keyCount; ++i)
            content += "key" + std::to_string(i) + "=" + std::to_string(i * 7) + "\r\n";
        folder_.write("p.ini", content);
    }

    std::string read(std::string const& key) const
    {
        char value[32];
        DWORD const length =
            GetPrivateProfileStringA("S", key.c_str(), "DEF", value, sizeof value, file_.c_str());
        return std::string(value, length);
    }

    bool set(std::string const& key, char const* value) const
    {
        return WritePrivateProfileStringA("S", key.c_str(), value, file_.c_str()) != FALSE;
    }

    TemporaryFolder const folder_;
    std::string const file_ = folder_.path("p.ini");
};

TEST_F(BigProfile, findsEachKey)
{
    for (int i : {0, 1, 49'999, 99'998, 99'999})
        EXPECT_EQ(read("KEY" + std::to_string(i)), std::to_string(i * 7));
    EXPECT_EQ(read("key100000"), "DEF");
}

TEST_F(BigProfile, listsEachKey)
{
    std::string names(4 << 20, '\0');

    DWORD const length =
        GetPrivateProfileStringA("S", nullptr, "", names.data(), DWORD(names.size()), file_.c_str());

    std::size_t expected = 0;
    for (int i = 0; i < keyCount; ++i)
        expected += ("key" + std::to_string(i)).size() + 1;
    EXPECT_EQ(length, expected);
    EXPECT_TRUE(names.substr(0, length).ends_with(std::string("key99999") + '\0'));
}

TEST_F(BigProfile, changesOneKeyAndNoOther)
{
    EXPECT_TRUE(set("key50000", "changed"));
    EXPECT_TRUE(set("key0", nullptr));
    EXPECT_TRUE(set("new", "1"));
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, file_.c_str());

    EXPECT_EQ(read("key50000"), "changed");
    EXPECT_EQ(read("key0"), "DEF");
    EXPECT_EQ(read("new"), "1");
    std::string expected = "[S]\r\n";
    for (int i = 1; i < keyCount; ++i)
        expected +=
            "key" + std::to_string(i) + "=" + (i == 50'000 ? "changed" : std::to_string(i * 7)) + "\r\n";
    EXPECT_TRUE(folder_.read("p.ini") == expected + "new=1\r\n");
}

}  // namespace
