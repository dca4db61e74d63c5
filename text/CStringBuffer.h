// CStringBuffer.h: a buffer that text is appended to, growing by a third.
//
//   CStringBuffer buffer(100);
//   buffer.Append("model");
//   buffer.AppendChar('.');
//   buffer.toString();                           // "model."
#pragma once

#include "zk_export.h"

#include "platform/classlib/CString.h"

/// Out of memory, and a text longer than an int counts, is std::bad_alloc; the buffer is then as it was.
class ZK_UTIL_API CStringBuffer {
public:
    /// Room for `n` characters.
    explicit CStringBuffer(int n);
    /// Begins with a text.
    explicit CStringBuffer(CString const& text);
    virtual ~CStringBuffer();
    CStringBuffer(CStringBuffer const&) = delete;
    CStringBuffer& operator=(CStringBuffer const&) = delete;

    /// The characters, followed by a NUL; valid until something is appended. Null after ReleaseBuffer.
    char* getBuffer();
    CString toString() const;
    void populateCString(CString& text) const;

    /// Forgets the text; keeps the block.
    void Empty();
    bool IsEmpty() const;

    /// Frees the block. What is appended later gets a new one.
    void ReleaseBuffer();

    void Append(CString const& text);
    /// Appends what Mid(start, n) of the text gives.
    void Append(CString const& text, int start, int n);
    void AppendChars(char const* text);
    void AppendChar(char character);

protected:
    char* m_buffer;  ///< from malloc
    int m_length;    ///< characters in use
    int m_capacity;  ///< bytes in the block; at least m_length + 1 where there is one

private:
    void reserve(int needed, double grown);
    void append(char const* text, int n);
};
