#include "platform/classlib/CStdioFile.h"

#include "platform/classlib/openFailure.h"
#include "platform/os/textFiles.h"

#include <algorithm>
#include <cstring>
#include <utility>

IMPLEMENT_DYNAMIC(CStdioFile, CFile)

namespace {

constexpr std::size_t bufferSize = 16384;

}  // namespace

CStdioFile::CStdioFile() = default;

CStdioFile::CStdioFile(LPCSTR lpszFileName, UINT nOpenFlags)
{
    CFileException failure;
    if (!CStdioFile::Open(lpszFileName, nOpenFlags, &failure))
        AfxThrowFileException(failure.m_cause, failure.m_lOsError, failure.m_strFileName);
}

CStdioFile::~CStdioFile()
{
    CStdioFile::Abort();
}

// Writes what is pending without throwing; gives the error. Nothing is pending then.
DWORD CStdioFile::tryToWritePending() noexcept
{
    DWORD const length = DWORD(std::exchange(pending_, 0));
    DWORD done = 0;
    if (length == 0)
        return ERROR_SUCCESS;
    if (!WriteFile(m_hFile, buffer_.get(), length, &done, nullptr))
        return GetLastError();
    return done == length ? ERROR_SUCCESS : ERROR_DISK_FULL;
}

BOOL CStdioFile::Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pException)
{
    if (DWORD const error = tryToWritePending()) {
        CString const name = std::move(m_strFileName);
        Abort();
        return zk::tellOpenFailure(error, name, pException);
    }
    if (!CFile::Open(lpszFileName, nOpenFlags, pException))
        return FALSE;
    translates_ = zk::os::textLinesEndInCrLf && !(nOpenFlags & typeBinary);
    return TRUE;
}

// Reads ahead behind an empty buffer; false at the end of the file.
bool CStdioFile::fill()
{
    writePending();
    if (!buffer_)
        buffer_ = std::make_unique<char[]>(bufferSize);
    begin_ = end_ = 0;
    end_ = CFile::Read(buffer_.get(), UINT(bufferSize));
    return end_ != 0;
}

// The next byte of the text, or -1 at the end of the file.
int CStdioFile::next()
{
    if (unread() == 0 && !fill())
        return -1;
    char const byte = buffer_[begin_++];
    if (byte != '\r' || !translates_)
        return static_cast<unsigned char>(byte);
    if (unread() == 0 && !fill())
        return '\r';
    if (buffer_[begin_] != '\n')
        return '\r';
    ++begin_;
    return '\n';
}

UINT CStdioFile::Read(void* lpBuf, UINT nCount)
{
    char* const to = static_cast<char*>(lpBuf);
    UINT done = 0;
    if (translates_) {
        for (int byte; done < nCount && (byte = next()) >= 0; ++done)
            to[done] = char(byte);
        return done;
    }
    while (done < nCount) {
        if (unread() == 0 && nCount - done >= bufferSize) {
            writePending();
            UINT const count = CFile::Read(to + done, nCount - done);
            done += count;
            if (count == 0)
                break;
            continue;
        }
        if (unread() == 0 && !fill())
            break;
        std::size_t const count = std::min<std::size_t>(unread(), nCount - done);
        std::memcpy(to + done, buffer_.get() + begin_, count);
        begin_ += count;
        done += UINT(count);
    }
    return done;
}

// Where the line that begins at the reader ends in what is read ahead; null if its end is not there.
char const* CStdioFile::lineFeedAhead(std::size_t most) const
{
    return unread() == 0
        ? nullptr
        : static_cast<char const*>(std::memchr(buffer_.get() + begin_, '\n', std::min(unread(), most)));
}

// Takes what is read ahead of a line, up to its line feed, which goes too. False if it has none: the line goes on.
bool CStdioFile::takeLine(CString& line, char const* lineFeed)
{
    char const* const first = buffer_.get() + begin_;
    std::size_t const count = lineFeed ? std::size_t(lineFeed - first) : unread();
    line.Append(first, int(count));
    begin_ += lineFeed ? count + 1 : count;
    if (!lineFeed)
        return false;
    int const length = line.GetLength();
    if (translates_ && length > 0 && line[length - 1] == '\r')
        line.Truncate(length - 1);
    return true;
}

BOOL CStdioFile::ReadString(CString& rString)
{
    if (char const* const lineFeed = lineFeedAhead(unread())) {
        rString.Truncate(0);  // mostly: the line goes where the last one was
        return takeLine(rString, lineFeed);
    }
    CString line;
    bool found = false;  // any byte at all, the line end included
    while (unread() != 0 || fill()) {
        found = true;
        if (takeLine(line, lineFeedAhead(unread())))
            break;
    }
    rString = std::move(line);
    return found;
}

