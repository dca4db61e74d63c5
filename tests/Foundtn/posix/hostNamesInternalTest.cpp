#include "Foundtn/util/hostNames.h"

#include "tests/support/FaultInjector.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace zk::test {
namespace {

// The machine has this name.
class NamedMachine : public Interceptor<&SystemCalls::gethostname, NamedMachine> {
public:
    explicit NamedMachine(std::string name) : name_(std::move(name)) { }

    template <class Result, class Call>
    Result intercept(Call, char* name, std::size_t room)
    {
        std::strncpy(name, name_.c_str(), room);
        return 0;
    }

private:
    std::string const name_;
};

TEST(HostNameOfThisMachine, fitsInto63BytesWithItsNul)
{
    for (std::size_t const length : {1u, 62u, 63u, 64u}) {
        std::string const name(length, 'x');
        NamedMachine const machine(name);

        EXPECT_STREQ(zkGetLocalHostName(), length < 63 ? name.c_str() : "") << length;
    }
}

TEST(HostNameOfThisMachine, isEmptyWhereTheSystemDoesNotTell)
{
    FaultInjector<&SystemCalls::gethostname> const fault({.error = EFAULT});

    EXPECT_STREQ(zkGetLocalHostName(), "");
}

TEST(HostNameOfThisMachine, standsForAnEmptyName)
{
    NamedMachine const machine("localhost");

    EXPECT_STREQ(zkConvertHostnameToIP(""), "127.0.0.1");
}

}  // namespace
}  // namespace zk::test
