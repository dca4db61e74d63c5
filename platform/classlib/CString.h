// CString.h: a mutable byte string, copied by value.
//
//   CString path("src/model.cpp");
//   int const dot = path.ReverseFind('.');       // 9
//   path.Left(dot) + ".h";                       // "src/model.h"
//   path.Replace("/", "\\");                     // 1; path is now "src\model.cpp"
//   CString line;
//   line.Format("%s: %d", path, 7);              // "src\model.cpp: 7"
//
// Positions and lengths count bytes. A text may hold NUL bytes if it was given
// with its length; every operation but those that take a `char const*` then
// sees all of it. A null `char const*` counts as the empty text. An argument
// may point into the string that it changes.
//
// Letters change case, and compare without case, in ASCII only: bytes above
// 127 stay as they are. Blanks are the six of the C locale: space, \t, \n, \v,
// \f and \r.
//
// A string takes 32 bytes. Texts of up to 15 bytes live inside it, longer ones
// in one block of memory; a move hands the block over. Out of memory, and a
// text longer than an int counts, is std::bad_alloc; the string is then
// unchanged. Distinct strings may be used by distinct threads at once.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/os.h"

#include "platform/classlib/formatArgument.h"

#include <cstdarg>
#include <cstddef>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <string_view>
#include <type_traits>

class ZK_UTIL_API CString {
public:
    // -- Making and assigning ------------------------------------------------

    CString() noexcept : data_(local_) { }
    CString(CString const& other);
    CString(CString&& other) noexcept : data_(local_) { take(other); }
    CString(char const* text) : data_(local_) { construct(text, lengthOf(text)); }
    CString(unsigned char const* text) : CString(reinterpret_cast<char const*>(text)) { }
    CString(std::nullptr_t) noexcept : data_(local_) { }
    /// The first `length` bytes at `text`, NUL bytes included. A length below 1 is the empty text.
    CString(char const* text, int length) : data_(local_) { construct(text, countOf(text, length)); }
    CString(unsigned char const* text, int length) : CString(reinterpret_cast<char const*>(text), length) { }
    /// `repeat` times the byte `character`; empty for a count below 1.
    explicit CString(char character, int repeat = 1);
    explicit CString(std::string_view text) : data_(local_) { construct(text.data(), text.size()); }
    CString(int) = delete;  // a number is no text: Format it

    ~CString()
    {
        if (data_ != local_)
            release();
    }

    CString& operator=(CString const& other);
    CString& operator=(CString&& other) noexcept;
    CString& operator=(char const* text) { return assign(text, lengthOf(text)); }
    CString& operator=(unsigned char const* text) { return *this = reinterpret_cast<char const*>(text); }
    CString& operator=(std::string_view text) { return assign(text.data(), text.size()); }
    CString& operator=(char character) { return assign(&character, 1); }
    CString& operator=(int) = delete;

    void SetString(char const* text) { assign(text, lengthOf(text)); }
    void SetString(char const* text, int length) { assign(text, countOf(text, length)); }

    /// Exchanges the two texts, without copying a long one.
    void swap(CString& other) noexcept;

    // -- Reading ---------------------------------------------------------------

    /// The bytes, followed by a NUL; valid until the string changes or goes.
    operator char const*() const noexcept { return data_; }
    explicit operator bool() const = delete;  // is there a text? ask IsEmpty
    char const* GetString() const noexcept { return data_; }
    std::string_view view() const noexcept { return {data_, static_cast<std::size_t>(length_)}; }

    int GetLength() const noexcept { return length_; }
    bool IsEmpty() const noexcept { return length_ == 0; }

    /// The byte at `index`; NUL for an index that is not inside the text.
    char GetAt(int index) const noexcept { return at(static_cast<std::size_t>(index)); }
    template <class Index, std::enable_if_t<std::is_integral_v<Index> || std::is_enum_v<Index>, int> = 0>
    char operator[](Index index) const noexcept
    {
        return at(static_cast<std::size_t>(index));
    }
    /// Replaces one byte; does nothing for an index that is not inside the text.
    void SetAt(int index, char character) noexcept
    {
        if (static_cast<std::size_t>(index) < static_cast<std::size_t>(length_))
            data_[index] = character;
    }

