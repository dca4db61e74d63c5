#include "text/dateAndUser.h"

#include "platform/os/os.h"
#include "platform/os/posix/systemCalls.h"

#include <gtest/gtest.h>

#include <string>

using namespace zk::os;

namespace {

// The system tells an account whose name has no room where the user is asked for.
class LongAccount {
public:
    LongAccount() : original_(systemCalls().getpwuid_r)
    {
        systemCalls().getpwuid_r = [](uid_t, passwd* entry, char*, std::size_t, passwd** found) {
            static std::string name(300, 'n');
            entry->pw_name = name.data();
            *found = entry;
            return 0;
        };
    }
    ~LongAccount() { systemCalls().getpwuid_r = original_; }
    LongAccount(LongAccount const&) = delete;
    LongAccount& operator=(LongAccount const&) = delete;

private:
    decltype(SystemCalls::getpwuid_r) original_;
};

// What the variable holds in the meantime; null for nothing.
class UserVariable {
public:
    explicit UserVariable(char const* value)
    {
        char before[1024];
        hadValue_ = GetEnvironmentVariableA("USERNAME", before, sizeof before) != 0;
        if (hadValue_)
            before_ = before;
        SetEnvironmentVariableA("USERNAME", value);
    }
    ~UserVariable() { SetEnvironmentVariableA("USERNAME", hadValue_ ? before_.c_str() : nullptr); }
    UserVariable(UserVariable const&) = delete;
    UserVariable& operator=(UserVariable const&) = delete;

private:
    bool hadValue_;
    std::string before_;
};

TEST(CurrentUser, isTheVariablesWhereTheSystemDoesNotTell)
{
    LongAccount const account;
    UserVariable const variable("ada");

    EXPECT_STREQ(omGetCurrentUser(), "ada");
}

TEST(CurrentUser, isTheSystemsWhereItTells)
{
    UserVariable const variable("not this one");

    EXPECT_STRNE(omGetCurrentUser(), "not this one");
}

TEST(CurrentUser, hasUpTo259CharactersFromTheVariable)
{
    LongAccount const account;
    std::string const longest(259, 'u');
    {
        UserVariable const variable(longest.c_str());
        EXPECT_STREQ(omGetCurrentUser(), longest.c_str());
    }
    UserVariable const variable((longest + "u").c_str());

    EXPECT_STREQ(omGetCurrentUser(), "");
}

TEST(CurrentUser, isEmptyWhereNobodyTells)
{
    LongAccount const account;
    UserVariable const variable(nullptr);

    EXPECT_STREQ(omGetCurrentUser(), "");
}

}  // namespace
