#include "logging/CCgMsgIdFilter.h"

#include "logging/CCgEvent.h"
#include "logging/CCgInternalError.h"
#include "logging/CCgMisc.h"
#include "logging/CCgObject.h"
#include "logging/CCgStrTok.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace zk::logging {

namespace {

constexpr std::string_view defaultPatterns("*W *I");
constexpr std::string_view patternSeparators(" \t\n\r");

enum class Mode { block = 1, passThru = 2 };

struct MsgIdFilter {
    Mode mode = Mode::block;
    CCgStringGroup patterns;
    CCgObject* msgFormatter = nullptr;
    std::int64_t repeatTime = 0;
    CCgStringToStringMap lastSeen;  // the time of the last record that passed, by identifier

    void setPatterns(std::string_view text)
    {
        patterns.clear();
        CCgStrTok tokens(text, patternSeparators);
        while (auto const pattern = tokens.next())
            patterns.add(*pattern);
    }
};

MsgIdFilter* dataOf(CCgObject* filter) noexcept
{
    return static_cast<MsgIdFilter*>(filter->data);
}

void* createData(CCgObject*)
{
    auto* const data = new MsgIdFilter;
    data->setPatterns(defaultPatterns);
    data->msgFormatter = getObject("msgFormatter", "ccg_xmlformatter");
    return data;
}

void destroyData(void* data)
{
    auto* const own = static_cast<MsgIdFilter*>(data);
    if (own)
        releaseObject(own->msgFormatter);
    delete own;
}

// Whether an identifier may pass again, and, if so, remembers when it did.
bool passesAgain(MsgIdFilter& filter, std::string const& id, std::int64_t time)
{
    if (std::string const* const last = filter.lastSeen.find(id)) {
        std::int64_t const before = scanInt64(*last).value_or(0);
        constexpr std::int64_t latest = std::numeric_limits<std::int64_t>::max();
        std::int64_t const next = before > latest - filter.repeatTime ? latest : before + filter.repeatTime;
        if (next > time)
            return false;
    }
    filter.lastSeen.set(id, std::to_string(time));
    return true;
}

bool accept(CCgObject* filter, CCgEvent* event)
{
    if (!event)
        return false;
    MsgIdFilter& own = *dataOf(filter);
    std::string const id = event->messageId();
    bool const matched =
        std::any_of(own.patterns.begin(), own.patterns.end(),
                    [&](std::string const& pattern) { return ccg_matchesMsgId(pattern, id); });
    if (matched != (own.mode == Mode::passThru))
        return false;
    return id.empty() || own.repeatTime < 1 || passesAgain(own, id, event->time);
}

void setMode(CCgObject* filter, std::string const& value)
{
    Mode mode = Mode::block;
    if (sameIgnoringCase(value, "PASSTHRU"))
        mode = Mode::passThru;
    else if (!sameIgnoringCase(value, "BLOCK"))
        report(CCG_WARN, 76, {CCgParm::ofText(filter->name.c_str()), CCgParm::ofText(value.c_str())});
    dataOf(filter)->mode = mode;
}

void configure(CCgObject* filter, char const* key)
{
    std::string const* const value = filter->properties.find(key);
    std::string_view const name(key);
    MsgIdFilter* const own = dataOf(filter);
    if (value && own && name == "mode")
        setMode(filter, *value);
    else if (value && own && name == "msgIds")
        own->setPatterns(*value);
    else if (value && own && name == "msgIdRepeatTime")
        own->repeatTime = scanInt64(*value).value_or(own->repeatTime);
    else
        configureBase(filter, key);
}

}  // namespace

CCgFilterEntries const msgIdFilterEntries = {nullptr, accept, nullptr};
CCgObjectEntries const msgIdFilterObjectEntries = {createData, destroyData, configure};

}  // namespace zk::logging

bool ccg_matchesMsgId(std::string_view pattern, std::string_view text) noexcept
{
    CCgStrTok tokens(pattern, "*");
    std::size_t position = 0;
    bool isFirst = true;
    while (auto const token = tokens.next()) {
        if (isFirst && pattern.substr(0, token->size()) == *token) {
            if (pattern.size() == token->size())
                return text == pattern;  // there is no star
            if (text.substr(0, token->size()) != *token)
                return false;
            position = token->size();
        } else {
            std::size_t const found = text.find(*token, position);
            if (found == std::string_view::npos)
                return false;
            position = found + token->size();
            if (!tokens.hasMore() && position != text.size())
                return false;
        }
        isFirst = false;
    }
    return true;
}
