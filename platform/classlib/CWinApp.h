// CWinApp.h: the application object of the host.
//
//   class Host : public CWinApp {
//       BOOL InitInstance() override;
//   };
//   Host host;                                            // at file scope
//
//   int main()
//   {
//       AfxWinInit(GetModuleHandleA(nullptr), nullptr, GetCommandLineA(), 0);
//       return host.InitInstance() ? host.Run() : host.ExitInstance();
//   }
//
// A process has at most one: the first that is made, for as long as it lives.
// All texts of the object are null or made with malloc(), and freed by the
// destructor: who replaces one frees the old one and puts a copy in its place.
#pragma once

#include "platform/classlib/CWinThread.h"

namespace zk {

/// Says that an application object is the frame of a module and not the host's.
struct ModuleFrame { };

}  // namespace zk

class ZK_UTIL_API CWinApp : public CWinThread {
    DECLARE_DYNAMIC(CWinApp)

    /// Becomes the process's application object if there is none. The name is copied; null is no name.
    explicit CWinApp(LPCSTR lpszAppName = nullptr);
    ~CWinApp() override;

    /// The application begins here; TRUE unless overridden.
    BOOL InitInstance() override;
    /// The message loop, up to WM_QUIT.
    int Run() override;

    /// Shows a message box, as AfxMessageBox() does; an application may have its own way.
    virtual int DoMessageBox(LPCSTR lpszPrompt, UINT nType, UINT nIDPrompt);

    HINSTANCE m_hInstance = nullptr;
    LPSTR m_lpCmdLine = nullptr;  ///< The command line; not owned.
    int m_nCmdShow = 0;
    LPCSTR m_pszAppName = nullptr;       ///< What the user knows it by.
    LPCSTR m_pszExeName = nullptr;       ///< The executable's name without folder and extension.
    LPCSTR m_pszHelpFilePath = nullptr;  ///< The executable's path with the extension ".HLP".
    LPCSTR m_pszProfileName = nullptr;   ///< The profile file, by default the executable's name with ".INI".

protected:
    /// For a module's own object, which never is the process's application.
    CWinApp(LPCSTR lpszAppName, zk::ModuleFrame);
};

/// The host's application object, or null if the host made none.
ZK_UTIL_API CWinApp* AfxGetApp();

/// The module whose resources dialogs come from: the application's m_hInstance, by default the executable.
ZK_UTIL_API HINSTANCE AfxGetInstanceHandle();
ZK_UTIL_API HINSTANCE AfxGetResourceHandle();
ZK_UTIL_API void AfxSetResourceHandle(HINSTANCE hInstResource);

/// The application's m_pszAppName, or the executable's name. Valid as long as the application doesn't change it.
ZK_UTIL_API LPCSTR AfxGetAppName();

/// Gives the application object what the system knows: instance, command line, names. Those
/// texts that are set already stay. FALSE if there is no application object.
ZK_UTIL_API BOOL AfxWinInit(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR lpCmdLine, int nCmdShow);
