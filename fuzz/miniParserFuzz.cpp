// The mini parser reads any bytes; joined again, the fields are the text.
#include "text/miniParser.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    CString const text(reinterpret_cast<char const*>(data), int(size));
    miniParser parser;
    CStringList fields;
    parser.splitBySeperators(text, fields);

    CString joined;
    for (POSITION at = fields.GetTailPosition(); at;) {
        joined += fields.GetPrev(at);
        if (at)
            joined += ',';
    }
    if (joined != text)
        std::abort();

    CString params;
    if (parser.getFirstLabel(text, params).GetLength() > text.GetLength())
        std::abort();
    return 0;
}