    // -- Appending ---------------------------------------------------------------

    CString& operator+=(CString const& text)
    {
        return append(text.data_, static_cast<std::size_t>(text.length_));
    }
    CString& operator+=(char const* text) { return append(text, lengthOf(text)); }
    CString& operator+=(unsigned char const* text) { return *this += reinterpret_cast<char const*>(text); }
    CString& operator+=(std::string_view text) { return append(text.data(), text.size()); }
    CString& operator+=(char character)
    {
        AppendChar(character);
        return *this;
    }
    CString& operator+=(unsigned char character) { return *this += static_cast<char>(character); }
    CString& operator+=(int) = delete;
    void Append(char const* text) { append(text, lengthOf(text)); }
    void Append(char const* text, int length) { append(text, countOf(text, length)); }
    void Append(CString const& text) { *this += text; }
    void AppendChar(char character)
    {
        if (length_ == capacity_)
            grow(1);
        data_[length_] = character;
        data_[++length_] = '\0';
    }

    // -- Comparing ---------------------------------------------------------------

    /// Below, equal to or above 0 as this text stands before, is or stands after
    /// `text` in the order of unsigned bytes; a prefix stands before the longer text.
    int Compare(char const* text) const noexcept { return compare(viewOf(text)); }
    int Compare(CString const& text) const noexcept { return compare(text.view()); }
    /// The same with ASCII letters compared as lower case.
    int CompareNoCase(char const* text) const noexcept { return compareNoCase(viewOf(text)); }
    int CompareNoCase(CString const& text) const noexcept { return compareNoCase(text.view()); }
    /// The order of the C locale in force (setlocale), up to the first NUL.
    int Collate(char const* text) const noexcept;
    int CollateNoCase(char const* text) const;

    // -- Searching: the position of the first byte found, or -1 -------------------

    /// The first `character` at or behind `start`; -1 for a start outside the text.
    /// A NUL is found at the text's end.
    int Find(char character, int start = 0) const noexcept
    {
        if (start < 0 || start >= length_)
            return -1;
        void const* const found = std::memchr(data_ + start, static_cast<unsigned char>(character),
                                              static_cast<std::size_t>(length_ - start) + 1);
        return found ? static_cast<int>(static_cast<char const*>(found) - data_) : -1;
    }
    /// The first occurrence of `text` at or behind `start`. An empty text is found
    /// at `start`; a null one, and one from outside the text, is not.
    int Find(char const* text, int start = 0) const noexcept
    {
        return text ? find({text, std::strlen(text)}, start) : -1;
    }
    int Find(CString const& text, int start = 0) const noexcept { return find(text.view(), start); }
    /// The last `character`. A NUL is found at the text's end.
    int ReverseFind(char character) const noexcept;
    /// The first byte that is one of those in `characters`.
    int FindOneOf(char const* characters) const noexcept;

    // -- Parts -------------------------------------------------------------------

    /// The first `count` bytes: none for a negative count, all for a large one.
    CString Left(int count) const;
    /// The last `count` bytes, likewise.
    CString Right(int count) const;
    /// What follows position `first`. A negative position counts as 0; behind the end is nothing.
    CString Mid(int first) const { return Mid(first, length_); }
    /// `count` bytes from `first` on, or those there are. Negative numbers count as 0.
    CString Mid(int first, int count) const;
    /// The longest beginning that holds only, or none, of `characters`. Of a null set: nothing, or all.
    CString SpanIncluding(char const* characters) const;
    CString SpanExcluding(char const* characters) const;
    /// The next token at or behind `start`: the longest run without any of
    /// `separators`, which are skipped in front of it. `start` moves behind the
    /// separator that ended it; when there is none left, the result is empty and
    /// `start` -1. Without separators the rest is the one token.
    ///
    ///   int position = 0;
    ///   CString("a, b").Tokenize(" ,", position);    // "a"; position is 2
    CString Tokenize(char const* separators, int& start) const;

