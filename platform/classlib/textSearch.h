// textSearch.h: finds a text in another, from either end, in linear time.
#pragma once

#include <cstddef>
#include <string_view>

namespace zk {

/// The first place at or after `from` where `part` stands in `text`, or -1. An empty part stands everywhere.
///
/// Where memory is short, an unlucky search takes longer than linear time.
std::ptrdiff_t findFirst(std::string_view text, std::string_view part, std::size_t from) noexcept;

/// The last place where `part` stands in `text`, or -1.
std::ptrdiff_t findLast(std::string_view text, std::string_view part) noexcept;

}  // namespace zk
