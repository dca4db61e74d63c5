// stringListConversions.h: texts with separators, and lists of their parts.
//
//   std::unique_ptr<CStringList> const parts(omConvertStringToStringList(" a ; b,,", ",;", 0, 0));
//   omConvertStringListToString(parts.get(), "+");           // "a+b"
//
// A text with n separators has n + 1 parts, empty ones included, before any is dropped. Returned lists
// are created with `new` and owned by the caller. Linear time.
#pragma once

#include "zk_export.h"

#include "platform/classlib/CString.h"
#include "platform/classlib/CStringList.h"

/// The elements with the separator between them; empty for a null or an empty list.
ZK_UTIL_API CString omConvertStringListToString(CStringList* list, CString const& separator);
ZK_UTIL_API CString omConvertStringListToString(CStringList* list, char separator);

/// Cuts a text into parts without blanks at their ends; drops empty ones unless `keepEmpty`.
///
/// `separators` is one delimiter as a whole with `wholeSeparator`, or if it has one character; else a set of
/// characters. Empty `separators` separate nothing.
ZK_UTIL_API CStringList* omConvertStringToStringList(CString const& text, CString const& separators,
                                                     int wholeSeparator, int keepEmpty);

/// The same with the blanks of the parts kept. Here `wholeSeparator` alone makes one delimiter.
ZK_UTIL_API CStringList* omConvertStringToStringListWithoutTrim(CString const& text,
                                                                CString const& separators, int wholeSeparator,
                                                                int keepEmpty);

/// Appends the parts of a text, cut at one character, to `result`; drops empty ones unless `keepEmpty`,
/// keeps their blanks with `noTrim`. A null `result` is left alone.
ZK_UTIL_API void omConvertStringToStringList2(CStringList* result, CString const& text, char separator,
                                              int keepEmpty, int noTrim);

/// Cuts template parameters at the commas outside angle brackets: "A<B,C>, D" gives "A<B,C>" and " D".
///
/// Parts lose their blanks, and empty ones stay, but for the last: it keeps its blanks, and is dropped if empty.
ZK_UTIL_API CStringList* omConvertTemplateParamsStringToStringList(CString const& text);

/// The texts between "<tag>" and "</tag>", trimmed, empty ones dropped.
///
/// Unless `onlyInside`, text before an opening tag is taken too, and ends the scan behind its element.
ZK_UTIL_API CStringList* omConvertXmlMultiStringToStringList(CString const& xml, CString const& tag,
                                                             char onlyInside);
