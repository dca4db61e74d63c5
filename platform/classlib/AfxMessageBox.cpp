#include "platform/classlib/AfxMessageBox.h"

#include "platform/classlib/CString.h"
#include "platform/classlib/CWinApp.h"
#include "platform/classlib/CWnd.h"

#include <atomic>

namespace {

constinit std::atomic<zk::MessageBoxPresenter*> presenterInForce = nullptr;

UINT withIcon(UINT type)
{
    if (type & MB_ICONMASK)
        return type;
    switch (type & MB_TYPEMASK) {
    case MB_OK:
    case MB_OKCANCEL: return type | MB_ICONEXCLAMATION;
    case MB_YESNO:
    case MB_YESNOCANCEL: return type | MB_ICONQUESTION;
    default: return type;
    }
}

}  // namespace

namespace zk {

MessageBoxPresenter::~MessageBoxPresenter() = default;

MessageBoxPresenter* installMessageBoxPresenter(MessageBoxPresenter* presenter) noexcept
{
    return presenterInForce.exchange(presenter);
}

int showMessageBox(char const* text, UINT type, UINT helpId)
{
    type = withIcon(type);
    if (MessageBoxPresenter* const presenter = presenterInForce.load())
        return presenter->present(text ? text : "", AfxGetAppName(), type, helpId);
    CWnd const* const mainWindow = AfxGetMainWnd();
    HWND const owner = mainWindow ? mainWindow->GetSafeHwnd() : nullptr;
    return MessageBoxA(owner, text ? text : "", AfxGetAppName(), owner ? type : type | MB_TASKMODAL);
}

}  // namespace zk

int AfxMessageBox(LPCSTR lpszText, UINT nType, UINT nIDHelp)
{
    CWinApp* const application = AfxGetApp();
    return application ? application->DoMessageBox(lpszText, nType, nIDHelp)
                       : zk::showMessageBox(lpszText, nType, nIDHelp);
}

int AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp)
{
    CString text;
    text.LoadString(nIDPrompt);
    return AfxMessageBox(text, nType, nIDHelp == UINT(-1) ? nIDPrompt : nIDHelp);
}
