// Any bytes through the code page converters: sizes agree with what is
// written, nothing is written behind the buffer, and good UTF-8 comes back.
#include "platform/os/os.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

// The memory ends where the buffer ends, so that the sanitizer sees each byte behind it.
template <class Unit>
std::unique_ptr<Unit[]> exactly(int count)
{
    return std::make_unique<Unit[]>(static_cast<std::size_t>(count));
}

void convert(UINT codePage, std::string_view text)
{
    int const length = static_cast<int>(text.size());
    int const wideCount = MultiByteToWideChar(codePage, 0, text.data(), length, nullptr, 0);
    if (wideCount == 0)
        return;
    auto const wide = exactly<wchar_t>(wideCount);
    require(MultiByteToWideChar(codePage, 0, text.data(), length, wide.get(), wideCount) == wideCount);
    if (wideCount > 1) {
        auto const small = exactly<wchar_t>(wideCount - 1);
        require(MultiByteToWideChar(codePage, 0, text.data(), length, small.get(), wideCount - 1) == 0);
    }
    int const count = WideCharToMultiByte(codePage, 0, wide.get(), wideCount, nullptr, 0, nullptr, nullptr);
    if (count == 0)
        return;
    auto const narrow = exactly<char>(count);
    BOOL used = FALSE;
    require(WideCharToMultiByte(codePage, 0, wide.get(), wideCount, narrow.get(), count, nullptr, &used) ==
            count);
    bool const isGood =
        MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, text.data(), length, nullptr, 0) != 0;
    if (codePage == CP_UTF8 && isGood)
        require(std::string_view(narrow.get(), static_cast<std::size_t>(count)) == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    constexpr UINT codePages[] = {CP_UTF8, CP_UTF7, 37,   437,  932,   936,   949,  950,
                                  1252,    1255,    1258, 1361, 20127, 50220, 54936};
    if (size < 2 || size > 4096)
        return 0;
    auto const* const text = reinterpret_cast<char const*>(data + 1);
    convert(codePages[data[0] % std::size(codePages)], {text, size - 1});

    std::string copy(text, size - 1);
    for (char const* at = copy.c_str(); *at; at = CharNextA(at))
        require(CharPrevA(at, CharNextA(at)) >= at);
    CharUpperA(copy.data());
    CharLowerA(copy.data());
    return 0;
}
