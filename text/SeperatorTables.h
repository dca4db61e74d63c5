// SeperatorTables.h: which characters belong to an identifier, a number, a string or a handle name.
//
//   int const* const accepted = SeperatorTables::getIdentifier();
//   accepted[static_cast<unsigned char>('_')];     // 1
//   accepted[static_cast<unsigned char>('-')];     // 0
#pragma once

#include "zk_export.h"

/// Six tables of 256 `int`, 1 for an accepted character and 0 for another, indexed by the
/// character's code as an unsigned char. They never change, and live as long as the module.
class ZK_UTIL_API SeperatorTables {
public:
    /// Letters, digits and `_`.
    static int const* getIdentifier();
    /// The same and `-`.
    static int const* getIdentifierD();
    /// The same and `<`, `>`, `?`, `=`, `"`, the blank and `.`.
    static int const* getIdentifierX();
    /// Digits and `.`.
    static int const* getFloat();
    /// All but NUL, `\` and `"`.
    static int const* getString();
    /// Letters, digits, `_`, `:` and `.`.
    static int const* getHandleName();
};
