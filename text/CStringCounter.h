// CStringCounter.h: short texts that differ from one call to the next.
//
//   CStringCounter counter;
//   counter.getNext();                           // "\1\1\1\2"
//   counter.getNext();                           // "\1\1\1\3"
#pragma once

#include "zk_export.h"

/// Counts in its fourth byte alone: after 254 texts of four bytes comes one of three, then "\1\1\1\1".
class ZK_UTIL_API CStringCounter {
public:
    CStringCounter() { reset(); }

    /// Begins anew, before "\1\1\1\2".
    void reset();

    /// The next text; the counter's own, valid until the next call.
    char* getNext();

private:
    char m_text[5];
};
