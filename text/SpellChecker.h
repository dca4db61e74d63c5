// SpellChecker.h: the place where a host's spell checker is found.
#pragma once

#include "zk_export.h"

/// Holds no spell-checking logic: a host derives from it and puts its own object in place.
class ZK_UTIL_API SpellChecker {
public:
    /// Clears the instance, so that a derived class may set it afterwards.
    SpellChecker();
    virtual ~SpellChecker();

    /// The instance that a derived class has put in place, not owned; null until then.
    static SpellChecker* GetSpellChecker();

protected:
    static SpellChecker* m_spellChecker;
};
