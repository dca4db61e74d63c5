// CCgI18Msg.h: a message that can be shown in the user's language.
//
//   CCgI18Msg message("Load", 1, 7, "%s has %d units");
//   message.add("model.cpp");
//   message.add(std::int32_t(12));
//   char* const text = ccg_messageText(message);        // "model.cpp has 12 units"
//   std::free(text);
#pragma once

#include "logging/CCgParmList.h"
#include "logging/util/CxStringBuff.h"
#include "zk_export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

struct ZK_UTIL_API CCgI18Msg {
    std::optional<std::string> catalogName;
    std::int32_t set = 0;
    std::int32_t key = 0;
    std::string defaultText;
    CCgParmList parameters;
    char const* locale = nullptr;  ///< not owned; null: the user's

    CCgI18Msg() = default;
    /// A null catalog is none; a null text is empty.
    CCgI18Msg(char const* catalogName, std::int32_t set, std::int32_t key, char const* defaultText);

    /// Add a parameter of each of the seven types. A null text is "(null)".
    void add(bool value) { parameters.add(CCgParm::ofBoolean(value)); }
    void add(std::int32_t value) { parameters.add(CCgParm::ofInt32(value)); }
    void addLong(long value) { parameters.add(CCgParm::ofLong(value)); }
    void add(float value) { parameters.add(CCgParm::ofFloat(value)); }
    void add(double value) { parameters.add(CCgParm::ofDouble(value)); }
    void add(char value) { parameters.add(CCgParm::ofChar(value)); }
    void add(char const* value) { parameters.add(CCgParm::ofText(value)); }
};

/// The message's text: that of its catalog in the user's language, or in its locale, or, where there is none, the
/// default text. It is formatted with the message's parameters; the default text unformatted where they don't fit.
/// A NUL among the parameters ends the text. The caller frees it; null without memory.
///
/// A message with a catalog takes the toolkit's lock.
ZK_UTIL_API char* ccg_messageText(CCgI18Msg const& message);

/// The same at the end of a buffer.
ZK_UTIL_API void ccg_appendMessageText(CxStringBuff& buffer, CCgI18Msg const& message);

namespace zk::logging {

/// The same for code that holds the lock.
char* messageText(CCgI18Msg const& message);
void appendMessageText(CxStringBuff& buffer, CCgI18Msg const& message);

}  // namespace zk::logging
