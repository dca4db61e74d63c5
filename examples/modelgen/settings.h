// settings.h: what the profile and the environment say about the program's work.
//
//   [General]
//   ToldErrors = 5
//   [CodeGen]
//   OutputFolder = $OMROOT/generated
//   WarningsAreErrors = TRUE
//
// Here the named settings and the logical paths are at work.
#pragma once

#include "platform/classlib/CString.h"

namespace modelgen {

struct Settings {
    CString folder = ".";
    int toldErrors = 20;
    bool warningsAreErrors = false;
    CString mistake;  ///< what is wrong with a setting; empty if nothing is
};

Settings readSettings();

}  // namespace modelgen
