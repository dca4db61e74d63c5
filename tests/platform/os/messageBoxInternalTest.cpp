// What a message box does on a terminal and without one.
#include "platform/os/os.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <string>
#include <thread>

namespace {

// Puts other descriptors in the place of standard input and standard error.
class StandardStreams {
public:
    StandardStreams(int input, int error) : input_(dup(STDIN_FILENO)), error_(dup(STDERR_FILENO))
    {
        dup2(input, STDIN_FILENO);
        dup2(error, STDERR_FILENO);
    }

    ~StandardStreams()
    {
        dup2(input_, STDIN_FILENO);
        dup2(error_, STDERR_FILENO);
        close(input_);
        close(error_);
    }

private:
    int input_;
    int error_;
};

std::string readAll(int descriptor)
{
    std::string result;
    char buffer[512];
    for (ssize_t count; (count = read(descriptor, buffer, sizeof buffer)) > 0;)
        result.append(buffer, std::size_t(count));
    return result;
}

struct Outcome {
    int answer;
    std::string shown;
};

// Shows a box on a terminal of its own on which `typed` was typed already.
Outcome onTerminal(char const* typed, LPCSTR text, LPCSTR caption, UINT type)
{
    int const keyboard = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    grantpt(keyboard);
    unlockpt(keyboard);
    int const screen = open(ptsname(keyboard), O_RDWR | O_NOCTTY);
    termios settings;
    tcgetattr(screen, &settings);
    settings.c_lflag &= ~tcflag_t(ECHO);
    settings.c_oflag &= ~tcflag_t(OPOST);
    tcsetattr(screen, TCSANOW, &settings);
    EXPECT_GT(write(keyboard, typed, std::char_traits<char>::length(typed)), 0);

    int answer;
    {
        StandardStreams const streams(screen, screen);
        answer = MessageBoxA(nullptr, text, caption, type);
    }
    Outcome outcome{answer, readAll(keyboard)};
    close(screen);
    close(keyboard);
    return outcome;
}

Outcome withoutTerminal(LPCSTR text, LPCSTR caption, UINT type)
{
    int pipes[2];
    EXPECT_EQ(pipe(pipes), 0);
    int const nothing = open("/dev/null", O_RDONLY);
    int answer;
    {
        StandardStreams const streams(nothing, pipes[1]);
        answer = MessageBoxA(nullptr, text, caption, type);
    }
    close(nothing);
    close(pipes[1]);
    Outcome outcome{answer, readAll(pipes[0])};
    close(pipes[0]);
    return outcome;
}

}  // namespace

TEST(MessageBoxWithoutTerminal, writesTheTextAndAnswersWithTheDefault)
{
    struct {
        UINT type;
        int answer;
    } const rows[] = {
        {MB_OK, IDOK},
        {MB_OKCANCEL, IDOK},
        {MB_OKCANCEL | MB_DEFBUTTON2, IDCANCEL},
        {MB_ABORTRETRYIGNORE | MB_DEFBUTTON3, IDIGNORE},
        {MB_YESNOCANCEL | MB_DEFBUTTON2 | MB_ICONQUESTION, IDNO},
        {MB_YESNO, IDYES},
        {MB_RETRYCANCEL | MB_DEFBUTTON2, IDCANCEL},
        {MB_CANCELTRYCONTINUE | MB_DEFBUTTON2, IDTRYAGAIN},
        {MB_CANCELTRYCONTINUE | MB_DEFBUTTON3, IDCONTINUE},
        {MB_YESNO | MB_DEFBUTTON4, IDYES},  // there is no fourth button
    };
    for (auto const& row : rows) {
        Outcome const outcome = withoutTerminal("Save it?", "Zentrika", row.type);

        EXPECT_EQ(outcome.answer, row.answer) << "type " << row.type;
        EXPECT_EQ(outcome.shown, "Zentrika: Save it?\n");
    }
}

