#include "logging/CCgBasicFormatter.h"

#include "logging/CCgFormatter.h"

namespace zk::logging {

namespace {

constexpr char const* propertiesInOrder[] = {
    CCG_PROP_SRCFILE, CCG_PROP_SRCFUNCTION, CCG_PROP_SRCLINE, CCG_PROP_ORGANIZATION,
    CCG_PROP_PRODUCT, CCG_PROP_COMPONENT,   CCG_PROP_CLIENT,  CCG_PROP_SERVER,
};

}  // namespace

char* formatBasic(CCgObject* formatter, CCgEvent* event)
{
    if (!event || !isOfKind(formatter, CCG_FORMATTER) || !formatter->objClass->formatter.msgText)
        return nullptr;
    std::string_view const separator = formatter->separator ? std::string_view(*formatter->separator) : " ";
    CxStringBuff text;
    appendTimeText(text, *formatter, event->time);
    text.append(separator);
    if (!event->properties.empty())
        for (char const* const key : propertiesInOrder)
            if (std::string const* const value = event->properties.find(key)) {
                text.append(*value);
                text.append(separator);
            }
    appendMessageText(text, *formatter, *event);
    text.append('\n');
    return text.take();
}

}  // namespace zk::logging
