#include "logging/util/CxTrace.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

template <class Call>
std::string printed(Call call)
{
    testing::internal::CaptureStderr();
    call();
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(CxTrace, indentsWhatIsPrintedWithin)
{
    std::string const text = printed([] {
        CxTraceEnter("load");
        CxTrace("12 units");
        CxTraceEnter("parse");
        CxTraceLeave("parse");
        CxTraceLeave("load");
    });

    EXPECT_EQ(text,
              "ENTER load\n"
              "   ... 12 units\n"
              "   ENTER parse\n"
              "   LEAVE parse\n"
              "LEAVE load\n");
}

TEST(CxTrace, isNeverIndentedByLessThanNothing)
{
    EXPECT_EQ(printed([] {
                  CxTraceLeave("a");
                  CxTrace("%s");
                  CxTrace(nullptr);
              }),
              "LEAVE a\n... %s\n... \n");
}

TEST(CxTrace, isIndentedInEachThreadByItself)
{
    EXPECT_EQ(printed([] {
                  CxTraceEnter("here");
                  std::thread([] { CxTrace("there"); }).join();
                  CxTraceLeave("here");
              }),
              "ENTER here\n... there\nLEAVE here\n");
}
