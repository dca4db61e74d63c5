// What the code sets of all systems have in common: their usual names, and how
// their facts are found out.
#include "platform/os/codeSets.h"

#include <algorithm>
#include <array>

namespace zk::os {

namespace {

constexpr std::size_t longestName = 24;

// A name in upper case without "-" and "_"; empty if it is too long to be known.
struct PlainName {
    std::array<char, longestName> room;
    std::size_t length = 0;

    explicit PlainName(std::string_view name) noexcept
    {
        for (char const c : name) {
            if (c == '-' || c == '_')
                continue;
            if (length == room.size()) {
                length = 0;
                return;
            }
            room[length++] = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        }
    }

    std::string_view view() const noexcept { return {room.data(), length}; }
};

struct UsualName {
    std::string_view name;
    unsigned codePage;
};

constexpr UsualName usualNames[] = {
    {"ASCII", 20127},     {"BIG5", 950},          {"EUCCN", 936},      {"EUCJP", 51932},
    {"EUCKR", 51949},     {"GB18030", 54936},     {"GB2312", 936},     {"GBK", 936},
    {"ISO2022JP", 50220}, {"ISO2022KR", 50225},   {"JOHAB", 1361},     {"KOI8R", 20866},
    {"KOI8U", 21866},     {"LATIN1", 28591},      {"LATIN9", 28605},   {"MACINTOSH", 10000},
    {"SHIFTJIS", 932},    {"SJIS", 932},          {"TIS620", 874},     {"USASCII", 20127},
    {"UTF7", 65000},      {"UTF8", utf8CodePage}, {"WINDOWS31J", 932},
};
static_assert(std::is_sorted(std::begin(usualNames), std::end(usualNames),
                             [](UsualName const& a, UsualName const& b) { return a.name < b.name; }));

// The number that a text is; 0 if it is none.
unsigned numberOf(std::string_view digits) noexcept
{
    if (digits.empty() || digits.size() > 5)
        return 0;
    unsigned number = 0;
    for (char const c : digits) {
        if (c < '0' || c > '9')
            return 0;
        number = number * 10 + static_cast<unsigned>(c - '0');
    }
    return number;
}

// Characters of scripts of which any code set that is not for one alone has at least one.
constexpr std::u32string_view probes(U"\u00E9\u0416\u03A9\u05D0\u0627\u0E01\u3042\u6F22\uAC00\U0001F600");

}  // namespace

CodeSet::~CodeSet() = default;

bool CodeSet::explore(bool isStateful)
{
    isStateful_ = isStateful;
    std::u32string ascii;
    for (char32_t c = 0; c < 0x80; ++c)
        ascii += c;
    std::string bytes;
    std::size_t const taken = encode(ascii, bytes);
    finish(bytes);
    bool isSame = taken == ascii.size() && bytes.size() == ascii.size();
    for (std::size_t i = 0; i < ascii.size() && isSame; ++i)
        isSame = static_cast<char32_t>(static_cast<unsigned char>(bytes[i])) == ascii[i];

    bytes.clear();
    reset();
    encode(U"A", bytes);
    if (bytes.empty() || bytes.find('\0') != std::string::npos)
        return false;

    for (char32_t const probe : probes) {
        reset();
        bytes.clear();
        if (encode({&probe, 1}, bytes) == 0)
            continue;
        longestCharacter_ = std::max(longestCharacter_, bytes.size());
        std::size_t const before = bytes.size();
        finish(bytes);
        isStateful_ = isStateful_ || bytes.size() != before;
    }
    reset();
    hasAscii_ = isSame && !isStateful_;
    return true;
}

unsigned codePageOf(std::string_view name) noexcept
{
    PlainName const plain(name);
    std::string_view const text = plain.view();
    if (unsigned const number = numberOf(text))
        return number;
    for (std::string_view const prefix : {"CP", "WINDOWS"})
        if (text.starts_with(prefix))
            if (unsigned const number = numberOf(text.substr(prefix.size())))
                return number;
    constexpr std::string_view standard("ISO8859");
    if (text.starts_with(standard)) {
        unsigned const part = numberOf(text.substr(standard.size()));
        return (part >= 1 && part <= 9) || part == 13 || part == 15 ? 28590 + part : 0;
    }
    auto const* const place =
        std::lower_bound(std::begin(usualNames), std::end(usualNames), text,
                         [](UsualName const& entry, std::string_view wanted) { return entry.name < wanted; });
    return place != std::end(usualNames) && place->name == text ? place->codePage : 0;
}

}  // namespace zk::os
