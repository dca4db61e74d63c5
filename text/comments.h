// comments.h: whether text is a comment of the C family, or lies in one.
//
//   omIsCommentString("// a\n/* b */");                      // true
//   omIsInCommentOrQuotedString("\"a//b\" c", 3);            // true: in the string
#pragma once

#include "zk_export.h"

#include "platform/classlib/CString.h"

/// Whether the text, blanks aside, consists of comments only. An empty text does, and so does an open comment.
ZK_UTIL_API bool omIsCommentString(CString text);

/// Whether `pos` lies in a comment, a string or a character literal that begins before it.
///
/// False for 0 and for a position outside the text. The second character of a comment's mark may stand at `pos`.
ZK_UTIL_API bool omIsInCommentOrQuotedString(CString text, int pos);

/// Whether "/*" occurs, and before any "//".
ZK_UTIL_API bool omIsCTypePreComment(CString const& text);
