// The mini parser reads any bytes, as the stepwise way does; joined again, the fields are the text.
#include "text/miniParser.h"

#include "tests/text/stepwiseParser.h"

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

    std::vector<std::string> const expected = zk::test::StepwiseParser::split(text.view());
    if (fields.GetCount() != INT_PTR(expected.size()))
        std::abort();
    POSITION at = fields.GetTailPosition();
    for (std::string const& field : expected)
        if (fields.GetPrev(at) != std::string_view(field))
            std::abort();

    CString params("untouched");
    CString const label = parser.getFirstLabel(text, params);
    zk::test::StepwiseParser::Label const stepwise = zk::test::StepwiseParser::firstLabel(text.view());
    if (label != std::string_view(stepwise.label) ||
        params != std::string_view(stepwise.params.value_or("untouched")))
        std::abort();
    return 0;
}