    // -- Changing: case, ends --------------------------------------------------------

    CString& MakeUpper() noexcept;
    CString& MakeLower() noexcept;
    CString& MakeReverse() noexcept;
    /// Cut off blanks, one character, or any of a set. An empty or null set cuts nothing.
    CString& TrimLeft() noexcept;
    CString& TrimLeft(char character) noexcept;
    CString& TrimLeft(char const* characters) noexcept;
    CString& TrimRight() noexcept;
    CString& TrimRight(char character) noexcept;
    CString& TrimRight(char const* characters) noexcept;
    CString& Trim() noexcept { return TrimRight().TrimLeft(); }
    CString& Trim(char character) noexcept { return TrimRight(character).TrimLeft(character); }
    CString& Trim(char const* characters) noexcept { return TrimRight(characters).TrimLeft(characters); }

    // -- Changing: replacing, inserting, deleting --------------------------------------

    /// Replaces every `from` and gives their number; 0 where both are the same.
    int Replace(char from, char to) noexcept;
    /// Replaces every occurrence of `from`, left to right, not looking again at
    /// what was put in, and gives their number. An empty or null `from` is never
    /// found; an empty or null `to` deletes. Linear in the text's length.
    int Replace(char const* from, char const* to) { return replaceAll(viewOf(from), viewOf(to)); }
    int Replace(char const* from, CString const& to) { return replaceAll(viewOf(from), to.view()); }
    int Replace(CString const& from, char const* to) { return replaceAll(from.view(), viewOf(to)); }
    int Replace(CString const& from, CString const& to) { return replaceAll(from.view(), to.view()); }
    /// Deletes every `character` and gives their number.
    int Remove(char character) noexcept;
    /// Inserts before position `index` and gives the new length. A negative
    /// index counts as 0, one behind the end appends.
    int Insert(int index, char character) { return insert(index, &character, 1); }
    int Insert(int index, char const* text) { return insert(index, text, lengthOf(text)); }
    int Insert(int index, CString const& text)
    {
        return insert(index, text.data_, static_cast<std::size_t>(text.length_));
    }
    /// Deletes `count` bytes from `index` on, or those there are, and gives the
    /// new length. Negative numbers count as 0.
    int Delete(int index, int count = 1) noexcept;
    /// Cuts the text down to `length` bytes; a longer length leaves it alone.
    void Truncate(int length) noexcept;
    /// Becomes the empty text and gives its memory back.
    void Empty() noexcept
    {
        if (data_ != local_)
            release();
        reset();
    }

    // -- Composing -------------------------------------------------------------------

