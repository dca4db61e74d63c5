#include "text/endSearch.h"

#include "platform/classlib/textSearch.h"
#include "text/Regexp.h"
#include "text/regexpPlan.h"

#include <cstring>

namespace zk {

namespace {

// The text that `pattern`, which compiles, stands for; empty if it stands for more than one, or for
// the empty text.
std::string literalOf(std::string_view pattern)
{
    std::string literal;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '\\')
            ++i;
        else if (std::strchr("^$.[()|?+*", pattern[i]))
            return {};
        literal += pattern[i];
    }
    return literal;
}

}  // namespace

EndSearch::EndSearch(char const* pattern, bool ignoresCase, std::string_view text)
    : text_(text), ignoresCase_(ignoresCase)
{
    RegexpFault fault;
    if (pattern)
        program_.reset(ignoresCase ? compileFolding(pattern, fault) : regcomp(pattern, fault));
    if (!program_) {
        Regexp(pattern, ignoresCase).match("");  // which says what is wrong
        return;
    }
    if (!ignoresCase)
        literal_ = literalOf(pattern);
    isLiteral_ = !literal_.empty();
}

bool EndSearch::nextLiteral()
{
    std::ptrdiff_t const place = findFirst(text_, literal_, end_);
    if (place < 0)
        return false;
    searched_ = end_;
    start_ = static_cast<std::size_t>(place);
    end_ = start_ + literal_.size();
    return true;
}

bool EndSearch::nextMatch()
{
    if (!program_)
        return false;
    char const* const subject = text_.data() + end_;
    RegexpOutcome outcome;
    bool const folded = ignoresCase_ && matchFolded(*program_, subject, outcome);
    if (!(folded ? outcome == RegexpOutcome::match : regexec(program_.get(), subject) == 1))
        return false;
    searched_ = end_;
    start_ = static_cast<std::size_t>(program_->startp[0] - text_.data());
    end_ = static_cast<std::size_t>(program_->endp[0] - text_.data());
    return true;
}

}  // namespace zk
