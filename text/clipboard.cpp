#include "text/clipboard.h"

#include "text/stringHelpers.h"

#include "platform/os/os.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace {

constexpr char headerTemplate[] = "Version:1\n\t"
                                  "StartHTML:%010d\n\t"
                                  "EndHTML:%010d\n\t"
                                  "StartFragment:%010d\n\t"
                                  "EndFragment:%010d\n\t";
constexpr char documentStart[] =
    "<!DOCTYPE>\n\t<HTML>\n\t<HEAD>\n\t<TITLE>The HTML Clipboard</TITLE>\n\t</HEAD>\n\t";
constexpr char bodyStart[] = "<BODY>";
constexpr char lineBreak[] = "\n\t";
constexpr char bodyEnd[] = "</BODY>";
constexpr char documentEnd[] = "\n\t</HTML>\n";

// The numbers are always ten digits wide: the offsets don't depend on them.
std::string header(int startHtml, int endHtml, int startFragment, int endFragment)
{
    char text[sizeof headerTemplate + 4 * 10];
    int const length =
        std::snprintf(text, sizeof text, headerTemplate, startHtml, endHtml, startFragment, endFragment);
    return std::string(text, std::size_t(length));
}

// `html` in its document, behind a header with the offsets of document and fragment.
std::string clipboardDocument(CString const& html)
{
    int const startHtml = int(header(0, 0, 0, 0).size());
    int const startBody = startHtml + int(std::strlen(documentStart));
    int const startFragment = startBody + int(std::strlen(bodyStart));
    std::string const document = std::string(documentStart) + bodyStart + lineBreak + html.GetString() +
        lineBreak + bodyEnd + documentEnd;
    int const endFragment =
        startHtml + int(document.size() - std::strlen(documentEnd) - std::strlen(bodyEnd));
    return header(startHtml, startHtml + int(document.size()), startFragment, endFragment) + document;
}

void copyToClipboard(UINT format, char const* text, std::size_t length, bool open)
{
    if (open) {
        if (!OpenClipboard(nullptr))
            return;
        EmptyClipboard();
    }
    if (HGLOBAL const block = GlobalAlloc(GMEM_MOVEABLE, length + 1)) {
        void* const memory = GlobalLock(block);
        if (memory) {
            std::memcpy(memory, text, length + 1);
            GlobalUnlock(block);
        }
        if (!memory || !SetClipboardData(format, block))
            GlobalFree(block);
    }
    if (open)
        CloseClipboard();
}

}  // namespace

void omCopyToClipboardText(CString text, bool open)
{
    copyToClipboard(CF_TEXT, text, std::size_t(text.GetLength()), open);
}

void omCopyToClipboardHTML(CString html, bool open)
{
    omConvertStringToUTF8(html);
    std::string const document = clipboardDocument(html);
    copyToClipboard(RegisterClipboardFormatA("HTML Format"), document.c_str(), document.size(), open);
}