    /// Becomes `format` with its conversions filled in, as printf does it. The
    /// arguments may be numbers, texts of any kind, CString among them, and
    /// pointers; this string itself may be one of them.
    ///
    /// Unlike printf it knows what it was given, and any format is safe with
    /// any arguments. An integer is printed whole, whichever of the sizes
    /// h, l, ll, I32, I64, j, t, z stands in the conversion, but hh and h narrow
    /// it. A conversion that doesn't fit its argument: numbers are converted,
    /// `%s` prints a number, and a text is printed as a text everywhere. A
    /// conversion without an argument, and an unknown one, stands as it is. A wide
    /// text is printed in the process's code page. `%n` prints and writes nothing. `%p` prints 16 capital hexadecimal digits. A
    /// null text prints "(null)". Widths, and the digits of a number, end at 65,535.
    template <class... Arguments>
    void Format(char const* format, Arguments const&... arguments)
    {
        zk::FormatArgument const list[] = {zk::FormatArgument(arguments)..., zk::FormatArgument()};
        formatList(format, list, sizeof...(arguments));
    }
    /// The same with the numbered text `id` as format; empty if there is none.
    template <class... Arguments>
    void Format(unsigned int id, Arguments const&... arguments)
    {
        CString format;
        format.LoadString(id);
        Format(format.data_, arguments...);
    }
    /// Appends what Format makes.
    template <class... Arguments>
    void AppendFormat(char const* format, Arguments const&... arguments)
    {
        zk::FormatArgument const list[] = {zk::FormatArgument(arguments)..., zk::FormatArgument()};
        appendFormatList(format, list, sizeof...(arguments));
    }
    template <class... Arguments>
    void AppendFormat(unsigned int id, Arguments const&... arguments)
    {
        CString format;
        format.LoadString(id);
        AppendFormat(format.data_, arguments...);
    }
    /// The same with the arguments of a function that takes `...`. Here the
    /// conversions alone tell what the arguments are, so they must fit: `h`, `I32`
    /// and no size stand for an int, `l` for a long, `ll`, `I64`, `I`, `j`, `z` and `t`
    /// for 64 bits, `%s` and `%hs` for a `char const*`, `%S`, `%ls` and `%ws` for a
    /// `wchar_t const*`. `%n` takes its pointer and leaves it alone.
    void FormatV(char const* format, std::va_list arguments);
    void AppendFormatV(char const* format, std::va_list arguments);

    /// Becomes `format` with its numbered inserts filled in: "%1" to "%99" stand
    /// for the arguments, "%1!5d!" for one under a conversion of Format, "%%"
    /// for a percent sign, "%n" for a line end, "%0" ends the text. An insert
    /// without an argument stands as it is.
    ///
    ///   text.FormatMessage("%2 of %1", "a", 7);      // "7 of a"
    template <class... Arguments>
    void FormatMessage(char const* format, Arguments const&... arguments)
    {
        zk::FormatArgument const list[] = {zk::FormatArgument(arguments)..., zk::FormatArgument()};
        formatMessageList(format, list, sizeof...(arguments));
    }
    template <class... Arguments>
    void FormatMessage(unsigned int id, Arguments const&... arguments)
    {
        CString format;
        format.LoadString(id);
        FormatMessage(format.data_, arguments...);
    }

    /// Becomes the host's text of that number (see textTables.h). Gives whether
    /// there is one; the string is emptied if not.
    BOOL LoadString(unsigned int id);

    // -- The buffer --------------------------------------------------------------------

    /// Room for `minimum` bytes and a NUL, holding the text; to be written to
    /// until ReleaseBuffer, which must come before any other call.
    char* GetBuffer(int minimum = 0);
    /// The same with the length set: the bytes behind the old text are for the caller to fill.
    char* GetBufferSetLength(int length);
    /// Ends the writing: the text is now `length` bytes long, or, with -1, up to the first NUL.
    void ReleaseBuffer(int length = -1) noexcept;
    void ReleaseBufferSetLength(int length) noexcept { ReleaseBuffer(length < 0 ? 0 : length); }
    /// The buffer as GetBuffer gives it; no other string ever shares it.
    char* LockBuffer() { return GetBuffer(); }
    void UnlockBuffer() noexcept { }
    /// Makes room for `length` bytes, so that growing up to there allocates no more.
    void Preallocate(int length) { GetBuffer(length); }
    /// The length that the text may reach without allocating.
    int GetAllocLength() const noexcept { return capacity_; }
    /// Gives back the memory beyond the text.
    void FreeExtra();

    // Sums, made in one go; see the operators below.
    static CString concatenate(std::string_view left, std::string_view right);
    static std::string_view viewOf(char const* text) noexcept { return {text ? text : "", lengthOf(text)}; }

private:
    static constexpr int localCapacity = 15;

    static std::size_t lengthOf(char const* text) noexcept { return text ? std::strlen(text) : 0; }
    static std::size_t countOf(char const* text, int length) noexcept
    {
        return text && length > 0 ? static_cast<std::size_t>(length) : 0;
    }

