#include "logging/CCgLogger.h"
#include "logging/CCgMsgIdFilter.h"
#include "logging/util/CxSystem.h"
#include "logging/util/CxThread.h"
#include "tests/logging/Toolkit.h"

#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <cstdarg>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char const* loggerToRecorder =
    "a.className=ccg_basiclogger\na.listenerNames=recorder\na.level=ALL\n";

std::string propertyOf(Record const& record, char const* key)
{
    std::string const* const value = record.properties.find(key);
    return value ? *value : "(none)";
}

class CCgLoggers : public ToolkitTest { };

TEST(CCgIsLoggable, comparesTheLevels)
{
    CCgObject logger;
    struct Row {
        CCgLevel limit, level;
        bool passes;
    };
    Row const rows[] = {
        {3000, 3000, true},  {3000, 2999, false}, {3000, 7000, true},  {3000, -9999, true},
        {9999, 7000, false}, {9999, 9999, true},  {9999, -9999, true}, {-9999, 1000, true},
        {-9999, -5, true},   {0, 0, true},        {0, -1, false},      {-9999, INT_MIN, true},
    };
    for (Row const& row : rows) {
        logger.level = row.limit;
        EXPECT_EQ(ccg_isLoggable(&logger, row.level), row.passes) << row.limit << ' ' << row.level;
    }
    EXPECT_FALSE(ccg_isLoggable(nullptr, -9999));
    logger.logging = false;
    EXPECT_FALSE(ccg_isLoggable(&logger, -9999));
}

TEST_F(CCgLoggers, sendMessagesAtTheLevelOfTheEntry)
{
    start(loggerToRecorder);
    Owned const a = object("a");

    ccg_always(a.get(), "catalog", 1, 10, "always %d", CCG_INT32, 1, 0);
    ccg_info(a.get(), "catalog", 1, 11, "info", 0);
    ccg_warn(a.get(), "catalog", 1, 12, "warn", 0);
    ccg_error(a.get(), "catalog", 1, 13, "error", 0);
    ccg_fatal(a.get(), "catalog", 1, 14, "fatal", 0);

    EXPECT_THAT(texts(), ElementsAre("always 1", "info", "warn", "error", "fatal"));
    CCgLevel const levels[] = {-9999, 4000, 5000, 6000, 7000};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(records("recorder")[i].level, levels[i]);
        EXPECT_EQ(records("recorder")[i].key, 10 + i);
        EXPECT_TRUE(records("recorder")[i].isMessage);
    }
}

TEST_F(CCgLoggers, sendTracesWithTheirPlace)
{
    start(loggerToRecorder);
    Owned const a = object("a");

    ccg_min(a.get(), "model.cpp", "read", 42, "min %s", CCG_TEXT, "text", 0);
    ccg_mid(a.get(), "model.cpp", nullptr, 43, "mid", 0);
    ccg_max(a.get(), nullptr, "read", 44, "max", 0);
    ccg_trace(a.get(), "plain", 0);

    EXPECT_THAT(texts(), ElementsAre("min text", "mid", "max", "plain"));
    auto const& seen = records("recorder");
    CCgLevel const levels[] = {3000, 2000, 1000, -9999};
    char const* const places[][3] = {{"model.cpp", "42", "read"},
                                     {"model.cpp", "43", "(none)"},
                                     {"(none)", "(none)", "read"},
                                     {"(none)", "(none)", "(none)"}};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(seen[i].level, levels[i]);
        EXPECT_FALSE(seen[i].isMessage);
        EXPECT_EQ(seen[i].key, 0);
        EXPECT_EQ(propertyOf(seen[i], "ccg_prop_srcfile"), places[i][0]);
        EXPECT_EQ(propertyOf(seen[i], "ccg_prop_srcline"), places[i][1]);
        EXPECT_EQ(propertyOf(seen[i], "ccg_prop_srcfunction"), places[i][2]);
    }
}

using MessageList = void (*)(CCgObject*, char const*, std::int32_t, std::int32_t, char const*,
                             std::va_list) noexcept;
using TraceList = void (*)(CCgObject*, char const*, char const*, std::int32_t, char const*,
                           std::va_list) noexcept;

void messageList(MessageList send, CCgObject* logger, ...)
{
    std::va_list list;
    va_start(list, logger);
    send(logger, "catalog", 1, 2, "%s", list);
    va_end(list);
}

void traceList(TraceList send, CCgObject* logger, ...)
{
    std::va_list list;
    va_start(list, logger);
    send(logger, "file", nullptr, 2, "%s", list);
    va_end(list);
}

void plainList(CCgObject* logger, ...)
{
    std::va_list list;
    va_start(list, logger);
    ccg_vtrace(logger, "%s", list);
    va_end(list);
}

TEST_F(CCgLoggers, takeListsThatWereStarted)
{
    start(loggerToRecorder);
    Owned const a = object("a");

    for (MessageList const send : {ccg_valways, ccg_vinfo, ccg_vwarn, ccg_verror, ccg_vfatal})
        messageList(send, a.get(), CCG_TEXT, "m", 0);
    for (TraceList const send : {ccg_vmin, ccg_vmid, ccg_vmax})
        traceList(send, a.get(), CCG_TEXT, "t", 0);
    plainList(a.get(), CCG_TEXT, "p", 0);

    EXPECT_THAT(texts(), ElementsAre("m", "m", "m", "m", "m", "t", "t", "t", "p"));
    std::vector<CCgLevel> levels;
    for (Record const& record : records("recorder"))
        levels.push_back(record.level);
    EXPECT_THAT(levels, ElementsAre(-9999, 4000, 5000, 6000, 7000, 3000, 2000, 1000, -9999));
}

TEST_F(CCgLoggers, rejectWhatIsBelowTheirLevel)
{
    start(loggerToRecorder);
    Owned const a = object("a");
    ccg_setProperty(a.get(), "level", "WARN");

    ccg_info(a.get(), nullptr, 0, 0, "info", 0);
    ccg_min(a.get(), nullptr, nullptr, 0, "min", 0);
    ccg_warn(a.get(), nullptr, 0, 0, "warn", 0);

    EXPECT_THAT(texts(), ElementsAre("warn"));
}

TEST_F(CCgLoggers, thatAreOffPassTheAlwaysLevelAlone)
{
    start(loggerToRecorder);
    Owned const a = object("a");
    ccg_setProperty(a.get(), "level", "OFF");

    ccg_fatal(a.get(), nullptr, 0, 0, "fatal", 0);
    ccg_always(a.get(), nullptr, 0, 0, "always", 0);

    EXPECT_THAT(texts(), ElementsAre("always"));
}

TEST_F(CCgLoggers, ofAnUnknownLevelPassEverything)
{
    start(loggerToRecorder);
    Owned const a = object("a");
    ccg_setProperty(a.get(), "level", "whatever");

    ccg_max(a.get(), nullptr, nullptr, 0, "max", 0);

    EXPECT_THAT(texts(), ElementsAre("max"));
}

TEST_F(CCgLoggers, areTheOnlyObjectsThatLog)
{
    start("f.className=ccg_levelfilter\nf.listenerNames=recorder\n");
    Owned const filter = object("f");

    ccg_error(filter.get(), nullptr, 0, 0, "text", 0);
    ccg_error(static_cast<CCgObject*>(nullptr), nullptr, 0, 0, "text", 0);

    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(CCgLoggers, passOnParametersOfEveryType)
{
    start(loggerToRecorder);
    Owned const a = object("a");

    ccg_info(a.get(), nullptr, 0, 0, "%s %d %d %.1f %.2f %c %s", CCG_BOOLEAN, true, CCG_INT32, -1, CCG_LONG,
             5L, CCG_FLOAT, 0.5f, CCG_DOUBLE, 0.25, CCG_CHAR, 'x', CCG_TEXT, "text", 0);

    EXPECT_THAT(texts(), ElementsAre("true -1 5 0.5 0.25 x text"));
}

TEST_F(CCgLoggers, takePropertiesFromTheList)
{
    start(loggerToRecorder);
    Owned const a = object("a");

    ccg_info(a.get(), nullptr, 0, 0, "%s", CCG_PROPERTY_KEY, "k1", CCG_TEXT, "v1", CCG_TEXT, "text",
             CCG_PROPERTY_KEY, "k2", CCG_BOOLEAN, false, CCG_PROPERTY_KEY, "k3", CCG_CHAR, 'A',
             CCG_PROPERTY_KEY, "k4", CCG_DOUBLE, 1.5, CCG_PROPERTY_KEY, "k5", CCG_LONG, -7L, CCG_PROPERTY_KEY,
             nullptr, CCG_INT32, 1, 0);

    EXPECT_THAT(texts(), ElementsAre("text"));
    Record const& seen = records("recorder")[0];
    EXPECT_EQ(propertyOf(seen, "k1"), "v1");
    EXPECT_EQ(propertyOf(seen, "k2"), "false");
    EXPECT_EQ(propertyOf(seen, "k3"), "65");
    EXPECT_EQ(propertyOf(seen, "k4"), "1.500000");
    EXPECT_EQ(propertyOf(seen, "k5"), "-7");
    EXPECT_EQ(seen.properties.size(), 5u);
}

TEST_F(CCgLoggers, takeTheLevelFromTheList)
{
    start(loggerToRecorder);
    Owned const a = object("a");

    for (int const level : {1000, 2000, 3000, 4000, 5000, 6000, 7000, 9999, -9999})
        ccg_info(a.get(), nullptr, 0, 0, "%s", level, CCG_TEXT, "text", 0);
    ccg_info(a.get(), nullptr, 0, 0, "%s", CCG_PROPERTY_KEY, "ignored", 0, CCG_TEXT, "text", 0);

    std::vector<CCgLevel> levels;
    for (Record const& record : records("recorder"))
        levels.push_back(record.level);
    EXPECT_THAT(levels, ElementsAre(1000, 2000, 3000, 4000, 5000, 6000, 7000, 9999, -9999, 0));
    EXPECT_THAT(texts(), testing::Each("text"));
    EXPECT_TRUE(records("recorder")[9].properties.empty());
}

TEST_F(CCgLoggers, reportAMarkerThatIsNoneAndKeepWhatWasRead)
{
    start(loggerToRecorder);
    Owned const a = object("a");

    ccg_info(a.get(), nullptr, 0, 0, "%s", CCG_TEXT, "text", 77, CCG_TEXT, "lost", 0);
    ccg_info(a.get(), nullptr, 0, 0, "plain", CCG_PROPERTY_KEY, "key", CCG_PROPERTY_KEY, "key", 0);

    EXPECT_THAT(texts(), ElementsAre("text", "plain"));
    EXPECT_THAT(errorKeys(), ElementsAre(71, 71));
    EXPECT_EQ(records("errors")[0].level, 6000);
}

void sendNumbers(CCgObject* logger, int count)
{
    // 64 pairs of marker and value, of which the first `count` are read.
    int m[64];
    for (int i = 0; i < 64; ++i)
        m[i] = i < count ? CCG_INT32 : 0;
    ccg_sendMessage(logger, CCG_INFO, nullptr, 0, 0, "%63$d|%1$d", m[0], 1, m[1], 2, m[2], 3, m[3], 4, m[4],
                    5, m[5], 6, m[6], 7, m[7], 8, m[8], 9, m[9], 10, m[10], 11, m[11], 12, m[12], 13, m[13],
                    14, m[14], 15, m[15], 16, m[16], 17, m[17], 18, m[18], 19, m[19], 20, m[20], 21, m[21],
                    22, m[22], 23, m[23], 24, m[24], 25, m[25], 26, m[26], 27, m[27], 28, m[28], 29, m[29],
                    30, m[30], 31, m[31], 32, m[32], 33, m[33], 34, m[34], 35, m[35], 36, m[36], 37, m[37],
                    38, m[38], 39, m[39], 40, m[40], 41, m[41], 42, m[42], 43, m[43], 44, m[44], 45, m[45],
                    46, m[46], 47, m[47], 48, m[48], 49, m[49], 50, m[50], 51, m[51], 52, m[52], 53, m[53],
                    54, m[54], 55, m[55], 56, m[56], 57, m[57], 58, m[58], 59, m[59], 60, m[60], 61, m[61],
                    62, m[62], 63, m[63], 64, 0);
}

TEST_F(CCgLoggers, take63MarkersAndReportTheNext)
{
    start(loggerToRecorder);
    Owned const a = object("a");

    sendNumbers(a.get(), 63);
    EXPECT_THAT(errorKeys(), IsEmpty());
    sendNumbers(a.get(), 64);
    EXPECT_THAT(errorKeys(), ElementsAre(70));

    EXPECT_THAT(texts(), ElementsAre("63|1", "63|1"));
}

TEST_F(CCgLoggers, withoutListenersAreReportedWithEachRecord)
{
    start("a.className=ccg_basiclogger\n");
    Owned const a = object("a");

    ccg_error(a.get(), nullptr, 0, 0, "text", 0);
    ccg_min(a.get(), nullptr, nullptr, 0, "text", 0);
    ccg_max(a.get(), nullptr, nullptr, 0, "rejected", 0);

    EXPECT_THAT(texts("errors"),
                ElementsAre("CCGLG01E No listeners are registered with the logger a.",
                            "CCGLG01E No listeners are registered with the logger a."));
}

TEST_F(CCgLoggers, deliverToAllListenersInOrderByTheirKind)
{
    start("a.className=ccg_basiclogger\na.listenerNames=h1 f l fmt h2\n"
          "h1.className=test_recorder\nh2.className=test_recorder\nfmt.className=ccg_basicformatter\n"
          "f.className=ccg_levelfilter\nf.level=ERROR\nf.listenerNames=ofFilter\n"
          "ofFilter.className=test_recorder\n"
          "l.className=ccg_basiclogger\nl.level=OFF\nl.listenerNames=ofLogger\nofLogger.className=test_"
          "recorder\n");
    Owned const a = object("a");

    ccg_info(a.get(), nullptr, 0, 0, "info", 0);
    ccg_error(a.get(), nullptr, 0, 0, "error", 0);

    EXPECT_THAT(texts("h1"), ElementsAre("info", "error"));
    EXPECT_THAT(texts("h2"), ElementsAre("info", "error"));
    EXPECT_THAT(texts("ofFilter"), ElementsAre("error"));
    EXPECT_THAT(texts("ofLogger"), ElementsAre("info", "error"));  // its level counts where records enter
    EXPECT_THAT(errorKeys(), IsEmpty());
}

TEST_F(CCgLoggers, passOverListenersThatAreOff)
{
    start("a.className=ccg_basiclogger\na.listenerNames=h1 h2\n"
          "h1.className=test_recorder\nh1.logging=off\nh2.className=test_recorder\n");
    Owned const a = object("a");

    ccg_error(a.get(), nullptr, 0, 0, "text", 0);

    EXPECT_THAT(texts("h1"), IsEmpty());
    EXPECT_THAT(texts("h2"), ElementsAre("text"));
}

TEST_F(CCgLoggers, handlersForwardToListenersOfTheirOwn)
{
    start("a.className=ccg_basiclogger\na.listenerNames=h1\nh1.className=test_recorder\nh1.listenerNames=h2\n"
          "h2.className=test_recorder\n");
    Owned const a = object("a");

    ccg_error(a.get(), nullptr, 0, 0, "text", 0);

    EXPECT_THAT(texts("h2"), ElementsAre("text"));
}

TEST_F(CCgLoggers, cycleOfListenersIsCut)
{
    start(
        "a.className=ccg_basiclogger\na.listenerNames=b recorder a\n"
        "b.className=ccg_basiclogger\nb.listenerNames=a h\nh.className=test_recorder\nh.listenerNames=h b\n");
    Owned const a = object("a");

    ccg_error(a.get(), nullptr, 0, 0, "text", 0);

    EXPECT_THAT(texts(), ElementsAre("text"));
    EXPECT_THAT(texts("h"), ElementsAre("text"));
}

TEST_F(CCgLoggers, listenerMayTakeItselfAway)
{
    start("a.className=ccg_basiclogger\na.listenerNames=leaving recorder\nleaving.className=leaver\n");
    CCgHandlerEntries entries;
    entries.handle = [](CCgObject* handler, CCgEvent* event) {
        keepRecord(handler, event);
        Owned const logger(ccg_getObject("a", nullptr));
        ccg_setProperty(logger.get(), "listenerNames", "");
    };
    ccg_registerHandler("leaver", nullptr, entries, {});
    Owned const a = object("a");
    ccg_setProperty(a.get(), "listenerNames", "leaving recorder");

    ccg_error(a.get(), nullptr, 0, 0, "text", 0);

    EXPECT_THAT(texts("leaving"), ElementsAre("text"));
    EXPECT_TRUE(ccg_getListeners(a.get()).empty());
}

TEST_F(CCgLoggers, recordsOfManyThreadsComeOneAtATime)
{
    start(loggerToRecorder);
    Owned const a = object("a");
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&a, thread] {
            for (int i = 0; i < 200; ++i)
                ccg_info(a.get(), nullptr, 0, 0, "%d %d", CCG_INT32, thread, CCG_INT32, i, 0);
        });
    for (int i = 0; i < 100; ++i)
        ccg_setProperty(a.get(), "level", i % 2 ? "ALL" : "INFO");
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(records("recorder").size(), 800u);
}

class CCgPDLoggers : public ToolkitTest { };

TEST_F(CCgPDLoggers, addWhereARecordComesFrom)
{
    start("a.className=ccg_pdlogger\na.listenerNames=recorder\na.organization=O\na.product=P\na.component=C\n"
          "a.client=L\na.productInstance=I\n");
    Owned const a = object("a");

    ccg_error(a.get(), nullptr, 0, 0, "text", 0);

    Record const& seen = records("recorder").at(0);
    std::string host;
    ASSERT_TRUE(CxHostName(host).ok());
    EXPECT_EQ(propertyOf(seen, "organization"), "O");
    EXPECT_EQ(propertyOf(seen, "product"), "P");
    EXPECT_EQ(propertyOf(seen, "component"), "C");
    EXPECT_EQ(propertyOf(seen, "client"), "L");
    EXPECT_EQ(propertyOf(seen, "server"), host);
    EXPECT_EQ(propertyOf(seen, "serverFormat"), "IP");
    EXPECT_EQ(propertyOf(seen, "productInstance"), "I");
    EXPECT_EQ(propertyOf(seen, "processId"), std::to_string(CxProcessId()));
    EXPECT_EQ(propertyOf(seen, "threadId"), std::to_string(CxCurrentThreadId()));
}

TEST_F(CCgPDLoggers, leaveOutWhatIsNotSet)
{
    start("a.className=ccg_pdlogger\na.listenerNames=recorder\na.server=S\na.serverFormat=F\n");
    Owned const a = object("a");

    ccg_error(a.get(), nullptr, 0, 0, "text", 0);

    Record const& seen = records("recorder").at(0);
    EXPECT_EQ(propertyOf(seen, "server"), "S");
    EXPECT_EQ(propertyOf(seen, "serverFormat"), "F");
    EXPECT_EQ(propertyOf(seen, "organization"), "(none)");
    EXPECT_EQ(seen.properties.size(), 4u);
}

TEST_F(CCgPDLoggers, haveALevelLikeOthers)
{
    start("a.className=ccg_pdlogger\na.level=ERROR\n");

    EXPECT_EQ(object("a")->level, 6000);
}

TEST(CCgEvent, derivesItsMessageIdOnce)
{
    CCgEvent event;
    event.message = CCgI18Msg(nullptr, 0, 0, "ABC123E text");
    EXPECT_EQ(event.messageId(), "ABC123E");
    event.message.defaultText = "XYZ456W text";
    EXPECT_EQ(event.messageId(), "ABC123E");

    CCgEvent plain;
    plain.message.defaultText = "plain";
    EXPECT_EQ(plain.messageId(), "");
    EXPECT_EQ(plain.msgId, "");
}

class CCgFilters : public ToolkitTest { };

CCgEvent eventOf(CCgLevel level, char const* text = "", std::int64_t time = 0)
{
    CCgEvent event;
    event.level = level;
    event.time = time;
    event.message.defaultText = text;
    return event;
}

bool accepts(Owned const& filter, CCgEvent event)
{
    return filter->objClass->filter.accept(filter.get(), &event);
}

TEST_F(CCgFilters, ofLevelPassWhatIsSevereEnough)
{
    start();
    Owned const filter = object("f", "ccg_levelfilter");
    struct Row {
        char const* limit;
        CCgLevel level;
        bool passes;
    };
    Row const rows[] = {
        {"INFO", 4000, true}, {"INFO", 3999, false}, {"INFO", -9999, true}, {"ALL", -9999, true},
        {"ALL", -5, true},    {"ALL", 7000, true},   {"OFF", 7000, false},  {"OFF", -9999, true},
    };
    for (Row const& row : rows) {
        ccg_setProperty(filter.get(), "level", row.limit);
        EXPECT_EQ(accepts(filter, eventOf(row.level)), row.passes) << row.limit << ' ' << row.level;
    }
    EXPECT_FALSE(filter->objClass->filter.accept(filter.get(), nullptr));
}

TEST_F(CCgFilters, ofLevelThatWereGivenNonePassEverything)
{
    start();

    EXPECT_TRUE(accepts(object("f", "ccg_levelfilter"), eventOf(-5)));
}

TEST_F(CCgFilters, ofMessageIdBlockWarningsAndInformationAtFirst)
{
    start();
    Owned const filter = object("f", "ccg_msgidfilter");

    EXPECT_FALSE(accepts(filter, eventOf(6000, "CCGBC0070W text")));
    EXPECT_FALSE(accepts(filter, eventOf(6000, "CCGBC0070I text")));
    EXPECT_TRUE(accepts(filter, eventOf(6000, "CCGBC0020E text")));
    EXPECT_TRUE(accepts(filter, eventOf(6000, "text without")));
    EXPECT_FALSE(filter->objClass->filter.accept(filter.get(), nullptr));
}

TEST_F(CCgFilters, ofMessageIdPassOnlyWhatMatchesInTheOtherMode)
{
    start("f.className=ccg_msgidfilter\nf.mode=passthru\nf.msgIds=ABC*\\\t *E \\\n X\n");
    Owned const filter = object("f");

    EXPECT_TRUE(accepts(filter, eventOf(6000, "ABC123W text")));
    EXPECT_TRUE(accepts(filter, eventOf(6000, "XYZ123E text")));
    EXPECT_FALSE(accepts(filter, eventOf(6000, "XYZ123W text")));
    EXPECT_FALSE(accepts(filter, eventOf(6000, "text without")));
}

TEST_F(CCgFilters, ofMessageIdReportAModeThatIsNoneAndBlock)
{
    start("f.className=ccg_msgidfilter\nf.mode=PASSTHRU\n");
    Owned const filter = object("f");

    ccg_setProperty(filter.get(), "mode", "BLOCKS");

    EXPECT_THAT(
        texts("errors"),
        ElementsAre("CCGFF0020W The property 'mode' for message ID filter f was set to unknown value BLOCKS. "
                    "Expected values are 'BLOCK' or 'PASSTHRU'."));
    EXPECT_EQ(records("errors")[0].level, 5000);
    EXPECT_FALSE(accepts(filter, eventOf(6000, "ABC123W text")));
}

