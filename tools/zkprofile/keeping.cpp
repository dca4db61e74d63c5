#include "tools/zkprofile/keeping.h"

#include <string_view>

namespace zkprofile {

namespace {

constexpr char lineBreaks[] = "\r\n";
constexpr std::string_view blanks = " \t\n\v\f\r\x1A";  // the last is the old end-of-file mark

bool isBlank(char c)
{
    return blanks.find(c) != blanks.npos;
}

bool hasLineBreak(CString const& text)
{
    return text.FindOneOf(lineBreaks) >= 0;
}

}  // namespace

std::string whyNotKept(CString const& section, CString const& key, CString const& value)
{
    if (hasLineBreak(section))
        return "a section's name cannot hold a line break";
    if (hasLineBreak(key))
        return "a setting's name cannot hold a line break";
    if (key.Find('=') >= 0)
        return "a setting's name cannot hold '='";
    if (key[0] == ';' || key[0] == '[')
        return "a setting's name cannot begin with ';' or '['";
    if (hasLineBreak(value))
        return "a value cannot hold a line break";
    if (!value.IsEmpty() && (isBlank(value[0]) || isBlank(value[value.GetLength() - 1])))
        return "a value cannot begin or end with a blank: its readers would not see that";
    return {};
}

CString asWritten(CString const& value)
{
    int const length = value.GetLength();
    bool const isQuoted =
        length >= 2 && value[0] == value[length - 1] && (value[0] == '"' || value[0] == '\'');
    return isQuoted ? "\"" + value + "\"" : value;
}

}  // namespace zkprofile
