#include "text/StringFormatter.h"

#include "platform/os/os.h"
#include "text/numbers.h"

StringFormatter::~StringFormatter() = default;

void StringFormatter::operator()(CString& text)
{
    int const mark = text.Find(':');
    if (mark <= 0)
        return;
    CString const modifier = text.Mid(mark + 1);
    text = text.Left(mark);
    if (modifier.IsEmpty())
        return;

    int const dot = text.ReverseFind('.');
    int const separator = text.ReverseFind(zk::os::nativeSeparator());
    if (modifier == "r ") {
        if (dot >= 0)
            text = text.Left(dot);
    } else if (modifier == "t ") {
        text = text.Mid(separator + 1);
    } else if (modifier == "e ") {
        text = text.Mid(dot + 1);
    } else if (modifier == "c ") {
        CString first = text.Mid(separator + 1, 1);
        first.MakeUpper();
        if (!first.IsEmpty())
            text.SetAt(separator + 1, first[0]);
    } else if (modifier == "h ") {
        text = text.Left(separator);
    } else if (int const length = zk::numberOf(modifier); length > 0) {
        text = text.Left(length);
    }
}
