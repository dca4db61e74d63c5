// SPString::s: replaces the matches of an expression.
#include "text/Regexp.h"
#include "text/SPString.h"
#include "text/options.h"

#include <cctype>
#include <cstring>
#include <string>
#include <vector>

namespace {

// A replacement, taken apart into literal text and groups once for all matches.
class Replacement {
public:
    explicit Replacement(char const* text)
    {
        if (std::strchr(text, '$'))
            parse(text);
        else
            literals_ = text;
        endLiteral(noGroup);
    }

    // Appends what replaces the last match of `expression`, in `text`.
    void expand(std::string& out, char const* text, Regexp const& expression) const
    {
        char const* literal = literals_.data();
        for (Piece const& piece : pieces_) {
            out.append(literal, piece.literalLength);
            literal += piece.literalLength;
            if (piece.group == noGroup)
                continue;
            Range const range = expression.getgroup(piece.group);
            if (range.length() > 0)
                out.append(text + range.start(), static_cast<std::size_t>(range.length()));
        }
    }

private:
    static constexpr int noGroup = -1;

    // Some literal text and then a group.
    struct Piece {
        std::size_t literalLength;
        int group;
    };

    void parse(char const* text)
    {
        for (; *text != '\0'; ++text) {
            if (*text == '$' && text[1] == '&') {
                endLiteral(0);
                ++text;
            } else if (*text == '$' && text[1] >= '0' && text[1] <= '9') {
                endLiteral(text[1] - '0');
                ++text;
            } else {
                if (*text == '\\' && (text[1] == '\\' || text[1] == '$'))
                    ++text;
                literals_ += *text;
            }
        }
    }

    void endLiteral(int group)
    {
        pieces_.push_back({literals_.size() - ended_, group});
        ended_ = literals_.size();
    }

    std::string literals_;
    std::size_t ended_ = 0;
    std::vector<Piece> pieces_;
};

std::string lowerCased(char const* text)
{
    std::string lowered(text);
    for (char& c : lowered)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lowered;
}

// Searches one end of a text after the other, each as a text of its own.
//
// Where case is ignored the text is lower-cased once: to do so for each end
// would take quadratic time.
class EndSearch {
public:
    EndSearch(Regexp& expression, char const* pattern, char const* text, bool ignoresCase)
        : expression_(&expression), text_(text)
    {
        if (ignoresCase) {
            loweredText_ = lowerCased(text);
            text_ = loweredText_.c_str();
            loweredExpression_.emplace_back(lowerCased(pattern).c_str());
            expression_ = &loweredExpression_.front();
        }
    }

    bool matchFrom(std::size_t start) { return expression_->match(text_ + start) != 0; }
    Regexp const& expression() const { return *expression_; }

private:
    Regexp* expression_;
    char const* text_;
    std::string loweredText_;
    std::vector<Regexp> loweredExpression_;
};

}  // namespace

int SPString::s(char const* pattern, char const* replacement, char const* opts)
{
    bool const ignoresCase = zk::hasOption(opts, 'i');
    Regexp expression(pattern, ignoresCase);
    if (!expression.match(*this))
        return 0;
    Replacement const parts(replacement ? replacement : "");
    char const* const text = *this;
    Range const first = expression.getgroup(0);
    auto const start = static_cast<std::size_t>(first.start());
    auto const matched = static_cast<std::size_t>(first.length());
    std::size_t const end = start + matched;

    std::string out(text, start);
    parts.expand(out, text, expression);
    std::size_t const replaced = out.size() - start;
    if (!zk::hasOption(opts, 'g') || end >= length()) {
        text_.remove(start, matched);
        text_.insert(start, out.data() + start, replaced);
        return 1;
    }

    int count = 1;
    std::size_t done = end;
    out.reserve(length() + length() / 8);
    EndSearch search(expression, pattern, text, ignoresCase);
    for (bool progress = end > 0; progress && done < length() && search.matchFrom(done); ++count) {
        Range const match = search.expression().getgroup(0);
        out.append(text + done, static_cast<std::size_t>(match.start()));
        parts.expand(out, text + done, search.expression());
        done += static_cast<std::size_t>(match.end() + 1);
        progress = match.end() >= 0;
    }
    out.append(text + done, length() - done);

    // The buffer grows as if what stands behind the first match had been put back first, and the match
    // replaced then.
    std::size_t size = text_.allocated_;
    std::size_t const withoutFirst = out.size() - replaced + matched;
    if (withoutFirst >= size)
        size = withoutFirst + text_.step_;
    if (out.size() >= size)
        size = out.size() + text_.step_;
    text_.assign(out.data(), out.size(), size);
    return count;
}
