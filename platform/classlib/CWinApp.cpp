#include "platform/classlib/CWinApp.h"

#include "platform/classlib/AfxMessageBox.h"
#include "platform/classlib/filePaths.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

namespace {

constinit std::atomic<CWinApp*> application = nullptr;
constinit std::atomic<HINSTANCE> resourceModule = nullptr;

LPCSTR copyOf(char const* text)
{
    if (!text)
        return nullptr;
    std::size_t const size = std::strlen(text) + 1;
    void* const copy = std::malloc(size);
    if (!copy)
        throw std::bad_alloc();
    return static_cast<LPCSTR>(std::memcpy(copy, text, size));
}

void setIfNull(LPCSTR& text, CString const& value)
{
    if (!text)
        text = copyOf(value);
}

CString executablePath()
{
    CString path;
    for (DWORD room = MAX_PATH + 1;; room *= 2) {
        DWORD const length = GetModuleFileNameA(nullptr, path.GetBuffer(int(room)), room);
        path.ReleaseBuffer(length < room ? int(length) : 0);
        if (length < room)
            return path;
    }
}

}  // namespace

CWinApp::CWinApp(LPCSTR lpszAppName) : CWinApp(lpszAppName, zk::ModuleFrame())
{
    m_nThreadID = GetCurrentThreadId();
    CWinApp* none = nullptr;
    application.compare_exchange_strong(none, this);
}

CWinApp::CWinApp(LPCSTR lpszAppName, zk::ModuleFrame) : m_pszAppName(copyOf(lpszAppName))
{
    m_bAutoDelete = FALSE;
}

CWinApp::~CWinApp()
{
    CWinApp* self = this;
    application.compare_exchange_strong(self, nullptr);
    for (LPCSTR const text : {m_pszAppName, m_pszExeName, m_pszHelpFilePath, m_pszProfileName})
        std::free(const_cast<char*>(text));
}

BOOL CWinApp::InitInstance()
{
    return TRUE;
}

int CWinApp::Run()
{
    return CWinThread::Run();
}

int CWinApp::DoMessageBox(LPCSTR lpszPrompt, UINT nType, UINT nIDPrompt)
{
    return zk::showMessageBox(lpszPrompt, nType, nIDPrompt);
}

CWinApp* AfxGetApp()
{
    return application.load();
}

HINSTANCE AfxGetInstanceHandle()
{
    CWinApp const* const app = AfxGetApp();
    return app && app->m_hInstance ? app->m_hInstance : GetModuleHandleA(nullptr);
}

HINSTANCE AfxGetResourceHandle()
{
    HINSTANCE const module = resourceModule.load();
    return module ? module : AfxGetInstanceHandle();
}

void AfxSetResourceHandle(HINSTANCE hInstResource)
{
    resourceModule.store(hInstResource);
}

LPCSTR AfxGetAppName()
{
    CWinApp const* const app = AfxGetApp();
    if (app && app->m_pszAppName)
        return app->m_pszAppName;
    static CString const executable = zk::withoutExtension(zk::lastComponent(executablePath()));
    return executable;
}

BOOL AfxWinInit(HINSTANCE hInstance, HINSTANCE, LPSTR lpCmdLine, int nCmdShow)
{
    CWinApp* const app = AfxGetApp();
    if (!app)
        return FALSE;
    app->m_hInstance = hInstance;
    app->m_lpCmdLine = lpCmdLine;
    app->m_nCmdShow = nCmdShow;
    CString const path = executablePath();
    CString const file = zk::lastComponent(path);
    CString const folder = path.Left(path.GetLength() - file.GetLength());
    CString const name = zk::withoutExtension(file);
    setIfNull(app->m_pszExeName, name);
    setIfNull(app->m_pszAppName, name);
    setIfNull(app->m_pszHelpFilePath, folder + name + ".HLP");
    setIfNull(app->m_pszProfileName, name + ".INI");
    return TRUE;
}
