// NoCaseString.h: a key that compares without regard to case.
//
//   NoCaseString("abc") == "ABC";          // 1
#pragma once

#include "platform/classlib/CString.h"
#include "zk_export.h"

/// A text whose comparisons take ASCII letters of either case as equal.
class ZK_UTIL_API NoCaseString {
public:
    NoCaseString() = default;
    NoCaseString(char const* text) : text_(text) { }

    int operator==(char const* other) const { return text_.CompareNoCase(other) == 0; }
    int operator!=(char const* other) const { return text_.CompareNoCase(other) != 0; }
    friend int operator==(char const* left, NoCaseString const& right) { return right == left; }
    friend int operator!=(char const* left, NoCaseString const& right) { return right != left; }

private:
    CString text_;
};
