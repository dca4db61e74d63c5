#include "text/CStringBuffer.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>

namespace {

constexpr double growthFactor = 1.3;

}  // namespace

CStringBuffer::CStringBuffer(int n) : m_buffer(nullptr), m_length(0), m_capacity(0)
{
    reserve(1, std::max(n, 0) + 1.0);
}

CStringBuffer::CStringBuffer(CString const& text) : CStringBuffer(text.GetLength())
{
    append(text, text.GetLength());
}

CStringBuffer::~CStringBuffer()
{
    std::free(m_buffer);
}

char* CStringBuffer::getBuffer()
{
    if (m_buffer)
        m_buffer[m_length] = '\0';
    return m_buffer;
}

CString CStringBuffer::toString() const
{
    return CString(m_buffer, m_length);
}

void CStringBuffer::populateCString(CString& text) const
{
    text.SetString(m_buffer, m_length);
}

void CStringBuffer::Empty()
{
    m_length = 0;
}

bool CStringBuffer::IsEmpty() const
{
    return m_length == 0;
}

void CStringBuffer::ReleaseBuffer()
{
    std::free(m_buffer);
    m_buffer = nullptr;
    m_length = 0;
    m_capacity = 0;
}

void CStringBuffer::Append(CString const& text)
{
    int const n = text.GetLength();
    reserve(n + 1, m_capacity * growthFactor + n + 1);
    append(text, n);
}

void CStringBuffer::Append(CString const& text, int start, int n)
{
    Append(text.Mid(start, n));
}

void CStringBuffer::AppendChars(char const* text)
{
    if (!text)
        return;
    std::size_t const length = std::strlen(text);
    if (length > INT_MAX - 2)
        throw std::bad_alloc();
    int const n = int(length);
    // A text in the own block moves with it.
    std::less<char const*> const before;
    bool const isOwn = m_buffer && !before(text, m_buffer) && before(text, m_buffer + m_capacity);
    std::ptrdiff_t const place = isOwn ? text - m_buffer : 0;
    reserve(n + 2, m_capacity * growthFactor + n + 2);
    append(isOwn ? m_buffer + place : text, n);
}

void CStringBuffer::AppendChar(char character)
{
    reserve(2, m_capacity * growthFactor + 2);
    append(&character, 1);
}

// Makes the block `grown` bytes long, cut to an integer, if there is no room for `needed` more.
void CStringBuffer::reserve(int needed, double grown)
{
    if (needed <= m_capacity - m_length)
        return;
    if (grown > INT_MAX)
        throw std::bad_alloc();
    auto const capacity = static_cast<int>(grown);
    void* const block = std::realloc(m_buffer, std::size_t(capacity));
    if (!block)
        throw std::bad_alloc();
    m_buffer = static_cast<char*>(block);
    m_capacity = capacity;
}

void CStringBuffer::append(char const* text, int n)
{
    std::memcpy(m_buffer + m_length, text, std::size_t(n));
    m_length += n;
}
