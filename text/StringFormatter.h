// StringFormatter.h: applies the modifier that stands behind a path.
//
//   StringFormatter format;
//   CString path("dir/file.txt:r ");
//   format(path);                                // "dir/file"
#pragma once

#include "zk_export.h"

#include "platform/classlib/CString.h"

class ZK_UTIL_API StringFormatter {
public:
    virtual ~StringFormatter();

    /// Cuts `text` at its first ':' and applies what stands behind it.
    ///
    /// "r " removes the extension, "e " keeps it alone, "t " keeps the tail behind the last native separator,
    /// "h " the head before it, "c " capitalises the tail, each with its blank. A number above 0 keeps that
    /// many characters; all else does nothing more. A ':' at position 0 is no modifier.
    virtual void operator()(CString& text);
};
