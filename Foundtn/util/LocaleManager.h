// LocaleManager.h: the runtime locale that the process began with, for the length of a piece of work.
//
//   LocaleManager locale;
//   locale.AddRef();          // the original locale is in force
//   file.Format("%f", x);
//   locale.Release();         // and the one before again
//
// The locale is the whole process's: this belongs to the main thread.
#pragma once

#include "platform/classlib/CString.h"

#include "zk_export.h"

class ZK_UTIL_API LocaleManager {
public:
    /// The first object of the process takes the locale that is in force as the original one, unless
    /// getOrigLocale() has done so before.
    LocaleManager();
    virtual ~LocaleManager();
    LocaleManager(LocaleManager const&) = delete;
    LocaleManager& operator=(LocaleManager const&) = delete;

    /// Counts one user more, and gives their number; the first one switches to the original locale.
    int AddRef();
    /// Counts one user less, and gives their number; the last one switches back. Without a user it does nothing.
    int Release();

    /// The original locale, by its full name; the one in force at the first call, if there was no object before.
    static CString getOrigLocale();

private:
    static void init();

    int count_ = 0;
    CString saved_;
};
