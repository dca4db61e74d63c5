// CDialog.h: a dialog from a template, modal or modeless.
//
//   class Confirm : public CDialog {
//   public:
//       explicit Confirm(CWnd* parent) : CDialog(5511, parent) {}
//       BOOL OnInitDialog() override;
//   };
//   if (Confirm(nullptr).DoModal() == IDOK)
//       ...
//
// The template comes from AfxGetResourceHandle()'s module. A dialog that can't
// be made, because the template or the system's means to show it are missing,
// is a failure of DoModal() or Create(), never a wait.
#pragma once

#include "platform/classlib/CWnd.h"

#include <exception>

class ZK_UTIL_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)

    /// For Create().
    CDialog();
    /// For DoModal(): template and owner; null is the main window.
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    explicit CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    /// Shows the dialog until EndDialog(), with its owner disabled; gives what EndDialog() was given.
    ///
    /// -1 with the last error set if it can't be made, and if WM_QUIT ends the program meanwhile.
    virtual INT_PTR DoModal();
    /// Ends DoModal(). A modeless dialog is hidden: it overrides OnOK() and OnCancel() to end itself.
    void EndDialog(int nResult);

    /// Makes a modeless dialog. FALSE with the last error set if that fails.
    BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    BOOL Create(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);

    /// The dialog has its controls. TRUE lets the system place the focus. Does UpdateData(FALSE) by default.
    virtual BOOL OnInitDialog();
    /// The OK and Cancel buttons: take over the data and end; end. Cancel is also escape and the closing of the window.
    virtual void OnOK();
    virtual void OnCancel();

    /// The keys of dialogs: tab, arrows, enter, escape.
    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    DECLARE_MESSAGE_MAP()

private:
    static INT_PTR CALLBACK dialogProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    BOOL makeWindow(LPCSTR templateName, HWND owner);
    bool runModalLoop();

    LPCSTR templateName_ = nullptr;  // a name, or a number in the system's way
    CString templateText_;           // what a name is kept in
    CWnd* parent_ = nullptr;
    INT_PTR result_ = -1;
    std::exception_ptr thrown_;  // by OnInitDialog(): it must not pass through the system's frames
    bool isModal_ = false;
};