TEST(MessageBoxWithoutTerminal, standsWithoutCaptionOrText)
{
    EXPECT_EQ(withoutTerminal("Done\n", nullptr, MB_OK).shown, "Done\n");
    EXPECT_EQ(withoutTerminal(nullptr, "Zentrika", MB_OK).shown, "Zentrika: \n");
    EXPECT_EQ(withoutTerminal("two\r\nlines", "", MB_OK).shown, "two\nlines\n");
}

TEST(MessageBox, refusesButtonsItDoesNotKnow)
{
    EXPECT_FAILS(MessageBoxA(nullptr, "x", "y", 7), ERROR_INVALID_MSGBOX_STYLE);
}

TEST(MessageBoxOnATerminal, showsTheTextAndTheChoices)
{
    Outcome const outcome = onTerminal("1\n", "Overwrite model.cpp?", "Zentrika", MB_YESNO | MB_DEFBUTTON2);

    EXPECT_EQ(outcome.answer, IDYES);
    EXPECT_EQ(outcome.shown, "Zentrika: Overwrite model.cpp?\n1 Yes, 2 No [2]: ");
}

TEST(MessageBoxOnATerminal, takesANumberTheBeginningOfANameOrTheDefault)
{
    struct {
        char const* typed;
        UINT type;
        int answer;
    } const rows[] = {
        {"2\n", MB_YESNO, IDNO},
        {"y\n", MB_YESNO | MB_DEFBUTTON2, IDYES},
        {"NO\n", MB_YESNO, IDNO},
        {" no \r\n", MB_YESNO, IDNO},
        {"\n", MB_YESNO | MB_DEFBUTTON2, IDNO},
        {"try\n", MB_CANCELTRYCONTINUE, IDTRYAGAIN},
        {"co\n", MB_CANCELTRYCONTINUE, IDCONTINUE},
        {"3\n", MB_ABORTRETRYIGNORE, IDIGNORE},
    };
    for (auto const& row : rows)
        EXPECT_EQ(onTerminal(row.typed, "?", "", row.type).answer, row.answer) << row.typed;
}

TEST(MessageBoxOnATerminal, asksAgainWhenTheAnswerNamesNoChoice)
{
    Outcome const outcome =
        onTerminal("c\nmaybe\n4\n0\nnope\nca\n", "?", "", MB_CANCELTRYCONTINUE | MB_DEFBUTTON3);

    EXPECT_EQ(outcome.answer, IDCANCEL);
    std::string prompts;
    for (int i = 0; i < 6; ++i)
        prompts += "1 Cancel, 2 Try again, 3 Continue [3]: ";
    EXPECT_EQ(outcome.shown, "?\n" + prompts);
}

TEST(MessageBoxOnATerminal, takesTheEndOfInputAsCancelElseAsTheDefault)
{
    char const endOfInput[] = "\x04";

    EXPECT_EQ(onTerminal(endOfInput, "?", "", MB_YESNOCANCEL).answer, IDCANCEL);
    EXPECT_EQ(onTerminal(endOfInput, "?", "", MB_YESNO | MB_DEFBUTTON2).answer, IDNO);
}

TEST(MessageBoxOnATerminal, showsNoControlCharacters)
{
    Outcome const outcome = onTerminal("\n", "a\x1B[2Jb\tc\nd\x7F", "", MB_OK);

    EXPECT_EQ(outcome.shown, "a?[2Jb\tc\nd?\n1 OK [1]: ");
}

TEST(MessageBoxOnATerminal, leavesWhatIsTypedBehindTheAnswer)
{
    int const keyboard = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    grantpt(keyboard);
    unlockpt(keyboard);
    int const screen = open(ptsname(keyboard), O_RDWR | O_NOCTTY);
    ASSERT_EQ(write(keyboard, "1\nrest\n", 7), 7);
    char rest[8] = {};
    {
        StandardStreams const streams(screen, screen);
        EXPECT_EQ(MessageBoxA(nullptr, "?", "", MB_YESNO), IDYES);
        EXPECT_EQ(read(STDIN_FILENO, rest, 5), 5);
    }
    close(screen);
    close(keyboard);

    EXPECT_STREQ(rest, "rest\n");
}

