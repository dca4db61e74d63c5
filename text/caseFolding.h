// caseFolding.h: which bytes are the same to a search without case.
#pragma once

#include "text/byteSearch.h"

#include <cstdint>
#include <string>

namespace zk {

/// How `tolower` maps bytes in the locale in force, and back.
struct CaseFolding {
    unsigned char lower[256];    ///< of each byte
    unsigned char changed[256];  ///< the bytes that differ from their lower form
    unsigned changedCount = 0;
    std::uint64_t locale = 0;  ///< what localeNow() was

    static CaseFolding ofLocale();

    /// A number for the name of the process's locale: where it is the same, so is the folding. The
    /// locales that a thread may have for itself are not looked at.
    static std::uint64_t localeNow();

    std::string lowerOf(char const* text) const;
    char lowerOf(char c) const { return static_cast<char>(lower[static_cast<unsigned char>(c)]); }

    /// Whether other bytes than `c` itself fold to `c`.
    bool hasVariants(char c) const;

    /// Adds all bytes that fold to `c`.
    void addVariants(char c, ByteSet& set) const;

    /// Makes every byte a member whose folded form is one.
    template <class Set>
    void fold(Set& set) const
    {
        Set const before = set;
        for (unsigned i = 0; i < changedCount; ++i) {
            char const byte = static_cast<char>(changed[i]);
            if (before.has(lowerOf(byte)))
                set.add(byte);
            else
                set.remove(byte);
        }
    }
};

}  // namespace zk
