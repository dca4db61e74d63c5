#include "platform/os/posix/codePageConverter.h"

#include "platform/os/posix/codePages.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>

#include <iconv.h>

namespace zk::os {
namespace {

constexpr UINT ascii = 20127;
constexpr BYTE ebcdicDefault = 0x6F;  // '?' there

constexpr CodePage codePages[] = {
    // by number
    {37, "CP037", 1, ebcdicDefault},
    {437, "CP437"},
    {500, "CP500", 1, ebcdicDefault},
    {737, "CP737"},
    {775, "CP775"},
    {850, "CP850"},
    {852, "CP852"},
    {855, "CP855"},
    {857, "CP857"},
    {858, "CP858"},
    {860, "CP860"},
    {861, "CP861"},
    {862, "CP862"},
    {863, "CP863"},
    {864, "CP864"},
    {865, "CP865"},
    {866, "CP866"},
    {869, "CP869"},
    {874, "CP874"},
    {932, "CP932", 2, '?', {0x81, 0x9F, 0xE0, 0xFC}, 0x30FB},
    {936, "CP936", 2, '?', {0x81, 0xFE}, '?'},
    {949, "CP949", 2, '?', {0x81, 0xFE}, '?'},
    {950, "CP950", 2, '?', {0x81, 0xFE}, '?'},
    {1026, "CP1026", 1, ebcdicDefault},
    {1047, "CP1047", 1, ebcdicDefault},
    {1250, "CP1250"},
    {1251, "CP1251"},
    {1252, "CP1252"},
    {1253, "CP1253"},
    {1254, "CP1254"},
    {1255, "CP1255"},
    {1256, "CP1256"},
    {1257, "CP1257"},
    {1258, "CP1258"},
    {1361, "JOHAB", 2, '?', {0x84, 0xD3, 0xD8, 0xDE, 0xE0, 0xF9}, '?'},
    {10000, "MACINTOSH"},
    {ascii, "US-ASCII"},
    {20866, "KOI8-R"},
    {20932, "EUC-JP", 2, '?', {0x8E, 0x8E, 0xA1, 0xFE}, 0x30FB},
    {21866, "KOI8-U"},
    {28591, "ISO-8859-1"},
    {28592, "ISO-8859-2"},
    {28593, "ISO-8859-3"},
    {28594, "ISO-8859-4"},
    {28595, "ISO-8859-5"},
    {28596, "ISO-8859-6"},
    {28597, "ISO-8859-7"},
    {28598, "ISO-8859-8"},
    {28599, "ISO-8859-9"},
    {28603, "ISO-8859-13"},
    {28605, "ISO-8859-15"},
    {50220, "ISO-2022-JP", 5},
    {50225, "ISO-2022-KR", 5},
    {51932, "EUC-JP", 3},
    {51949, "EUC-KR", 2},
    {54936, "GB18030", 4},
    {CP_UTF7, "UTF-7", 5},
    {CP_UTF8, "UTF-8", 4},
};

static_assert(std::is_sorted(std::begin(codePages), std::end(codePages),
                             [](CodePage const& a, CodePage const& b) { return a.number < b.number; }));

// A converter of the C library that is closed again.
class Iconv {
public:
    Iconv() = default;
    ~Iconv() { close(); }
    Iconv(Iconv const&) = delete;
    Iconv& operator=(Iconv const&) = delete;

    // The converter in its first state; false if there is none.
    bool select(char const* to, char const* from) noexcept
    {
        if (isOpen() && std::strcmp(to, to_) == 0 && std::strcmp(from, from_) == 0) {
            iconv(converter_, nullptr, nullptr, nullptr, nullptr);
            return true;
        }
        close();
        converter_ = iconv_open(to, from);
        to_ = to;
        from_ = from;
        return isOpen();
    }

    // 0, or the `errno` of what stopped the conversion.
    int convert(char const*& in, std::size_t& inLeft, char*& out, std::size_t& outLeft) noexcept
    {
        char* input = const_cast<char*>(in);  // the C library does not write there
        bool const failed = iconv(converter_, &input, &inLeft, &out, &outLeft) == std::size_t(-1);
        in = input;
        return failed ? errno : 0;
    }

    // Writes what the converter still holds back.
    int flush(char*& out, std::size_t& outLeft) noexcept
    {
        return iconv(converter_, nullptr, nullptr, &out, &outLeft) == std::size_t(-1) ? errno : 0;
    }

private:
    static iconv_t none() noexcept { return reinterpret_cast<iconv_t>(-1); }
    bool isOpen() const noexcept { return converter_ != none(); }

    void close() noexcept
    {
        if (isOpen())
            iconv_close(converter_);
        converter_ = none();
    }

    iconv_t converter_ = none();
    char const* to_ = "";  // names from the table above: they live for ever
    char const* from_ = "";
};

// The caller's buffer, or a scratch buffer of which only the filling is counted.
template <class Unit>
class Target {
public:
    Target(Unit* units, std::size_t room) noexcept : units_(units), room_(room) { }

    // Runs `step(out, outLeft)`, which gives an errno, until it stops for another reason than
    // a full scratch buffer.
    template <class Step>
    int run(Step&& step, Conversion& result) noexcept
    {
        if (room_ != 0) {
            std::size_t const filled = result.count;
            int const stopped = runOnce(step, units_ + filled, room_ - filled, result);
            if (stopped != E2BIG)
                return stopped;
        }
        // The end of a shifted form makes a converter ask for room that it then leaves unused:
        // the buffer was too small only if more comes out.
        for (;;) {
            Unit scratch[256];
            std::size_t const before = result.count;
            int const stopped = runOnce(step, scratch, std::size(scratch), result);
            if (room_ != 0 && result.count != before) {
                result.count = before;
                result.full = true;
                return E2BIG;
            }
            if (stopped != E2BIG)
                return stopped;
        }
    }