namespace {

// A terminal of its own; `keyboard` is the other side of `screen`.
struct Terminal {
    Terminal() : keyboard(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
        grantpt(keyboard);
        unlockpt(keyboard);
        screen = open(ptsname(keyboard), O_RDWR | O_NOCTTY);
        termios settings;
        tcgetattr(screen, &settings);
        settings.c_lflag &= ~tcflag_t(ECHO);
        settings.c_oflag &= ~tcflag_t(OPOST);
        tcsetattr(screen, TCSANOW, &settings);
    }
    ~Terminal()
    {
        close(screen);
        close(keyboard);
    }

    int keyboard;
    int screen;
};

constexpr char dangerous[] = "a\x1B[2J\xC2\x9B"
                             "b\x9B"
                             "c\xC3\xA9\td";
constexpr char harmless[] = "a?[2J?b?c\xC3\xA9\td";

}  // namespace

TEST(MessageBoxWithScreenOnly, showsNoControlCharactersAndAsksNothing)
{
    Terminal const terminal;
    int const nothing = open("/dev/null", O_RDONLY);
    int answer;
    {
        StandardStreams const streams(nothing, terminal.screen);
        answer = MessageBoxA(nullptr, dangerous, "\x1B]0;title\x07", MB_YESNO | MB_DEFBUTTON2);
    }
    close(nothing);

    EXPECT_EQ(answer, IDNO);
    EXPECT_EQ(readAll(terminal.keyboard), std::string("?]0;title?: ") + harmless + "\n");
}

TEST(MessageBoxWithKeyboardOnly, writesTheTextAsItIsAndAsksNothing)
{
    Terminal const terminal;
    ASSERT_EQ(write(terminal.keyboard, "1\n", 2), 2);
    int pipes[2];
    ASSERT_EQ(pipe(pipes), 0);
    int answer;
    {
        StandardStreams const streams(terminal.screen, pipes[1]);
        answer = MessageBoxA(nullptr, dangerous, "", MB_YESNO | MB_DEFBUTTON2);
    }
    close(pipes[1]);

    EXPECT_EQ(answer, IDNO);
    EXPECT_EQ(readAll(pipes[0]), std::string(dangerous) + "\n");
    close(pipes[0]);
}

TEST(MessageBoxOnATerminal, waitsWhereReadingNeverBlocks)
{
    Terminal const terminal;
    fcntl(terminal.screen, F_SETFL, fcntl(terminal.screen, F_GETFL) | O_NONBLOCK);
    int answer = 0;
    {
        StandardStreams const streams(terminal.screen, terminal.screen);
        // The answer is typed once the question is seen: the box waits meanwhile.
        std::thread typist([&] {
            std::string shown;
            while (shown.find("]: ") == shown.npos) {
                pollfd ready = {terminal.keyboard, POLLIN, 0};
                poll(&ready, 1, -1);
                shown += readAll(terminal.keyboard);
            }
            EXPECT_EQ(write(terminal.keyboard, "n", 1), 1);
            EXPECT_EQ(write(terminal.keyboard, "o\n", 2), 2);
        });
        answer = MessageBoxA(nullptr, "?", "", MB_YESNOCANCEL);
        typist.join();
    }

    EXPECT_EQ(answer, IDNO);
}

TEST(MessageBoxWithoutTerminal, writesAllToAPipeThatNeverBlocks)
{
    int pipes[2];
    ASSERT_EQ(pipe2(pipes, O_NONBLOCK), 0);
    fcntl(pipes[0], F_SETFL, 0);
    std::string const text(300000, 'x');
    std::string seen;
    int const nothing = open("/dev/null", O_RDONLY);
    std::thread reader([&] { seen = readAll(pipes[0]); });
    {
        StandardStreams const streams(nothing, pipes[1]);
        MessageBoxA(nullptr, text.c_str(), "", MB_OK);
    }
    close(pipes[1]);
    reader.join();
    close(pipes[0]);
    close(nothing);

    EXPECT_EQ(seen.size(), text.size() + 1);
}