// Copies a line's next bytes, at most `room`, up to its line feed; gives their number, 0 at the end of the file.
std::size_t CStdioFile::takeBytes(char* to, std::size_t room)
{
    std::size_t length = 0;
    if (translates_) {
        for (int byte = 0; length < room && byte != '\n' && (byte = next()) >= 0; ++length)
            to[length] = char(byte);
        return length;
    }
    while (length < room && (unread() != 0 || fill())) {
        char const* const first = buffer_.get() + begin_;
        char const* const lineFeed = lineFeedAhead(room - length);
        std::size_t const count =
            lineFeed ? std::size_t(lineFeed - first) + 1 : std::min(unread(), room - length);
        std::memcpy(to + length, first, count);
        begin_ += count;
        length += count;
        if (lineFeed)
            break;
    }
    return length;
}

LPSTR CStdioFile::ReadString(LPSTR lpsz, UINT nMax)
{
    if (!lpsz || nMax == 0)
        return nullptr;
    std::size_t const length = takeBytes(lpsz, nMax - 1);
    if (length == 0 && nMax > 1)
        return nullptr;
    lpsz[length] = '\0';
    return lpsz;
}

// Goes back to where the reader is in the file.
void CStdioFile::stopReading()
{
    std::size_t const ahead = unread();
    begin_ = end_ = 0;
    if (ahead != 0)
        CFile::Seek(-LONGLONG(ahead), current);
}

void CStdioFile::beginWriting()
{
    stopReading();
    if (!buffer_)
        buffer_ = std::make_unique<char[]>(bufferSize);
}

// What can't be written is dropped: the caller has been told, and Close() shall not fail a second time.
void CStdioFile::writePending()
{
    if (pending_ != 0)
        CFile::Write(buffer_.get(), UINT(std::exchange(pending_, 0)));
}

void CStdioFile::put(char const* bytes, std::size_t count)
{
    if (count > bufferSize - pending_)
        writePending();
    if (count >= bufferSize) {
        while (count != 0) {
            UINT const part = UINT(std::min<std::size_t>(count, 1u << 30));
            CFile::Write(bytes, part);
            bytes += part;
            count -= part;
        }
        return;
    }
    if (count != 0)
        std::memcpy(buffer_.get() + pending_, bytes, count);
    pending_ += count;
}

void CStdioFile::Write(void const* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    beginWriting();
    char const* bytes = static_cast<char const*>(lpBuf);
    char const* const end = bytes + nCount;
    while (translates_) {
        char const* const lineFeed =
            static_cast<char const*>(std::memchr(bytes, '\n', std::size_t(end - bytes)));
        if (!lineFeed)
            break;
        put(bytes, std::size_t(lineFeed - bytes));
        put("\r\n", 2);
        bytes = lineFeed + 1;
    }
    put(bytes, std::size_t(end - bytes));
}

void CStdioFile::WriteString(LPCSTR lpsz)
{
    if (lpsz)
        Write(lpsz, UINT(std::strlen(lpsz)));
}

ULONGLONG CStdioFile::Seek(LONGLONG lOff, UINT nFrom)
{
    writePending();
    if (nFrom == current)
        stopReading();
    else
        begin_ = end_ = 0;
    return CFile::Seek(lOff, nFrom);
}

ULONGLONG CStdioFile::GetPosition() const
{
    return CFile::GetPosition() - unread() + pending_;
}

ULONGLONG CStdioFile::GetLength() const
{
    ULONGLONG const written = CFile::GetLength();
    return pending_ == 0 ? written : std::max(written, CFile::GetPosition() + pending_);
}

void CStdioFile::SetLength(ULONGLONG dwNewLen)
{
    writePending();
    stopReading();
    CFile::SetLength(dwNewLen);
}

void CStdioFile::Flush()
{
    writePending();
}

void CStdioFile::forget() noexcept
{
    begin_ = end_ = pending_ = 0;
}

void CStdioFile::Close()
{
    try {
        writePending();
    } catch (CFileException*) {
        Abort();
        throw;
    }
    forget();
    CFile::Close();
}

void CStdioFile::Abort() noexcept
{
    tryToWritePending();
    forget();
    CFile::Abort();
}

void CStdioFile::LockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

void CStdioFile::UnlockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

CFile* CStdioFile::Duplicate() const
{
    AfxThrowNotSupportedException();
}
