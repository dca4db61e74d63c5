#include "examples/modelgen/pumlFields.h"

#include "examples/modelgen/pumlLine.h"
#include "text/miniParser.h"

namespace modelgen {

namespace {

// Making its alphabet takes longer than a scan of a line.
miniParser& parser()
{
    static miniParser one;
    return one;
}

}  // namespace

SPStringList fieldsOf(char const* text)
{
    CStringList lastFirst;
    parser().splitBySeperators(text, lastFirst);
    SPStringList fields;
    for (POSITION at = lastFirst.GetTailPosition(); at;)
        fields.push(trimmed(lastFirst.GetPrev(at).GetString()));
    return fields;
}

// The parser looks for parameters behind a label. It leaves the result alone where they are not closed.
std::optional<CString> parenthesised(CString const& text, int open)
{
    CString const notClosed(")");  // never stands alone in a pair
    CString content(notClosed);
    parser().getFirstLabel("label" + text.Mid(open), content);
    if (content == notClosed)
        return std::nullopt;
    return content;
}

}  // namespace modelgen
