// CStdioFile.h: a file read and written by lines, through a buffer.
//
//   CStdioFile file("model.txt", CFile::modeRead | CFile::shareDenyWrite);
//   CString line;
//   while (file.ReadString(line))
//       ...                                    // each line without its line end
//
// A file is opened as text unless CFile::typeBinary is given. In a text file
// a line ends the way the system's lines do: on Windows CR LF is read as one
// line feed, and a line feed is written as CR LF; elsewhere, and in a binary
// file, every byte stays as it is, so that a CR before a line feed is part of
// the line. A byte 26 is a byte like any other.
#pragma once

#include "platform/classlib/CFile.h"

#include <cstddef>
#include <memory>

/// A buffered file. Failures are thrown as a CFileException*, except where something else is said.
///
/// What is written reaches the system when the buffer is full and at Flush(),
/// Seek(), SetLength(), Close() and a change from writing to reading. Positions
/// count the file's bytes as they are on disk.
class ZK_UTIL_API CStdioFile : public CFile {
    DECLARE_DYNAMIC(CStdioFile)

    CStdioFile();
    /// Opens a file; throws if that fails.
    CStdioFile(LPCSTR lpszFileName, UINT nOpenFlags);
    /// Closes the file; what can't be written any more is lost.
    ~CStdioFile() override;

    /// As CFile::Open(). FALSE also if the last bytes of the file that was open
    /// could not be written; the name in `*pException` is then that file's.
    BOOL Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pException = nullptr) override;

    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(void const* lpBuf, UINT nCount) override;

    /// Reads the next line, of any length, without its line end. FALSE at the end of the file:
    /// the string is then empty. A last line without line end counts, if it has a byte.
    virtual BOOL ReadString(CString& rString);
    /// Reads up to the line feed, which stays, or up to `nMax - 1` bytes, and terminates them.
    ///
    /// Gives `lpsz`; null at the end of the file, with the buffer unchanged, and if `nMax` is 0.
    /// The rest of a longer line is what the next call reads.
    virtual LPSTR ReadString(LPSTR lpsz, UINT nMax);
    /// Writes a text, without adding a line end. Null writes nothing.
    virtual void WriteString(LPCSTR lpsz);

    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    ULONGLONG GetPosition() const override;
    ULONGLONG GetLength() const override;
    void SetLength(ULONGLONG dwNewLen) override;
    /// Hands what was written to the system.
    void Flush() override;
    /// Closes the file in any case, then throws if the last bytes could not be written.
    void Close() override;
    void Abort() noexcept override;

    /// A buffered file has one owner: these throw a CNotSupportedException*.
    void LockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    CFile* Duplicate() const override;

private:
    bool fill();
    int next();
    char const* lineFeedAhead(std::size_t most) const;
    bool takeLine(CString& line, char const* lineFeed);
    std::size_t takeBytes(char* to, std::size_t room);
    std::size_t unread() const { return end_ - begin_; }
    void stopReading();
    void beginWriting();
    void writePending();
    DWORD tryToWritePending() noexcept;
    void put(char const* bytes, std::size_t count);
    void forget() noexcept;

    std::unique_ptr<char[]> buffer_;  // made at the first use
    std::size_t begin_ = 0;           // reading: what is read ahead stands in [begin_, end_)
    std::size_t end_ = 0;
    std::size_t pending_ = 0;  // writing: what is not written yet stands in [0, pending_)
    bool translates_ = false;
};
