// The composing half of CString: Format and its kin.
#include "platform/classlib/CString.h"
#include "platform/classlib/formatConversion.h"

#include <cstring>
#include <vector>

namespace {

using zk::Conversion;
using zk::ConversionClass;
using zk::FormatArgument;
using zk::FormatArguments;
using zk::TextOutput;

// Makes the text of `format`; an unknown conversion, or one without argument, stays as it stands.
void format(TextOutput& out, char const* format, FormatArguments arguments)
{
    for (char const* at = format ? format : "";;) {
        char const* const percent = std::strchr(at, '%');
        if (!percent) {
            out.append(at, std::strlen(at));
            return;
        }
        out.append(at, static_cast<std::size_t>(percent - at));
        if (percent[1] == '%') {
            out.append('%');
            at = percent + 2;
            continue;
        }
        Conversion conversion;
        at = readConversion(percent + 1, conversion, &arguments);
        if (conversion.kind() == ConversionClass::unknown ||
            !putConversion(out, conversion, arguments.next()))
            out.append(percent, static_cast<std::size_t>(at - percent));
    }
}

// Fills in the insert at `at`, behind its '%'; gives the position behind it, or null if it is none.
char const* putInsert(TextOutput& out, char const* at, FormatArguments const& arguments)
{
    std::size_t index = static_cast<std::size_t>(*at++ - '0');
    if (*at >= '0' && *at <= '9')
        index = index * 10 + static_cast<std::size_t>(*at++ - '0');
    FormatArgument const& argument = arguments.at(index - 1);

    Conversion conversion;
    conversion.letter = 's';
    if (*at == '!') {
        char const* const end = std::strchr(at + 1, '!');
        if (end) {
            conversion = Conversion();
            if (readConversion(at + 1, conversion, nullptr) != end ||
                conversion.kind() == ConversionClass::unknown)
                return nullptr;
            at = end + 1;
        }
    }
    return putConversion(out, conversion, argument) ? at : nullptr;
}

void formatMessage(TextOutput& out, char const* format, FormatArguments const& arguments)
{
    for (char const* at = format ? format : ""; *at;) {
        std::size_t const plain = std::strcspn(at, "%");
        out.append(at, plain);
        at += plain;
        if (*at == '\0')
            return;
        char const escape = at[1];
        if (escape == '0')
            return;
        if (escape >= '1' && escape <= '9') {
            char const* const end = putInsert(out, at + 1, arguments);
            if (!end)
                out.append(at, 2);
            at = end ? end : at + 2;
        } else if (escape == 'n') {
            out.append("\r\n", 2);
            at += 2;
        } else if (escape == '\0') {
            out.append('%');
            return;
        } else {
            out.append(escape);  // "%%", "%!", "%.", "% ": the character itself
            at += 2;
        }
    }
}

void formatFromList(TextOutput& out, char const* text, std::va_list list)
{
    std::vector<FormatArgument> const arguments = zk::readArguments(text ? text : "", list);
    format(out, text, FormatArguments(arguments.data(), arguments.size()));
}

}  // namespace

void CString::formatList(char const* text, FormatArgument const* arguments, std::size_t count)
{
    TextOutput out;
    format(out, text, FormatArguments(arguments, count));
    *this = out.text();
}

void CString::appendFormatList(char const* text, FormatArgument const* arguments, std::size_t count)
{
    TextOutput out;
    format(out, text, FormatArguments(arguments, count));
    *this += out.text();
}

void CString::formatMessageList(char const* text, FormatArgument const* arguments, std::size_t count)
{
    TextOutput out;
    formatMessage(out, text, FormatArguments(arguments, count));
    *this = out.text();
}

void CString::FormatV(char const* text, std::va_list arguments)
{
    TextOutput out;
    formatFromList(out, text, arguments);
    *this = out.text();
}

void CString::AppendFormatV(char const* text, std::va_list arguments)
{
    TextOutput out;
    formatFromList(out, text, arguments);
    *this += out.text();
}
