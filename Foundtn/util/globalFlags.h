// globalFlags.h: named texts that hold for the whole process.
//
//   globalFlags::instance()->setFlag("CommandLine", "model.zkt -iniFile=my.ini");
//   {
//       setGlobalFlag const quiet("Quiet", "1");          // for this scope
//       globalFlags::instance()->getFlag("Quiet");        // "1"
//   }
//   globalFlags::instance()->getFlag("Quiet");            // "": absent again
//
// Names match exactly. The library itself reads "CommandLine" alone, the
// application's command line, when it looks for the profile. All of it belongs
// to the main thread.
#pragma once

#include "platform/classlib/CStringMaps.h"

#include "zk_export.h"

/// The flags of the process, from name to value.
class ZK_UTIL_API globalFlags {
public:
    /// The one object, made at the first call and never destroyed.
    static globalFlags* instance();

    /// The flag's value; empty if it was never set, was removed, or was set to nothing.
    CString getFlag(CString const& name) const;
    void setFlag(CString const& name, CString const& value);
    void removeFlag(CString const& name);

private:
    friend class setGlobalFlag;

    globalFlags();
    void putBack(CString const& name, CString&& value) noexcept;

    CMapStringToString flags_;
};

/// Another value of a flag for the length of a scope. Scopes may nest if they end in reverse order.
///
/// A flag that has the value already is left alone, at the end of the scope too, whatever became of
/// it meanwhile. A flag that was absent or empty is removed at the end. A flag that somebody removed
/// meanwhile stays away if there is no memory for it.
class ZK_UTIL_API setGlobalFlag {
public:
    setGlobalFlag(CString const& name, CString const& value);
    virtual ~setGlobalFlag();
    setGlobalFlag(setGlobalFlag const&) = delete;
    setGlobalFlag& operator=(setGlobalFlag const&) = delete;

private:
    bool isChanged_;
    CString name_;
    CString previous_;
};
