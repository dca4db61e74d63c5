// textTables.h: the numbered texts that the host gives to the library.
//
//   static ZkText const texts[] = {{47188, "Zentrika"}, {47329, "Cannot enter %s"}};
//   zkRegisterTexts(texts, 2);
//   CString title;
//   title.LoadString(47188);                     // TRUE; "Zentrika"
//
// The library itself holds no text for the user. CString::LoadString asks the
// tables that were registered, the newest first, and then, on Windows, the
// string resources of the program. All functions may be called by any thread at any time.
#pragma once

#include "platform/os/exportMacro.h"

#include "platform/classlib/CString.h"

#include <cstddef>

struct ZkText {
    unsigned int id;
    char const* text;  // NUL-terminated; null counts as absent
};

/// Puts a table in front of those registered before.
///
/// The table is not copied: it and its texts must live until it is
/// unregistered or the process ends. It needs no order; where a number stands
/// twice in it, the first counts. A table that is registered already moves to the front.
ZK_UTIL_API void zkRegisterTexts(ZkText const* table, std::size_t count);

/// Takes a table out again; gives whether it was registered.
ZK_UTIL_API bool zkUnregisterTexts(ZkText const* table);

/// The newest text with that number, or null. Asks the tables only. The text
/// is the table's own. One hash look-up.
ZK_UTIL_API char const* zkFindText(unsigned int id);
