// textFile.h: whole files, read and written in one go.
//
// Here the files of the class library and the operations below them are at work.
#pragma once

#include "platform/classlib/CString.h"

namespace modelgen {

/// Reads every byte of a file. On failure gives false, and the reason in words.
bool readFile(CString const& name, CString& content, CString& reason);

/// Writes a new file of that content beside the named one and puts it in its place, so that the name always stands
/// for the old content or the new one, whole. On failure gives false and the reason; nothing is left behind.
bool replaceFile(CString const& name, CString const& content, CString& reason);

/// The system's sentence for an error number, without its full stop.
CString reasonFor(DWORD error);

}  // namespace modelgen
