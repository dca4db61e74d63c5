#include "platform/os/posix/messageTexts.h"

#include "platform/os/posix/lastError.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <string_view>

namespace zk::os {
namespace {

constexpr DWORD noWidth = 0;
constexpr std::string_view lineBreak = "\r\n";

bool isDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

// The value of an insert as one specification of printf shows it.
//
// The caller's text never reaches printf: what stands between "!" and "!" is
// read against a closed list, and a specification is made from what was found.
class InsertFormat {
public:
    // Reads `spec`; false if it is none of those supplied.
    bool read(std::string_view spec) noexcept
    {
        takeAnyOf(spec, "-+ #0", sizeof flags_ - 1, flags_);
        bool good = takeNumber(spec, width_);
        if (!spec.empty() && spec.front() == '.') {
            spec.remove_prefix(1);
            precision_ = 0;
            good = takeNumber(spec, precision_) && good;
        }
        if (spec.substr(0, 3) == "I64" || spec.substr(0, 2) == "ll") {
            bits_ = 64;
            spec.remove_prefix(spec.front() == 'I' ? 3 : 2);
        } else if (!spec.empty() && (spec.front() == 'l' || spec.front() == 'h')) {
            bits_ = spec.front() == 'h' ? 16 : 32;
            spec.remove_prefix(1);
        }
        constexpr std::string_view conversions = "diuxXocs";
        if (!good || spec.size() != 1 || conversions.find(spec.front()) == conversions.npos)
            return false;
        conversion_ = spec.front();
        return std::string_view(flags_).find_first_not_of(allowedFlags(conversion_)) ==
            std::string_view::npos;
    }

    void append(DWORD_PTR value, std::string& text) const
    {
        switch (conversion_) {
        case 's': {
            auto const* const shown = reinterpret_cast<char const*>(value);
            print(text, "s", shown ? shown : "(null)");
            break;
        }
        case 'c': print(text, "c", static_cast<int>(static_cast<unsigned char>(value))); break;
        case 'd':
        case 'i': print(text, "lld", signedValue(value)); break;
        case 'u': print(text, "llu", unsignedValue(value)); break;
        case 'x': print(text, "llx", unsignedValue(value)); break;
        case 'X': print(text, "llX", unsignedValue(value)); break;
        default: print(text, "llo", unsignedValue(value)); break;
        }
    }

private:
    // Those that have a meaning for the conversion.
    static std::string_view allowedFlags(char conversion) noexcept
    {
        switch (conversion) {
        case 'c':
        case 's': return "-";
        case 'd':
        case 'i': return "-+ 0";
        case 'u': return "-0";
        default: return "-#0";
        }
    }

    static void takeAnyOf(std::string_view& spec, std::string_view set, std::size_t most,
                          char* taken) noexcept
    {
        std::size_t const count = std::min({spec.find_first_not_of(set), spec.size(), most});
        spec.copy(taken, count);
        taken[count] = '\0';
        spec.remove_prefix(count);
    }

    // At most four digits: no text of ours is wider.
    static bool takeNumber(std::string_view& spec, int& number) noexcept
    {
        constexpr int most = 4;
        for (int digits = 0; !spec.empty() && isDigit(spec.front()); ++digits) {
            if (digits == most)
                return false;
            number = std::max(number, 0) * 10 + (spec.front() - '0');
            spec.remove_prefix(1);
        }
        return true;
    }

    long long signedValue(DWORD_PTR value) const noexcept
    {
        return bits_ == 64 ? static_cast<std::int64_t>(value)
            : bits_ == 16  ? static_cast<std::int16_t>(value)
                           : static_cast<std::int32_t>(value);
    }

    unsigned long long unsignedValue(DWORD_PTR value) const noexcept
    {
        return bits_ == 64 ? value
            : bits_ == 16  ? static_cast<std::uint16_t>(value)
                           : static_cast<std::uint32_t>(value);
    }

    template <class Value>
    void print(std::string& text, char const* conversion, Value value) const
    {
        std::string format = std::string("%") + flags_;
        if (width_ >= 0)
            format += std::to_string(width_);
        if (precision_ >= 0)
            format += '.' + std::to_string(precision_);
        format += conversion;
        int const length = std::snprintf(nullptr, 0, format.c_str(), value);
        std::size_t const end = text.size();
        text.resize(end + static_cast<std::size_t>(length) + 1);
        std::snprintf(text.data() + end, static_cast<std::size_t>(length) + 1, format.c_str(), value);
        text.pop_back();
    }

    char flags_[8] = {};
    int width_ = -1;
    int precision_ = -1;
    int bits_ = 32;
    char conversion_ = 's';
};

// Turns a message's text into what is shown.
class Formatter {
public:
    Formatter(std::string_view text, DWORD flags, DWORD_PTR const* arguments) noexcept
        : rest_(text), arguments_(arguments), keepsInserts_((flags & FORMAT_MESSAGE_IGNORE_INSERTS) != 0),
          joinsLines_((flags & FORMAT_MESSAGE_MAX_WIDTH_MASK) != noWidth)
    {
    }

