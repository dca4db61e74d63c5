// codeSets.h: code sets by name, and texts in them.
//
//   auto const latin = zk::os::CodeSet::open("ISO-8859-1");      // null: the system doesn't have it
//   std::string bytes;
//   latin->encode(U"r\u00E9sum\u00E9", bytes);                      // 6: "r\xE9sum\xE9"
//
// A name is a number of a code page ("1252"), "CP" or "WINDOWS" before one, a usual name ("SHIFT_JIS", "EUC-KR",
// "KOI8-R"), or any other that the C library's iconv has, where that is there. Case, "-" and "_" don't count in
// the first three. What a code set lacks is never replaced by something that looks like it.
#pragma once

#include "platform/os/exportMacro.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace zk::os {

/// One code set with a state for each direction. Not for two threads at once.
class ZK_UTIL_API CodeSet {
public:
    /// Null if the system has none of that name, for one whose texts hold NUL bytes (UTF-16 and the like), and
    /// for UTF-8, which needs no code set of the system.
    static std::unique_ptr<CodeSet> open(std::string_view name);

    virtual ~CodeSet();
    CodeSet(CodeSet const&) = delete;
    CodeSet& operator=(CodeSet const&) = delete;

    /// Puts both directions into their initial state.
    virtual void reset() noexcept = 0;

    /// Appends characters, and gives how many of them: all, or those before the first that the code set
    /// lacks.
    virtual std::size_t encode(std::u32string_view characters, std::string& bytes) = 0;

    /// Appends what leads back to the initial state; most code sets need nothing for that.
    virtual void finish(std::string& bytes) = 0;

    enum class Stop {
        end,         ///< all bytes were taken
        invalid,     ///< the next byte begins no character
        incomplete,  ///< the bytes end within a character, which is left there
    };
    struct Decoded {
        std::size_t taken;
        Stop stop;
    };

    /// Appends the characters that the bytes are, up to the end or what is none.
    virtual Decoded decode(std::string_view bytes, std::u32string& characters) = 0;

    /// Whether each byte below 128 is the character of that number, wherever it stands.
    bool hasAscii() const noexcept { return hasAscii_; }
    /// Whether the meaning of a byte depends on what stands before it.
    bool isStateful() const noexcept { return isStateful_; }
    /// The most bytes that one of some characters of many scripts takes.
    std::size_t longestCharacter() const noexcept { return longestCharacter_; }

protected:
    CodeSet() = default;

    /// Finds the three facts out, with the code set's own conversions; `isStateful` is for one that hides its
    /// states. False if its texts hold NUL bytes.
    bool explore(bool isStateful = false);

private:
    bool hasAscii_ = false;
    bool isStateful_ = false;
    std::size_t longestCharacter_ = 1;
};

/// The code page of UTF-8.
inline constexpr unsigned utf8CodePage = 65001;

/// The code page's number that a usual name stands for; 0 for another name.
ZK_UTIL_API unsigned codePageOf(std::string_view name) noexcept;

}  // namespace zk::os
