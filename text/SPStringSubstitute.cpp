// SPString::s: replaces the matches of an expression.
#include "text/SPString.h"
#include "text/endSearch.h"
#include "text/options.h"

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

    // Appends what replaces the match that `search` has found.
    void expand(std::string& out, zk::EndSearch const& search) const
    {
        char const* literal = literals_.data();
        for (Piece const& piece : pieces_) {
            out.append(literal, piece.literalLength);
            literal += piece.literalLength;
            if (piece.group != noGroup)
                out.append(search.group(piece.group));
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

}  // namespace

int SPString::s(char const* pattern, char const* replacement, char const* opts)
{
    zk::EndSearch search(pattern, zk::hasOption(opts, 'i'), {*this, length()});
    if (!search.next())
        return 0;
    Replacement const parts(replacement ? replacement : "");
    std::size_t const start = search.start();
    std::size_t const matched = search.end() - start;

    std::string out;
    parts.expand(out, search);
    std::size_t const replaced = out.size();
    if (!zk::hasOption(opts, 'g') || search.end() >= length()) {
        insert(start, matched, out.data(), replaced);
        return 1;
    }

    out.reserve(length() + length() / 8);
    out.insert(0, *this, start);
    int count = 1;
    for (bool progress = search.end() > 0; progress && search.end() < length() && search.next(); ++count) {
        out.append(search.before());
        parts.expand(out, search);
        progress = search.end() > search.start();
    }
    out.append(search.rest());

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
