// profileOrigin.h: where the value of a named setting comes from.
//
//   zk::ProfileOrigin const origin = zk::profileOrigin("General", "OMROOT");
//   if (origin.source == zk::ProfileOrigin::profile)
//       report(origin.file, origin.line);               // "/home/me/Zentrika.ini", 12
//
// Settings are looked up in the profile first and in the process environment
// second; this tells which of them answers. It is made for support and tools, not for speed.
#pragma once

#include "platform/classlib/CString.h"

#include "zk_export.h"

namespace zk {

struct ProfileOrigin {
    enum Source { absent, profile, environment };

    Source source = absent;
    CString value;  ///< As readers see it; empty where it is absent.
    CString file;   ///< The profile file, if the value comes from it.
    int line = 0;   ///< Its line in the file, from 1; 0 where it cannot be told.
};

/// The file that the process's profile is, whether it exists or not; empty without a profile object, and where
/// the user has no folder for a bare name.
ZK_UTIL_API CString profileFile();

/// Looks a setting up. A value that is empty, or white space alone, counts as absent. Reads the whole profile.
ZK_UTIL_API ProfileOrigin profileOrigin(CString const& section, CString const& name);

}  // namespace zk
