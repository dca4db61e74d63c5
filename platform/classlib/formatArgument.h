// formatArgument.h: one argument of CString::Format, with the kind it had at the call.
//
// Format knows what it was given, so a conversion that does not fit its
// argument, or has none, has a defined result: see CString::Format.
#pragma once

#include "platform/os/exportMacro.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

class CString;

namespace zk {

class FormatArgument {
public:
    enum class Kind : unsigned char {
        none,
        signedInteger,
        unsignedInteger,
        floating,
        text,
        wideText,
        pointer
    };

    FormatArgument() noexcept { }

    template <class Number, std::enable_if_t<std::is_arithmetic_v<Number>, int> = 0>
    FormatArgument(Number number) noexcept
    {
        setNumber(number);
    }

    template <class Enum, std::enable_if_t<std::is_enum_v<Enum>, int> = 0, class = void>
    FormatArgument(Enum number) noexcept
    {
        setNumber(static_cast<std::underlying_type_t<Enum>>(number));
    }

    FormatArgument(char const* text) noexcept : kind(Kind::text) { value.text = text; }
    FormatArgument(unsigned char const* text) noexcept : FormatArgument(reinterpret_cast<char const*>(text))
    {
    }
    FormatArgument(signed char const* text) noexcept : FormatArgument(reinterpret_cast<char const*>(text)) { }
    FormatArgument(std::string_view text) noexcept : kind(Kind::text), hasLength(true), length(text.size())
    {
        value.text = text.data();
    }
    FormatArgument(std::string const& text) noexcept : FormatArgument(std::string_view(text)) { }
    inline FormatArgument(CString const& text) noexcept;
    FormatArgument(std::nullptr_t) noexcept : kind(Kind::text) { value.text = nullptr; }
    FormatArgument(void const* pointer) noexcept : kind(Kind::pointer) { value.pointer = pointer; }
    FormatArgument(wchar_t const* text) noexcept : kind(Kind::wideText) { value.wideText = text; }

    Kind kind = Kind::none;
    bool hasLength = false;   // of a text: `length` holds it
    unsigned char width = 0;  // of an integer, after promotion: 4 or 8 bytes
    std::size_t length = 0;
    union {
        long long signedInteger;
        unsigned long long unsignedInteger;
        double floating;
        char const* text;
        wchar_t const* wideText;
        void const* pointer;
    } value = {0};

private:
    template <class Number>
    void setNumber(Number number) noexcept
    {
        if constexpr (std::is_floating_point_v<Number>) {
            kind = Kind::floating;
            value.floating = static_cast<double>(number);
        } else if constexpr (std::is_signed_v<Number> || sizeof(Number) < sizeof(int)) {
            kind = Kind::signedInteger;
            width = sizeof(Number) <= 4 ? 4 : 8;
            value.signedInteger = static_cast<long long>(number);
        } else {
            kind = Kind::unsignedInteger;
            width = sizeof(Number) <= 4 ? 4 : 8;
            value.unsignedInteger = static_cast<unsigned long long>(number);
        }
    }
};

}  // namespace zk
