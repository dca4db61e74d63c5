// stringHelpers.h: everyday work on a text.
//
//   omRemoveTrailingAndLeadingBlanks("  a b ");              // "a b"
//   omFindExactString("ab", "xab ab");                       // 4
//   insertSpaces("myHTTPServer");                            // "my HTTPServer"
//
// Characters are classified with the multibyte family (_ismbcspace, _ismbcalnum, ...), byte by byte.
// Only the conversions between code pages can fail. A call takes time in proportion to its text unless it
// says otherwise.
#pragma once

#include "zk_export.h"

#include "platform/classlib/CString.h"
#include "platform/classlib/CStringList.h"

#include <iosfwd>

// -- Blanks, case and character classes ------------------------------------------------

/// The text without blanks at both ends.
ZK_UTIL_API CString omRemoveTrailingAndLeadingBlanks(CString text);

/// The text without any white space (_ismbcspace).
ZK_UTIL_API CString cleanWhiteSpaces(CString const& text);

ZK_UTIL_API void omMakeLower(CString& text);
ZK_UTIL_API void omMakeUpper(CString& text);

/// The text with `_` for every character that is not alphanumeric (_ismbcalnum).
ZK_UTIL_API CString convertToStrictAlphaNum(CString const& text);

/// The text with the first letter of each part between "-" in lower case. Parts lose their blanks at both
/// ends.
ZK_UTIL_API CString toLowerCaseFirstLetter(CString const& text);

/// An identifier as a label: a blank before each run of capitals but the first character.
///
/// "SysMLPort", and a text in which no capital follows a lower-case letter or '#', stay as they are.
ZK_UTIL_API CString insertSpaces(CString const& text);

/// Whether two texts are the same but for white space; "a b" equals "ab".
ZK_UTIL_API int identicalUpToSpaces(CString const& left, CString const& right);

// -- Finding ---------------------------------------------------------------------------

/// How often a character occurs.
ZK_UTIL_API int countCharacterInStr(CString const& text, char character);

/// The last position of `character` above `low` and up to `high`; -1 if there is none.
ZK_UTIL_API int ReverseFind(CString const& text, char character, int low, int high);

/// The last position of `pattern`, occurrences that overlap included; -1 if there is none. An empty pattern
/// stands at the end.
ZK_UTIL_API int ReverseFind(CString const& text, CString const& pattern);

/// 0 if `prefix` stands in `text` at `pos`, -1 otherwise: a comparison, not a truth value.
///
/// With a `limit` of 0 or more the prefix must end at or before it.
ZK_UTIL_API int startsWith(CString const& text, CString const& prefix, int pos = 0, int limit = -1);

/// Whether the last occurrence of `pattern` ends the text.
ZK_UTIL_API bool IsTheStringEndWithPattern(CString const& text, CString const& pattern);

/// The position of `word` with neither an alphanumeric character nor `_` on either side; negative if there
/// is none. The search goes on behind an occurrence that is not whole. An empty word is not found.
ZK_UTIL_API int omFindExactString(CString const& word, CString const& text);

/// Whether `word` is an element of `list`, which is separated by any of ",;" with blanks around; with case.
ZK_UTIL_API bool omFindExactString2(CString const& word, CString const& list);

/// The position of the first element that equals `text` without case; null if there is none. Takes time in
/// proportion to the list up to there.
ZK_UTIL_API POSITION omFindInStringListNoCase(CStringList const& list, CString const& text);

/// Whether the text starts with "{\rtf".
ZK_UTIL_API bool omIsRTF(CString text);

/// A comparator for qsort over an array of `CString*`, in the order of strcmp.
ZK_UTIL_API int cstringCompare(void const* left, void const* right);

// -- Taking off the front and replacing -----------------------------------------------

/// Cuts `prefix` off the front of `text` and gives 1, or gives 0 if it does not stand there.
ZK_UTIL_API int advanceIfStartsWith(CString& text, char const* prefix);

/// Moves the longest prefix of characters that `table` (one of SeperatorTables) accepts from `text` into
/// `token`, which may come out empty.
ZK_UTIL_API void zkyEatOneToken(CString& text, CString& token, int const* table);

/// Reads the next word of alphanumeric characters (_ismbcalnum), at most 255 of them, behind any white
/// space. The character behind it stays in the stream. Empty at the end or before another character.
ZK_UTIL_API CString zkyGetShortAlphaNumString(std::istream& in);

/// Replaces each match of the regular expression `pattern` by `replacement`, in which $& and $0 to $9 stand
/// for what matched (SPString::s). Takes the time that the matches of the expression take (Regexp).
///
/// A text without a match stays as it is; in one with a match all from a NUL on goes.
ZK_UTIL_API void omReplaceToken(CString& text, CString const& pattern, CString const& replacement);

// -- Code pages ------------------------------------------------------------------------

/// Converts from the process's code page to UTF-8, in place, through wide characters.
///
/// False, and the text stays as it was, if it holds bytes that are no characters of the code page.
ZK_UTIL_API bool omConvertStringToUTF8(CString& text);

/// Converts from UTF-8 to the process's code page, in place; a character that the page lacks becomes its
/// default character. False, and the text stays as it was, if it is no valid UTF-8.
ZK_UTIL_API bool omConvertUTF8ToString(CString& text);