    char at(std::size_t index) const noexcept
    {
        return index < static_cast<std::size_t>(length_) ? data_[index] : '\0';
    }

    // Only on a string that is new: sets its first text.
    void construct(char const* text, std::size_t length)
    {
        if (length > static_cast<std::size_t>(localCapacity)) {
            data_ = allocate(length);
            capacity_ = static_cast<int>(length);
        }
        if (length != 0)
            std::memcpy(data_, text, length);
        length_ = static_cast<int>(length);
        data_[length] = '\0';
    }

    // Only on a string without a block: takes over the text of `other`, which becomes empty.
    void take(CString& other) noexcept
    {
        length_ = other.length_;
        if (other.data_ == other.local_) {
            std::memcpy(local_, other.local_, sizeof local_);
        } else {
            data_ = other.data_;
            capacity_ = other.capacity_;
        }
        other.reset();
    }

    // Forgets the block, which belongs to somebody else now or is gone.
    void reset() noexcept
    {
        data_ = local_;
        length_ = 0;
        capacity_ = localCapacity;
        local_[0] = '\0';
    }

    CString& append(char const* text, std::size_t length)
    {
        if (length > static_cast<std::size_t>(capacity_ - length_))
            return appendGrowing(text, length);
        if (length != 0)
            std::memmove(data_ + length_, text, length);  // the text may be this one with its NUL
        length_ += static_cast<int>(length);
        data_[length_] = '\0';
        return *this;
    }

    static char* allocate(std::size_t capacity);
    void release() noexcept;
    void grow(std::size_t more);
    int capacityFor(std::size_t length) const;
    CString& appendGrowing(char const* text, std::size_t length);
    CString& assign(char const* text, std::size_t length);
    void adopt(char* block, int length, int capacity) noexcept;
    void setLength(int length) noexcept
    {
        length_ = length;
        data_[length] = '\0';
    }
    int insert(int index, char const* text, std::size_t length);
    int find(std::string_view text, int start) const noexcept;
    bool holds(char const* text) const noexcept
    {
        std::less<char const*> const before;
        return !before(text, data_) && !before(data_ + length_, text);
    }
    int replaceAll(std::string_view from, std::string_view to);
    int replaceGrowing(std::string_view from, std::string_view to, std::size_t found);
    int compare(std::string_view text) const noexcept
    {
        std::size_t const length = static_cast<std::size_t>(length_);
        int const order = std::memcmp(data_, text.data(), length < text.size() ? length : text.size());
        return order != 0 ? (order > 0) - (order < 0) : (length > text.size()) - (length < text.size());
    }
    int compareNoCase(std::string_view text) const noexcept;
    void formatList(char const* format, zk::FormatArgument const* arguments, std::size_t count);
    void appendFormatList(char const* format, zk::FormatArgument const* arguments, std::size_t count);
    void formatMessageList(char const* format, zk::FormatArgument const* arguments, std::size_t count);

    char* data_;
    int length_ = 0;
    int capacity_ = localCapacity;
    char local_[localCapacity + 1] = {};
};

static_assert(sizeof(CString) <= 32, "a string is a small value");

inline CString::CString(CString const& other) : data_(local_)
{
    // A block is never smaller than local_, so that a short text is copied at a fixed length.
    if (other.length_ <= localCapacity) {
        std::memcpy(local_, other.data_, sizeof local_);
        length_ = other.length_;
    } else {
        construct(other.data_, static_cast<std::size_t>(other.length_));
    }
}

inline CString& CString::operator=(CString const& other)
{
    if (other.length_ > localCapacity)
        return assign(other.data_, static_cast<std::size_t>(other.length_));
    std::memmove(data_, other.data_, sizeof local_);
    length_ = other.length_;
    return *this;
}

inline CString& CString::operator=(CString&& other) noexcept
{
    if (this != &other) {
        if (data_ != local_)
            release();
        data_ = local_;
        capacity_ = localCapacity;
        take(other);
    }
    return *this;
}

