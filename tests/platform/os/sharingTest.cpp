#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

namespace {

class Sharing : public testing::Test {
protected:
    TemporaryFolder folder_;
    std::string const path_ = folder_.path("file");

    Sharing() { folder_.write("file", "abc"); }
};

// The rule: neither may do what the other denies. An opener that does nothing with the content is not asked.
bool isAllowed(DWORD firstAccess, DWORD firstSharing, DWORD secondAccess, DWORD secondSharing)
{
    auto const permits = [](DWORD sharing, DWORD access) {
        return (!(access & GENERIC_READ) || (sharing & FILE_SHARE_READ)) &&
            (!(access & GENERIC_WRITE) || (sharing & FILE_SHARE_WRITE));
    };
    if (firstAccess == 0 || secondAccess == 0)
        return true;
    return permits(firstSharing, secondAccess) && permits(secondSharing, firstAccess);
}

}  // namespace

TEST_F(Sharing, allowsASecondOpenerWhatTheFirstAndItselfDoNotDeny)
{
    DWORD const accesses[] = {0, GENERIC_READ, GENERIC_WRITE, GENERIC_READ | GENERIC_WRITE};
    for (DWORD const firstAccess : accesses)
        for (DWORD firstSharing = 0; firstSharing <= sharesAll; ++firstSharing)
            for (DWORD const secondAccess : accesses)
                for (DWORD secondSharing = 0; secondSharing <= sharesAll; ++secondSharing) {
                    ScopedHandle const first = openFile(path_, firstAccess, firstSharing);
                    ASSERT_TRUE(first);
                    SetLastError(zk::test::poisonedError);

                    ScopedHandle const second = openFile(path_, secondAccess, secondSharing);

                    bool const allowed = isAllowed(firstAccess, firstSharing, secondAccess, secondSharing);
                    DWORD const error = GetLastError();
                    EXPECT_EQ(bool(second), allowed) << std::hex << firstAccess << "/" << firstSharing
                                                     << " then " << secondAccess << "/" << secondSharing;
                    EXPECT_EQ(error, DWORD(allowed ? ERROR_SUCCESS : ERROR_SHARING_VIOLATION));
                }
}

TEST_F(Sharing, countsTheRemovalOfAFileAsAUseOfItsOwn)
{
    struct Use {
        DWORD access;
        DWORD flags;
    };
    Use const uses[] = {{0, FILE_FLAG_DELETE_ON_CLOSE},
                        {GENERIC_READ, 0},
                        {GENERIC_WRITE, 0},
                        {GENERIC_READ, FILE_FLAG_DELETE_ON_CLOSE}};
    auto const permits = [](DWORD sharing, Use const& use) {
        return (!(use.access & GENERIC_READ) || (sharing & FILE_SHARE_READ)) &&
            (!(use.access & GENERIC_WRITE) || (sharing & FILE_SHARE_WRITE)) &&
            (!use.flags || (sharing & FILE_SHARE_DELETE));
    };
    for (Use const& one : uses)
        for (DWORD oneSharing = 0; oneSharing <= sharesAll; ++oneSharing)
            for (Use const& other : uses)
                for (DWORD otherSharing = 0; otherSharing <= sharesAll; ++otherSharing) {
                    folder_.write("file", "abc");
                    ScopedHandle const first =
                        openFile(path_, one.access, oneSharing, OPEN_EXISTING, one.flags);
                    ASSERT_TRUE(first);

                    ScopedHandle const second =
                        openFile(path_, other.access, otherSharing, OPEN_EXISTING, other.flags);

                    EXPECT_EQ(bool(second), permits(oneSharing, other) && permits(otherSharing, one))
                        << std::hex << one.access << "/" << one.flags << "/" << oneSharing << " then "
                        << other.access << "/" << other.flags << "/" << otherSharing;
                }
}

TEST_F(Sharing, protectsTheContentFromBeingEmptied)
{
    ScopedHandle const reader = openFile(path_, GENERIC_READ, FILE_SHARE_READ);

    EXPECT_FAILS(CreateFileA(path_.c_str(), GENERIC_WRITE, sharesAll, nullptr, CREATE_ALWAYS, 0, nullptr),
                 ERROR_SHARING_VIOLATION);
    EXPECT_FAILS(CreateFileA(path_.c_str(), GENERIC_WRITE, sharesAll, nullptr, TRUNCATE_EXISTING, 0, nullptr),
                 ERROR_SHARING_VIOLATION);
    EXPECT_FAILS(CreateFileA(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr),
                 ERROR_FILE_EXISTS);

    EXPECT_EQ(folder_.read("file"), "abc");
}

TEST_F(Sharing, endsWithTheHandle)
{
    openFile(path_, GENERIC_READ, 0).close();

    EXPECT_TRUE(openFile(path_, GENERIC_WRITE, 0));
}

TEST_F(Sharing, keepsAFileFromBeingDeletedAndRenamed)
{
    ScopedHandle const reader = openFile(path_, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);

    EXPECT_FAILS(DeleteFileA(path_.c_str()), ERROR_SHARING_VIOLATION);
    EXPECT_FAILS(MoveFileA(path_.c_str(), folder_.path("other").c_str()), ERROR_SHARING_VIOLATION);

    EXPECT_EQ(folder_.read("file"), "abc");
}

TEST_F(Sharing, mayAllowAFileToBeDeleted)
{
    ScopedHandle reader = openFile(path_, GENERIC_READ, sharesAll);

    EXPECT_TRUE(DeleteFileA(path_.c_str()));

    reader.close();
    EXPECT_FALSE(folder_.exists("file"));
}

TEST_F(Sharing, keepsAFileFromBeingReplaced)
{
    folder_.write("new", "new");
    {
        ScopedHandle const generous = openFile(path_, GENERIC_READ, sharesAll);
        EXPECT_FAILS(MoveFileExA(folder_.path("new").c_str(), path_.c_str(), MOVEFILE_REPLACE_EXISTING),
                     ERROR_ACCESS_DENIED);
    }
    ScopedHandle const reader = openFile(path_, GENERIC_READ, FILE_SHARE_READ);

    EXPECT_FAILS(MoveFileExA(folder_.path("new").c_str(), path_.c_str(), MOVEFILE_REPLACE_EXISTING),
                 ERROR_ACCESS_DENIED);
    EXPECT_FAILS(CopyFileA(folder_.path("new").c_str(), path_.c_str(), FALSE), ERROR_SHARING_VIOLATION);

    EXPECT_EQ(folder_.read("file"), "abc");
    EXPECT_EQ(folder_.read("new"), "new");
}

TEST_F(Sharing, decidesWhetherAFileMayBeCopied)
{
    {
        ScopedHandle const writer = openFile(path_, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ);
        EXPECT_TRUE(CopyFileA(path_.c_str(), folder_.path("copy").c_str(), FALSE));
    }

    ScopedHandle const alone = openFile(path_, GENERIC_READ, 0);
    EXPECT_FAILS(CopyFileA(path_.c_str(), folder_.path("copy").c_str(), FALSE), ERROR_SHARING_VIOLATION);
}

TEST_F(Sharing, isAskedOfAnOpenerThatDeletesToo)
{
    ScopedHandle const temporary = openFile(folder_.path("temporary"), GENERIC_READ | GENERIC_WRITE,
                                            sharesAll, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);

    EXPECT_FALSE(openFile(folder_.path("temporary"), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_SHARING_VIOLATION));
    EXPECT_TRUE(openFile(folder_.path("temporary"), GENERIC_READ, sharesAll));
}
