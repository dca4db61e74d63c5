// Textual slices from any bytes: what was read can be written and read again.
#include "text/Slice.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const*>(data), size);
    std::ostringstream out, err;
    std::streambuf* const oldOut = std::cout.rdbuf(out.rdbuf());
    std::streambuf* const oldErr = std::cerr.rdbuf(err.rdbuf());
    Slice const slice(text.c_str());

    std::string again;
    bool canBeRead = true;
    for (int i = 0; i < slice.count(); ++i) {
        Range const range = slice[i];
        canBeRead = canBeRead && range.start() >= 0 && range.end() >= 0;
        again += (i ? "," : "") + std::to_string(range.start()) + "-" + std::to_string(range.end());
    }
    Slice const copy(again.c_str());
    std::cout.rdbuf(oldOut);
    std::cerr.rdbuf(oldErr);

    if (slice.count() > int(size) + 1)
        std::abort();
    if (canBeRead) {
        std::ostringstream first, second;
        first << slice;
        second << copy;
        if (first.str() != second.str())
            std::abort();
    }
    return 0;
}
