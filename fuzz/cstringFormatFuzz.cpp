// Any format with any arguments makes a text of bounded length, and touches nothing else.
#include "platform/classlib/CString.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    // The first bytes are numbers, the rest is the format and a text to be printed.
    std::int64_t number = 0;
    double real = 0;
    if (size < sizeof number + sizeof real || size > 4096)
        return 0;
    std::memcpy(&number, data, sizeof number);
    std::memcpy(&real, data + sizeof number, sizeof real);
    std::string const format(reinterpret_cast<char const*>(data) + sizeof number + sizeof real,
                             size - sizeof number - sizeof real);
    CString const text(std::string_view{format});

    CString made;
    made.Format(format.c_str(), number, text, real, static_cast<int>(number), format.c_str(), nullptr,
                static_cast<void const*>(data), static_cast<unsigned char>(number));
    // Each conversion takes two bytes of the format at least, and prints its field or its text.
    std::size_t const longest = (format.size() / 2 + 1) * (2 * 65535 + 400 + format.size());
    if (static_cast<std::size_t>(made.GetLength()) > longest)
        std::abort();

    made.FormatMessage(format.c_str(), text, number, real);
    made.FormatMessage(format.c_str());
    made.Format(format.c_str());
    return 0;
}
