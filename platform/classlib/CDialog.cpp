#include "platform/classlib/CDialog.h"

#include "platform/classlib/CException.h"
#include "platform/classlib/CWinApp.h"

#include <utility>

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_COMMAND(IDOK, OnOK)
ON_COMMAND(IDCANCEL, OnCancel)
END_MESSAGE_MAP()

namespace {

// Disables a dialog's owner for as long as the object lives.
class DisabledOwner {
public:
    explicit DisabledOwner(HWND owner) : owner_(owner && IsWindowEnabled(owner) ? owner : nullptr)
    {
        if (owner_)
            EnableWindow(owner_, FALSE);
    }
    ~DisabledOwner() { enable(); }
    DisabledOwner(DisabledOwner const&) = delete;
    DisabledOwner& operator=(DisabledOwner const&) = delete;

    void enable()
    {
        if (HWND const owner = std::exchange(owner_, nullptr))
            EnableWindow(owner, TRUE);
    }

private:
    HWND owner_;
};

// The loop's step in a thread without an object.
bool pumpMessage(MSG& message)
{
    if (GetMessageA(&message, nullptr, 0, 0) <= 0)
        return false;
    if (!CWnd::WalkPreTranslateTree(nullptr, &message)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return true;
}

}  // namespace

CDialog::CDialog() = default;

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd)
    : templateName_(MAKEINTRESOURCEA(nIDTemplate)), parent_(pParentWnd)
{
}

CDialog::CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd)
    : templateText_(lpszTemplateName), parent_(pParentWnd)
{
    templateName_ = templateText_;
}

CDialog::~CDialog() = default;

INT_PTR CALLBACK CDialog::dialogProc(HWND hWnd, UINT message, WPARAM, LPARAM lParam)
{
    // All later messages reach the object as those of a window do.
    if (message != WM_INITDIALOG)
        return FALSE;
    CDialog* const dialog = reinterpret_cast<CDialog*>(lParam);
    try {
        dialog->SubclassWindow(hWnd);
        return dialog->OnInitDialog();
    } catch (...) {
        dialog->thrown_ = std::current_exception();
        return FALSE;
    }
}

BOOL CDialog::makeWindow(LPCSTR templateName, HWND owner)
{
    if (m_hWnd) {
        SetLastError(ERROR_ALREADY_EXISTS);
        return FALSE;
    }
    HWND const window = CreateDialogParamA(AfxGetResourceHandle(), templateName, owner, &CDialog::dialogProc,
                                           reinterpret_cast<LPARAM>(this));
    if (std::exception_ptr const thrown = std::exchange(thrown_, nullptr)) {
        DestroyWindow();
        std::rethrow_exception(thrown);
    }
    return window != nullptr;
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd)
{
    return Create(MAKEINTRESOURCEA(nIDTemplate), pParentWnd);
}

BOOL CDialog::Create(LPCSTR lpszTemplateName, CWnd* pParentWnd)
{
    CWnd const* const owner = pParentWnd ? pParentWnd : AfxGetMainWnd();
    return makeWindow(lpszTemplateName, owner ? owner->m_hWnd : nullptr);
}

INT_PTR CDialog::DoModal()
{
    CWnd const* const owner = parent_ ? parent_ : AfxGetMainWnd();
    HWND const ownerWindow = owner ? owner->m_hWnd : nullptr;
    DisabledOwner disabledOwner(ownerWindow);
    result_ = -1;
    isModal_ = true;  // OnInitDialog may end it already
    if (!makeWindow(templateName_, ownerWindow)) {
        isModal_ = false;
        return -1;
    }
    bool const ended = runModalLoop();
    isModal_ = false;
    if (m_hWnd)
        ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                       SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
    disabledOwner.enable();
    DestroyWindow();
    return ended ? result_ : -1;
}

// False if WM_QUIT came, which is put back for the loop outside.
bool CDialog::runModalLoop()
{
    if (isModal_ && !IsWindowVisible())
        ShowWindow(SW_SHOWNORMAL);
    CWinThread* const thread = AfxGetThread();
    while (isModal_ && m_hWnd) {
        MSG own = {};
        MSG& message = thread ? thread->m_msgCur : own;
        bool const goesOn = thread ? thread->PumpMessage() != FALSE : pumpMessage(message);
        if (!goesOn) {
            PostQuitMessage(int(message.wParam));
            return false;
        }
    }
    return true;
}

void CDialog::EndDialog(int nResult)
{
    result_ = nResult;
    if (isModal_) {
        isModal_ = false;
        PostMessage(WM_NULL);  // wakes the loop
    } else if (m_hWnd) {
        ShowWindow(SW_HIDE);
    }
}

BOOL CDialog::OnInitDialog()
{
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK()
{
    if (UpdateData(TRUE))
        EndDialog(IDOK);
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}

BOOL CDialog::PreTranslateMessage(MSG* pMsg)
{
    return CWnd::PreTranslateMessage(pMsg) || (m_hWnd && IsDialogMessageA(m_hWnd, pMsg));
}
