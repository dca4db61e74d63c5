// escapes.h: the escape forms of XML text and of URLs.
//
//   omString2XMLEncodedValue("a < \"b\"");       // "a &lt; &quot;b&quot;"
//   CString url("a b%");
//   omEncodeUrl(url);                            // "a%20b%25"
//
// Linear time. What has no escape form passes unchanged, in both directions.
#pragma once

#include "zk_export.h"

#include "platform/classlib/CString.h"

/// `text` with `&`, `"`, `'`, `<` and `>` as "&amp;", "&quot;", "&apos;", "&lt;" and "&gt;". Null gives an empty text.
ZK_UTIL_API CString omString2XMLEncodedValue(char const* text);

/// The reverse of omString2XMLEncodedValue: only those five are known, and each is decoded once.
ZK_UTIL_API CString omXMLEncodedValue2String(char const* text);

/// Escapes % : / + ? = & " # and the blank in place, as '%' and two digits in upper case.
ZK_UTIL_API void omEncodeUrl(CString& text);

/// The reverse of omEncodeUrl, in place: only those ten are known, in upper case alone, and each is
/// decoded once ("%2525" gives "%25").
ZK_UTIL_API void omDecodeUrl(CString& text);
