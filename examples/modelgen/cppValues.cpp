#include "examples/modelgen/cppValues.h"

#include "examples/modelgen/pumlLine.h"

#include <charconv>
#include <cstdint>
#include <string_view>

namespace modelgen {

namespace {

constexpr auto nowhere = std::string_view::npos;

bool isNothing(std::string_view text)
{
    return text == "null" || text == "nullptr" || text == "NULL" || text == "None" || text == "nil";
}

bool isEmptyValue(std::string_view text)
{
    if (isNothing(text) || text == "{}" || text == "[]" || text == "()" || text == "empty")
        return true;
    return text.substr(0, 4) == "new " && text.size() > 6 && text.substr(text.size() - 2) == "()";
}

// The characters between two quotes, for a C++ literal with the same ones.
std::optional<CString> quotedLiteral(std::string_view text, char quote)
{
    if (text.size() < 2 || text.front() != quote || text.back() != quote)
        return std::nullopt;
    text = text.substr(1, text.size() - 2);
    CString literal(quote);
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i];
        if (c == quote)
            return std::nullopt;  // two texts with something between
        if (c == '\\') {
            if (i + 1 == text.size())
                return std::nullopt;
            char const escaped = text[++i];
            if (std::string_view("nrt\\\"'0").find(escaped) == nowhere)
                literal += '\\';
            literal += '\\';
            literal += escaped;
        } else if (static_cast<unsigned char>(c) >= 0x80) {
            CString number;
            number.Format("\\%03o", static_cast<unsigned int>(static_cast<unsigned char>(c)));
            literal += number;
        } else if (c == '?') {
            literal += "\\?";  // two of them would begin a trigraph
        } else {
            literal += c;
        }
    }
    literal += quote;
    return literal;
}

std::optional<CString> floatingLiteral(std::string_view text)
{
    if (!text.empty() && std::string_view("fFdDlLmM").find(text.back()) != nowhere)
        text.remove_suffix(1);
    std::string_view const unsignedText =
        text.substr(!text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0);
    if (unsignedText.empty() || unsignedText.find_first_not_of("0123456789.eE+-") != nowhere)
        return std::nullopt;
    double value = 0;
    auto const [end, fault] =
        std::from_chars(unsignedText.data(), unsignedText.data() + unsignedText.size(), value);
    if (fault != std::errc() || end != unsignedText.data() + unsignedText.size() || value > 1e37)
        return std::nullopt;
    CString literal = CString(text[0] == '+' ? unsignedText : text);
    if (literal.FindOneOf(".eE") < 0)
        literal += ".0";
    return literal;
}

}  // namespace

std::optional<CString> cppInteger(std::string_view text, int bits)
{
    while (text.size() > 1 && std::string_view("lLuU").find(text.back()) != nowhere)
        text.remove_suffix(1);
    bool const isNegative = !text.empty() && text[0] == '-';
    std::string_view digits = text.substr(isNegative || (!text.empty() && text[0] == '+') ? 1 : 0);
    int base = 10;
    std::string_view prefix;
    if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
        base = 16;
        prefix = "0x";
    } else if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'b' || digits[1] == 'B')) {
        base = 2;
        prefix = "0b";
    }
    digits.remove_prefix(prefix.size());
    while (base == 10 && digits.size() > 1 && digits[0] == '0')
        digits.remove_prefix(1);  // to C++ a leading zero would mean octal
    std::uint64_t value = 0;
    auto const [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    if (digits.empty() || fault != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    int const usable = bits < 0 ? -bits - 1 : bits;
    if (isNegative && bits > 0 && value != 0)
        return std::nullopt;
    if (usable < 64 && value >> usable != 0)
        return std::nullopt;
    CString literal = CString(prefix) + CString(digits);
    if (isNegative)
        literal = CString("-") + literal;
    if (bits > 0 && value >> 31 != 0)
        literal += 'u';
    return literal;
}

std::optional<CString> cppValue(CString const& text, CppType const& type, CppTypes const& types)
{
    std::string_view const view = text.view();
    switch (type.category) {
    case CppCategory::integer: return cppInteger(view, type.bits);
    case CppCategory::floating: return floatingLiteral(view);
    case CppCategory::boolean:
        if (text.CompareNoCase("true") == 0)
            return CString("true");
        if (text.CompareNoCase("false") == 0)
            return CString("false");
        return std::nullopt;
    case CppCategory::character:
        if (view.size() == 3 || (view.size() == 4 && view[1] == '\\'))
            return quotedLiteral(view, '\'');
        return std::nullopt;
    case CppCategory::text:
        if (isEmptyValue(view))
            return CString("{}");
        if (view.size() > 1 && view.front() == '\'' && view.back() == '\'') {
            CString const inner = text.Mid(1, text.GetLength() - 2);
            CString const other = "\"" + inner + "\"";
            return quotedLiteral(other.view(), '"');
        }
        return quotedLiteral(view, '"');
    case CppCategory::enumeration: {
        // "Status.open", "Status::open" or the literal alone
        Classifier const& enumeration = *type.classifier;
        std::vector<CString> const parts = splitQualifiedName(text);
        if (parts.empty() || (parts.size() > 1 && parts[parts.size() - 2] != enumeration.name) ||
            !types.hasLiteral(enumeration, parts.back()))
            return std::nullopt;
        return type.text + "::" + cppIdentifier(parts.back());
    }
    case CppCategory::pointer:
        if (isNothing(view) || view == "0")
            return CString("nullptr");
        return std::nullopt;
    case CppCategory::value:
        if (isEmptyValue(view) && !type.isParameter)
            return CString("{}");
        return std::nullopt;
    case CppCategory::nothing: break;
    }
    return std::nullopt;
}

}  // namespace modelgen
