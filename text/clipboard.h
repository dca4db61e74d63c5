// clipboard.h: puts texts on the clipboard.
//
//   omCopyToClipboardText("model", true);
//   omCopyToClipboardHTML("<b>model</b>", true); // for programs that take text with formats
//
// Nothing is reported: where the clipboard cannot be opened, it stays as it is.
#pragma once

#include "zk_export.h"

#include "platform/classlib/CString.h"

/// Puts a plain text on the clipboard (CF_TEXT).
///
/// With `open` the clipboard is opened and emptied before, and closed afterwards; without, the caller has
/// opened it, and may add the same content in several formats.
ZK_UTIL_API void omCopyToClipboardText(CString text, bool open);

/// Puts a piece of HTML on the clipboard, as UTF-8 in the format "HTML Format".
ZK_UTIL_API void omCopyToClipboardHTML(CString html, bool open);
