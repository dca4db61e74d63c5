#include "logging/CCgHandler.h"

#include "logging/CCgObject.h"

namespace {

CCgFormatterEntries const* formatterOf(CCgObject const* handler) noexcept
{
    bool const usable = handler && zk::logging::isOfKind(handler->formatter, CCG_FORMATTER);
    return usable ? &handler->formatter->objClass->formatter : nullptr;
}

}  // namespace

char* ccg_formatRecord(CCgObject* handler, CCgEvent* event)
{
    CCgFormatterEntries const* const formatter = formatterOf(handler);
    return formatter ? formatter->format(handler->formatter, event) : nullptr;
}

char* ccg_formatHeader(CCgObject* handler)
{
    CCgFormatterEntries const* const formatter = formatterOf(handler);
    return formatter ? formatter->header(handler->formatter) : nullptr;
}

char* ccg_formatFooter(CCgObject* handler)
{
    CCgFormatterEntries const* const formatter = formatterOf(handler);
    return formatter ? formatter->footer(handler->formatter) : nullptr;
}

char* ccg_formatMsgText(CCgObject* handler, CCgI18Msg const* message)
{
    CCgFormatterEntries const* const formatter = formatterOf(handler);
    return formatter ? formatter->msgText(handler->formatter, message) : nullptr;
}
