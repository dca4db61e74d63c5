// ToolLangFacade.h: where a host's language services are found.
#pragma once

#include "zk_export.h"

/// A host derives from it and puts its own object in place; the library keeps the pointer and calls nothing.
class ZK_UTIL_API ToolLangFacade {
public:
    virtual ~ToolLangFacade();

    /// The object that was put in place, not owned; null until then.
    static ToolLangFacade* theFacade();

    /// The host's service object for the current language, in a form that host and caller agree on.
    virtual void* languageService() = 0;

protected:
    static ToolLangFacade* _theFacade;
};