    // The shown text; none if the text is broken.
    std::optional<std::string> run()
    {
        while (!rest_.empty() && !ended_) {
            char const c = take();
            if (c == '%') {
                if (!escape())
                    return std::nullopt;
            } else if (c == '\r' || c == '\n') {
                if (c == '\r' && !rest_.empty() && rest_.front() == '\n')
                    take();
                shown_ += joinsLines_ ? std::string_view(" ") : lineBreak;
            } else {
                shown_ += c;
            }
        }
        return std::move(shown_);
    }

private:
    char take() noexcept
    {
        char const c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    bool escape()
    {
        if (rest_.empty())
            return false;
        char const c = take();
        switch (c) {
        case '0': ended_ = true; return true;
        case 'n': shown_ += lineBreak; return true;
        case 'r': shown_ += '\r'; return true;
        case 't': shown_ += '\t'; return true;
        default: break;
        }
        if (keepsInserts_) {
            shown_ += '%';
            shown_ += c;
            return true;
        }
        if (isDigit(c))
            return insert(c - '0');
        shown_ += c;
        return true;
    }

    bool insert(int number)
    {
        if (!rest_.empty() && isDigit(rest_.front()))
            number = number * 10 + (take() - '0');
        InsertFormat format;
        if (!rest_.empty() && rest_.front() == '!') {
            take();
            std::size_t const end = rest_.find('!');
            if (end == rest_.npos || !format.read(rest_.substr(0, end)))
                return false;
            rest_.remove_prefix(end + 1);
        }
        if (!arguments_)
            return false;
        format.append(arguments_[number - 1], shown_);
        return true;
    }

    std::string_view rest_;
    DWORD_PTR const* arguments_;
    bool keepsInserts_;
    bool joinsLines_;
    bool ended_ = false;
    std::string shown_;
};

DWORD findText(DWORD flags, void const* source, DWORD id, std::string& text)
{
    DWORD const width = flags & FORMAT_MESSAGE_MAX_WIDTH_MASK;
    if (width != noWidth && width != FORMAT_MESSAGE_MAX_WIDTH_MASK)
        return ERROR_INVALID_PARAMETER;
    if (flags & FORMAT_MESSAGE_FROM_STRING) {
        if (!source)
            return ERROR_INVALID_PARAMETER;
        text = static_cast<char const*>(source);
        return ERROR_SUCCESS;
    }
    if (!(flags & FORMAT_MESSAGE_FROM_SYSTEM))
        return ERROR_INVALID_PARAMETER;
    char const* const sentence = errorSentence(id);
    if (!sentence)
        return ERROR_MR_MID_NOT_FOUND;
    text = sentence;
    text += lineBreak;
    return ERROR_SUCCESS;
}

// Gives the text to the caller in the buffer it named, or in a new one.
DWORD handOver(std::string const& text, bool inNewBuffer, char* buffer, DWORD room) noexcept
{
    if (inNewBuffer) {
        auto* const memory =
            static_cast<char*>(LocalAlloc(LMEM_FIXED, std::max<SIZE_T>(room, text.size() + 1)));
        if (!memory)
            return ERROR_NOT_ENOUGH_MEMORY;
        std::memcpy(memory, text.c_str(), text.size() + 1);
        std::memcpy(buffer, &memory, sizeof memory);
        return ERROR_SUCCESS;
    }
    if (!buffer || room <= text.size())
        return ERROR_INSUFFICIENT_BUFFER;
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return ERROR_SUCCESS;
}

DWORD formatMessage(DWORD flags, void const* source, DWORD id, char* buffer, DWORD room,
                    DWORD_PTR const* arguments, DWORD& length)
{
    bool const inNewBuffer = (flags & FORMAT_MESSAGE_ALLOCATE_BUFFER) != 0;
    if (inNewBuffer) {
        if (!buffer)
            return ERROR_NOT_ENOUGH_MEMORY;
        std::fill_n(buffer, sizeof(LPSTR), '\0');  // the address of no text
    }
    std::string text;
    if (DWORD const error = findText(flags, source, id, text); error != ERROR_SUCCESS)
        return error;
    auto const shown =
        Formatter(text, flags, (flags & FORMAT_MESSAGE_ARGUMENT_ARRAY) ? arguments : nullptr).run();
    if (!shown)
        return ERROR_INVALID_PARAMETER;
    if (shown->empty())
        return ERROR_NO_WORK_DONE;
    length = static_cast<DWORD>(shown->size());
    return handOver(*shown, inNewBuffer, buffer, room);
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

DWORD FormatMessageA(DWORD flags, LPCVOID source, DWORD id, DWORD, LPSTR buffer, DWORD room,
                     va_list* arguments) noexcept
{
    DWORD length = 0;
    DWORD error;
    try {
        error = formatMessage(flags, source, id, buffer, room, reinterpret_cast<DWORD_PTR const*>(arguments),
                              length);
    } catch (std::bad_alloc const&) {
        error = ERROR_NOT_ENOUGH_MEMORY;
    }
    return report(error) ? length : 0;
}

HLOCAL LocalAlloc(UINT flags, SIZE_T size) noexcept
{
    if (flags & ~LPTR) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    SIZE_T const atLeast = std::max<SIZE_T>(size, 1);
    void* const memory = (flags & LMEM_ZEROINIT) ? std::calloc(atLeast, 1) : std::malloc(atLeast);
    if (!memory)
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return memory;
}

HLOCAL LocalFree(HLOCAL memory) noexcept
{
    std::free(memory);
    return nullptr;
}
