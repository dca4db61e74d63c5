// expressionSupport.h: what the tests of expressions share.
#pragma once

#include "text/regexpEngine.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace zk::test {

struct FreeExpression {
    void operator()(regexp* expression) const { std::free(expression); }
};
using Expression = std::unique_ptr<regexp, FreeExpression>;

inline Expression compiled(std::string const& pattern)
{
    RegexpFault fault;
    Expression result(regcomp(pattern.c_str(), fault));
    EXPECT_NE(result, nullptr) << pattern << ": " << (fault.message ? fault.message : "");
    return result;
}

/// A copy of a small record at another place, where it has no plan.
class RecordCopy {
public:
    explicit RecordCopy(std::string const& pattern) : block_(33200 / sizeof(std::uint64_t))
    {
        Expression const original = compiled(pattern);
        std::memcpy(block_.data(), original.get(), offsetof(regexp, program) + 200);
        if (original->regmust)
            get()->regmust = get()->program + (original->regmust - original->program);
    }
    regexp* get() { return reinterpret_cast<regexp*>(block_.data()); }

private:
    std::vector<std::uint64_t> block_;
};

/// The groups that took part, as "0(1,4) 2(3,4)": number, start, one past the end.
inline std::string groupsIn(regexp const& expression, char const* subject)
{
    std::string result;
    for (int group = 0; group < NSUBEXP; ++group) {
        if (!expression.startp[group])
            continue;
        result += (result.empty() ? "" : " ") + std::to_string(group) + "(" +
            std::to_string(expression.startp[group] - subject) + "," +
            std::to_string(expression.endp[group] - subject) + ")";
    }
    return result;
}

/// The groups of the first match, or "no match".
inline std::string groupsOfMatch(std::string const& pattern, std::string const& subject)
{
    Expression const expression = compiled(pattern);
    if (!expression || !regexec(expression.get(), subject.c_str()))
        return "no match";
    return groupsIn(*expression, subject.c_str());
}

/// What the call writes to the standard error stream.
template <class Call>
std::string standardErrorOf(Call call)
{
    testing::internal::CaptureStderr();
    call();
    std::string result = testing::internal::GetCapturedStderr();
    for (std::size_t at; (at = result.find("\r\n")) != std::string::npos;)
        result.erase(at, 1);
    return result;
}

}  // namespace zk::test
