#include "logging/CCgI18Msg.h"

#include "logging/CCgPrintf.h"

#include <cstring>

CCgI18Msg::CCgI18Msg(char const* catalogName, std::int32_t set, std::int32_t key, char const* defaultText)
    : set(set), key(key), defaultText(defaultText ? defaultText : "")
{
    if (catalogName)
        this->catalogName = catalogName;
}

char* ccg_messageText(CCgI18Msg const& message)
{
    CxStringBuff buffer;
    ccg_appendMessageText(buffer, message);
    return buffer.take();
}

void ccg_appendMessageText(CxStringBuff& buffer, CCgI18Msg const& message)
{
    std::int32_t const start = buffer.length();
    char const* const text = message.defaultText.c_str();
    if (!CCgPrintfList(buffer, text, &message.parameters)) {
        buffer.append(std::string_view(text));
        return;
    }
    std::size_t const length = static_cast<std::size_t>(buffer.length() - start);
    if (void const* const nul = std::memchr(buffer.text() + start, '\0', length))
        buffer.truncate(static_cast<std::int32_t>(static_cast<char const*>(nul) - buffer.text()));
}
