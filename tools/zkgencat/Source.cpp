#include "tools/zkgencat/Source.h"

#include "logging/util/CxChars.h"
#include "logging/util/CxUtf8.h"

#include <array>
#include <cstdio>
#include <limits>
#include <optional>

namespace zkgencat {

namespace {

constexpr std::string_view blanks(" \t");

bool isOctal(char c) noexcept
{
    return c >= '0' && c <= '7';
}

// The control characters with an escape of a letter.
struct Escape {
    char letter;
    char character;
};
constexpr Escape escapes[] = {{'n', '\n'}, {'t', '\t'}, {'v', '\v'}, {'b', '\b'},
                              {'r', '\r'}, {'f', '\f'}, {'\\', '\\'}};

class Reader {
public:
    Reader(std::string_view source, Messages& messages) : rest_(source), messages_(messages)
    {
        constexpr std::string_view byteOrderMark("\xEF\xBB\xBF");
        if (rest_.starts_with(byteOrderMark))
            rest_.remove_prefix(byteOrderMark.size());
    }

    std::vector<Mistake> read()
    {
        while (!rest_.empty())
            readLine();
        return std::move(mistakes_);
    }

private:
    // Takes a line off, without its end.
    std::string_view takeLine()
    {
        if (rest_.empty())
            return {};
        ++line_;
        std::size_t const end = rest_.find('\n');
        std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        return line;
    }

    void complain(std::string text) { mistakes_.push_back({begin_, std::move(text)}); }

    void readLine()
    {
        begin_ = line_ + 1;
        std::string_view const line = takeLine();
        if (line.find_first_not_of(blanks) == std::string_view::npos)
            return;
        if (line.front() == '$')
            readDirective(line.substr(1));
        else if (CxIsDigit(line.front()))
            readMessage(line);
        else
            complain("a line begins with a number or with \"$\"");
    }

    void readDirective(std::string_view line)
    {
        std::size_t const end = std::min(line.find_first_of(blanks), line.size());
        std::string_view const name = line.substr(0, end);
        std::string_view rest = line.substr(end);
        rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
        if (name.empty())
            return;  // a comment
        if (name == "quote") {
            quote_ = rest.empty() ? '\0' : rest.front();
        } else if (name == "set") {
            if (auto const number = takeNumber(rest, "set"))
                set_ = *number;
        } else if (name == "delset") {
            if (auto const number = takeNumber(rest, "set"))
                removeSet(*number);
        } else {
            complain("there is no directive \"$" + std::string(name) + "\"");
        }
    }

    void removeSet(std::int32_t set)
    {
        auto const inSet = [&](auto const& entry) { return entry.first.first == set; };
        std::erase_if(messages_, inSet);
        std::erase_if(lines_, inSet);
    }

    // The number that a text begins with, and which ends at its end or a blank.
    std::optional<std::int32_t> takeNumber(std::string_view& text, char const* what)
    {
        std::size_t length = 0;
        std::int64_t number = 0;
        for (; length < text.size() && CxIsDigit(text[length]); ++length)
            number = std::min<std::int64_t>(number * 10 + (text[length] - '0'),
                                            std::int64_t(std::numeric_limits<std::int32_t>::max()) + 1);
        bool const isWhole =
            length > 0 && (length == text.size() || blanks.find(text[length]) != std::string_view::npos);
        if (!isWhole || number < 1 || number > std::numeric_limits<std::int32_t>::max()) {
            complain(std::string("the number of a ") + what + " is one from 1 to 2147483647");
            return std::nullopt;
        }
        text.remove_prefix(length);
        return static_cast<std::int32_t>(number);
    }

    void readMessage(std::string_view line)
    {
        auto const number = takeNumber(line, "message");
        bool const hasText = !line.empty();
        if (hasText)
            line.remove_prefix(1);  // the blank
        std::optional<std::string> text = hasText ? readText(line) : std::string();
        if (!number || !text)
            return;
        MessageId const id(set_, *number);
        auto const [place, isNew] = lines_.try_emplace(id, begin_);
        if (!isNew) {
            complain("message " + std::to_string(*number) + " of set " + std::to_string(set_) +
                     " stands in line " + std::to_string(place->second) + " already");
            return;
        }
        if (hasText)
            messages_[id] = *std::move(text);
        else
            messages_.erase(id);
    }

