// toolLocale.h: the language that the product speaks.
#pragma once

#include "platform/classlib/CString.h"

#include "zk_export.h"

/// The setting "General", "ProductLocale", "EN" if absent; for "active" the one of "JA", "CN", "KO", "TW" and
/// "EN" that fits the user's code page.
///
/// Done once per process. If the setting "General", "UpdateLocaleByProductLocale" is true, the locales of C library
/// and thread are switched to that language then, where the system has them; to English for any other text.
ZK_UTIL_API CString ToolLocaleName();
