#include "Foundtn/util/CZK_UTIL_DLLApp.h"

BEGIN_MESSAGE_MAP(CZK_UTIL_DLLApp, CWinApp)
END_MESSAGE_MAP()

CZK_UTIL_DLLApp::CZK_UTIL_DLLApp() : CWinApp(nullptr, zk::ModuleFrame())
{
}

namespace {

CZK_UTIL_DLLApp frame;

}  // namespace

CZK_UTIL_DLLApp const& zk::moduleFrame() noexcept
{
    return frame;
}
