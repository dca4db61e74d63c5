#include "text/Regexp.h"

#include "platform/classlib/CString.h"
#include "text/regexpPlan.h"

#include <cstdlib>
#include <iostream>
#include <string>
#include <utility>

namespace {

// The numbers of the texts around a pattern that does not compile.
constexpr unsigned badPatternText = 49972;
constexpr unsigned badPatternAdviceText = 49973;

CString numberedText(unsigned number)
{
    CString text;
    text.LoadString(number);
    return text;
}

regexp* compiled(char const* pattern, bool withoutCase)
{
    if (!withoutCase || !pattern)
        return regcomp(pattern);
    RegexpFault fault;
    regexp* const result = zk::compileFolding(pattern, fault);
    if (!result)
        regerror(fault.message);
    return result;
}

}  // namespace

Regexp::Regexp(char const* pat, int iflg) : program_(compiled(pat, iflg == 1)), target_(nullptr), iflg_(iflg)
{
    if (program_)
        return;
    std::cerr << static_cast<char const*>(numberedText(badPatternText)) << (pat ? pat : "") << "."
              << std::endl;
    std::cerr << static_cast<char const*>(numberedText(badPatternAdviceText)) << std::endl;
}

Regexp::~Regexp()
{
    std::free(program_);
}

Regexp::Regexp(Regexp&& other) noexcept
    : program_(std::exchange(other.program_, nullptr)), target_(std::exchange(other.target_, nullptr)),
      iflg_(other.iflg_)
{
}

Regexp& Regexp::operator=(Regexp&& other) noexcept
{
    std::swap(program_, other.program_);
    std::swap(target_, other.target_);
    std::swap(iflg_, other.iflg_);
    return *this;
}

int Regexp::match(char const* subject)
{
    int const matched = find(subject);
    if (matched)
        target_ = subject;
    return matched;
}

int Regexp::find(char const* subject)
{
    if (iflg_ != 1 || !subject || !program_)
        return regexec(program_, subject);

    RegexpOutcome outcome;
    if (zk::matchFolded(*program_, subject, outcome))
        return outcome == RegexpOutcome::match ? 1 : 0;

    std::string const lowered = zk::CaseFolding::ofLocale().lowerOf(subject);
    int const matched = regexec(program_, lowered.c_str());
    // The copy goes; the groups keep their places in the subject.
    char const* const copy = lowered.c_str();
    auto const rebase = [&](char*& position) {
        if (position)
            position = const_cast<char*>(subject) + (position - copy);
    };
    for (int group = 0; matched && group < NSUBEXP; ++group) {
        rebase(program_->startp[group]);
        rebase(program_->endp[group]);
    }
    return matched;
}

int Regexp::groups() const
{
    int count = 0;
    while (program_ && count < NSUBEXP && program_->startp[count])
        ++count;
    return count;
}

Range Regexp::getgroup(int n) const
{
    if (!program_ || n < 0 || n >= NSUBEXP || !program_->startp[n])
        return Range();
    auto const offset = [this](char const* position) {
        return static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(position) -
                                         reinterpret_cast<std::uintptr_t>(target_));
    };
    return Range(offset(program_->startp[n]), offset(program_->endp[n]) - 1);
}
