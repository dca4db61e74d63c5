// CZK_UTIL_DLLApp.h: the application object of the module itself.
//
// One object of it lives as long as the module is loaded. It is not the
// process's application: AfxGetApp() gives the host's object, or null.
#pragma once

#include "platform/classlib/CWinApp.h"

#include "zk_export.h"

/// The frame of the module. It has no fields and no behaviour of its own.
class ZK_UTIL_API CZK_UTIL_DLLApp : public CWinApp {
public:
    CZK_UTIL_DLLApp();

    DECLARE_MESSAGE_MAP()
};

namespace zk {

/// The object of this module. Code outside the module has no business with it.
CZK_UTIL_DLLApp const& moduleFrame() noexcept;

}  // namespace zk
