#include "platform/os/wideText.h"

#include "platform/os/utf8.h"

namespace zk::os {
namespace {

constexpr std::string_view littleMark = "\xFF\xFE";
constexpr std::string_view bigMark = "\xFE\xFF";

constexpr bool isHigh(char32_t unit) noexcept
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool isLow(char32_t unit) noexcept
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The units of a text in UTF-16 behind its mark.
class Units {
public:
    explicit Units(std::string_view text) noexcept
        : text_(text.substr(littleMark.size())), isBig_(isBigEndian(text))
    {
    }

    bool areAtEnd() const noexcept { return text_.empty(); }

    char32_t take() noexcept
    {
        char32_t const unit = peek();
        text_.remove_prefix(text_.size() < 2 ? 1 : 2);
        return unit;
    }

    char32_t peek() const noexcept
    {
        char32_t const first = byteAt(0);
        char32_t const second = byteAt(1);
        return isBig_ ? first << 8 | second : second << 8 | first;
    }

private:
    char32_t byteAt(std::size_t place) const noexcept
    {
        return place < text_.size() ? static_cast<unsigned char>(text_[place]) : 0;
    }

    std::string_view text_;
    bool isBig_;
};

// A character, or half a pair, at the start of a text that is not empty.
Utf8Character decodeWithHalves(std::string_view text) noexcept
{
    auto const byte = [&](std::size_t place) { return static_cast<unsigned char>(text[place]); };
    bool const isHalf = text.size() >= 3 && byte(0) == 0xED && byte(1) >= 0xA0 && byte(1) <= 0xBF &&
        byte(2) >= 0x80 && byte(2) <= 0xBF;
    if (isHalf)
        return {0xD000u | (byte(1) & 0x3Fu) << 6 | (byte(2) & 0x3Fu), 3, true};
    auto const start = reinterpret_cast<unsigned char const*>(text.data());
    return decodeUtf8(start, start + text.size());
}

}  // namespace

bool isWideText(std::string_view text) noexcept
{
    return text.starts_with(littleMark) || text.starts_with(bigMark);
}

bool isBigEndian(std::string_view wideText) noexcept
{
    return wideText.starts_with(bigMark);
}

std::string utf8OfWideText(std::string_view text)
{
    std::string result(utf8Mark);
    result.reserve(text.size());
    for (Units units(text); !units.areAtEnd();) {
        char32_t code = units.take();
        if (isHigh(code) && !units.areAtEnd() && isLow(units.peek()))
            code = 0x10000 + ((code - 0xD800) << 10) + (units.take() - 0xDC00);
        char bytes[4];
        result.append(bytes, encodeUtf8(code, bytes));
    }
    return result;
}

std::optional<std::string> wideTextOfUtf8(std::string_view text, bool isBigEndian)
{
    std::string result(isBigEndian ? bigMark : littleMark);
    result.reserve(2 * text.size());
    auto const put = [&](char32_t unit) {
        char const high = static_cast<char>(unit >> 8);
        char const low = static_cast<char>(unit & 0xFF);
        result.push_back(isBigEndian ? high : low);
        result.push_back(isBigEndian ? low : high);
    };
    bool isBehindHigh = false;
    for (text.remove_prefix(utf8Mark.size()); !text.empty();) {
        Utf8Character const character = decodeWithHalves(text);
        if (!character.valid || (isBehindHigh && isLow(character.code)))
            return std::nullopt;
        isBehindHigh = isHigh(character.code);
        if (character.code < 0x10000) {
            put(character.code);
        } else {
            put(0xD800 + ((character.code - 0x10000) >> 10));
            put(0xDC00 + ((character.code - 0x10000) & 0x3FF));
        }
        text.remove_prefix(character.length);
    }
    return result;
}

}  // namespace zk::os
