// Stored rich texts of any bytes come to their end; stored again, the links come back.
#include "text/HyperLink.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    CString const rich(reinterpret_cast<char const*>(data), int(size));
    CList<HyperLink> links;
    CString const plain = getPlainTextAndLinksFromRichText(rich, links);
    if (plain != getPlainTextFromRichText(rich))
        std::abort();

    CString const stored = getRichTextFromPlainText(plain, links);
    CList<HyperLink> again;
    CString const plainAgain = getPlainTextAndLinksFromRichText(stored, again);
    if (plainAgain != plain || getRichTextFromPlainText(plainAgain, again) != stored)
        std::abort();
    return 0;
}