    // The text of a message, of which `line` is the first part. All its lines are taken in any case.
    std::optional<std::string> readText(std::string_view line)
    {
        bool const isQuoted = quote_ != '\0' && !line.empty() && line.front() == quote_;
        if (isQuoted)
            line.remove_prefix(1);
        std::string text;
        std::size_t const before = mistakes_.size();
        bool isOpen = isQuoted;
        for (std::size_t i = 0; i < line.size() && (isOpen || !isQuoted);) {
            char const c = line[i++];
            if (c == '\\' && i == line.size()) {
                line = takeLine();
                i = 0;
            } else if (c == '\\') {
                i += takeEscape(line.substr(i), text);
            } else if (isQuoted && c == quote_) {
                isOpen = false;
                if (line.find_first_not_of(blanks, i) != std::string_view::npos)
                    complain("behind the closing quote stands more");
            } else {
                text += c;
            }
        }
        if (isOpen)
            complain("the closing quote is missing");
        checkText(text);
        if (mistakes_.size() != before)
            return std::nullopt;
        return text;
    }

    // Appends what an escape stands for, and gives its length without the backslash.
    std::size_t takeEscape(std::string_view escape, std::string& text)
    {
        if (isOctal(escape.front())) {
            unsigned value = 0;
            std::size_t length = 0;
            for (; length < 3 && length < escape.size() && isOctal(escape[length]); ++length)
                value = value * 8 + static_cast<unsigned>(escape[length] - '0');
            if (value > 0xFF)
                complain("\"\\" + std::string(escape.substr(0, length)) + "\" is more than a byte");
            else
                text += static_cast<char>(value);
            return length;
        }
        char character = escape.front();
        for (Escape const& known : escapes)
            if (known.letter == escape.front())
                character = known.character;
        text += character;
        return 1;
    }

    void checkText(std::string const& text)
    {
        if (text.find('\0') != std::string::npos)
            complain("a text cannot hold a NUL");
        for (std::string_view rest = text; !rest.empty();) {
            auto const step = zk::logging::takeUtf8(rest);
            if (step.state != zk::logging::Utf8Step::State::valid) {
                complain("the text is not in UTF-8 (--from tells another code set)");
                return;
            }
            rest.remove_prefix(step.length);
        }
    }

    std::string_view rest_;
    Messages& messages_;
    std::map<MessageId, std::size_t> lines_;  // where the messages of this source stand
    std::vector<Mistake> mistakes_;
    std::size_t line_ = 0;
    std::size_t begin_ = 0;  // of the line that is at work, and of those joined with it
    std::int32_t set_ = 1;
    char quote_ = '\0';
};

void appendEscaped(std::string& source, std::string const& text)
{
    for (char const c : text) {
        char letter = c == '"' ? '"' : '\0';
        for (Escape const& known : escapes)
            if (known.character == c)
                letter = known.letter;
        if (letter != '\0') {
            source += '\\';
            source += letter;
        } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            std::array<char, 8> octal;
            std::snprintf(octal.data(), octal.size(), "\\%03o", static_cast<unsigned>(c));
            source += octal.data();
        } else {
            source += c;
        }
    }
}

}  // namespace

std::vector<Mistake> readSource(std::string_view source, Messages& messages)
{
    return Reader(source, messages).read();
}

std::string sourceOf(Messages const& messages)
{
    std::string source("$quote \"\n");
    std::int32_t set = 0;
    for (auto const& [id, text] : messages) {
        if (id.first != set) {
            set = id.first;
            source += "$set " + std::to_string(set) + '\n';
        }
        source += std::to_string(id.second) + " \"";
        appendEscaped(source, text);
        source += "\"\n";
    }
    return source;
}

}  // namespace zkgencat
