#include "logging/CCgInternalError.h"

#include "logging/CCgEvent.h"
#include "logging/CCgLogManager.h"
#include "logging/CCgLogger.h"
#include "logging/CCgMisc.h"

#include <cstdio>
#include <utility>

namespace zk::logging {

namespace {

struct InternalText {
    std::int32_t key;
    char const* text;
};

constexpr InternalText internalTexts[] = {
    {1, "CCGLG01E No listeners are registered with the logger %s."},
    {2, "CCGBC02E The message catalog file %s could not be opened."},
    {3,
     "CCGBC03E The message with set index %1$d and key index %2$d was not found in the message catalog "
     "%3$s."},
    {10, "CCGBC0010E The following QOS error occurred: %s"},
    {20, "CCGBC0020E Out of memory."},
    {30, "CCGBC0030E A value must be specified for the property '%s' ."},
    {31, "CCGBC0031E Property '%1$s' must be %2$d characters or less."},
    {32,
     "CCGFH0032E Property '%1$s' must be a valid file path for this platform, but value '%2$s' was given."},
    {33,
     "CCGBC0033E A \"NULL\" value for parameter %1$s was passed to the function %2$s. The function call "
     "will be ignored."},
    {34,
     "CCG0034E A negative value for parameter %1$s was passed to the function %2$s. The function call "
     "will be ignored."},
    {35, "CCGLG0035E A logger of class %s could not get the host name. The host name will not be logged."},
    {36, "CCGFH0036W Could not load codeset %s. Logged text will be stored in UTF-8 encoding instead."},
    {40, "CCGFH0040E Unable to get directory list for the file: %s"},
    {50, "CCGTK0050W Failed to initialize the CCLog toolkit."},
    {51, "CCG0051E The log manager could not read the properties file %s."},
    {52,
     "CCG0052E The value of property '%s' in the properties file could not be parsed, because it "
     "contains a backslash character that is not part of a valid escape sequence."},
    {60, "CCGBC0060W The object named '%s' is corrupt."},
    {61, "CCGBC0061W Object '%1$s' exists but is of class '%2$s' instead of '%3$s' ."},
    {62, "CCGBC0062W Class '%1$s' must be defined before object '%2$s' can be created."},
    {63, "CCGBC0063W A class must be specified before object '%1$s' can be created."},
    {70, "CCGBC0070W The logging method parameter list did not end with a NULL."},
    {71, "CCGBC0071W The logging method's parameter list is missing type markers."},
    {72, "CCGMP0072W Could not read the active log file %1s during log file rollover."},
    {73, "CCGMP0073W Could not write to the backup log file %1s during log file rollover."},
    {74,
     "CCGMP0074W The value %1s is not a valid file permission mask for file handler %2s. Please specify "
     "a four-digit octal value (with a leading zero)."},
    {75, "CCGMP0075W Could not set file %1s to permission mode %2o. The system error code is %3d."},
    {76,
     "CCGFF0020W The property 'mode' for message ID filter %1s was set to unknown value %2s. Expected "
     "values are 'BLOCK' or 'PASSTHRU'."},
    {90,
     "CCGWH0090E A message could not be sent to the Tarvelin Application Server. The error code is "
     "%1$d."},
    {91, "CCGWH0091E An IPC channel could not be opened. The error code is %1$d."},
    {93, "CCGWH0092E An IPC channel could not be closed. The error code is %1$d."},
    {94, "CCGWH0093E A packet could not be sent over an IPC channel. The error code is %1$d."},
    {95, "CCGWH0094W A message is discarded due to timeout."},
};

constexpr char const* messageCatalog = "ccgmsg";
constexpr std::int32_t messageSet = 1;

// Whether this thread delivers a report: one that is made meanwhile is dropped, or it would never end.
thread_local bool reporting = false;

void send(CCgLevel level, CCgEvent& event)
{
    Manager const* const known = manager();
    if (reporting || !known || !known->started || !known->errorLogger ||
        !ccg_isLoggable(known->errorLogger, level))
        return;
    struct Scope {
        Scope() { reporting = true; }
        ~Scope() { reporting = false; }
    } const scope;
    event.level = level;
    sendEvent(known->errorLogger, event);
}

CCgI18Msg internalMessage(std::int32_t key, char const* text, CCgParmList parameters)
{
    CCgI18Msg message(messageCatalog, messageSet, key, text);
    message.parameters = std::move(parameters);
    return message;
}

CCgParmList listOf(std::initializer_list<CCgParm> parameters)
{
    CCgParmList list;
    for (CCgParm const& parameter : parameters)
        list.add(parameter);
    return list;
}

}  // namespace

void report(CCgLevel level, std::int32_t key, std::initializer_list<CCgParm> parameters)
{
    report(level, key, listOf(parameters));
}

void report(CCgLevel level, std::int32_t key, CCgParmList parameters)
{
    CCgEvent event;
    event.message = internalMessage(key, internalText(key).c_str(), std::move(parameters));
    send(level, event);
}

void reportResult(CCgResult const& result)
{
    if (result.ok())
        return;
    CCgEvent event;
    // As a parameter: a "%" in a system's sentence is no directive.
    event.message = internalMessage(0, "%s", listOf({CCgParm::ofText(textOf(result).c_str())}));
    send(CCG_WARN, event);
}

void printError(std::int32_t key, std::initializer_list<CCgParm> parameters)
{
    CxStringBuff text;
    appendMessageText(text, internalMessage(key, internalText(key).c_str(), listOf(parameters)));
    text.append('\n');
    printToConsole(stderr, text.view());
}

std::string internalText(std::int32_t key)
{
    for (InternalText const& entry : internalTexts)
        if (entry.key == key)
            return entry.text;
    char text[32];
    std::snprintf(text, sizeof text, "unused%03d", static_cast<int>(key));
    return text;
}

}  // namespace zk::logging

void ccg_internalError(CCgLevel level, std::int32_t key, char const* defaultText, ...)
{
    zk::logging::Locked const locked;
    if (!locked)
        return;
    CCgEvent event;
    event.message = zk::logging::internalMessage(key, defaultText, {});
    std::va_list list;
    va_start(list, defaultText);
    event.readParameters(list);
    va_end(list);
    zk::logging::send(level, event);
}
