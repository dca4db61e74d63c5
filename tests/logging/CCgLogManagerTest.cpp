#include "logging/CCgInternalError.h"
#include "tests/logging/Toolkit.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class CCgLogManager : public ToolkitTest { };

std::vector<std::string> listenersOf(char const* name)
{
    Owned const object(ccg_getObject(name, nullptr));
    std::vector<std::string> names;
    for (CCgObject const* const listener : ccg_getListeners(object.get()))
        names.push_back(listener->name);
    return names;
}

TEST_F(CCgLogManager, startsWithoutAFile)
{
    EXPECT_TRUE(ccg_initManager(nullptr));

    EXPECT_THAT(listenersOf("cclog.errorLogger"), ElementsAre("cclog.defaultConsole"));
    Owned const console = object("cclog.defaultConsole");
    EXPECT_EQ(console->objClass->name, "ccg_consolehandler");
    EXPECT_EQ(console->formatter->name, "cclog.defaultFormatter");
}

TEST_F(CCgLogManager, thatIsStartedStaysAsItIs)
{
    folder_.write("a", "x.className=ccg_basiclogger\n");
    folder_.write("b", "x.className=ccg_levelfilter\n");

    EXPECT_TRUE(ccg_initManager(folder_.path("a").c_str()));
    EXPECT_TRUE(ccg_initManager(folder_.path("b").c_str()));

    EXPECT_EQ(object("x")->objClass->name, "ccg_basiclogger");
}

TEST_F(CCgLogManager, doesNotStartWithAFileThatIsMissing)
{
    testing::internal::CaptureStderr();
    std::string const path = folder_.path("missing");

    EXPECT_FALSE(ccg_initManager(path.c_str()));

    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "CCG0051E The log manager could not read the properties file " + path + ".\n");
    EXPECT_EQ(ccg_getObject("a", "ccg_basiclogger"), nullptr);
}

TEST_F(CCgLogManager, doesNotStartWithAMalformedFile)
{
    for (char const* const content :
         {"justkey=1\n", "justkey", "a.b=1\njustkey\n", ".b=1\n", "a.=1\n", "/.b=1\n"}) {
        folder_.write("bad", content);
        testing::internal::CaptureStderr();

        EXPECT_FALSE(ccg_initManager(folder_.path("bad").c_str())) << content;

        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("CCG0051E")) << content;
    }
}

TEST_F(CCgLogManager, startsAnewAfterItWasStopped)
{
    start("a.className=ccg_basiclogger\n");
    EXPECT_NE(object("a"), nullptr);
    ccg_shutdownManager();
    ccg_shutdownManager();
    EXPECT_EQ(ccg_getObject("a", "ccg_basiclogger"), nullptr);
    EXPECT_THAT(ccg_getClassNames(CCG_LOGGER), IsEmpty());

    start();

    EXPECT_EQ(object("a"), nullptr);
    EXPECT_THAT(errorKeys(), ElementsAre(63));
}

TEST_F(CCgLogManager, errorLoggerIsConfiguredByTheFile)
{
    folder_.write("a",
                  "cclog.errorLogger.level=WARN\ncclog.errorLogger.listenerNames=h\n"
                  "h.className=ccg_consolehandler\n");

    ASSERT_TRUE(ccg_initManager(folder_.path("a").c_str()));

    EXPECT_EQ(object("cclog.errorLogger")->level, 5000);
    EXPECT_THAT(listenersOf("cclog.errorLogger"), ElementsAre("h"));
    EXPECT_EQ(ccg_getObject("cclog.defaultConsole", nullptr), nullptr);
}

TEST_F(CCgLogManager, defaultConsoleKeepsTheFormatterThatTheFileGivesIt)
{
    folder_.write("a", "cclog.defaultConsole.formatterName=x\nx.className=ccg_xmlformatter\n");

    ASSERT_TRUE(ccg_initManager(folder_.path("a").c_str()));

    EXPECT_EQ(object("cclog.defaultConsole")->formatter->name, "x");
}

