#include "tests/support/ScopedHandle.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

namespace {

class Pipes : public testing::Test {
protected:
    ScopedHandle reader_;
    ScopedHandle writer_;

    Pipes()
    {
        HANDLE reader = nullptr;
        HANDLE writer = nullptr;
        EXPECT_TRUE(CreatePipe(&reader, &writer, nullptr, 0));
        reader_ = ScopedHandle(reader);
        writer_ = ScopedHandle(writer);
    }
};

DWORD flagsOf(HANDLE handle)
{
    DWORD flags = 99;
    EXPECT_TRUE(GetHandleInformation(handle, &flags));
    return flags;
}

}  // namespace

TEST_F(Pipes, giveWhatIsThere)
{
    char buffer[10];
    DWORD count = 99;
    ASSERT_TRUE(writeText(writer_.get(), "abc"));

    EXPECT_TRUE(ReadFile(reader_.get(), buffer, sizeof buffer, &count, nullptr));

    EXPECT_EQ(std::string(buffer, count), "abc");
}

TEST_F(Pipes, endWhenTheWritersAreGone)
{
    char buffer[10];
    DWORD count = 99;
    writeText(writer_.get(), "q");
    writer_.close();

    EXPECT_SUCCEEDS(ReadFile(reader_.get(), buffer, 0, &count, nullptr));
    EXPECT_TRUE(ReadFile(reader_.get(), buffer, sizeof buffer, &count, nullptr));
    EXPECT_EQ(count, 1u);
    EXPECT_FAILS(ReadFile(reader_.get(), buffer, sizeof buffer, &count, nullptr), ERROR_BROKEN_PIPE);
    EXPECT_EQ(count, 0u);
    EXPECT_FAILS(ReadFile(reader_.get(), buffer, 0, &count, nullptr), ERROR_BROKEN_PIPE);
}

TEST_F(Pipes, takeNothingWhenTheReadersAreGone)
{
    DWORD count = 99;
    reader_.close();

    EXPECT_FAILS(WriteFile(writer_.get(), "q", 1, &count, nullptr), ERROR_NO_DATA);
    EXPECT_EQ(count, 0u);
}

TEST_F(Pipes, haveNoPositionAndNoSize)
{
    FILETIME time;
    BY_HANDLE_FILE_INFORMATION information;

    EXPECT_EQ(GetFileType(reader_.get()), DWORD(FILE_TYPE_PIPE));
    EXPECT_FAILS(SetFilePointer(reader_.get(), 0, nullptr, FILE_BEGIN), ERROR_BAD_DEV_TYPE);
    EXPECT_FAILS(GetFileSize(reader_.get(), nullptr), ERROR_INVALID_FUNCTION);
    EXPECT_FAILS(SetEndOfFile(writer_.get()), ERROR_INVALID_FUNCTION);
    EXPECT_FAILS(GetFileTime(reader_.get(), &time, nullptr, nullptr), ERROR_INVALID_FUNCTION);
    EXPECT_FAILS(GetFileInformationByHandle(reader_.get(), &information), ERROR_INVALID_FUNCTION);
    EXPECT_SUCCEEDS(FlushFileBuffers(writer_.get()));
}

TEST_F(Pipes, areReadAtOneEndAndWrittenAtTheOther)
{
    char byte = 'x';
    DWORD count = 99;

    EXPECT_FAILS(ReadFile(writer_.get(), &byte, 1, &count, nullptr), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(WriteFile(reader_.get(), &byte, 1, &count, nullptr), ERROR_ACCESS_DENIED);
}

TEST_F(Pipes, areInheritedWhereThatIsAskedFor)
{
    SECURITY_ATTRIBUTES security = {sizeof security, nullptr, TRUE};
    HANDLE reader = nullptr;
    HANDLE writer = nullptr;
    ASSERT_TRUE(CreatePipe(&reader, &writer, &security, 100'000));
    ScopedHandle const first(reader);
    ScopedHandle const second(writer);

    EXPECT_EQ(flagsOf(reader), DWORD(HANDLE_FLAG_INHERIT));
    EXPECT_EQ(flagsOf(writer), DWORD(HANDLE_FLAG_INHERIT));
    EXPECT_EQ(flagsOf(reader_.get()), 0u);
    EXPECT_EQ(flagsOf(writer_.get()), 0u);
}
