#include "platform/os/commandLine.h"

#include <algorithm>

namespace zk::os {
namespace {

constexpr bool isBlank(char c) noexcept
{
    return c == ' ' || c == '\t';
}

// Reads one text from its first character on.
class Reader {
public:
    explicit Reader(std::string_view text) noexcept : rest_(text) { }

    bool atEnd() const noexcept { return rest_.empty(); }
    bool at(char c) const noexcept { return !rest_.empty() && rest_.front() == c; }
    bool atBlank() const noexcept { return !rest_.empty() && isBlank(rest_.front()); }

    char take() noexcept
    {
        char const c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    std::size_t takeAll(char c) noexcept
    {
        std::size_t const count = std::min(rest_.find_first_not_of(c), rest_.size());
        rest_.remove_prefix(count);
        return count;
    }

    void skipBlanks() noexcept
    {
        while (atBlank())
            take();
    }

private:
    std::string_view rest_;
};

std::string readProgram(Reader& reader)
{
    std::string program;
    bool quoted = false;
    while (!reader.atEnd() && (quoted || !reader.atBlank())) {
        char const c = reader.take();
        if (c == '"')
            quoted = !quoted;
        else
            program += c;
    }
    return program;
}

std::string readArgument(Reader& reader)
{
    std::string argument;
    bool quoted = false;
    while (!reader.atEnd() && (quoted || !reader.atBlank())) {
        std::size_t const backslashes = reader.takeAll('\\');
        if (!reader.at('"')) {
            argument.append(backslashes, '\\');
            if (!reader.atEnd() && (quoted || !reader.atBlank()))
                argument += reader.take();
            continue;
        }
        reader.take();
        argument.append(backslashes / 2, '\\');
        if (backslashes % 2 != 0) {
            argument += '"';
        } else if (quoted && reader.at('"')) {
            argument += reader.take();
        } else {
            quoted = !quoted;
        }
    }
    return argument;
}

bool needsQuotes(std::string_view argument) noexcept
{
    return argument.empty() || argument.find_first_of(" \t\"") != argument.npos;
}

void appendProgram(std::string const& program, std::string& line)
{
    bool const quoted = program.empty() || program.find_first_of(" \t") != program.npos;
    if (quoted)
        line += '"';
    for (char const c : program) {
        if (c != '"')
            line += c;
    }
    if (quoted)
        line += '"';
}

void appendArgument(std::string const& argument, std::string& line)
{
    if (!needsQuotes(argument)) {
        line += argument;
        return;
    }
    line += '"';
    std::size_t backslashes = 0;
    for (char const c : argument) {
        if (c == '"')
            line.append(backslashes + 1, '\\');  // those before a quote count double, and one for it
        backslashes = c == '\\' ? backslashes + 1 : 0;
        line += c;
    }
    line.append(backslashes, '\\');
    line += '"';
}

}  // namespace

std::vector<std::string> splitCommandLine(std::string_view commandLine)
{
    Reader reader(commandLine);
    std::vector<std::string> arguments;
    arguments.push_back(readProgram(reader));
    for (reader.skipBlanks(); !reader.atEnd(); reader.skipBlanks())
        arguments.push_back(readArgument(reader));
    return arguments;
}

std::string joinCommandLine(std::vector<std::string> const& arguments)
{
    std::string line;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (i == 0) {
            appendProgram(arguments[i], line);
            continue;
        }
        line += ' ';
        appendArgument(arguments[i], line);
    }
    return line;
}

}  // namespace zk::os
