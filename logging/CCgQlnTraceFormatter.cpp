#include "logging/CCgQlnTraceFormatter.h"

#include "logging/CCgFormatter.h"

#include <string_view>

namespace zk::logging {

namespace {

constexpr char recordSeparator = 30;
constexpr std::string_view fieldSeparator(" - ");

std::string_view levelWord(CCgLevel level) noexcept
{
    switch (level) {
    case CCG_FATAL:
    case CCG_ERROR: return "ERROR";
    case CCG_WARN: return "WARN ";
    case CCG_INFO: return "INFO ";
    case CCG_MIN: return " MIN ";
    case CCG_MID: return " MID ";
    case CCG_MAX: return " MAX ";
    default: return "OTHER";
    }
}

// The text in front of a value, the value, and the text behind it, if the record has it.
bool append(CxStringBuff& text, std::string_view before, char const* value, std::string_view after)
{
    if (!value)
        return false;
    text.append(before);
    text.append(std::string_view(value));
    text.append(after);
    return true;
}

char* format(CCgObject* formatter, CCgEvent* event)
{
    if (!event || !isOfKind(formatter, CCG_FORMATTER) || !formatter->objClass->formatter.msgText)
        return nullptr;
    CxStringBuff text;
    text.append(recordSeparator);
    text.append('[');
    appendDefaultTimeText(text, event->time);
    text.append(']');
    text.append(fieldSeparator);
    text.append(levelWord(event->level));
    text.append(fieldSeparator);

    if (char const* const server = event->property(CCG_PROP_SERVER)) {
        std::string_view const host(server);
        text.append(host.substr(0, host.find('.')));
    }
    text.append(fieldSeparator);

    char const* const process = event->property(CCG_PROP_PROCESSID);
    char const* const thread = event->property(CCG_PROP_THREADID);
    append(text, "p", process, process && thread ? ":" : "");
    append(text, "t", thread, "");
    text.append(fieldSeparator);

    char const* const file = event->property(CCG_PROP_SRCFILE);
    char const* const function = event->property(CCG_PROP_SRCFUNCTION);
    append(text, "", file, file && function ? ":" : "");
    append(text, "", function, "");
    append(text, "(", event->property(CCG_PROP_SRCLINE), ")");
    text.append(fieldSeparator);

    text.append(event->messageId());
    text.append(fieldSeparator);
    appendMessageText(text, *formatter, *event);
    text.append('\n');
    return text.take();
}

// Properties are kept and have no effect.
void ignoreProperty(CCgObject*, char const*)
{
}

}  // namespace

CCgFormatterEntries const traceFormatterEntries = {format, nullptr, nullptr, nullptr};
CCgObjectEntries const traceFormatterObjectEntries = {nullptr, nullptr, ignoreProperty};

}  // namespace zk::logging
