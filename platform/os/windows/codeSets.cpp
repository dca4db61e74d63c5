#include "platform/os/codeSets.h"

#include "platform/os/os.h"

#include <algorithm>

namespace zk::os {

namespace {

std::wstring wideOf(std::u32string_view characters)
{
    std::wstring wide;
    for (char32_t const c : characters) {
        if (c > 0xFFFF && c <= 0x10FFFF) {
            wide += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
            wide += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            wide += c > 0xFFFF ? L'\xFFFF' : static_cast<wchar_t>(c);
        }
    }
    return wide;
}

void appendCharacters(std::wstring_view wide, std::u32string& characters)
{
    for (std::size_t i = 0; i < wide.size(); ++i) {
        auto const unit = static_cast<char32_t>(wide[i]);
        bool const isPair = unit >= 0xD800 && unit < 0xDC00 && i + 1 < wide.size() && wide[i + 1] >= 0xDC00 &&
            wide[i + 1] < 0xE000;
        characters +=
            isPair ? 0x10000 + ((unit - 0xD800) << 10) + (static_cast<char32_t>(wide[++i]) - 0xDC00) : unit;
    }
}

constexpr UINT gb18030 = 54936;

// What is converted in one call: more would not fit the system's int.
constexpr std::size_t mostAtOnce = 1 << 20;

class CodePage final : public CodeSet {
public:
    CodePage(UINT number, CPINFO const& info) noexcept : number_(number), info_(info) { }

    bool isUsable() { return explore(isOpaque() && number_ != gb18030); }

    void reset() noexcept override { }

    std::size_t encode(std::u32string_view characters, std::string& bytes) override
    {
        std::size_t taken = 0;
        while (taken < characters.size()) {
            std::u32string_view const part = characters.substr(taken, mostAtOnce);
            if (append(part, bytes)) {
                taken += part.size();
                continue;
            }
            for (char32_t const& c : part) {
                if (!append({&c, 1}, bytes))
                    return taken;
                ++taken;
            }
        }
        return taken;
    }

    // The system begins and ends each conversion in the initial state.
    void finish(std::string&) override { }

    Decoded decode(std::string_view bytes, std::u32string& characters) override
    {
        std::size_t taken = 0;
        while (taken < bytes.size()) {
            std::size_t const length = lengthOfWhole(bytes.substr(taken, mostAtOnce));
            if (length > 0 && append(bytes.substr(taken, length), characters)) {
                taken += length;
                continue;
            }
            std::size_t const size = sizeAt(bytes.substr(taken));
            if (size > bytes.size() - taken)
                return {taken, Stop::incomplete};
            if (!append(bytes.substr(taken, size), characters))
                return {taken, Stop::invalid};
            taken += size;
        }
        return {taken, Stop::end};
    }

private:
    // Pages with longer characters than two bytes: their texts are converted as a whole, and what is wrong
    // in them is the system's to mend.
    bool isOpaque() const noexcept { return info_.MaxCharSize > 2; }

    std::size_t sizeAt(std::string_view bytes) const noexcept
    {
        return IsDBCSLeadByteEx(number_, static_cast<BYTE>(bytes.front())) ? 2 : 1;
    }

    // The length of the whole characters that the bytes begin with.
    std::size_t lengthOfWhole(std::string_view bytes) const noexcept
    {
        if (isOpaque())
            return bytes.size();
        std::size_t length = 0;
        while (length < bytes.size()) {
            std::size_t const size = sizeAt(bytes.substr(length));
            if (size > bytes.size() - length)
                break;
            length += size;
        }
        return length;
    }

    // Append all, or nothing if something cannot be converted.
    bool append(std::u32string_view characters, std::string& bytes) const
    {
        std::wstring const wide = wideOf(characters);
        std::string room(wide.size() * 8, '\0');
        BOOL usedDefault = FALSE;
        bool const tellsDefault = !isOpaque();
        DWORD const flags = tellsDefault ? WC_NO_BEST_FIT_CHARS : 0;
        int const length = WideCharToMultiByte(number_, flags, wide.data(), static_cast<int>(wide.size()),
                                               room.data(), static_cast<int>(room.size()), nullptr,
                                               tellsDefault ? &usedDefault : nullptr);
        if (length <= 0 || usedDefault)
            return false;
        room.resize(static_cast<std::size_t>(length));
        if (isOpaque()) {
            std::u32string back;
            if (!append(room, back) || back != characters)
                return false;
        }
        bytes += room;
        return true;
    }

    bool append(std::string_view bytes, std::u32string& characters) const
    {
        std::wstring wide(bytes.size() * 2, L'\0');
        int const length =
            MultiByteToWideChar(number_, isOpaque() ? 0 : MB_ERR_INVALID_CHARS, bytes.data(),
                                static_cast<int>(bytes.size()), wide.data(), static_cast<int>(wide.size()));
        if (length <= 0)
            return false;
        appendCharacters({wide.data(), static_cast<std::size_t>(length)}, characters);
        return true;
    }

    UINT const number_;
    CPINFO const info_;
};

}  // namespace

std::unique_ptr<CodeSet> CodeSet::open(std::string_view name)
{
    UINT number = codePageOf(name);
    // Not every system has those that hold characters of three bytes.
    constexpr struct {
        UINT wanted, instead;
    } substitutes[] = {{51932, 20932}, {51949, 949}};
    for (auto const& [wanted, instead] : substitutes)
        if (number == wanted && !IsValidCodePage(wanted))
            number = instead;
    CPINFO info;
    if (number == 0 || number == utf8CodePage || !GetCPInfo(number, &info))
        return nullptr;
    auto codeSet = std::make_unique<CodePage>(number, info);
    if (!codeSet->isUsable())
        return nullptr;
    return codeSet;
}

}  // namespace zk::os
