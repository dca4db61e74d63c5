// CCgCodesetText.h: whole texts through code sets, for the modules of the toolkit.
//
//   std::string const bytes = codesetOfUtf8(*state.codeset, text);
#pragma once

#include "logging/CCgCodeset.h"

#include <string>
#include <string_view>

namespace zk::logging {

/// A UTF-8 text in a code set, and the reverse.
std::string codesetOfUtf8(CCgCodeset& codeset, std::string_view text);
std::string utf8OfCodeset(CCgCodeset& codeset, std::string_view bytes);

/// A wide text of the system in a code set.
std::string codesetOfWide(CCgCodeset& codeset, std::wstring_view text);

/// Opens what is current while the toolkit is started, and closes it.
void startCodesets();
void stopCodesets() noexcept;

/// The default code set; null while the toolkit is stopped.
CCgCodeset* startedDefaultCodeset() noexcept;

/// The console's code set; null while the toolkit is stopped, and if the system doesn't have it.
CCgCodeset* consoleCodeset() noexcept;

}  // namespace zk::logging
