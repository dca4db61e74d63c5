#include "text/clipboard.h"

#include "platform/os/os.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cstring>
#include <future>
#include <string>
#include <thread>

namespace {

constexpr char absent[] = "(absent)";

std::string onClipboard(UINT format)
{
    if (!OpenClipboard(nullptr))
        return "(locked)";
    std::string content = absent;
    if (HANDLE const block = GetClipboardData(format)) {
        content = static_cast<char const*>(GlobalLock(block));
        GlobalUnlock(block);
    }
    CloseClipboard();
    return content;
}

UINT htmlFormat()
{
    return RegisterClipboardFormatA("HTML Format");
}

// The number behind `name` in the header.
int offset(std::string const& document, std::string const& name)
{
    return std::stoi(document.substr(document.find(name + ":") + name.size() + 1, 10));
}

TEST(Clipboard, takesAPlainText)
{
    omCopyToClipboardText("a model", true);

    EXPECT_EQ(onClipboard(CF_TEXT), "a model");
    EXPECT_EQ(onClipboard(htmlFormat()), absent);
}

TEST(Clipboard, holdsTheLastTextOnly)
{
    omCopyToClipboardText("one", true);
    omCopyToClipboardText("", true);

    EXPECT_EQ(onClipboard(CF_TEXT), "");
}

TEST(Clipboard, takesHtmlInADocumentBehindAHeader)
{
    omCopyToClipboardHTML("<b>x</b>", true);

    EXPECT_EQ(
        onClipboard(htmlFormat()),
        "Version:1\n\tStartHTML:0000000103\n\tEndHTML:0000000210\n\tStartFragment:0000000181\n\t"
        "EndFragment:0000000193\n\t<!DOCTYPE>\n\t<HTML>\n\t<HEAD>\n\t<TITLE>The HTML Clipboard</TITLE>\n\t"
        "</HEAD>\n\t<BODY>\n\t<b>x</b>\n\t</BODY>\n\t</HTML>\n");
    EXPECT_EQ(onClipboard(CF_TEXT), absent);
}

TEST(Clipboard, tellsTheOffsetsOfDocumentAndFragment)
{
    omCopyToClipboardHTML("text", true);
    std::string const document = onClipboard(htmlFormat());

    EXPECT_EQ(document.substr(std::size_t(offset(document, "StartHTML")), 10), "<!DOCTYPE>");
    EXPECT_EQ(std::size_t(offset(document, "EndHTML")), document.size());
    auto const from = std::size_t(offset(document, "StartFragment"));
    auto const to = std::size_t(offset(document, "EndFragment"));
    EXPECT_EQ(document.substr(from, to - from), "\n\ttext\n\t");
}

TEST(Clipboard, takesTheDocumentsOwnBodyForTheFragment)
{
    omCopyToClipboardHTML("a</BODY>b<BODY>c", true);
    std::string const document = onClipboard(htmlFormat());

    auto const from = std::size_t(offset(document, "StartFragment"));
    auto const to = std::size_t(offset(document, "EndFragment"));
    EXPECT_EQ(document.substr(from, to - from), "\n\ta</BODY>b<BODY>c\n\t");
}

TEST(Clipboard, takesSeveralFormatsOfOneContentFromACallerThatOpensIt)
{
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    omCopyToClipboardText("plain", false);
    omCopyToClipboardHTML("rich", false);
    CloseClipboard();

    EXPECT_EQ(onClipboard(CF_TEXT), "plain");
    EXPECT_NE(onClipboard(htmlFormat()).find("rich"), std::string::npos);
}

TEST(Clipboard, staysAsItIsWhereNobodyOpenedIt)
{
    omCopyToClipboardText("old", true);

    omCopyToClipboardText("new", false);

    EXPECT_EQ(onClipboard(CF_TEXT), "old");
}

TEST(Clipboard, isToBeOpenedBeforeItIsChanged)
{
    EXPECT_FAILS(EmptyClipboard(), ERROR_CLIPBOARD_NOT_OPEN);
    EXPECT_FAILS(CloseClipboard(), ERROR_CLIPBOARD_NOT_OPEN);
    EXPECT_FAILS(GetClipboardData(CF_TEXT), ERROR_CLIPBOARD_NOT_OPEN);
}

TEST(Clipboard, knowsFormatsByNameWithoutCase)
{
    EXPECT_EQ(RegisterClipboardFormatA("html format"), htmlFormat());
    EXPECT_NE(RegisterClipboardFormatA("Zentrika test format"), htmlFormat());
    EXPECT_GE(htmlFormat(), 0xC000u);
}

TEST(GlobalMemory, isLockedByCount)
{
    HGLOBAL const block = GlobalAlloc(GMEM_MOVEABLE, 10);
    void* const memory = GlobalLock(block);
    ASSERT_NE(memory, nullptr);
    EXPECT_EQ(GlobalLock(block), memory);

    EXPECT_TRUE(GlobalUnlock(block));
    EXPECT_FAILS(GlobalUnlock(block), NO_ERROR);
    EXPECT_FAILS(GlobalUnlock(block), ERROR_NOT_LOCKED);
    EXPECT_GE(GlobalSize(block), 10u);
    EXPECT_EQ(GlobalFree(block), nullptr);
}

TEST(Clipboard, isLeftAloneWhileAnotherThreadHasItOpen)
{
    omCopyToClipboardText("old", true);
    std::promise<bool> opened;
    std::promise<void> tried;
    std::thread other([&] {
        // Two threads without a window count as one on some systems.
        HWND const window =
            CreateWindowExA(0, "STATIC", "", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
        opened.set_value(window && OpenClipboard(window));
        tried.get_future().wait();
        CloseClipboard();
        DestroyWindow(window);
    });
    EXPECT_TRUE(opened.get_future().get());

    omCopyToClipboardText("new", true);
    omCopyToClipboardHTML("new", true);

    tried.set_value();
    other.join();
    EXPECT_EQ(onClipboard(CF_TEXT), "old");
    EXPECT_EQ(onClipboard(htmlFormat()), absent);
}

TEST(Clipboard, takesAPlainTextWhole)
{
    omCopyToClipboardText(CString("a\0b", 3), true);

    ASSERT_TRUE(OpenClipboard(nullptr));
    HANDLE const block = GetClipboardData(CF_TEXT);
    ASSERT_NE(block, nullptr);
    ASSERT_GE(GlobalSize(block), 4u);
    EXPECT_EQ(std::memcmp(GlobalLock(block), "a\0b", 4), 0);
    GlobalUnlock(block);
    CloseClipboard();
}

TEST(Clipboard, takesHtmlThatIsNoTextOfThePageAsItIs)
{
    if (GetACP() != CP_UTF8)
        GTEST_SKIP() << "each byte is a character of this code page";
    omCopyToClipboardHTML("a\xFF", true);

    EXPECT_NE(onClipboard(htmlFormat()).find("<BODY>\n\ta\xFF\n\t</BODY>"), std::string::npos);
}

TEST(Clipboard, takesHtmlUpToItsFirstNul)
{
    omCopyToClipboardHTML(CString("a\0b", 3), true);
    std::string const document = onClipboard(htmlFormat());

    EXPECT_NE(document.find("<BODY>\n\ta\n\t</BODY>"), std::string::npos);
}

}  // namespace
