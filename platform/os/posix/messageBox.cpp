#include "platform/os/posix/messageBox.h"

#include "platform/os/posix/lastError.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/writing.h"
#include "platform/os/utf8.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <new>
#include <span>
#include <string>
#include <string_view>

namespace zk::os {
namespace {

struct Choice {
    int id;
    std::string_view name;
};

constexpr Choice choices[] = {
    {IDOK, "OK"},       {IDCANCEL, "Cancel"},      {IDABORT, "Abort"},
    {IDRETRY, "Retry"}, {IDIGNORE, "Ignore"},      {IDYES, "Yes"},
    {IDNO, "No"},       {IDTRYAGAIN, "Try again"}, {IDCONTINUE, "Continue"},
};

// The buttons of each value of the low four bits, in their order; 0 ends a row.
constexpr std::array<int, 3> buttonRows[] = {
    {IDOK, 0, 0},     {IDOK, IDCANCEL, 0},    {IDABORT, IDRETRY, IDIGNORE},       {IDYES, IDNO, IDCANCEL},
    {IDYES, IDNO, 0}, {IDRETRY, IDCANCEL, 0}, {IDCANCEL, IDTRYAGAIN, IDCONTINUE},
};

std::string_view nameOf(int id)
{
    for (Choice const& choice : choices) {
        if (choice.id == id)
            return choice.name;
    }
    return {};
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}

bool beginsWith(std::string_view name, std::string_view part)
{
    if (part.size() > name.size())
        return false;
    for (std::size_t i = 0; i < part.size(); ++i) {
        if (lower(name[i]) != lower(part[i]))
            return false;
    }
    return true;
}

std::string_view trimmed(std::string_view text)
{
    auto const first = text.find_first_not_of(" \t\r");
    return first == text.npos ? std::string_view()
                              : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// The button that an answer names, or 0 for none or more than one.
int buttonOf(std::string_view answer, std::span<int const> buttons)
{
    if (answer.size() == 1 && answer[0] >= '1' && std::size_t(answer[0] - '1') < buttons.size())
        return buttons[std::size_t(answer[0] - '1')];
    int found = 0;
    for (int const button : buttons) {
        if (!beginsWith(nameOf(button), answer))
            continue;
        if (found != 0)
            return 0;
        found = button;
    }
    return found;
}

// Control characters of a text could take over the terminal that shows it: those
// of ASCII, those behind them (U+0080 to U+009F), and bytes that are no UTF-8, which a
// terminal of 8 bits may take for the same.
std::string withoutControls(std::string_view text)
{
    std::string shown;
    shown.reserve(text.size());
    auto const* at = reinterpret_cast<unsigned char const*>(text.data());
    auto const* const end = at + text.size();
    while (at != end) {
        Utf8Character const character = decodeUtf8(at, end);
        char32_t const code = character.code;
        bool const isControl = code < ' ' || (code >= 0x7F && code < 0xA0);
        if (!character.valid || (isControl && code != '\n' && code != '\t'))
            shown += '?';
        else
            shown.append(reinterpret_cast<char const*>(at), character.length);
        at += character.length;
    }
    return shown;
}

std::string withUnixLines(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n')
            result += text[i];
    }
    return result;
}

// Nobody is left to be told when standard error fails too.
void print(std::string_view text) noexcept
{
    NoPipeSignal const guard;
    while (!text.empty()) {
        ssize_t const done = whenReady(STDERR_FILENO, POLLOUT, [&] {
            return systemCalls().write(STDERR_FILENO, text.data(), text.size());
        });
        if (done <= 0)
            return;
        text.remove_prefix(std::size_t(done));
    }
}

// Reads up to the line feed and not a byte more: the rest belongs to the program.
bool readLine(std::string& line)
{
    constexpr std::size_t longestAnswer = 4096;

    line.clear();
    for (;;) {
        char c;
        if (whenReady(STDIN_FILENO, POLLIN, [&] { return systemCalls().read(STDIN_FILENO, &c, 1); }) != 1)
            return false;
        if (c == '\n')
            return true;
        if (line.size() < longestAnswer)
            line += c;
    }
}

std::string promptOf(std::span<int const> buttons, std::size_t defaultIndex)
{
    std::string prompt;
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        if (i > 0)
            prompt += ", ";
        prompt += std::to_string(i + 1);
        prompt += ' ';
        prompt += nameOf(buttons[i]);
    }
    return prompt + " [" + std::to_string(defaultIndex + 1) + "]: ";
}

int ask(std::span<int const> buttons, std::size_t defaultIndex)
{
    std::string const prompt = promptOf(buttons, defaultIndex);
    std::string line;
    for (;;) {
        print(prompt);
        if (!readLine(line)) {
            print("\n");
            for (int const button : buttons) {
                if (button == IDCANCEL)
                    return button;
            }
            return buttons[defaultIndex];
        }
        std::string_view const answer = trimmed(line);
        if (answer.empty())
            return buttons[defaultIndex];
        if (int const button = buttonOf(answer, buttons))
            return button;
    }
}

int show(std::string_view caption, std::string_view text, std::span<int const> buttons,
         std::size_t defaultIndex)
{
    std::string message;
    if (!caption.empty())
        message.append(caption).append(": ");
    message += withUnixLines(text);
    if (message.empty() || message.back() != '\n')
        message += '\n';

    bool const isShownByTerminal = isatty(STDERR_FILENO);
    print(isShownByTerminal ? withoutControls(message) : message);
    return isShownByTerminal && isatty(STDIN_FILENO) ? ask(buttons, defaultIndex) : buttons[defaultIndex];
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

int MessageBoxA(HWND, LPCSTR text, LPCSTR caption, UINT type)
{
    UINT const row = type & MB_TYPEMASK;
    if (row >= std::size(buttonRows)) {
        SetLastError(ERROR_INVALID_MSGBOX_STYLE);
        return 0;
    }
    std::span<int const> buttons = buttonRows[row];
    while (buttons.back() == 0)
        buttons = buttons.first(buttons.size() - 1);
    std::size_t defaultIndex = (type & MB_DEFMASK) >> 8;
    if (defaultIndex >= buttons.size())
        defaultIndex = 0;

    try {
        return show(caption ? caption : "", text ? text : "", buttons, defaultIndex);
    } catch (std::bad_alloc const&) {
        print("There is no memory left to show a message.\n");
        return buttons[defaultIndex];
    }
}
