#include "logging/CCgI18Msg.h"

#include "logging/CCgCatalogCache.h"
#include "logging/CCgLogManager.h"
#include "logging/CCgPrintf.h"

#include <cstring>
#include <new>

CCgI18Msg::CCgI18Msg(char const* catalogName, std::int32_t set, std::int32_t key, char const* defaultText)
    : set(set), key(key), defaultText(defaultText ? defaultText : "")
{
    if (catalogName)
        this->catalogName = catalogName;
}

namespace zk::logging {

namespace {

// The text to be formatted.
char const* formatOf(CCgI18Msg const& message) noexcept
{
    char const* const defaultText = message.defaultText.c_str();
    if (!message.catalogName)
        return defaultText;
    try {
        char const* const translated =
            translatedText(*message.catalogName, message.locale, message.set, message.key);
        return translated ? translated : defaultText;
    } catch (std::bad_alloc const&) {
        return defaultText;
    }
}

void appendFormatted(CxStringBuff& buffer, char const* format, CCgI18Msg const& message)
{
    std::int32_t const start = buffer.length();
    if (!CCgPrintfList(buffer, format, &message.parameters)) {
        buffer.append(std::string_view(message.defaultText.c_str()));
        return;
    }
    std::size_t const length = static_cast<std::size_t>(buffer.length() - start);
    if (void const* const nul = std::memchr(buffer.text() + start, '\0', length))
        buffer.truncate(static_cast<std::int32_t>(static_cast<char const*>(nul) - buffer.text()));
}

}  // namespace

void appendMessageText(CxStringBuff& buffer, CCgI18Msg const& message)
{
    appendFormatted(buffer, formatOf(message), message);
}

char* messageText(CCgI18Msg const& message)
{
    CxStringBuff buffer;
    appendMessageText(buffer, message);
    return buffer.take();
}

}  // namespace zk::logging

char* ccg_messageText(CCgI18Msg const& message)
{
    CxStringBuff buffer;
    ccg_appendMessageText(buffer, message);
    return buffer.take();
}

void ccg_appendMessageText(CxStringBuff& buffer, CCgI18Msg const& message)
{
    if (message.catalogName)
        if (zk::logging::Locked const locked; locked) {
            zk::logging::appendMessageText(buffer, message);
            return;
        }
    zk::logging::appendFormatted(buffer, message.defaultText.c_str(), message);
}
