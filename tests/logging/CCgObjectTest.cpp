#include "logging/CCgHandler.h"
#include "logging/CCgProps.h"
#include "tests/logging/Toolkit.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CCgObjects : public ToolkitTest { };

std::vector<std::string> listenersOf(Owned const& object)
{
    std::vector<std::string> names;
    for (CCgObject const* const listener : ccg_getListeners(object.get()))
        names.push_back(listener->name);
    return names;
}

TEST_F(CCgObjects, areBuiltOnFirstRequestAndThenFound)
{
    start();

    Owned const first = object("a", "ccg_basiclogger");
    Owned const second = object("a");

    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first, second);
    EXPECT_EQ(first->references, 3);
}

TEST_F(CCgObjects, startWithTheValuesOfTheirKind)
{
    start();

    Owned const logger = object("a", "ccg_basiclogger");
    Owned const handler = object("b", "ccg_consolehandler");

    EXPECT_TRUE(logger->logging);
    EXPECT_EQ(logger->level, 3000);
    EXPECT_EQ(handler->formatter->name, "cclog.defaultFormatter");
    EXPECT_EQ(handler->formatter->objClass->name, "ccg_basicformatter");
}

TEST_F(CCgObjects, takeTheirClassFromTheConfiguration)
{
    start("a.className=ccg_levelfilter\n");

    EXPECT_EQ(object("a")->objClass->name, "ccg_levelfilter");
    EXPECT_EQ(object("a.b.c")->objClass->name, "ccg_levelfilter");
}

TEST_F(CCgObjects, withoutANameAreNone)
{
    start();

    EXPECT_EQ(ccg_getObject(nullptr, "ccg_basiclogger"), nullptr);
    EXPECT_THAT(errorKeys(), IsEmpty());
}

TEST_F(CCgObjects, ofAnotherClassThanAskedForAreRefused)
{
    start();
    Owned const filter = object("x", "ccg_levelfilter");

    EXPECT_EQ(object("x", "ccg_basiclogger"), nullptr);

    EXPECT_THAT(texts("errors"),
                ElementsAre("CCGBC0061W Object 'x' exists but is of class 'ccg_levelfilter' instead of "
                            "'ccg_basiclogger' ."));
    EXPECT_EQ(records("errors")[0].level, 6000);
    EXPECT_EQ(filter->references, 2);
}

TEST_F(CCgObjects, withoutAClassAreCorrupt)
{
    start();
    Owned const logger = object("x", "ccg_basiclogger");
    ObjClass* const objClass = std::exchange(logger->objClass, nullptr);

    EXPECT_EQ(object("x"), nullptr);

    EXPECT_THAT(texts("errors"), ElementsAre("CCGBC0060W The object named 'x' is corrupt."));
    logger->objClass = objClass;
}

TEST_F(CCgObjects, ofAnUnknownClassAreRefused)
{
    start("y.className=no_such_class\n");

    EXPECT_EQ(object("x", "no_such_class"), nullptr);
    EXPECT_EQ(object("y"), nullptr);

    EXPECT_THAT(
        texts("errors"),
        ElementsAre("CCGBC0062W Class 'no_such_class' must be defined before object 'x' can be created.",
                    "CCGBC0062W Class 'no_such_class' must be defined before object 'y' can be created."));
}

TEST_F(CCgObjects, thatNobodyGaveAClassAreRefused)
{
    start();

    EXPECT_EQ(object("x"), nullptr);

    EXPECT_THAT(texts("errors"),
                ElementsAre("CCGBC0063W A class must be specified before object 'x' can be created."));
}

TEST_F(CCgObjects, areConfiguredFromTheFarthestNodeToTheNearest)
{
    start("a.className=ccg_basiclogger\na.level=ERROR\na.logging=off\na.b.level=WARN\na.b.c.x=1\n");

    Owned const logger = object("a.b.c");

    EXPECT_EQ(logger->level, 5000);
    EXPECT_FALSE(logger->logging);
    EXPECT_EQ(taken(ccg_getProperty(logger.get(), "x", nullptr)), "1");
}

std::vector<std::string> seenKeys;

void seeKey(CCgObject* object, char const* key)
{
    seenKeys.push_back(std::string(key) + "=" + *object->properties.find(key));
}

TEST_F(CCgObjects, seeAPropertyOncePerNodeThatSetsIt)
{
    start("a.k=1\na.b.k=2\na.b.l=3\n");
    CCgObjectEntries entries;
    entries.configure = seeKey;
    ccg_registerLogger("seeing", nullptr, {}, entries);
    seenKeys.clear();

    Owned const logger = object("a.b", "seeing");

    EXPECT_THAT(seenKeys, ElementsAre("k=1", "k=2", "l=3"));
}

int destroyedData = 0;

TEST_F(CCgObjects, endWithTheLastReferenceOfOthers)
{
    start("x.level=ERROR\n");
    CCgObjectEntries entries;
    entries.createData = [](CCgObject*) -> void* { return &destroyedData; };
    entries.destroyData = [](void* data) { ++*static_cast<int*>(data); };
    ccg_registerLogger("counting", nullptr, {}, entries);
    destroyedData = 0;
    Owned first = object("x", "counting");
    Owned second = object("x");
    ccg_setProperty(first.get(), "level", "WARN");

    first.reset();
    EXPECT_EQ(destroyedData, 0);
    second.reset();

    EXPECT_EQ(destroyedData, 1);
    EXPECT_EQ(object("x", "counting")->level, 6000);  // built anew from the configuration
}

std::vector<std::string> closed;

TEST_F(CCgObjects, closeTheirHandlerWhenTheyEnd)
{
    start();
    CCgHandlerEntries entries;
    entries.close = [](CCgObject* handler) { closed.push_back(handler->name); };
    ccg_registerHandler("closing", nullptr, entries, {});
    closed.clear();

    object("released", "closing");
    Owned const held = object("held", "closing");
    EXPECT_THAT(closed, ElementsAre("released"));
    ccg_shutdownManager();

    EXPECT_THAT(closed, ElementsAre("released", "held"));
}

TEST_F(CCgObjects, thatOutliveTheToolkitAreOff)
{
    start("a.className=ccg_basiclogger\na.listenerNames=recorder\n");
    Owned logger = object("a");

    ccg_shutdownManager();

    EXPECT_FALSE(ccg_isLoggable(logger.get(), 7000));
    EXPECT_FALSE(ccg_isLoggable(logger.get(), -9999));
    ccg_trace(logger.get(), "text", 0);
    ccg_setProperty(logger.get(), "logging", true);
    EXPECT_FALSE(ccg_isLoggable(logger.get(), 7000));
    EXPECT_FALSE(ccg_addListener(logger.get(), logger.get()));
    logger.reset();
}

TEST_F(CCgObjects, ofAnEarlierRunLeaveThoseOfALaterOneAlone)
{
    start();
    Owned before = object("a", "ccg_basiclogger");
    ccg_shutdownManager();
    start();
    Owned const after = object("a", "ccg_basiclogger");

    before.reset();

    EXPECT_EQ(object("a"), after);
}

TEST_F(CCgObjects, keepPropertiesOfSevenTypes)
{
    start();
    Owned const a = object("a", "ccg_basiclogger");
    ccg_setProperty(a.get(), "text", "abc");
    ccg_setProperty(a.get(), "boolean", true);
    ccg_setProperty(a.get(), "int32", std::numeric_limits<std::int32_t>::min());
    ccg_setProperty(a.get(), "int64", std::numeric_limits<std::int64_t>::max());
    ccg_setProperty(a.get(), "float", 0.5f);
    ccg_setProperty(a.get(), "double", 2.25);
    ccg_setProperty(a.get(), "char", 'A');
    bool found = false;

    EXPECT_EQ(taken(ccg_getProperty(a.get(), "text", &found)), "abc");
    EXPECT_TRUE(found);
    EXPECT_TRUE(ccg_getBooleanProperty(a.get(), "boolean", &found));
    EXPECT_EQ(ccg_getInt32Property(a.get(), "int32", &found), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ccg_getInt64Property(a.get(), "int64", &found), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(ccg_getFloatProperty(a.get(), "float", &found), 0.5f);
    EXPECT_EQ(ccg_getDoubleProperty(a.get(), "double", &found), 2.25);
    EXPECT_EQ(ccg_getCharProperty(a.get(), "char", &found), 'A');
    EXPECT_EQ(taken(ccg_getProperty(a.get(), "char", nullptr)), "65");
}

TEST_F(CCgObjects, haveNoPropertyThatWasNotSetOnThem)
{
    start("a.className=ccg_basiclogger\n");
    Owned const a = object("a");
    bool found = true;

    EXPECT_EQ(ccg_getProperty(a.get(), "no such key", &found), nullptr);
    EXPECT_FALSE(found);
    EXPECT_EQ(ccg_getInt32Property(a.get(), "className", &found), 0);
    EXPECT_FALSE(found);
    EXPECT_EQ(ccg_getProperty(nullptr, "a", &found), nullptr);
    ccg_setProperty(nullptr, "a", "b");
    ccg_setProperty(a.get(), nullptr, "b");
    ccg_setProperty(a.get(), "a", static_cast<char const*>(nullptr));
}

TEST_F(CCgObjects, areTurnedOnAndOff)
{
    start();
    Owned const a = object("a", "ccg_basiclogger");

    for (char const* const off : {"off", "FALSE"}) {
        ccg_setProperty(a.get(), "logging", off);
        EXPECT_FALSE(a->logging) << off;
        ccg_setProperty(a.get(), "logging", "perhaps");
        EXPECT_FALSE(a->logging);
        ccg_setProperty(a.get(), "logging", "On");
        EXPECT_TRUE(a->logging);
    }
    ccg_setProperty(a.get(), "logging", false);
    EXPECT_FALSE(a->logging);
    ccg_setProperty(a.get(), "logging", true);
    EXPECT_TRUE(a->logging);
}

TEST_F(CCgObjects, setTheDescriptionOfTheirClass)
{
    start();
    EXPECT_EQ(taken(ccg_getClassDescription("ccg_basiclogger")), "Logger for basic messages");
    EXPECT_EQ(taken(ccg_getClassDescription("ccg_msgidfilter")), "(none)");
    Owned const filter = object("f", "ccg_msgidfilter");

    ccg_setProperty(filter.get(), "description", "Filters");
    ccg_setProperty(filter.get(), "descriptionFile", "texts");
    ccg_setProperty(filter.get(), "descriptionSet", "3");
    ccg_setProperty(filter.get(), "descriptionKey", 4);

    EXPECT_EQ(taken(ccg_getClassDescription("ccg_msgidfilter")), "Filters");
    CCgI18Msg const& description = *filter->objClass->description;
    EXPECT_EQ(description.catalogName, "texts");
    EXPECT_EQ(description.set, 3);
    EXPECT_EQ(description.key, 4);
}

TEST_F(CCgObjects, takeTheListenersThatAreNamed)
{
    start("h1.className=test_recorder\nh2.className=test_recorder\n");
    Owned const a = object("a", "ccg_basiclogger");

    ccg_setProperty(a.get(), "listenerNames", " h1\t\r\n\f\vh2  h1 ");
    EXPECT_THAT(listenersOf(a), ElementsAre("h1", "h2"));

    ccg_setProperty(a.get(), "listenerNames", "unknown h2");
    EXPECT_THAT(listenersOf(a), ElementsAre("h2"));
    EXPECT_THAT(errorKeys(), ElementsAre(63));

    ccg_setProperty(a.get(), "listenerNames", "");
    EXPECT_THAT(listenersOf(a), IsEmpty());
}

TEST_F(CCgObjects, holdTheirListeners)
{
    start();
    Owned const a = object("a", "ccg_basiclogger");
    Owned handler = object("h", "test_recorder");
    CCgObject* const address = handler.get();

    EXPECT_TRUE(ccg_addListener(a.get(), handler.get()));
    EXPECT_FALSE(ccg_addListener(a.get(), handler.get()));
    handler.reset();
    EXPECT_EQ(address->references, 2);
    EXPECT_TRUE(ccg_removeListener(a.get(), address));

    EXPECT_THAT(listenersOf(a), IsEmpty());
}

TEST_F(CCgObjects, ofKindFormatterHaveNoListeners)
{
    start();
    Owned const formatter = object("f", "ccg_basicformatter");
    Owned const handler = object("h", "test_recorder");

    EXPECT_FALSE(ccg_addListener(formatter.get(), handler.get()));
    ccg_setProperty(formatter.get(), "listenerNames", "h");

    EXPECT_THAT(listenersOf(formatter), IsEmpty());
    EXPECT_FALSE(ccg_addListener(handler.get(), nullptr));
    EXPECT_FALSE(ccg_addListener(nullptr, handler.get()));
    EXPECT_FALSE(ccg_removeListener(handler.get(), formatter.get()));
}

TEST_F(CCgObjects, mayListenToThemselvesAndToEachOther)
{
    start("a.className=ccg_basiclogger\na.listenerNames=a b\nb.className=ccg_basiclogger\nb.listenerNames=a\n"
          "p.listenerNames=p.c\np.c.className=ccg_basiclogger\np.c.listenerNames=\n");

    Owned const a = object("a");
    Owned const c = object("p.c");

    EXPECT_THAT(listenersOf(a), ElementsAre("a", "b"));
    EXPECT_THAT(listenersOf(c), IsEmpty());
}

TEST_F(CCgObjects, thatNeedTooManyOthersAreRefused)
{
    std::string properties;
    for (int i = 0; i < 400; ++i)
        properties += "o" + std::to_string(i) + ".listenerNames=o" + std::to_string(i + 1) + "\no" +
            std::to_string(i) + ".className=ccg_basiclogger\n";
    start(properties.substr(0, properties.find("o300.")));

    Owned const first = object("o0");

    EXPECT_NE(first, nullptr);
    EXPECT_THAT(errorKeys(), ElementsAre(60));
}

TEST_F(CCgObjects, ofKindHandlerUseTheFormatterThatIsNamed)
{
    start("x.className=ccg_xmlformatter\n");
    Owned const handler = object("h", "test_recorder");

    ccg_setProperty(handler.get(), "formatterName", "x");
    EXPECT_EQ(handler->formatter->name, "x");

    ccg_setProperty(handler.get(), "formatterName", "unknown");
    EXPECT_EQ(handler->formatter, nullptr);
    CCgEvent event;
    EXPECT_EQ(ccg_formatRecord(handler.get(), &event), nullptr);
    EXPECT_EQ(ccg_formatHeader(handler.get()), nullptr);
    EXPECT_EQ(ccg_formatFooter(handler.get()), nullptr);
    EXPECT_EQ(ccg_formatMsgText(handler.get(), &event.message), nullptr);
}

TEST_F(CCgObjects, ofAnotherKindAreNoFormatters)
{
    start();
    Owned const handler = object("h", "test_recorder");
    ccg_setProperty(handler.get(), "formatterName", "recorder");

    CCgEvent event;

    EXPECT_EQ(ccg_formatRecord(handler.get(), &event), nullptr);
}

TEST_F(CCgObjects, mayHaveTheNameOfWhatTheyNeed)
{
    start("cclog.defaultFormatter.className=test_recorder\nmsgFormatter.className=ccg_msgidfilter\n");

    EXPECT_EQ(object("msgFormatter"), nullptr);

    EXPECT_THAT(errorKeys(), ElementsAre(61));
}

TEST_F(CCgObjects, classesAreListedByKind)
{
    start();
    auto const names = [](int kind) {
        CCgStringGroup const group = ccg_getClassNames(kind);
        return std::vector<std::string>(group.begin(), group.end());
    };

    EXPECT_THAT(names(101), ElementsAre("ccg_basiclogger", "ccg_pdlogger"));
    EXPECT_THAT(names(102), ElementsAre("ccg_levelfilter", "ccg_msgidfilter"));
    EXPECT_THAT(names(104), ElementsAre("ccg_basicformatter", "ccg_xmlformatter", "ccg_qlntraceformatter"));
    EXPECT_THAT(names(100), IsEmpty());
    EXPECT_THAT(names(105), IsEmpty());
}

TEST_F(CCgObjects, classThatIsRegisteredStays)
{
    start();

    ccg_registerLogger("test_recorder", nullptr, {}, {});

    EXPECT_EQ(object("x", "test_recorder")->objClass->kind, CCG_HANDLER);
    EXPECT_EQ(ccg_getClassNames(CCG_LOGGER).size(), 2u);
}

TEST_F(CCgObjects, defaultsOfAKindStandInForMissingEntries)
{
    start();
    ccg_registerHandler("empty_handler", nullptr, {}, {});
    ccg_registerFormatter("empty_formatter", nullptr, {}, {});
    Owned const handler = object("h", "empty_handler");
    Owned const formatter = object("f", "empty_formatter");
    ccg_setProperty(handler.get(), "formatterName", "f");
    CCgEvent event;
    event.message.defaultText = "text";

    handler->objClass->handler.handle(handler.get(), &event);
    EXPECT_TRUE(handler->objClass->handler.open(handler.get()).ok());
    handler->objClass->handler.close(handler.get());

    EXPECT_EQ(handler->data, nullptr);
    EXPECT_TRUE(taken(ccg_formatRecord(handler.get(), &event)).ends_with(" text\n"));
    EXPECT_EQ(ccg_formatHeader(handler.get()), nullptr);
    EXPECT_EQ(ccg_formatFooter(handler.get()), nullptr);
    EXPECT_EQ(taken(ccg_formatMsgText(handler.get(), &event.message)), "text");
}

}  // namespace
