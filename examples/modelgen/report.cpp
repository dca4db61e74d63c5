#include "examples/modelgen/report.h"

#include <ostream>

namespace modelgen {

constexpr int longestQuote = 60;

int Report::addFile(CString const& name)
{
    files_.push_back(name);
    return static_cast<int>(files_.size()) - 1;
}

void Report::warning(Place place, CString const& text)
{
    ++warnings_;
    write(place, "warning: ", text);
}

void Report::error(Place place, CString const& text)
{
    if (++errors_ <= toldErrors_)
        write(place, "", text);
}

void Report::close()
{
    if (errors_ > toldErrors_)
        stream_ << "and " << errors_ - toldErrors_ << " more errors\n";
    stream_.flush();
}

void Report::write(Place place, char const* kind, CString const& text)
{
    stream_ << files_[static_cast<std::size_t>(place.file)] << ':' << place.line << ": " << kind << text
            << '\n';
}

CString quoted(CString const& text)
{
    CString shown = text;
    if (shown.GetLength() > longestQuote) {
        int cut = longestQuote;
        while (cut > 0 && (static_cast<unsigned char>(shown[cut]) & 0xC0) == 0x80)  // not inside a character
            --cut;
        shown = shown.Left(cut) + "...";
    }
    for (int i = 0; i < shown.GetLength(); ++i)
        if (static_cast<unsigned char>(shown[i]) < 0x20 || shown[i] == 0x7F)
            shown.SetAt(i, '?');
    return "'" + shown + "'";
}

}  // namespace modelgen
