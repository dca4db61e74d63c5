// stepwiseEscapes.h: each form replaced through the whole text, one after the other: the yardstick for one pass.
#pragma once

#include "platform/classlib/CString.h"

#include <initializer_list>

namespace zk::test {

struct Replacement {
    char const* from;
    char const* to;
};

inline CString replaced(CString text, std::initializer_list<Replacement> inOrder)
{
    for (Replacement const& replacement : inOrder)
        text.Replace(replacement.from, replacement.to);
    return text;
}

inline CString stepwiseXmlEncoded(CString const& text)
{
    return replaced(text, {{"&", "&amp;"}, {"\"", "&quot;"}, {"'", "&apos;"}, {"<", "&lt;"}, {">", "&gt;"}});
}

inline CString stepwiseXmlDecoded(CString const& text)
{
    return replaced(text, {{"&gt;", ">"}, {"&lt;", "<"}, {"&apos;", "'"}, {"&quot;", "\""}, {"&amp;", "&"}});
}

inline CString stepwiseUrlEncoded(CString const& text)
{
    return replaced(text,
                    {{"%", "%25"},
                     {":", "%3A"},
                     {"/", "%2F"},
                     {"+", "%2B"},
                     {"?", "%3F"},
                     {"=", "%3D"},
                     {"&", "%26"},
                     {"\"", "%22"},
                     {"#", "%23"},
                     {" ", "%20"}});
}

inline CString stepwiseUrlDecoded(CString const& text)
{
    return replaced(text,
                    {{"%3A", ":"},
                     {"%2F", "/"},
                     {"%2B", "+"},
                     {"%3F", "?"},
                     {"%3D", "="},
                     {"%26", "&"},
                     {"%22", "\""},
                     {"%23", "#"},
                     {"%20", " "},
                     {"%25", "%"}});
}

}  // namespace zk::test
