// textFile.h: whole files, read and written in one go.
#pragma once

#include "platform/classlib/CString.h"

#include <string>

namespace modelgen {

/// Reads every byte of a file. On failure gives false, and the reason in words.
bool readFile(CString const& name, std::string& content, CString& reason);

/// Writes a new file of that content beside the named one and puts it in its place, so that the name always stands
/// for the old content or the new one, whole. On failure gives false and the reason; nothing is left behind.
bool replaceFile(CString const& name, CString const& content, CString& reason);

}  // namespace modelgen
