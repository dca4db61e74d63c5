#include "Foundtn/util/IAppProfileService.h"

#include "platform/classlib/CWinApp.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace zk::test {
namespace {

// The clock stands far in the future: what was written now is then old enough to be kept.
class LaterClock : public Interceptor<&SystemCalls::clock_gettime, LaterClock> {
public:
    template <class Result, class Call>
    Result intercept(Call call, clockid_t clock, timespec* now)
    {
        Result const result = call(clock, now);
        now->tv_sec += 1000;
        return result;
    }
};

TEST(ProfileServiceReads, lookAtAnUnchangedFileOnceForAShortValue)
{
    TemporaryFolder const folder;
    folder.write("p.ini",
                 "[S]\n10=" + std::string(10, 'x') + "\n259=" + std::string(259, 'x') +
                     "\n260=" + std::string(260, 'x') + "\n2000=" + std::string(2000, 'x') + "\n");
    std::string line = "-iniFile=" + folder.path("p.ini");
    CWinApp host("host");
    host.m_lpCmdLine = line.data();
    IAppProfileService service(true);
    service.InitProfileName("p.ini", nullptr, &host);
    LaterClock const clock;
    service.GetProfileStringA("S", "10", nullptr);

    struct {
        int length;
        int expected;
    } const rows[] = {{10, 1}, {259, 1}, {260, 2}, {2000, 3}};
    for (auto const& row : rows) {
        FaultInjector<&SystemCalls::stat> const stats({.onCall = always});
        FaultInjector<&SystemCalls::open> const opens({.onCall = always});
        std::string const key = std::to_string(row.length);
        EXPECT_EQ(service.GetProfileStringA("S", key.c_str(), nullptr).GetLength(), row.length);
        EXPECT_EQ(stats.calls(), row.expected) << row.length;
        EXPECT_EQ(opens.calls(), 0) << row.length;
    }
}

}  // namespace
}  // namespace zk::test
