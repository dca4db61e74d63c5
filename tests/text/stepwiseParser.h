// stepwiseParser.h: the mini parser once more, character by character and without any short cut: the yardstick for
// the one that passes over strings and comments in one go.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zk::test {

class StepwiseParser {
public:
    /// The fields from the first to the last.
    static std::vector<std::string> split(std::string_view text)
    {
        StepwiseParser scan(text);
        scan.separators_ = ",";
        std::vector<std::string> fields;
        std::string closers;
        std::size_t start = 0;
        for (; scan.pos_ < text.size(); ++scan.pos_) {
            char const c = text[scan.pos_];
            int const k = scan.kind(c);
            if (scan.isHard_) {
                scan.checkHardEnd();
            } else if (scan.ifdefs_ >= 1) {
                if (k == 3 || k == 4)
                    scan.checkHardStart();
                else if (k == 6 && !scan.checkIfdefEnd())
                    scan.checkIfdefStart();
            } else if (k == 1) {
                closers += c == '(' ? ')' : c == '[' ? ']' : c == '{' ? '}' : '>';
            } else if (k == 2) {
                bool const isArrow = c == '>' && scan.pos_ > 0 && text[scan.pos_ - 1] == '-';
                if (isArrow || closers.empty())
                    continue;
                if (closers.back() == c) {
                    closers.pop_back();
                } else if (c != '>') {
                    while (!closers.empty() && closers.back() != c)
                        closers.pop_back();
                    if (!closers.empty())
                        closers.pop_back();
                }
            } else if (k == 3 || k == 4) {
                scan.checkHardStart();
            } else if (k == 6) {
                scan.checkIfdefStart();
            } else if (k == 7 && closers.empty()) {
                fields.emplace_back(text.substr(start, scan.pos_ - start));
                start = scan.pos_ + 1;
            }
        }
        fields.emplace_back(text.substr(start));
        return fields;
    }

    struct Label {
        std::string label;
        std::optional<std::string> params;  // nothing: left as they were
    };

    static Label firstLabel(std::string_view text)
    {
        StepwiseParser scan(text);
        scan.joined_ = ":<,>";
        std::size_t start = 0, length = 0, paramsStart = 0, paramsEnd = 0;
        bool isPending = false, isTaken = false, hasParams = false, isFinished = false;
        int angles = 0, count = 0;
        for (; scan.pos_ < text.size(); ++scan.pos_) {
            char const c = text[scan.pos_];
            int const k = scan.kind(c);
            if (scan.isHard_) {
                scan.checkHardEnd();
            } else if (k == 3 || k == 4) {
                isTaken = isTaken || isPending;
                scan.checkHardStart();
            } else if (scan.ifdefs_ >= 1) {
                if (k == 6 && !scan.checkIfdefEnd())
                    scan.checkIfdefStart();
            } else if (k == 6) {
                isTaken = isTaken || isPending;
                scan.checkIfdefStart();
            } else if (!isTaken) {
                if (k == 0) {
                    if (!isPending)
                        start = scan.pos_;
                    isPending = true;
                    ++length;
                    angles += c == '<' ? 1 : c == '>' ? -1 : 0;
                } else if (isPending) {
                    if (angles >= 1 && (c == '\n' || k == 9)) {
                        ++length;
                        continue;
                    }
                    isTaken = true;
                    if (c == '(') {
                        hasParams = true;
                        paramsStart = scan.pos_ + 1;
                        count = 1;
                    }
                }
            } else if (!isFinished) {
                if (hasParams && c == '(') {
                    ++count;
                } else if (hasParams && c == ')') {
                    if (count == 1) {
                        isFinished = true;
                        paramsEnd = scan.pos_;
                    }
                    --count;
                } else if (!hasParams && c == '(') {
                    hasParams = true;
                    paramsStart = scan.pos_ + 1;
                    ++count;
                }
            }
        }
        Label result;
        if (isPending)
            result.label = text.substr(start, length);
        if (isFinished)
            result.params = text.substr(paramsStart, paramsEnd - paramsStart);
        return result;
    }

private:
    explicit StepwiseParser(std::string_view text) : text_(text) { }

    static bool holds(std::string_view characters, char c)
    {
        return characters.find(c) != std::string_view::npos;
    }

    int kind(char c) const
    {
        if (holds(separators_, c))
            return 7;
        bool const isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (isLetter || c == '_' || holds(joined_, c))
            return 0;
        return holds("([{<", c) ? 1
            : holds(")]}>", c)  ? 2
            : holds("'\"", c)   ? 3
            : c == '/'          ? 4
            : holds("*\n", c)   ? 5
            : c == '#'          ? 6
            : holds(" \t\r", c) ? 9
                                : 10;
    }

    char at(std::size_t place) const { return place < text_.size() ? text_[place] : '\0'; }

    bool isWordBehind(std::string_view word) const { return text_.substr(pos_ + 1, word.size()) == word; }

    void checkHardStart()
    {
        char const c = text_[pos_];
        if (kind(c) == 3) {
            isHard_ = true;
            hardEnd_ = c;
        } else if (at(pos_ + 1) == '/' || at(pos_ + 1) == '*') {
            ++pos_;
            isHard_ = true;
            hardEnd_ = text_[pos_] == '/' ? '\n' : '*';
        }
    }

    void checkHardEnd()
    {
        char const c = text_[pos_];
        if (c != hardEnd_)
            return;
        if (kind(c) == 3) {
            std::size_t backslashes = 0;
            while (backslashes < pos_ && text_[pos_ - backslashes - 1] == '\\')
                ++backslashes;
            isHard_ = backslashes % 2 != 0;
        } else if (c == '\n') {
            isHard_ = false;
        } else if (at(pos_ + 1) == '/') {
            ++pos_;
            isHard_ = false;
        }
    }

    bool checkIfdefStart()
    {
        for (std::string_view const word : {"ifdef", "ifndif"}) {
            if (isWordBehind(word)) {
                ++ifdefs_;
                pos_ += word.size();
                return true;
            }
        }
        return false;
    }

    bool checkIfdefEnd()
    {
        if (!isWordBehind("endif"))
            return false;
        --ifdefs_;
        pos_ += 5;
        return true;
    }

    std::string_view text_;
    std::string_view separators_;
    std::string_view joined_;
    std::size_t pos_ = 0;
    int ifdefs_ = 0;
    bool isHard_ = false;
    char hardEnd_ = '\0';
};

}  // namespace zk::test
