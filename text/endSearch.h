// endSearch.h: searches a text for an expression again and again, each time in what is left of it.
//
//   zk::EndSearch search("[0-9]+", false, "a1b22");
//   search.next();                         // true; text.substr(search.start(), ...) is "1"
//   search.next();                         // true; "22"
//
// What is left is a text of its own: `^` matches at its start.
#pragma once

#include "text/regexpEngine.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace zk {

/// The matches of an expression in a text, from the first one on.
///
/// An expression that does not compile is reported as Regexp does it, and never matches.
class EndSearch {
public:
    /// `text`, NUL-terminated, must live on.
    EndSearch(char const* pattern, bool ignoresCase, std::string_view text);

    /// Finds the next match behind the last one.
    bool next() { return isLiteral_ ? nextLiteral() : nextMatch(); }

    /// Whether the expression stands for one character and no other text, and which one.
    bool isOneCharacter() const { return literal_.size() == 1; }
    char character() const { return literal_[0]; }

    // Where the match stands, as positions in the text.
    std::size_t start() const { return start_; }
    std::size_t end() const { return end_; }
    /// What stands between the match before and this one.
    std::string_view before() const { return text_.substr(searched_, start_ - searched_); }
    /// What stands behind the match.
    std::string_view rest() const { return text_.substr(end_); }

    /// What a group matched; empty if it took no part.
    std::string_view group(int n) const
    {
        if (isLiteral_)
            return n == 0 ? text_.substr(start_, end_ - start_) : std::string_view();
        if (!program_->startp[n])
            return {};
        return text_.substr(static_cast<std::size_t>(program_->startp[n] - text_.data()),
                            static_cast<std::size_t>(program_->endp[n] - program_->startp[n]));
    }

    /// How many groups in a row, from 0 on, took part.
    int groups() const
    {
        int count = isLiteral_ ? 1 : 0;
        while (!isLiteral_ && count < NSUBEXP && program_->startp[count])
            ++count;
        return count;
    }

private:
    struct Free {
        void operator()(void* block) const { std::free(block); }
    };

    bool nextLiteral();
    bool nextMatch();

    std::string_view text_;
    bool ignoresCase_;
    std::unique_ptr<regexp, Free> program_;
    bool isLiteral_ = false;
    std::string literal_;
    std::size_t searched_ = 0;
    std::size_t start_ = 0;
    std::size_t end_ = 0;
};

}  // namespace zk
