#include "text/endSearch.h"

#include "platform/classlib/textSearch.h"
#include "text/Regexp.h"

#include <cctype>
#include <cstring>

namespace zk {

namespace {

std::string lowerCased(std::string_view text)
{
    std::string lowered(text);
    for (char& c : lowered)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lowered;
}

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
    : text_(text), subject_(text.data())
{
    std::string const expression = ignoresCase && pattern ? lowerCased(pattern) : pattern ? pattern : "";
    RegexpFault fault;
    program_.reset(pattern ? regcomp(expression.c_str(), fault) : nullptr);
    if (!program_) {
        Regexp(pattern, ignoresCase).match("");  // which says what is wrong
        return;
    }
    if (ignoresCase) {
        lowered_ = lowerCased(text);
        subject_ = lowered_.c_str();
    }
    literal_ = literalOf(expression);
    isLiteral_ = !literal_.empty();
}

bool EndSearch::nextLiteral()
{
    std::ptrdiff_t const place = findFirst({subject_, text_.size()}, literal_, end_);
    if (place < 0)
        return false;
    searched_ = end_;
    start_ = static_cast<std::size_t>(place);
    end_ = start_ + literal_.size();
    return true;
}

bool EndSearch::nextMatch()
{
    if (!program_ || !regexec(program_.get(), subject_ + end_))
        return false;
    searched_ = end_;
    start_ = static_cast<std::size_t>(program_->startp[0] - subject_);
    end_ = static_cast<std::size_t>(program_->endp[0] - subject_);
    return true;
}

}  // namespace zk
