// CCgStrTok.h: takes a text apart at single characters.
//
//   CCgStrTok names("a, b,,c", ", ");
//   while (std::optional<std::string_view> const name = names.next())
//       ...                                     // "a", "b", "c"
#pragma once

#include <optional>
#include <string_view>

/// Looks at the text it was given, which must outlive it.
class CCgStrTok {
public:
    /// Without separators each single byte is a token.
    explicit CCgStrTok(std::string_view text, std::string_view separators = {}) noexcept
        : rest_(text), separators_(separators)
    {
    }

    /// The longest run without separators, after skipping separators; nothing once there is none.
    std::optional<std::string_view> next() noexcept
    {
        if (!separators_.empty()) {
            std::size_t const start = rest_.find_first_not_of(separators_);
            rest_ = start == std::string_view::npos ? std::string_view() : rest_.substr(start);
        }
        if (rest_.empty())
            return std::nullopt;
        std::size_t const length = separators_.empty() ? 1 : rest_.find_first_of(separators_);
        std::string_view const token = rest_.substr(0, length);
        rest_.remove_prefix(token.size());
        return token;
    }

    /// Whether next() gives another token.
    bool hasMore() const noexcept
    {
        return separators_.empty() ? !rest_.empty()
                                   : rest_.find_first_not_of(separators_) != std::string_view::npos;
    }

private:
    std::string_view rest_;
    std::string_view separators_;
};