    // Appends one unit as it is; false if there is no room.
    bool append(Unit unit, Conversion& result) noexcept
    {
        if (room_ != 0) {
            if (result.count == room_) {
                result.full = true;
                return false;
            }
            units_[result.count] = unit;
        }
        ++result.count;
        return true;
    }

private:
    template <class Step>
    static int runOnce(Step& step, Unit* units, std::size_t room, Conversion& result) noexcept
    {
        auto* const begin = reinterpret_cast<char*>(units);
        char* out = begin;
        std::size_t left = room * sizeof(Unit);
        int const stopped = step(out, left);
        result.count += static_cast<std::size_t>(out - begin) / sizeof(Unit);
        return stopped;
    }

    Unit* units_;
    std::size_t room_;
};

constexpr char const* wideName = "WCHAR_T";

// How a byte that the converter refuses is read: where the system's code pages
// have no character between 0x80 and 0x9F, they have the control code.
bool isControlByte(CodePage const& page, BYTE byte) noexcept
{
    return page.number >= 1250 && page.number <= 1258 && byte >= 0x80 && byte <= 0x9F;
}

}  // namespace

bool CodePage::isLeadByte(BYTE byte) const noexcept
{
    for (std::size_t i = 0; i < std::size(leadBytes) && leadBytes[i] != 0; i += 2) {
        if (byte >= leadBytes[i] && byte <= leadBytes[i + 1])
            return true;
    }
    return false;
}

CodePage const* findCodePage(UINT number) noexcept
{
    switch (number) {
    case CP_ACP:
    case CP_OEMCP:
    case CP_THREAD_ACP: number = CP_UTF8; break;
    case CP_MACCP: number = 10000; break;
    default: break;
    }
    auto const* const place =
        std::lower_bound(std::begin(codePages), std::end(codePages), number,
                         [](CodePage const& page, UINT wanted) { return page.number < wanted; });
    return place != std::end(codePages) && place->number == number ? place : nullptr;
}

bool canConvert(CodePage const& page) noexcept
{
    return Iconv().select(wideName, page.name);
}

bool bytesToWide(CodePage const& page, std::string_view text, wchar_t* wide, std::size_t room,
                 Conversion& result) noexcept
{
    thread_local Iconv converter;
    if (!converter.select(wideName, page.name))
        return false;
    Target<wchar_t> target(wide, room);
    char const* in = text.data();
    std::size_t inLeft = text.size();
    for (;;) {
        int const stopped = target.run(
            [&](char*& out, std::size_t& outLeft) noexcept {
                return converter.convert(in, inLeft, out, outLeft);
            },
            result);
        if (stopped == 0 || stopped == E2BIG)
            break;
        auto const byte = static_cast<BYTE>(*in);
        auto replacement = static_cast<wchar_t>(page.badCharacter);
        std::size_t taken = page.isLeadByte(byte) ? std::min<std::size_t>(inLeft, 2) : 1;
        if (isControlByte(page, byte)) {
            replacement = byte;
        } else if (page.number == ascii) {
            replacement = byte & 0x7F;
        } else {
            result.bad = true;
        }
        if (stopped == EINVAL)  // the text ends within a character
            taken = inLeft;
        if (!target.append(replacement, result))
            return true;
        in += taken;
        inLeft -= taken;
    }
    if (!result.full) {
        target.run([&](char*& out, std::size_t& outLeft) noexcept { return converter.flush(out, outLeft); },
                   result);
    }
    return true;
}

bool wideToBytes(CodePage const& page, std::wstring_view wide, char* text, std::size_t room,
                 char const* defaultChar, Conversion& result) noexcept
{
    thread_local Iconv converter;
    if (!converter.select(page.name, wideName))
        return false;
    Target<char> target(text, room);
    auto const convert = [&](char const*& in, std::size_t& inLeft) noexcept {
        return target.run(
            [&](char*& out, std::size_t& outLeft) noexcept {
                return converter.convert(in, inLeft, out, outLeft);
            },
            result);
    };
    char const* in = reinterpret_cast<char const*>(wide.data());
    std::size_t inLeft = wide.size() * sizeof(wchar_t);
    while (convert(in, inLeft) == EILSEQ) {
        wchar_t character;
        std::memcpy(&character, in, sizeof character);
        in += sizeof character;
        inLeft -= sizeof character;
        if (isControlByte(page, static_cast<BYTE>(character)) && static_cast<char32_t>(character) < 0x100) {
            if (!target.append(static_cast<char>(character), result))
                return true;
            continue;
        }
        result.bad = true;
        if (!defaultChar) {
            // Through the converter, for the pages in which "?" is no plain '?'.
            constexpr wchar_t unknown = L'?';
            auto const* question = reinterpret_cast<char const*>(&unknown);
            std::size_t questionLeft = sizeof unknown;
            if (convert(question, questionLeft) != 0)
                return true;
            continue;
        }
        if (!target.append(defaultChar[0], result))
            return true;
        if (page.isLeadByte(static_cast<BYTE>(defaultChar[0])) && !target.append(defaultChar[1], result))
            return true;
    }
    if (!result.full) {
        target.run([&](char*& out, std::size_t& outLeft) noexcept { return converter.flush(out, outLeft); },
                   result);
    }
    return true;
}

}  // namespace zk::os
