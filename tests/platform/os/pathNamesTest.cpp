#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class PathNames : public testing::Test {
protected:
    TemporaryFolder folder_;
    std::filesystem::path const before_ = std::filesystem::current_path();

    ~PathNames() override { std::filesystem::current_path(before_); }
};

// The expected texts are written with "/"; the other target gives its own separator.
std::string native(std::string text)
{
    for (char& character : text)
        if (character == '/')
            character = zk::os::nativeSeparator();
    return text;
}

std::string fullPath(std::string const& name)
{
    char buffer[1000];
    DWORD const length = GetFullPathNameA(name.c_str(), sizeof buffer, buffer, nullptr);
    return std::string(buffer, length < sizeof buffer ? length : 0);
}

// Calls with rooms around `length` and looks at what lies behind the text.
template <class Call>
void expectRoomIsRespected(std::string const& text, Call call)
{
    auto const length = DWORD(text.size());
    std::string const poisoned(text.size() + 3, '#');
    std::string buffer = poisoned;

    EXPECT_EQ(call(0, nullptr), length + 1);
    EXPECT_EQ(call(length, buffer.data()), length + 1) << "no room for the NUL";
    EXPECT_EQ(buffer, poisoned);
    EXPECT_EQ(call(length + 1, buffer.data()), length);
    EXPECT_EQ(buffer, text + std::string("\0##", 3));
    buffer = poisoned;
    EXPECT_EQ(call(length + 2, buffer.data()), length);
    EXPECT_EQ(buffer, text + std::string("\0##", 3));
}

}  // namespace

TEST_F(PathNames, areMadeAbsoluteFromTheCurrentDirectory)
{
    std::filesystem::current_path(folder_.path());
    std::string const here = fullPath(".");
    struct Row {
        char const* name;
        std::string full;
    };
    Row const rows[] = {
        {"abc", here + native("/abc")}, {"a/../b/./c", here + native("/b/c")},
        {"a/", here + native("/a/")},   {"a//b", here + native("/a/b")},
        {"a/../", here + native("/")},  {"a/./", here + native("/a/")},
        {"./", here + native("/")},     {"../x/..", here.substr(0, here.find_last_of("/\\"))},
        {"...", here + native("/...")},
    };
    for (Row const& row : rows) {
        if (std::string(row.name) == "..." && zk::os::nativeSeparatorIsBackslash())
            continue;  // there a name cannot end in dots
        EXPECT_EQ(fullPath(row.name), row.full) << row.name;
    }
}

TEST_F(PathNames, stopAtTheRoot)
{
    std::string const root = fullPath("/");

    EXPECT_EQ(fullPath("/../../x//y"), root + native("x/y"));
    EXPECT_EQ(fullPath("/x/.."), root);
    EXPECT_EQ(fullPath("/."), root);
}

TEST_F(PathNames, pointToTheirLastPart)
{
    char buffer[1000];
    char* part = nullptr;

    GetFullPathNameA("a/bc", sizeof buffer, buffer, &part);
    ASSERT_NE(part, nullptr);
    EXPECT_STREQ(part, "bc");
    EXPECT_EQ(part, buffer + fullPath("a/bc").size() - 2);

    GetFullPathNameA("a/", sizeof buffer, buffer, &part);
    EXPECT_EQ(part, nullptr);
}

TEST_F(PathNames, fitIntoABufferOrSayWhatTheyNeed)
{
    expectRoomIsRespected(fullPath("abc"), [](DWORD room, char* buffer) {
        return GetFullPathNameA("abc", room, buffer, nullptr);
    });
}

TEST_F(PathNames, needAName)
{
    char buffer[10];

    EXPECT_EQ(GetFullPathNameA("", sizeof buffer, buffer, nullptr), 0u);
    EXPECT_EQ(GetFullPathNameA(nullptr, sizeof buffer, buffer, nullptr), 0u);
}

TEST_F(PathNames, ofTheTemporaryFolderEndInASeparator)
{
    char buffer[1000];
    DWORD const length = GetTempPathA(sizeof buffer, buffer);
    std::string const folder(buffer, length);

    ASSERT_FALSE(folder.empty());
    EXPECT_EQ(folder.back(), zk::os::nativeSeparator());
    EXPECT_EQ(GetFileAttributesA(folder.c_str()) & FILE_ATTRIBUTE_DIRECTORY, DWORD(FILE_ATTRIBUTE_DIRECTORY));
    expectRoomIsRespected(folder, [](DWORD room, char* text) { return GetTempPathA(room, text); });
}

TEST_F(PathNames, forTemporaryFilesAreNewEachTime)
{
    char first[MAX_PATH], second[MAX_PATH];

    UINT const one = GetTempFileNameA(folder_.path().c_str(), "prefix", 0, first);
    UINT const two = GetTempFileNameA(folder_.path().c_str(), "prefix", 0, second);

    EXPECT_NE(one, 0u);
    EXPECT_NE(one, two);
    EXPECT_LE(one, 0xFFFFu);
    EXPECT_EQ(GetFileAttributesA(first), DWORD(FILE_ATTRIBUTE_ARCHIVE)) << "the file exists";
    EXPECT_EQ(std::filesystem::file_size(first), 0u);
    std::string const name = std::filesystem::path(first).filename().string();
    EXPECT_EQ(name.substr(0, 3), "pre") << "three characters of it";
    EXPECT_EQ(UINT(std::stoul(name.substr(3), nullptr, 16)), one);
    EXPECT_EQ(name.substr(name.size() - 4), ".tmp");
}

TEST_F(PathNames, forTemporaryFilesAreMadeFromANumber)
{
    char name[MAX_PATH];

    EXPECT_EQ(GetTempFileNameA(folder_.path().c_str(), "zk", 0x12345, name), 0x2345u);
    EXPECT_EQ(name, folder_.path("zk2345.tmp"));
    EXPECT_FALSE(std::filesystem::exists(name)) << "nothing is created";
    EXPECT_EQ(GetTempFileNameA((folder_.path("") + "/").c_str(), nullptr, 1, name), 1u);
    EXPECT_EQ(std::filesystem::path(name).filename(), "1.tmp");
}

TEST_F(PathNames, forTemporaryFilesNeedAFolder)
{
    folder_.write("file", "");
    char name[MAX_PATH] = "unchanged";

    EXPECT_FAILS(GetTempFileNameA(folder_.path("missing").c_str(), "p", 0, name), ERROR_DIRECTORY);
    EXPECT_FAILS(GetTempFileNameA(folder_.path("missing").c_str(), "p", 1, name), ERROR_DIRECTORY);
    EXPECT_FAILS(GetTempFileNameA(folder_.path("file").c_str(), "p", 0, name), ERROR_DIRECTORY);
    EXPECT_FAILS(GetTempFileNameA("", "p", 1, name), ERROR_DIRECTORY);
    EXPECT_FAILS(GetTempFileNameA(nullptr, "p", 1, name), ERROR_DIRECTORY);
    EXPECT_STREQ(name, "unchanged");
}
