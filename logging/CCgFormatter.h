// CCgFormatter.h: what all formatters have in common.
#pragma once

#include "logging/CCgEvent.h"
#include "logging/CCgObject.h"
#include "logging/util/CxStringBuff.h"

#include <cstdint>
#include <string_view>

namespace zk::logging {

/// Adds the text of a time: by the formatter's "dateTimeFormat" if it has one, else as
/// "2024-05-06 07:08:09.010+02:00". False, with nothing added, if there is no text for it.
bool appendTimeText(CxStringBuff& buffer, CCgObject const& formatter, std::int64_t milliseconds);

/// The same always in the default form.
bool appendDefaultTimeText(CxStringBuff& buffer, std::int64_t milliseconds);

/// Adds what strftime makes of a format, in at most 127 bytes. A directive that the C library need not
/// know stays as it stands.
bool appendFormattedTime(CxStringBuff& buffer, char const* format, std::int64_t milliseconds);

/// Sets a formatter's locale on a record, if it has one, for as long as the object lives.
class RecordLocale {
public:
    RecordLocale(CCgObject const& formatter, CCgEvent& event) noexcept
        : event_(event), locale_(event.locale), messageLocale_(event.message.locale)
    {
        if (formatter.locale)
            event.locale = formatter.locale->c_str();
        event.message.locale = event.locale;
    }
    ~RecordLocale()
    {
        event_.locale = locale_;
        event_.message.locale = messageLocale_;
    }
    RecordLocale(RecordLocale const&) = delete;
    RecordLocale& operator=(RecordLocale const&) = delete;

private:
    CCgEvent& event_;
    char const* locale_;
    char const* messageLocale_;
};

/// Adds the text of a record's message as the class of the formatter renders it.
void appendMessageText(CxStringBuff& buffer, CCgObject& formatter, CCgEvent& event);

}  // namespace zk::logging
