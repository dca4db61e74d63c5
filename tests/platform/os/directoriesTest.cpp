#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class Directories : public testing::Test {
protected:
    TemporaryFolder folder_;
    std::filesystem::path const before_ = std::filesystem::current_path();

    ~Directories() override { std::filesystem::current_path(before_); }

    std::string path(std::string_view name) const { return folder_.path(name); }
};

BOOL createFolder(std::string const& name)
{
    return CreateDirectoryA(name.c_str(), nullptr);
}

BOOL removeFolder(std::string const& name)
{
    return RemoveDirectoryA(name.c_str());
}

BOOL removeFile(std::string const& name)
{
    return DeleteFileA(name.c_str());
}

BOOL enter(std::string const& name)
{
    return SetCurrentDirectoryA(name.c_str());
}

std::string currentDirectory()
{
    char buffer[1000];
    DWORD const length = GetCurrentDirectoryA(sizeof buffer, buffer);
    return std::string(buffer, length < sizeof buffer ? length : 0);
}

}  // namespace

TEST_F(Directories, areCreatedAndRemoved)
{
    EXPECT_SUCCEEDS(createFolder(path("sub")));
    EXPECT_SUCCEEDS(createFolder(path("sub/deep/")));
    EXPECT_EQ(GetFileAttributesA(path("sub/deep").c_str()), DWORD(FILE_ATTRIBUTE_DIRECTORY));

    EXPECT_SUCCEEDS(removeFolder(path("sub/deep/")));
    EXPECT_SUCCEEDS(removeFolder(path("sub")));
    EXPECT_FALSE(folder_.exists("sub"));
}

TEST_F(Directories, acceptInheritableHandlesFromTheirCreator)
{
    SECURITY_ATTRIBUTES security = {sizeof security, nullptr, TRUE};

    EXPECT_SUCCEEDS(CreateDirectoryA(path("sub").c_str(), &security));
}

TEST_F(Directories, thatCannotBeCreatedSayWhy)
{
    folder_.write("file", "");
    folder_.makeFolder("sub");

    EXPECT_FAILS(createFolder(path("sub")), ERROR_ALREADY_EXISTS);
    EXPECT_FAILS(createFolder(path("sub/..")), ERROR_ALREADY_EXISTS);
    EXPECT_FAILS(createFolder(path("file")), ERROR_ALREADY_EXISTS);
    EXPECT_FAILS(createFolder(path("none/sub")), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(createFolder(path("file/sub")), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(createFolder("."), ERROR_ALREADY_EXISTS);
    EXPECT_FAILS(createFolder("/"), ERROR_ALREADY_EXISTS);
    EXPECT_FAILS(createFolder(""), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(CreateDirectoryA(nullptr, nullptr), ERROR_PATH_NOT_FOUND);
}

TEST_F(Directories, thatCannotBeRemovedSayWhy)
{
    folder_.write("file", "");
    folder_.makeFolder("full");
    folder_.write("full/file", "");

    EXPECT_FAILS(removeFolder(path("full")), ERROR_DIR_NOT_EMPTY);
    EXPECT_FAILS(removeFolder(path("missing")), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(removeFolder(path("none/missing")), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(removeFolder(path("file")), ERROR_DIRECTORY);
    EXPECT_FAILS(removeFolder(path("file/x")), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(removeFolder(path("file/")), ERROR_INVALID_NAME);
    EXPECT_FAILS(removeFolder(""), ERROR_INVALID_NAME);
    folder_.makeFolder("current");
    enter(path("current"));
    EXPECT_FAILS(removeFolder("."), ERROR_SHARING_VIOLATION);
}

TEST_F(Directories, areRemovedWithASeparatorBehindTheirName)
{
    folder_.makeFolder("sub");

    EXPECT_SUCCEEDS(removeFolder(path("sub/")));

    EXPECT_FALSE(folder_.exists("sub"));
}

TEST_F(Directories, loseAFile)
{
    folder_.write("file", "");

    EXPECT_SUCCEEDS(removeFile(path("file")));

    EXPECT_FALSE(folder_.exists("file"));
}

TEST_F(Directories, keepWhatIsNoFile)
{
    folder_.write("file", "");
    folder_.makeFolder("sub");

    EXPECT_FAILS(removeFile(path("missing")), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(removeFile(path("none/missing")), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(removeFile(path("sub")), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(removeFile(path("sub/")), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(removeFile(path("file/")), ERROR_INVALID_NAME);
    EXPECT_FAILS(removeFile(path("file/x")), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(removeFile(""), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(DeleteFileA(nullptr), ERROR_PATH_NOT_FOUND);
    EXPECT_TRUE(folder_.exists("sub"));
    EXPECT_TRUE(folder_.exists("file"));
}

TEST_F(Directories, areEntered)
{
    folder_.makeFolder("sub");

    EXPECT_SUCCEEDS(enter(path("sub")));
    folder_.write("sub/file", "abc");
    EXPECT_EQ(GetFileAttributesA("file"), DWORD(FILE_ATTRIBUTE_ARCHIVE));

    std::string const inside = currentDirectory();
    EXPECT_SUCCEEDS(enter(".."));
    EXPECT_EQ(inside, currentDirectory() + zk::os::nativeSeparator() + "sub");
    EXPECT_SUCCEEDS(enter("sub/"));
    EXPECT_EQ(currentDirectory(), inside) << "the separator at the end is gone";
}

TEST_F(Directories, thatCannotBeEnteredSayWhy)
{
    folder_.write("file", "");
    std::string const before = currentDirectory();

    EXPECT_FAILS(enter(path("missing")), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(enter(path("none/missing")), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(enter(path("file")), ERROR_DIRECTORY);
    EXPECT_FAILS(enter(path("file/x")), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(enter(path("file/")), ERROR_INVALID_NAME);
    EXPECT_FAILS(enter(""), ERROR_INVALID_NAME);
    EXPECT_FAILS(SetCurrentDirectoryA(nullptr), ERROR_INVALID_NAME);

    EXPECT_EQ(currentDirectory(), before);
}

TEST_F(Directories, areNamedInABufferThatIsLargeEnough)
{
    std::string const name = currentDirectory();
    auto const length = DWORD(name.size());
    std::string buffer(name.size() + 3, '#');

    EXPECT_EQ(GetCurrentDirectoryA(0, nullptr), length + 1);
    EXPECT_EQ(GetCurrentDirectoryA(length, buffer.data()), length + 1) << "no room for the NUL";
    EXPECT_EQ(buffer, std::string(name.size() + 3, '#'));
    EXPECT_EQ(GetCurrentDirectoryA(length + 1, buffer.data()), length);
    EXPECT_EQ(buffer, name + std::string("\0##", 3));
    EXPECT_EQ(GetCurrentDirectoryA(length + 2, buffer.data()), length);
    EXPECT_EQ(buffer.substr(name.size() + 1), "##");
}
