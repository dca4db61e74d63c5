#include "text/CWildCard.h"

#include "text/Regexp.h"
#include "text/SPString.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

namespace {

// What means something in an expression and nothing in a pattern.
constexpr std::string_view escaped = "$()+.[\\]^|";

char* allocate(std::size_t size)
{
    void* const block = std::malloc(size);
    if (!block)
        throw std::bad_alloc();
    return static_cast<char*>(block);
}

}  // namespace

CWildCard::CWildCard(char const* pattern, int caseSensitive, int matchEnd, int matchStart)
    : caseSensitive_(caseSensitive), matchEnd_(matchEnd), matchStart_(matchStart)
{
    BuildTheRePattern(pattern);
}

CWildCard::CWildCard(CWildCard const& other)
    : caseSensitive_(other.caseSensitive_), matchEnd_(other.matchEnd_), matchStart_(other.matchStart_)
{
    char const* const source = other.regexp_ ? other.regexp_ : "";
    std::size_t const size = std::strlen(source) + 1;
    regexp_ = allocate(size);
    std::memcpy(regexp_, source, size);
}

CWildCard::CWildCard(CWildCard&& other) noexcept
    : regexp_(std::exchange(other.regexp_, nullptr)), caseSensitive_(other.caseSensitive_),
      matchEnd_(other.matchEnd_), matchStart_(other.matchStart_)
{
}

CWildCard& CWildCard::operator=(CWildCard other) noexcept
{
    std::swap(regexp_, other.regexp_);
    caseSensitive_ = other.caseSensitive_;
    matchEnd_ = other.matchEnd_;
    matchStart_ = other.matchStart_;
    return *this;
}

CWildCard::~CWildCard()
{
    std::free(regexp_);
}

int CWildCard::match(char const* name) const
{
    Regexp expression(regexp_ ? regexp_ : "", caseSensitive_ == 0);
    return SPString(name).m(expression);
}

CString CWildCard::getRegexpPattern() const
{
    return CString(regexp_);
}

void CWildCard::BuildTheRePattern(char const* pattern)
{
    pattern = pattern ? pattern : "";
    // Two for each character, one for either end and the terminator.
    char* const built = allocate(2 * std::strlen(pattern) + 3);
    char* out = built;
    if (matchStart_ != 0)
        *out++ = '^';
    for (char const* at = pattern; *at != '\0'; ++at) {
        bool const isWild = *at == '*' || *at == '?';
        if (isWild && at > pattern && at[-1] == '\\') {
            out[-1] = *at;  // what stood there is the second of the two backslashes
        } else if (*at == '*') {
            *out++ = '.';
            *out++ = '*';
        } else if (*at == '?') {
            *out++ = '.';
        } else {
            if (escaped.find(*at) != escaped.npos)
                *out++ = '\\';
            *out++ = *at;
        }
    }
    if (matchEnd_ != 0)
        *out++ = '$';
    *out = '\0';
    std::free(std::exchange(regexp_, built));
}
