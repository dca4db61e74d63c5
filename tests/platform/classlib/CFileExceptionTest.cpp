#include "platform/classlib/CFileException.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

CString messageOf(CException& exception)
{
    char text[300];
    EXPECT_TRUE(exception.GetErrorMessage(text, sizeof text));
    return text;
}

}  // namespace

TEST(FileException, startsWithoutACause)
{
    CFileException const exception;

    EXPECT_EQ(exception.m_cause, CFileException::none);
    EXPECT_EQ(exception.m_lOsError, -1);
    EXPECT_TRUE(exception.m_strFileName.IsEmpty());
    EXPECT_TRUE(exception.m_bAutoDelete);
}

TEST(FileException, namesTheFileInItsText)
{
    struct {
        int cause;
        char const* text;
    } const rows[] = {
        {CFileException::none, "No error occurred."},
        {CFileException::genericException, "An unknown error occurred while accessing a.cpp."},
        {CFileException::fileNotFound, "a.cpp was not found."},
        {CFileException::badPath, "a.cpp contains an invalid path."},
        {CFileException::tooManyOpenFiles, "a.cpp could not be opened because too many files are open."},
        {CFileException::accessDenied, "Access to a.cpp was denied."},
        {CFileException::invalidFile, "The file a.cpp is not valid or not open."},
        {CFileException::removeCurrentDir, "a.cpp could not be removed because it is the current directory."},
        {CFileException::directoryFull, "a.cpp could not be created because the directory is full."},
        {CFileException::badSeek, "A seek failed on a.cpp."},
        {CFileException::hardIO, "A hardware error occurred while accessing a.cpp."},
        {CFileException::sharingViolation, "A sharing violation occurred while accessing a.cpp."},
        {CFileException::lockViolation, "A locking violation occurred while accessing a.cpp."},
        {CFileException::diskFull, "The disk is full while accessing a.cpp."},
        {CFileException::endOfFile, "An attempt was made to access a.cpp past its end."},
        {15, "An unknown error occurred while accessing a.cpp."},
        {-1, "An unknown error occurred while accessing a.cpp."},
    };
    for (auto const& row : rows) {
        CFileException exception(row.cause, 0, "a.cpp");

        EXPECT_EQ(messageOf(exception), row.text);
    }
}

TEST(FileException, speaksOfAnUnnamedFileWithoutAName)
{
    CFileException exception(CFileException::fileNotFound);

    EXPECT_EQ(messageOf(exception), "an unnamed file was not found.");
}

TEST(FileException, putsANameWithAPlaceholderInOnce)
{
    CFileException exception(CFileException::fileNotFound, 2, "a%1%n%s");

    EXPECT_EQ(messageOf(exception), "a%1%n%s was not found.");
}

TEST(FileException, cutsItsTextToTheBuffer)
{
    CFileException exception(CFileException::fileNotFound, 2, "a.cpp");
    char buffer[8] = "~~~~~~~";
    UINT help = 9;

    EXPECT_TRUE(exception.GetErrorMessage(buffer, 6, &help));

    EXPECT_STREQ(buffer, "a.cpp");
    EXPECT_EQ(buffer[6], '~');
    EXPECT_EQ(help, 0u);
}

TEST(FileException, knowsTheCauseOfASystemError)
{
    struct {
        DWORD error;
        int cause;
    } const rows[] = {
        {ERROR_SUCCESS, CFileException::none},
        {ERROR_INVALID_FUNCTION, CFileException::genericException},
        {ERROR_FILE_NOT_FOUND, CFileException::fileNotFound},
        {ERROR_PATH_NOT_FOUND, CFileException::badPath},
        {ERROR_TOO_MANY_OPEN_FILES, CFileException::tooManyOpenFiles},
        {ERROR_ACCESS_DENIED, CFileException::accessDenied},
        {ERROR_INVALID_HANDLE, CFileException::invalidFile},
        {ERROR_CURRENT_DIRECTORY, CFileException::removeCurrentDir},
        {ERROR_WRITE_PROTECT, CFileException::accessDenied},
        {ERROR_SHARING_VIOLATION, CFileException::sharingViolation},
        {ERROR_LOCK_VIOLATION, CFileException::lockViolation},
        {ERROR_HANDLE_EOF, CFileException::endOfFile},
        {ERROR_FILE_EXISTS, CFileException::accessDenied},
        {ERROR_ALREADY_EXISTS, CFileException::accessDenied},
        {ERROR_DISK_FULL, CFileException::diskFull},
        {ERROR_INVALID_NAME, CFileException::badPath},
        {ERROR_NEGATIVE_SEEK, CFileException::badSeek},
        {ERROR_IO_DEVICE, CFileException::hardIO},
        {0xFFFFFFFF, CFileException::genericException},
    };
    for (auto const& row : rows)
        EXPECT_EQ(CFileException::OsErrorToException(LONG(row.error)), row.cause) << "error " << row.error;
}

TEST(FileException, knowsTheCauseOfANumberOfTheRuntimeLibrary)
{
    struct {
        int error;
        int cause;
    } const rows[] = {
        {0, CFileException::none},
        {ENOENT, CFileException::fileNotFound},
        {EACCES, CFileException::accessDenied},
        {EMFILE, CFileException::tooManyOpenFiles},
        {ENOSPC, CFileException::diskFull},
        {EIO, CFileException::hardIO},
        {99999, CFileException::genericException},
    };
    for (auto const& row : rows)
        EXPECT_EQ(CFileException::ErrnoToException(row.error), row.cause) << "errno " << row.error;
}

TEST(FileException, isThrownForASystemError)
{
    try {
        CFileException::ThrowOsError(ERROR_SHARING_VIOLATION, "a.cpp");
        FAIL() << "nothing was thrown";
    } catch (CFileException* exception) {
        EXPECT_EQ(exception->m_cause, CFileException::sharingViolation);
        EXPECT_EQ(exception->m_lOsError, 32);
        EXPECT_EQ(exception->m_strFileName, "a.cpp");
        exception->Delete();
    }
}

TEST(FileException, isNotThrownForNoError)
{
    CFileException::ThrowOsError(0);
    CFileException::ThrowErrno(0);
}

TEST(FileException, keepsTheSystemsErrorBesideTheRuntimeLibrarysNumber)
{
    SetLastError(ERROR_ACCESS_DENIED);
    try {
        CFileException::ThrowErrno(EACCES);
        FAIL() << "nothing was thrown";
    } catch (CFileException* exception) {
        EXPECT_EQ(exception->m_cause, CFileException::accessDenied);
        EXPECT_EQ(exception->m_lOsError, 5);
        exception->Delete();
    }
}