TEST_F(CCgLogManager, reportsGoToStandardOutputUnlessTheFileSaysOtherwise)
{
    ASSERT_TRUE(ccg_initManager(nullptr));
    testing::internal::CaptureStdout();

    ccg_getObject("x", nullptr);

    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                HasSubstr(" CCGBC0063W A class must be specified before object 'x' can be created.\n"));
}

TEST_F(CCgLogManager, reportBelowTheErrorLoggersLevelIsDropped)
{
    start();
    Owned const errorLogger = object("cclog.errorLogger");
    ccg_setProperty(errorLogger.get(), "level", "ERROR");

    ccg_internalError(5000, 900, "warning", 0);
    ccg_internalError(6000, 901, "error %s", CCG_TEXT, "text", 0);

    EXPECT_THAT(texts("errors"), ElementsAre("error text"));
    EXPECT_EQ(records("errors")[0].level, 6000);
}

TEST_F(CCgLogManager, reportWhileItIsStoppedIsDropped)
{
    ccg_internalError(6000, 900, "error", 0);

    EXPECT_THAT(texts("errors"), IsEmpty());
}

TEST_F(CCgLogManager, failedResultIsReportedWithItsText)
{
    start();

    zk::logging::reportResult({});
    zk::logging::reportResult({'p', 2});

    ASSERT_THAT(errorKeys(), ElementsAre(0));
    EXPECT_EQ(records("errors")[0].text, zk::logging::textOf({'p', 2}));
    EXPECT_EQ(records("errors")[0].level, 5000);
}

TEST_F(CCgLogManager, reportMadeWhileOneIsDeliveredIsDropped)
{
    start("loop.className=failing\n");
    CCgHandlerEntries entries;
    entries.handle = [](CCgObject* handler, CCgEvent* event) {
        keepRecord(handler, event);
        ccg_internalError(6000, 902, "failed while reporting", 0);
    };
    ccg_registerHandler("failing", nullptr, entries, {});
    Owned const errorLogger = object("cclog.errorLogger");
    ccg_setProperty(errorLogger.get(), "listenerNames", "loop");

    ccg_internalError(6000, 901, "first", 0);
    ccg_internalError(6000, 903, "second", 0);

    EXPECT_THAT(texts("loop"), ElementsAre("first", "second"));
}

TEST_F(CCgLogManager, errorLoggerWithoutListenersEndsNowhere)
{
    start();
    Owned const errorLogger = object("cclog.errorLogger");
    ccg_setProperty(errorLogger.get(), "listenerNames", "");

    ccg_internalError(6000, 901, "lost", 0);
    ccg_error(errorLogger.get(), nullptr, 0, 0, "lost too", 0);

    EXPECT_THAT(texts("errors"), IsEmpty());
}

TEST_F(CCgLogManager, lockIsTakenAgainByTheThreadThatHoldsIt)
{
    ASSERT_TRUE(ccg_lock());
    EXPECT_TRUE(ccg_lock());
    ccg_unlock();
    ccg_unlock();
}

TEST_F(CCgLogManager, threadsLogStartAndStopAtOnce)
{
    folder_.write("p", "a.className=ccg_basiclogger\na.level=INFO\n");
    std::string const path = folder_.path("p");
    std::atomic<bool> done{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back([&] {
            while (!done) {
                Owned const logger = object("a", "ccg_basiclogger");
                ccg_min(logger.get(), __FILE__, nullptr, __LINE__, "rejected", 0);
                bool const on = ccg_isLoggable(logger.get(), 3000);
                EXPECT_FALSE(on);
            }
        });

    for (int i = 0; i < 50; ++i) {
        ASSERT_TRUE(ccg_initManager(path.c_str()));
        Owned const logger = object("a");
        ccg_setProperty(logger.get(), "level", i % 2 ? "WARN" : "ERROR");
        ccg_shutdownManager();
    }
    done = true;
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace
