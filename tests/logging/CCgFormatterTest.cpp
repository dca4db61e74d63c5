#include "logging/CCgHandler.h"
#include "tests/logging/Toolkit.h"
#include "tests/logging/newText.h"
#include "tests/support/ScopedTimeZone.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>
#include <string>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// 2024-05-06 05:08:09.010 in Greenwich.
constexpr std::int64_t fixedTime = 1714972089010;

CCgEvent eventOf(char const* text, CCgLevel level = 6000, std::int64_t time = fixedTime)
{
    CCgEvent event;
    event.level = level;
    event.time = time;
    event.message = CCgI18Msg("cat", 1, 2, text);
    return event;
}

class Formatters : public ToolkitTest {
protected:
    Formatters() : zone_("ABC-2") { }

    static std::string formatted(Owned const& formatter, CCgEvent event)
    {
        zk::logging::Locked const locked;
        return taken(formatter->objClass->formatter.format(formatter.get(), &event));
    }

private:
    ScopedTimeZone zone_;
};

class BasicFormatter : public Formatters { };
class XmlFormatter : public Formatters { };
class TraceFormatter : public Formatters { };

TEST_F(BasicFormatter, writesTimeAndText)
{
    start();

    EXPECT_EQ(formatted(object("f", "ccg_basicformatter"), eventOf("text")),
              "2024-05-06 07:08:09.010+02:00 text\n");
}

TEST_F(BasicFormatter, putsTheSeparatorBetweenTheParts)
{
    start("f.className=ccg_basicformatter\nf.separator=|\n");
    Owned const formatter = object("f");

    EXPECT_EQ(formatted(formatter, eventOf("text")), "2024-05-06 07:08:09.010+02:00|text\n");
    ccg_setProperty(formatter.get(), "separator", "");
    EXPECT_EQ(formatted(formatter, eventOf("text")), "2024-05-06 07:08:09.010+02:00text\n");
}

TEST_F(BasicFormatter, writesTheRecordsPropertiesInAFixedOrder)
{
    start("f.className=ccg_basicformatter\nf.separator=|\n");
    CCgEvent event = eventOf("text");
    for (char const* const key :
         {"server", "client", "component", "product", "organization", "ccg_prop_srcline",
          "ccg_prop_srcfunction", "ccg_prop_srcfile", "serverFormat", "processId", "other"})
        event.properties.set(key, std::string("<") + key + ">");

    EXPECT_EQ(formatted(object("f"), event),
              "2024-05-06 07:08:09.010+02:00|<ccg_prop_srcfile>|<ccg_prop_srcfunction>|<ccg_prop_srcline>|"
              "<organization>|<product>|<component>|<client>|<server>|text\n");
}

TEST_F(BasicFormatter, hasNoHeaderAndNoFooter)
{
    start();
    Owned const handler = object("h", "test_recorder");

    EXPECT_EQ(ccg_formatHeader(handler.get()), nullptr);
    EXPECT_EQ(ccg_formatFooter(handler.get()), nullptr);
}

TEST_F(BasicFormatter, givesNoTextForNoRecordAndForAnotherKind)
{
    start();
    Owned const formatter = object("f", "ccg_basicformatter");
    CCgEvent event = eventOf("text");

    EXPECT_EQ(formatter->objClass->formatter.format(formatter.get(), nullptr), nullptr);
    Owned const logger = object("l", "ccg_basiclogger");
    EXPECT_EQ(formatter->objClass->formatter.format(logger.get(), &event), nullptr);
}

std::string seenLocale;

TEST_F(BasicFormatter, setsItsLocaleWhileTheMessageIsRendered)
{
    start("f.className=asking\nf.locale=de_DE\n");
    CCgFormatterEntries entries;
    entries.msgText = [](CCgObject*, CCgI18Msg const* message) -> char* {
        seenLocale = message->locale ? message->locale : "(none)";
        return nullptr;
    };
    ccg_registerFormatter("asking", nullptr, entries, {});
    Owned const formatter = object("f");
    CCgEvent event = eventOf("text");

    EXPECT_EQ(taken(formatter->objClass->formatter.format(formatter.get(), &event)),
              "2024-05-06 07:08:09.010+02:00 \n");

    EXPECT_EQ(seenLocale, "de_DE");
    EXPECT_EQ(event.locale, nullptr);
    EXPECT_EQ(event.message.locale, nullptr);
}

TEST_F(BasicFormatter, timeTextTellsTheZone)
{
    start();
    Owned const formatter = object("f", "ccg_basicformatter");
    struct Row {
        char const* zone;
        std::int64_t time;
        char const* text;
    };
    Row const rows[] = {
        {"UTC0", 0, "1970-01-01 00:00:00.000+00:00"},
        {"UTC0", 999, "1970-01-01 00:00:00.999+00:00"},
        {"UTC0", 951782400000, "2000-02-29 00:00:00.000+00:00"},
        {"UTC0", 4102444799999, "2099-12-31 23:59:59.999+00:00"},
        {"ABC5", fixedTime, "2024-05-06 00:08:09.010-05:00"},
        {"ABC-5:30", fixedTime, "2024-05-06 10:38:09.010+05:30"},
        {"ABC3:30", fixedTime, "2024-05-06 01:38:09.010-03:30"},
        {"ABC0:30", fixedTime, "2024-05-06 04:38:09.010+00:30"},
        {"ABC-12:45", fixedTime, "2024-05-06 17:53:09.010+12:45"},
        {"ABC-2", fixedTime - 10, "2024-05-06 07:08:09.000+02:00"},
    };
    for (Row const& row : rows) {
        ScopedTimeZone const zone(row.zone);
        EXPECT_EQ(formatted(formatter, eventOf("", 6000, row.time)), std::string(row.text) + " \n")
            << row.zone;
    }
}

TEST_F(BasicFormatter, timeTextCountsDaylightSavingTime)
{
    start();
    Owned const formatter = object("f", "ccg_basicformatter");
    ScopedTimeZone const zone("EST5EDT");

    // Wine's C library takes the zone, but not its summer, from TZ.
    std::time_t const summer = fixedTime / 1000;
    bool const knowsSummer = std::localtime(&summer)->tm_isdst > 0;
    EXPECT_EQ(formatted(formatter, eventOf("", 6000, fixedTime)),
              knowsSummer ? "2024-05-06 01:08:09.010-04:00 \n" : "2024-05-06 00:08:09.010-05:00 \n");
    EXPECT_EQ(formatted(formatter, eventOf("", 6000, 1704067200000)), "2023-12-31 19:00:00.000-05:00 \n");
}

TEST_F(BasicFormatter, timeThatNoClockShowsIsLeftOut)
{
    start();

    EXPECT_EQ(formatted(object("f", "ccg_basicformatter"), eventOf("text", 6000, -1)), " text\n");
    EXPECT_EQ(formatted(object("f", "ccg_basicformatter"), eventOf("text", 6000, INT64_MAX)), " text\n");
}

TEST_F(BasicFormatter, timeFormatReplacesTheWholeTimeText)
{
    start();
    Owned const formatter = object("f", "ccg_basicformatter");
    struct Row {
        char const* format;
        char const* text;
    };
    Row const rows[] = {
        {"%d.%m.%Y %H:%M:%S", "06.05.2024 07:08:09"},
        {"%y%j %p%%", "24127 AM%"},
        {"%F %T %D %R", "2024-05-06 07:08:09 05/06/24 07:08"},
        {"plain", "plain"},
        {"%Q %", "%Q %"},
        {"%E", "%E"},
        {"%-d", "%-d"},
    };
    for (Row const& row : rows) {
        ccg_setProperty(formatter.get(), "dateTimeFormat", row.format);
        EXPECT_EQ(formatted(formatter, eventOf("x")), std::string(row.text) + " x\n") << row.format;
    }
}

TEST_F(BasicFormatter, timeFormatThatIsEmptyOrTooLongGivesNone)
{
    start();
    Owned const formatter = object("f", "ccg_basicformatter");

    ccg_setProperty(formatter.get(), "dateTimeFormat", std::string(127, 'x').c_str());
    EXPECT_EQ(formatted(formatter, eventOf("t")), std::string(127, 'x') + " t\n");
    ccg_setProperty(formatter.get(), "dateTimeFormat", std::string(128, 'x').c_str());
    EXPECT_EQ(formatted(formatter, eventOf("t")), " t\n");
    ccg_setProperty(formatter.get(), "dateTimeFormat", "");
    EXPECT_EQ(formatted(formatter, eventOf("t")), " t\n");
}

CCgEvent fullEvent()
{
    CCgEvent event = eventOf("ABC123E text");
    for (char const* const key :
         {"server", "client", "component", "product", "organization", "ccg_prop_srcline",
          "ccg_prop_srcfunction", "ccg_prop_srcfile", "serverFormat", "productInstance", "processId",
          "threadId", "correlationId", "other"})
        event.properties.set(key, std::string("v.") + key);
    return event;
}

TEST_F(XmlFormatter, writesAMessage)
{
    start();

    EXPECT_EQ(formatted(object("f", "ccg_xmlformatter"), fullEvent()),
              "<Message Id=\"ABC123E\" Severity=\"ERROR\">\n"
              " <Time Millis=\"1714972089010\">2024-05-06 07:08:09.010+02:00</Time>\n"
              " <Server Format=\"v.serverFormat\">v.server</Server>\n"
              " <ProductId>v.product</ProductId>\n"
              " <Component>v.component</Component>\n"
              " <ProductInstance>v.productInstance</ProductInstance>\n"
              " <LogText><![CDATA[ABC123E text]]></LogText>\n"
              " <LogAttribs><Key>organization</Key><Value>v.organization</Value>"
              "<Key>other</Key><Value>v.other</Value></LogAttribs>\n"
              " <Source FileName=\"v.ccg_prop_srcfile\" Method=\"v.ccg_prop_srcfunction\" "
              "Line=\"v.ccg_prop_srcline\"/>\n"
              " <TranslationInfo Type=\"XPG4\" Catalog=\"cat\" MsgKey=\"2\" SetId=\"1\"></TranslationInfo>\n"
              " <CorrelationId>v.correlationId</CorrelationId>\n"
              " <Principal>v.client</Principal>\n"
              "</Message>\n");
}

TEST_F(XmlFormatter, writesATrace)
{
    start();
    CCgEvent event = fullEvent();
    event.isMessage = false;
    event.level = 3000;

    EXPECT_EQ(formatted(object("f", "ccg_xmlformatter"), event),
              "<Trace Level=\"MIN\">\n"
              " <Time Millis=\"1714972089010\">2024-05-06 07:08:09.010+02:00</Time>\n"
              " <Server Format=\"v.serverFormat\">v.server</Server>\n"
              " <ProductId>v.product</ProductId>\n"
              " <Component>v.component</Component>\n"
              " <ProductInstance>v.productInstance</ProductInstance>\n"
              " <LogText><![CDATA[ABC123E text]]></LogText>\n"
              " <LogAttribs><Key>organization</Key><Value>v.organization</Value>"
              "<Key>other</Key><Value>v.other</Value></LogAttribs>\n"
              " <Source FileName=\"v.ccg_prop_srcfile\" Method=\"v.ccg_prop_srcfunction\" "
              "Line=\"v.ccg_prop_srcline\"/>\n"
              " <Thread>v.threadId</Thread>\n"
              " <Process>v.processId</Process>\n"
              " <CorrelationId>v.correlationId</CorrelationId>\n"
              " <Principal>v.client</Principal>\n"
              "</Trace>\n");
}

TEST_F(XmlFormatter, leavesOutWhatARecordLacks)
{
    start();
    Owned const formatter = object("f", "ccg_xmlformatter");
    CCgEvent event = eventOf("text", -9999);
    event.message.catalogName.reset();
    EXPECT_EQ(formatted(formatter, event),
              "<Message Id=\"None\">\n"
              " <Time Millis=\"1714972089010\">2024-05-06 07:08:09.010+02:00</Time>\n"
              " <LogText><![CDATA[text]]></LogText>\n"
              " <TranslationInfo Type=\"XPG4\" Catalog=\"\" MsgKey=\"2\" SetId=\"1\"></TranslationInfo>\n"
              "</Message>\n");

    event.isMessage = false;
    EXPECT_EQ(formatted(formatter, event),
              "<Trace>\n"
              " <Time Millis=\"1714972089010\">2024-05-06 07:08:09.010+02:00</Time>\n"
              " <LogText><![CDATA[text]]></LogText>\n"
              " <Source FileName=\"None\" Method=\"None\"/>\n"
              "</Trace>\n");
}

TEST_F(XmlFormatter, writesTheSourceWithoutFunctionAndLine)
{
    start();
    CCgEvent event = eventOf("text");
    event.properties.set("ccg_prop_srcfile", "a.cpp");
    EXPECT_THAT(formatted(object("f", "ccg_xmlformatter"), event),
                HasSubstr(" <Source FileName=\"a.cpp\"/>\n"));

    event.properties.set("ccg_prop_srcline", "7");
    EXPECT_THAT(formatted(object("f", "ccg_xmlformatter"), event),
                HasSubstr(" <Source FileName=\"a.cpp\" Line=\"7\"/>\n"));
}

TEST_F(XmlFormatter, writesTheLevelAsAWord)
{
    start();
    Owned const formatter = object("f", "ccg_xmlformatter");
    struct Row {
        CCgLevel level;
        char const* word;
    };
    Row const rows[] = {{7000, "ERROR"}, {6000, "ERROR"}, {5000, "WARN"}, {4000, "INFO"},  {3000, "MIN"},
                        {2000, "MID"},   {1000, "MAX"},   {0, "OTHER"},   {6500, "OTHER"}, {9999, "OTHER"}};
    for (Row const& row : rows) {
        CCgEvent event = eventOf("text", row.level);
        EXPECT_THAT(formatted(formatter, event),
                    HasSubstr("<Message Id=\"None\" Severity=\"" + std::string(row.word) + "\">\n"));
        event.isMessage = false;
        EXPECT_THAT(formatted(formatter, event),
                    HasSubstr("<Trace Level=\"" + std::string(row.word) + "\">\n"));
    }
}

TEST_F(XmlFormatter, writesTheParametersInTheirDefaultForms)
{
    start();
    CCgEvent event = eventOf("text");
    event.message.add(true);
    event.message.add(false);
    event.message.add(std::int32_t(-5));
    event.message.addLong(7);
    event.message.add(0.5f);
    event.message.add(2.25);
    event.message.add('x');
    event.message.add("a<b");

    EXPECT_THAT(
        formatted(object("f", "ccg_xmlformatter"), event),
        HasSubstr("><Param><![CDATA[\x01]]></Param><Param><![CDATA[]]></Param><Param><![CDATA[-5]]></Param>"
                  "<Param><![CDATA[7]]></Param><Param><![CDATA[0.500000]]></Param>"
                  "<Param><![CDATA[2.250000]]></Param><Param><![CDATA[x]]></Param>"
                  "<Param><![CDATA[a<b]]></Param></TranslationInfo>\n"));
}

TEST_F(XmlFormatter, formIsTheRecordsUnlessOneIsForced)
{
    start();
    Owned const formatter = object("f", "ccg_xmlformatter");
    auto const firstWord = [&](char const* asMessage, char const* asTrace, bool isMessage) {
        ccg_setProperty(formatter.get(), "forceAsMessage", asMessage);
        ccg_setProperty(formatter.get(), "forceAsTrace", asTrace);
        CCgEvent event = eventOf("text");
        event.isMessage = isMessage;
        std::string const text = formatted(formatter, event);
        return text.substr(0, text.find(' '));
    };
    EXPECT_EQ(firstWord("true", "false", false), "<Message");
    EXPECT_EQ(firstWord("false", "true", true), "<Trace");
    EXPECT_EQ(firstWord("true", "true", true), "<Message");
    EXPECT_EQ(firstWord("true", "TRUE", false), "<Trace");
    EXPECT_EQ(firstWord("false", "false", false), "<Trace");
    EXPECT_EQ(firstWord("perhaps", "true", true), "<Trace");
}

TEST_F(XmlFormatter, singleElementsStandOnceBeforeTheFirstRecord)
{
    start("f.className=ccg_xmlformatter\nf.singleServer=true\nf.singleProduct=true\nf.singleComponent=true\n"
          "f.singleProductId=true\n");
    Owned const formatter = object("f");
    CCgEvent event = eventOf("text");
    for (char const* const key : {"server", "serverFormat", "product", "component", "productInstance"})
        event.properties.set(key, key);
    std::string const elements =
        " <Server Format=\"serverFormat\">server</Server>\n <ProductId>product</ProductId>\n"
        " <Component>component</Component>\n"
        " <ProductInstance>productInstance</ProductInstance>\n";

    std::string const first = formatted(formatter, event);
    std::string const second = formatted(formatter, event);

    EXPECT_EQ(first, elements + second);
    EXPECT_EQ(second.find("<Server"), std::string::npos);
    EXPECT_EQ(second.find("<Product"), std::string::npos);
    EXPECT_EQ(second.find("<Component"), std::string::npos);

    EXPECT_EQ(taken(formatter->objClass->formatter.header(formatter.get())), "(none)");
    EXPECT_EQ(formatted(formatter, event), first);
    EXPECT_EQ(taken(formatter->objClass->formatter.footer(formatter.get())), "(none)");
}

TEST_F(XmlFormatter, eachSingleFlagMovesItsOwnElement)
{
    start();
    struct Row {
        char const* flag;
        char const* element;
    };
    Row const rows[] = {{"singleServer", " <Server Format=\"F\">server</Server>\n"},
                        {"singleProduct", " <ProductId>product</ProductId>\n"},
                        {"singleComponent", " <Component>component</Component>\n"},
                        {"singleProductId", " <ProductInstance>productInstance</ProductInstance>\n"}};
    for (Row const& row : rows) {
        Owned const formatter = object(row.flag, "ccg_xmlformatter");
        ccg_setProperty(formatter.get(), row.flag, "true");
        CCgEvent event = eventOf("text");
        for (char const* const key : {"server", "product", "component", "productInstance"})
            event.properties.set(key, key);
        event.properties.set("serverFormat", "F");

        std::string const text = formatted(formatter, event);

        EXPECT_EQ(text.find(row.element), 0u) << row.flag;
        EXPECT_EQ(text.find("<Message"), std::string(row.element).size()) << row.flag;
    }
}

TEST_F(XmlFormatter, reportsATimeWithoutText)
{
    start();

    EXPECT_THAT(formatted(object("f", "ccg_xmlformatter"), eventOf("text", 6000, -1)),
                HasSubstr(" <Time Millis=\"-1\"></Time>\n"));

    EXPECT_THAT(errorKeys(), ElementsAre(20));
    EXPECT_EQ(records("errors")[0].level, 6000);
}

TEST_F(XmlFormatter, leavesTheRecordsLocaleAsItWas)
{
    start("f.className=ccg_xmlformatter\nf.locale=de_DE\n");
    Owned const formatter = object("f");
    CCgEvent event = eventOf("text");
    event.locale = "fr";

    taken(formatter->objClass->formatter.format(formatter.get(), &event));

    EXPECT_STREQ(event.locale, "fr");
    EXPECT_EQ(event.message.locale, nullptr);
}

TEST_F(XmlFormatter, escapesNothing)
{
    start();

    EXPECT_THAT(formatted(object("f", "ccg_xmlformatter"), eventOf("a]]>b<&\"")),
                HasSubstr("<![CDATA[a]]>b<&\"]]></LogText>\n"));
}

TEST_F(XmlFormatter, takesTheKeysOfEveryFormatter)
{
    start("f.className=ccg_xmlformatter\nf.dateTimeFormat=%Y\n");

    EXPECT_THAT(formatted(object("f"), eventOf("text")), HasSubstr("\">2024</Time>\n"));
}

TEST_F(TraceFormatter, writesAllFields)
{
    start();
    CCgEvent event = fullEvent();
    event.properties.set("server", "host.example.org");

    EXPECT_EQ(formatted(object("f", "ccg_qlntraceformatter"), event),
              "\x1E[2024-05-06 07:08:09.010+02:00] - ERROR - host - pv.processId:tv.threadId - "
              "v.ccg_prop_srcfile:v.ccg_prop_srcfunction(v.ccg_prop_srcline) - ABC123E - ABC123E text\n");
}

TEST_F(TraceFormatter, leavesFieldsEmpty)
{
    start();

    EXPECT_EQ(formatted(object("f", "ccg_qlntraceformatter"), eventOf("text", 3000)),
              "\x1E[2024-05-06 07:08:09.010+02:00] -  MIN  -  -  -  -  - text\n");
}

TEST_F(TraceFormatter, joinsOnlyWhatIsThere)
{
    start();
    Owned const formatter = object("f", "ccg_qlntraceformatter");
    CCgEvent process = eventOf("x");
    process.properties.set("processId", "1");
    process.properties.set("ccg_prop_srcfile", "a.cpp");
    CCgEvent thread = eventOf("x");
    thread.properties.set("threadId", "2");
    thread.properties.set("ccg_prop_srcfunction", "f");
    thread.properties.set("ccg_prop_srcline", "7");
    thread.properties.set("server", "host");

    EXPECT_THAT(formatted(formatter, process), HasSubstr("ERROR -  - p1 - a.cpp -  - x\n"));
    EXPECT_THAT(formatted(formatter, thread), HasSubstr("ERROR - host - t2 - f(7) -  - x\n"));
}

TEST_F(TraceFormatter, writesTheLevelFiveCharactersWide)
{
    start();
    Owned const formatter = object("f", "ccg_qlntraceformatter");
    struct Row {
        CCgLevel level;
        char const* word;
    };
    Row const rows[] = {{7000, "ERROR"}, {6000, "ERROR"}, {5000, "WARN "}, {4000, "INFO "}, {3000, " MIN "},
                        {2000, " MID "}, {1000, " MAX "}, {0, "OTHER"},    {-9999, "OTHER"}};
    for (Row const& row : rows)
        EXPECT_EQ(formatted(formatter, eventOf("x", row.level)).substr(35, 5), row.word) << row.level;
}

TEST_F(TraceFormatter, takesNoProperties)
{
    start("f.className=ccg_qlntraceformatter\nf.dateTimeFormat=%Y\nf.locale=de\nf.logging=off\n");
    Owned const formatter = object("f");

    EXPECT_THAT(formatted(formatter, eventOf("x")), HasSubstr("[2024-05-06 07:08:09.010+02:00]"));
    EXPECT_FALSE(formatter->locale.has_value());
    EXPECT_EQ(taken(ccg_getProperty(formatter.get(), "locale", nullptr)), "de");
}

class ConsoleHandler : public Formatters { };

TEST_F(ConsoleHandler, printsToStandardOutput)
{
    start("a.className=ccg_basiclogger\na.listenerNames=c\nc.className=ccg_consolehandler\n"
          "c.listenerNames=recorder\nc.formatterName=f\nf.className=ccg_basicformatter\nf.dateTimeFormat="
          "now\n");
    Owned const a = object("a");
    testing::internal::CaptureStdout();

    ccg_error(a.get(), nullptr, 0, 0, "text", 0);

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "now text\n");
    EXPECT_THAT(texts(), ElementsAre("text"));
}

TEST_F(ConsoleHandler, cutsARecordAt4095Bytes)
{
    start("a.className=ccg_basiclogger\na.listenerNames=c\nc.className=ccg_consolehandler\n");
    Owned const a = object("a");
    testing::internal::CaptureStdout();

    ccg_error(a.get(), nullptr, 0, 0, "%s", CCG_TEXT, std::string(5000, 'x').c_str(), 0);

    std::string const printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(printed.size(), 4095u);
    EXPECT_EQ(printed.back(), 'x');
}

TEST_F(ConsoleHandler, printsHeaderAndFooter)
{
    start("c.className=ccg_consolehandler\nc.formatterName=f\nf.className=framing\n");
    CCgFormatterEntries entries;
    entries.header = [](CCgObject*) { return newText("top\n"); };
    entries.footer = [](CCgObject*) { return newText("end\n"); };
    entries.format = [](CCgObject*, CCgEvent*) { return newText("record\n"); };
    ccg_registerFormatter("framing", nullptr, entries, {});
    testing::internal::CaptureStdout();
    {
        Owned const logger = object("a", "ccg_basiclogger");
        ccg_setProperty(logger.get(), "listenerNames", "c");
        ccg_error(logger.get(), nullptr, 0, 0, "text", 0);
        ccg_error(logger.get(), nullptr, 0, 0, "text", 0);
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "top\nrecord\nrecord\nend\n");
}

TEST_F(ConsoleHandler, printsNothingWithoutAFormatter)
{
    start("a.className=ccg_basiclogger\na.listenerNames=c\nc.className=ccg_consolehandler\nc.formatterName="
          "x\n");
    Owned const a = object("a");
    testing::internal::CaptureStdout();

    ccg_error(a.get(), nullptr, 0, 0, "text", 0);

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace
