#include "logging/CCgEvent.h"

#include "logging/CCgInternalError.h"
#include "logging/CCgMsgId.h"
#include "logging/CCgProps.h"
#include "logging/util/CxSystem.h"

#include <utility>

namespace {

constexpr int mostMarkers = 63;

bool isLevel(int marker) noexcept
{
    switch (marker) {
    case CCG_MAX:
    case CCG_MID:
    case CCG_MIN:
    case CCG_INFO:
    case CCG_WARN:
    case CCG_ERROR:
    case CCG_FATAL:
    case CCG_OFF:
    case CCG_ALWAYS: return true;
    default: return false;
    }
}

bool isType(int marker) noexcept
{
    return marker >= CCG_BOOLEAN && marker <= CCG_TEXT;
}

// The list is handed on by address: each value read moves it.
struct TypedList {
    std::va_list values;
};

CCgParm readValue(TypedList& list, int marker)
{
    switch (marker) {
    case CCG_BOOLEAN: return CCgParm::ofBoolean(va_arg(list.values, int) != 0);
    case CCG_LONG: return CCgParm::ofLong(va_arg(list.values, long));
    case CCG_FLOAT: return CCgParm::ofFloat(static_cast<float>(va_arg(list.values, double)));
    case CCG_DOUBLE: return CCgParm::ofDouble(va_arg(list.values, double));
    case CCG_CHAR: return CCgParm::ofChar(static_cast<char>(va_arg(list.values, int)));
    case CCG_TEXT: return CCgParm::ofText(va_arg(list.values, char const*));
    default: return CCgParm::ofInt32(va_arg(list.values, int));
    }
}

}  // namespace

CCgEvent::CCgEvent() : time(CxTimeInMilliseconds())
{
}

void CCgEvent::readParameters(std::va_list list)
{
    TypedList typed;
    va_copy(typed.values, list);
    for (int count = 0;; ++count) {
        int marker = va_arg(typed.values, int);
        char const* key = nullptr;
        bool const hasKey = marker == CCG_PROPERTY_KEY;
        if (hasKey) {
            key = va_arg(typed.values, char const*);
            marker = va_arg(typed.values, int);
        } else if (marker == 0) {
            break;
        }
        if (count == mostMarkers) {
            zk::logging::report(CCG_ERROR, 70);
            break;
        }
        if (isLevel(marker) || marker == 0) {
            level = marker;
        } else if (isType(marker)) {
            CCgParm value = readValue(typed, marker);
            if (!hasKey)
                message.parameters.add(std::move(value));
            else if (key)
                properties.set(key, zk::logging::propertyText(value));
        } else {
            zk::logging::report(CCG_ERROR, 71);
            break;
        }
    }
    va_end(typed.values);
}

std::string const& CCgEvent::messageId()
{
    if (!msgId) {
        CxStringBuff text;
        zk::logging::appendMessageText(text, message);
        CCgMsgIdForm const form = ccg_classifyMsgId(text.view());
        msgId = std::string(text.view().substr(0, static_cast<std::size_t>(form.length)));
    }
    return *msgId;
}

char const* CCgEvent::property(char const* key) const noexcept
{
    std::string const* const value = properties.find(key);
    return value ? value->c_str() : nullptr;
}
