#include "platform/os/codeSets.h"

#include "platform/os/posix/codePages.h"

#include <iconv.h>

#include <cerrno>

namespace zk::os {

namespace {

constexpr char const* charactersName = "UTF-32LE";
static_assert(sizeof(char32_t) == 4);

class Converter {
public:
    Converter(char const* to, char const* from) noexcept : converter_(iconv_open(to, from)) { }
    ~Converter()
    {
        if (isOpen())
            iconv_close(converter_);
    }
    Converter(Converter const&) = delete;
    Converter& operator=(Converter const&) = delete;

    bool isOpen() const noexcept { return converter_ != reinterpret_cast<iconv_t>(-1); }

    void reset() noexcept { iconv(converter_, nullptr, nullptr, nullptr, nullptr); }

    // Converts as far as it goes and appends that; a null `in` asks for what is held back. Gives 0 or the
    // `errno` of what stopped it, which is never want of room.
    template <class Text>
    int convert(char const*& in, std::size_t& inLeft, Text& target)
    {
        using Unit = typename Text::value_type;
        for (;;) {
            Unit units[128];
            auto* const begin = reinterpret_cast<char*>(units);
            char* out = begin;
            std::size_t outLeft = sizeof units;
            char* input = const_cast<char*>(in);  // the C library does not write there
            bool const failed = iconv(converter_, in ? &input : nullptr, in ? &inLeft : nullptr, &out,
                                      &outLeft) == std::size_t(-1);
            int const error = failed ? errno : 0;
            in = input;
            target.append(units, static_cast<std::size_t>(out - begin) / sizeof(Unit));
            if (error != E2BIG)
                return error;
        }
    }

private:
    iconv_t converter_;
};

class IconvCodeSet final : public CodeSet {
public:
    explicit IconvCodeSet(char const* name) noexcept
        : encoder_(name, charactersName), decoder_(charactersName, name)
    {
    }

    bool isUsable() { return encoder_.isOpen() && decoder_.isOpen() && explore(); }

    void reset() noexcept override
    {
        encoder_.reset();
        decoder_.reset();
    }

    std::size_t encode(std::u32string_view characters, std::string& bytes) override
    {
        auto const* in = reinterpret_cast<char const*>(characters.data());
        std::size_t left = characters.size() * sizeof(char32_t);
        if (left > 0)
            encoder_.convert(in, left, bytes);
        return characters.size() - left / sizeof(char32_t);
    }

    void finish(std::string& bytes) override
    {
        char const* none = nullptr;
        std::size_t left = 0;
        encoder_.convert(none, left, bytes);
    }

    Decoded decode(std::string_view bytes, std::u32string& characters) override
    {
        char const* in = bytes.data();
        std::size_t left = bytes.size();
        int const stopped = left > 0 ? decoder_.convert(in, left, characters) : 0;
        char const* none = nullptr;
        std::size_t noneLeft = 0;
        if (stopped == 0)
            decoder_.convert(none, noneLeft,
                             characters);  // some hold a character back, to join it with the next
        return {bytes.size() - left,
                stopped == 0            ? Stop::end
                    : stopped == EINVAL ? Stop::incomplete
                                        : Stop::invalid};
    }

private:
    Converter encoder_;
    Converter decoder_;
};

std::unique_ptr<CodeSet> openByIconvName(std::string const& name)
{
    auto codeSet = std::make_unique<IconvCodeSet>(name.c_str());
    if (!codeSet->isUsable())
        return nullptr;
    return codeSet;
}

// Behind a "/" stand wishes of how to convert, and the empty name is the locale's.
bool isPlain(std::string_view name) noexcept
{
    return !name.empty() &&
        name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                               "0123456789-_.:+()") == std::string_view::npos;
}

}  // namespace

std::unique_ptr<CodeSet> CodeSet::open(std::string_view name)
{
    if (!isPlain(name))
        return nullptr;
    if (unsigned const codePage = codePageOf(name)) {
        if (codePage == utf8CodePage)
            return nullptr;
        if (char const* const iconvName = codePageName(codePage))
            return openByIconvName(iconvName);
        if (auto found = openByIconvName("CP" + std::to_string(codePage)))
            return found;
    }
    return openByIconvName(std::string(name));
}

}  // namespace zk::os
