// OMGrammar.h: English words for generated names.
//
//   OMGrammar::makePlural("city");               // "cities"
//   OMGrammar::capitalize("item");               // "Item"
#pragma once

#include "zk_export.h"

#include "platform/classlib/CString.h"

class ZK_UTIL_API OMGrammar {
public:
    OMGrammar() = delete;

    /// Whether a letter is one of a, e, i, o, u, in either case.
    static bool isVowel(char letter);

    /// The text with its first character in upper case.
    static CString capitalize(CString const& text);

    /// The plural, in the case of the word's last letter: "es" behind an s, "ies" for a y behind a consonant,
    /// else "s". The empty word stays empty.
    static CString makePlural(CString const& word);
};
