// TempString.h: a writable copy of a text for as long as a scope lasts.
//
//   TempString copy("a,b");
//   std::strtok(copy, ",");                // writes into the copy: "a"
#pragma once

#include "zk_export.h"

/// Owns a private, NUL-terminated copy of a text. A null text counts as an empty one.
class ZK_UTIL_API TempString {
public:
    /// A copy of all of `text`.
    TempString(char const* text);

    /// The first `length` bytes of `text`, filled up with NUL where `text` ends earlier. A negative
    /// length counts as 0.
    TempString(char const* text, int length);

    TempString(TempString const& other);
    TempString(TempString&& other) noexcept;
    TempString& operator=(TempString other) noexcept;
    ~TempString();

    /// The copy, owned by this object. Null only after a move.
    operator char*() const noexcept { return text_; }

private:
    char* text_;
};
