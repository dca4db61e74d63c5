// getEnv.h: the application's named settings, and its root folders.
//
//   CString value;
//   CString error;
//   if (!omGetEnvVar("General", "OMROOT", value, &error))
//       report(error);                                         // names the missing setting
//   omGetEnvVarInt("General", "Depth", 3);                     // the setting, or 3
//
// A setting is looked up in the profile first, by section and name, and in the
// process environment second, by the name alone. An empty value counts as
// absent in both. Texts for the optional `error` come from the host's numbered
// texts; nothing here speaks to the user or throws (but std::bad_alloc).
// Everything is read anew at each call unless told otherwise, and belongs to the main thread.
#pragma once

#include "Foundtn/util/IToolMode.h"
#include "platform/classlib/CString.h"

#include "zk_export.h"

/// 1, with the setting in `value`; or 0, with `value` empty and a text that names the setting in `*error`.
ZK_UTIL_API int omGetEnvVar(CString const& section, CString const& name, CString& value,
                            CString* error = nullptr);

/// The setting as a number, see IAppProfileInterface::String2Int() and String2Double(). A value of the
/// profile that is no number falls through to the environment.
ZK_UTIL_API int omGetEnvVarInt(CString const& section, CString const& name, int defaultValue);
ZK_UTIL_API double omGetEnvVarDouble(CString const& section, CString const& name, double defaultValue);

/// The setting as "TRUE" or "FALSE", or as a colour "red,green,blue". The same, but as long as there is
/// no profile the environment isn't asked either.
ZK_UTIL_API int omGetEnvVarBool(CString const& section, CString const& name, int defaultValue);
ZK_UTIL_API unsigned long omGetEnvVarColor(CString const& section, CString const& name,
                                           unsigned long defaultValue);

// -- Root folders ----------------------------------------------------------------------
//
// Each gives 1 with the folder in `value`; or 0, as omGetEnvVar() does.

/// "General", "OMROOT". In model-server mode always 1: the setting if that is a folder, else the folder "Share"
/// beside the executable; found once per process.
ZK_UTIL_API int omGetRoot(CString& value, CString* error = nullptr);
ZK_UTIL_API int omGetApplicationRoot(CString& value, CString* error = nullptr);  ///< "APPLICATION_ROOT"
/// "OMDOCROOT", else "Doc/pdf_docs" in the current directory. `*error` is looked at after a 0 only.
ZK_UTIL_API int omGetDocRoot(CString& value, CString* error = nullptr);
/// "OMHELPROOT", else "Doc" in the current directory. `*error` is looked at after a 0 only.
ZK_UTIL_API int omGetHelpRoot(CString& value, CString* error = nullptr);
ZK_UTIL_API int omGetSiteDir(CString& value, CString* error = nullptr);       ///< "OMSITEDIR"
ZK_UTIL_API int omGetJavaLocation(CString& value, CString* error = nullptr);  ///< "JVM", "JavaLocation"

/// The folder of a language's framework: "LangCpp", "LangC", "LangJava" or "LangAda" in the root.
///
/// 0 without a root, and, with the root in `value`, for any other language.
ZK_UTIL_API int omGetFrameworkRoot(CString& value, IToolMode::Lang lang, CString* error = nullptr);
