// VarString.h: a growable character buffer, the store below SPString.
//
//   VarString line("key");
//   line.add('=');
//   line.add("value");                     // "key=value"
//   line.remove(0, 4);                     // "value"
//
// Text is a NUL-terminated byte string. The buffer grows by a fixed step and
// never shrinks: after a text that did not fit, its size is the new length plus
// the step. A null text counts as an empty one.
#pragma once

#include "zk_export.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>

class SPString;
class SPStringList;

/// A growable buffer of characters.
///
/// Two states differ from "the terminator stands at length()": after erase()
/// the former text stays in view, and a NUL written into the text ends the
/// view early. Text is appended behind what is in view then.
///
/// Moving takes the buffer over and leaves the default value behind.
class ZK_UTIL_API VarString {
public:
    /// A buffer of 32 bytes that grows by 32; it is not obtained before it is needed.
    VarString() noexcept : text_(noText()), step_(defaultSize), irregular_(0) { }

    /// A buffer of `size` bytes that grows by `size`. A size of 0 counts as 1.
    VarString(std::size_t size);

    /// As above: a plain number, of whatever type, is a size and not a character. A negative one
    /// cannot be had: std::bad_alloc.
    VarString(int size);
    template <class Size, class = std::enable_if_t<std::is_integral_v<Size> && (sizeof(Size) > sizeof(char))>>
    VarString(Size size) : VarString(static_cast<std::size_t>(size))
    {
    }

    /// A copy of `text` in a buffer that just holds it.
    VarString(char const* text);

    /// The first `length` bytes of `text`. Where `text` ends earlier, the rest is filled with NUL:
    /// length() is `length` all the same, but the view ends where `text` does. A length that no text
    /// can have, as -1, is std::bad_alloc.
    VarString(char const* text, std::size_t length);

    /// The one character.
    VarString(char c);

    /// Takes the size of the buffer, its step and its text from `other`.
    VarString(VarString const& other);

    VarString(VarString&& other) noexcept : VarString() { swap(other); }

    ~VarString()
    {
        if (text_ != noText())
            delete[] text_;
    }

    /// Keeps the buffer where the text of `other` fits, else takes over size and step of `other`.
    VarString& operator=(VarString const& other);

    VarString& operator=(VarString&& other) noexcept
    {
        VarString taken(static_cast<VarString&&>(other));
        swap(taken);
        return *this;
    }

    /// `text` may be a part of this string.
    VarString& operator=(char const* text);

    /// The character at `index`, which the caller keeps below the buffer's size.
    char const& operator[](std::size_t index) const { return text_[index]; }

    /// The same for writing. The reference holds until the next change of the string.
    char& operator[](std::size_t index);

    /// The number of characters.
    std::size_t length() const noexcept { return length_; }

    /// The text, valid until the next change of the string.
    operator char const*() const noexcept { return text_; }

    /// Stores `c` at length() and terminates behind it. A NUL counts, but ends the view.
    void add(char c)
    {
        if (length_ + 1 >= allocated_ || text_ == noText())
            growForCharacter();
        text_[length_++] = c;
        text_[length_] = '\0';
        if (c == '\0')
            irregular_ = 1;
    }

    /// Appends `text`, which may be a part of this string.
    void add(char const* text)
    {
        if (text)
            append(text, std::strlen(text));
    }

    /// Inserts `text`, which may be a part of this string, before position `pos`; a `pos` past
    /// the end counts as the end.
    void add(std::size_t pos, char const* text);

    /// Removes `count` characters from `pos` on, or those that there are.
    void remove(std::size_t pos, std::size_t count);

    /// Sets length() to 0 and nothing else: the former text stays in view until the next
    /// assignment or `add(char)`, and other text is added behind it.
    void erase() noexcept { length_ = 0; }

private:
    friend class SPString;
    friend class SPStringList;
    using Block = std::unique_ptr<char[]>;

    static constexpr std::size_t defaultSize = 32;
    static char const noText_[defaultSize];

    // The block of all strings that have none of their own: default and moved-from ones. Never written to.
    static char* noText() noexcept { return const_cast<char*>(noText_); }

    // `left` with `text` appended.
    VarString(VarString const& left, char const* text, std::size_t length);

    void swap(VarString& other) noexcept
    {
        char bytes[sizeof(VarString)];
        std::memcpy(bytes, static_cast<void*>(this), sizeof bytes);
        std::memcpy(static_cast<void*>(this), static_cast<void*>(&other), sizeof bytes);
        std::memcpy(static_cast<void*>(&other), bytes, sizeof bytes);
    }

    // Where the terminator stands: at length() but for erased strings and those that others wrote into.
    std::size_t viewLength() const noexcept
    {
        return !irregular_ && text_[length_] == '\0' ? length_ : searchViewLength();
    }

    std::size_t searchViewLength() const noexcept;

    // A default string that was given no text yet.
    bool isUnused() const noexcept { return text_ == noText(); }
    bool holds(char const* text) const noexcept;
    std::size_t sizeToAdd(std::size_t length) const noexcept;
    Block enlarge(std::size_t size, std::size_t kept);
    void growForCharacter();
    void append(char const* text, std::size_t length)
    {
        if (length_ + length < allocated_ && text_[length_] == '\0' && !irregular_ && text_ != noText()) {
            std::memcpy(text_ + length_, text, length);
            length_ += length;
            text_[length_] = '\0';
        } else {
            appendGrowing(text, length);
        }
    }
    void appendGrowing(char const* text, std::size_t length);
    void assign(char const* text, std::size_t length, std::size_t size);
    void take(char const* text, std::size_t length);
    void begin(char const* text, std::size_t length);
    void insert(std::size_t pos, char const* text, std::size_t length);
    void replace(std::size_t pos, std::size_t count, char const* text, std::size_t length);

    // The fields, in this order and these widths, are part of what other modules may rely on.
    char* text_;
    std::size_t length_ = 0;
    std::size_t allocated_ = defaultSize;
    // 64 bits; the highest marks a string whose view may end before length(), a rarity.
    std::size_t step_ : 63;
    std::size_t irregular_ : 1;
};