TEST_F(CCgFilters, ofMessageIdPassLikeMessagesOncePerRepeatTime)
{
    start("f.className=ccg_msgidfilter\nf.msgIdRepeatTime=1000\n");
    Owned const filter = object("f");

    EXPECT_TRUE(accepts(filter, eventOf(6000, "ABC123E text", 10000)));
    EXPECT_FALSE(accepts(filter, eventOf(6000, "ABC123E text", 10500)));
    EXPECT_TRUE(accepts(filter, eventOf(6000, "ABC124E text", 10500)));
    EXPECT_TRUE(accepts(filter, eventOf(6000, "ABC123E text", 11200)));
    EXPECT_FALSE(accepts(filter, eventOf(6000, "ABC123E text", 12199)));
    EXPECT_TRUE(accepts(filter, eventOf(6000, "ABC123E text", 12200)));
    EXPECT_TRUE(accepts(filter, eventOf(6000, "no id", 12200)));
    EXPECT_TRUE(accepts(filter, eventOf(6000, "no id", 12200)));
}

TEST_F(CCgFilters, ofMessageIdKeepTheRepeatTimeWhenTheNewOneIsNone)
{
    start("f.className=ccg_msgidfilter\nf.msgIdRepeatTime=9223372036854775807\n");
    Owned const filter = object("f");
    ccg_setProperty(filter.get(), "msgIdRepeatTime", "soon");

    EXPECT_TRUE(accepts(filter, eventOf(6000, "ABC123E text", 10000)));
    EXPECT_FALSE(accepts(filter, eventOf(6000, "ABC123E text", 99999999)));
    ccg_setProperty(filter.get(), "msgIdRepeatTime", "0");
    EXPECT_TRUE(accepts(filter, eventOf(6000, "ABC123E text", 10000)));
}

TEST_F(CCgFilters, forwardNothingWhileTheyAreOff)
{
    start("f.className=ccg_levelfilter\nf.listenerNames=recorder\n");
    Owned const filter = object("f");
    CCgEvent event = eventOf(6000, "text");

    zk::logging::Locked const locked;
    filter->objClass->filter.log(filter.get(), &event);
    ccg_setProperty(filter.get(), "logging", "off");
    filter->objClass->filter.log(filter.get(), &event);

    EXPECT_THAT(texts(), ElementsAre("text"));
}

TEST(CCgMsgIdPattern, matchesAsItsPiecesStand)
{
    struct Row {
        char const* pattern;
        char const* text;
        bool matches;
    };
    Row const rows[] = {
        {"*W", "ABC123W", true}, {"*W", "ABC123E", false}, {"ABC*", "ABCD", true}, {"ABC*", "ABC", true},
        {"ABC*", "ABD", false},  {"ABC", "ABC", true},     {"ABC", "ABCD", false}, {"ABC", "abc", false},
        {"*B*", "AB", true},     {"*B*", "ABC", false},    {"*B*", "ABCB", false}, {"A*C", "ABC", true},
        {"A*C", "ABCC", false},  {"A*C", "ABCD", false},   {"A**C", "ABC", true},  {"A*B*C", "AxByC", true},
        {"A*B*C", "AxC", false}, {"*", "", true},          {"***", "ABC", true},   {"*W", "", false},
        {"A*", "", false},       {"*AB*B", "AxABB", true}, {"AA*A", "AA", false},  {"A*A", "A", false},
        {"A*B*", "AB", true},    {"A*B*", "ABC", false},   {"*W", "*W", true},     {"A*", "A*", true},
        {"A*B*", "A*B*", false},
    };
    for (Row const& row : rows)
        EXPECT_EQ(ccg_matchesMsgId(row.pattern, row.text), row.matches) << row.pattern << ' ' << row.text;
}

}  // namespace