inline zk::FormatArgument::FormatArgument(CString const& text) noexcept : FormatArgument(text.view())
{
}

// -- Sums ------------------------------------------------------------------------------

inline CString operator+(CString const& left, CString const& right)
{
    return CString::concatenate(left.view(), right.view());
}
inline CString operator+(CString const& left, char const* right)
{
    return CString::concatenate(left.view(), CString::viewOf(right));
}
inline CString operator+(char const* left, CString const& right)
{
    return CString::concatenate(CString::viewOf(left), right.view());
}
inline CString operator+(CString const& left, char right)
{
    return CString::concatenate(left.view(), {&right, 1});
}
inline CString operator+(char left, CString const& right)
{
    return CString::concatenate({&left, 1}, right.view());
}
CString operator+(CString const& left, int right) = delete;
CString operator+(int left, CString const& right) = delete;
// A sum of sums grows in place.
inline CString operator+(CString&& left, CString const& right)
{
    return static_cast<CString&&>(left += right);
}
inline CString operator+(CString&& left, char const* right)
{
    return static_cast<CString&&>(left += right);
}
inline CString operator+(CString&& left, char right)
{
    return static_cast<CString&&>(left += right);
}

// -- Comparisons, all bytes with case ------------------------------------------------------

inline bool operator==(CString const& left, CString const& right) noexcept
{
    return left.view() == right.view();
}
inline bool operator==(CString const& left, char const* right) noexcept
{
    return left.view() == CString::viewOf(right);
}
inline bool operator==(char const* left, CString const& right) noexcept
{
    return right == left;
}
inline bool operator==(CString const& left, std::string_view right) noexcept
{
    return left.view() == right;
}
inline bool operator==(std::string_view left, CString const& right) noexcept
{
    return right == left;
}
inline bool operator!=(CString const& left, CString const& right) noexcept
{
    return !(left == right);
}
inline bool operator!=(CString const& left, char const* right) noexcept
{
    return !(left == right);
}
inline bool operator!=(char const* left, CString const& right) noexcept
{
    return !(right == left);
}
inline bool operator!=(CString const& left, std::string_view right) noexcept
{
    return !(left == right);
}
inline bool operator!=(std::string_view left, CString const& right) noexcept
{
    return !(right == left);
}
inline bool operator<(CString const& left, CString const& right) noexcept
{
    return left.Compare(right) < 0;
}
inline bool operator<(CString const& left, char const* right) noexcept
{
    return left.Compare(right) < 0;
}
inline bool operator<(char const* left, CString const& right) noexcept
{
    return right.Compare(left) > 0;
}
inline bool operator>(CString const& left, CString const& right) noexcept
{
    return left.Compare(right) > 0;
}
inline bool operator>(CString const& left, char const* right) noexcept
{
    return left.Compare(right) > 0;
}
inline bool operator>(char const* left, CString const& right) noexcept
{
    return right.Compare(left) < 0;
}
inline bool operator<=(CString const& left, CString const& right) noexcept
{
    return left.Compare(right) <= 0;
}
inline bool operator<=(CString const& left, char const* right) noexcept
{
    return left.Compare(right) <= 0;
}
inline bool operator<=(char const* left, CString const& right) noexcept
{
    return right.Compare(left) >= 0;
}
inline bool operator>=(CString const& left, CString const& right) noexcept
{
    return left.Compare(right) >= 0;
}
inline bool operator>=(CString const& left, char const* right) noexcept
{
    return left.Compare(right) >= 0;
}
inline bool operator>=(char const* left, CString const& right) noexcept
{
    return right.Compare(left) <= 0;
}

inline void swap(CString& left, CString& right) noexcept
{
    left.swap(right);
}

/// Writes the text, NUL bytes included, under the stream's width.
ZK_UTIL_API std::ostream& operator<<(std::ostream& stream, CString const& text);

template <>
struct std::hash<CString> {
    std::size_t operator()(CString const& text) const noexcept
    {
        return std::hash<std::string_view>()(text.view());
    }
};
