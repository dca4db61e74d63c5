// Windows and their objects, and the road of a message.
#include "platform/classlib/CWnd.h"

#include "platform/classlib/CDataExchange.h"
#include "platform/classlib/CException.h"
#include "platform/classlib/CRect.h"
#include "platform/classlib/windowMap.h"

#include <utility>

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
END_MESSAGE_MAP()

namespace {

constexpr char plainClassName[] = "ZkWindow";

struct MessageInHand {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

// The object whose window is being created: its first message comes before its handle is known.
thread_local constinit CWnd* objectInCreation = nullptr;
thread_local constinit MessageInHand messageInHand = {};

// The class of plain windows goes with the module.
class PlainClass {
public:
    explicit PlainClass(WNDPROC procedure)
    {
        WNDCLASSA description = {};
        description.lpfnWndProc = procedure;
        description.hInstance = GetModuleHandleA(nullptr);
        description.lpszClassName = plainClassName;
        registered_ = RegisterClassA(&description) != 0;
    }
    ~PlainClass()
    {
        if (registered_)
            UnregisterClassA(plainClassName, GetModuleHandleA(nullptr));
    }
    PlainClass(PlainClass const&) = delete;
    PlainClass& operator=(PlainClass const&) = delete;

private:
    bool registered_;
};

}  // namespace

CWnd::CWnd() = default;

CWnd::~CWnd()
{
    if (m_hWnd)
        CWnd::DestroyWindow();
}

// -- Window and object ---------------------------------------------------------------

CWnd* CWnd::FromHandlePermanent(HWND hWnd)
{
    return hWnd ? zk::windowMap::find(hWnd) : nullptr;
}

CWnd* CWnd::FromHandle(HWND hWnd)
{
    if (!hWnd)
        return nullptr;
    if (CWnd* const object = FromHandlePermanent(hWnd))
        return object;
    return zk::windowMap::temporaryObject(hWnd);
}

void CWnd::DeleteTempMap()
{
    zk::windowMap::deleteTemporaryObjects();
}

BOOL CWnd::Attach(HWND hWnd)
{
    if (!hWnd || m_hWnd || !zk::windowMap::enter(hWnd, this))
        return FALSE;
    m_hWnd = hWnd;
    return TRUE;
}

HWND CWnd::Detach()
{
    HWND const window = m_hWnd;
    if (window)
        forgetWindow();
    return window;
}

void CWnd::forgetWindow() noexcept
{
    if (zk::windowMap::find(m_hWnd) == this)
        zk::windowMap::leave(m_hWnd);
    m_hWnd = nullptr;
    superProc_ = nullptr;
}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    if (!IsWindow(hWnd) || !Attach(hWnd))
        return FALSE;
    PreSubclassWindow();
    auto const before = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&windowProc)));
    superProc_ = before == &windowProc ? nullptr : before;
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent)
{
    return pParent && SubclassWindow(::GetDlgItem(pParent->m_hWnd, int(nID)));
}

HWND CWnd::UnsubclassWindow()
{
    if (m_hWnd && superProc_)
        SetWindowLongPtrA(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(superProc_));
    return Detach();
}

void CWnd::PreSubclassWindow()
{
}

BOOL CWnd::Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, RECT const& rect,
                  CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect.left, rect.top,
                    CRect(rect).Width(), CRect(rect).Height(), pParentWnd ? pParentWnd->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(UINT_PTR(nID)));
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, int x, int y,
                    int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam)
{
    if (m_hWnd) {
        SetLastError(ERROR_ALREADY_EXISTS);
        return FALSE;
    }
    if (!lpszClassName) {
        static PlainClass const plainClass(&windowProc);
        lpszClassName = plainClassName;
    }
    CWnd* const outer = std::exchange(objectInCreation, this);
    HWND const window = CreateWindowExA(dwExStyle, lpszClassName, lpszWindowName, dwStyle, x, y, nWidth,
                                        nHeight, hWndParent, nIDorHMenu, GetModuleHandleA(nullptr), lpParam);
    objectInCreation = outer;
    // A class of the system's does not know the object yet.
    return window && (m_hWnd == window || SubclassWindow(window));
}

BOOL CWnd::DestroyWindow()
{
    HWND const window = m_hWnd;
    if (!window)
        return FALSE;
    BOOL const destroyed = ::DestroyWindow(window);
    if (m_hWnd == window && destroyed)
        forgetWindow();  // it was attached, not subclassed: its last message went elsewhere
    return destroyed;
}

// -- The road of a message -----------------------------------------------------------

LRESULT CALLBACK CWnd::windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    CWnd* object = FromHandlePermanent(hWnd);
    if (!object && objectInCreation && std::exchange(objectInCreation, nullptr)->Attach(hWnd))
        object = FromHandlePermanent(hWnd);
    return object ? object->receive(message, wParam, lParam)
                  : ::DefWindowProcA(hWnd, message, wParam, lParam);
}

LRESULT CWnd::receive(UINT message, WPARAM wParam, LPARAM lParam)
{
    MessageInHand const outer = std::exchange(messageInHand, {message, wParam, lParam});
    LRESULT result = 0;
    try {
        result = WindowProc(message, wParam, lParam);
    } catch (CException* exception) {
        if (!exception->IsKindOf(RUNTIME_CLASS(CUserException)))
            exception->ReportError(MB_ICONEXCLAMATION);
        exception->Delete();
        if (message == WM_CREATE)
            result = -1;
    }
    messageInHand = outer;
    if (message == WM_NCDESTROY) {
        forgetWindow();
        PostNcDestroy();
    }
    return result;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    return OnWndMsg(message, wParam, lParam, &result) ? result : DefWindowProc(message, wParam, lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message == WM_COMMAND) {
        if (!OnCommand(wParam, lParam))
            return FALSE;
        if (pResult)
            *pResult = 0;
        return TRUE;
    }
    return callMessageHandler(message, wParam, lParam, pResult);
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    // Without a control the high word tells a menu from a key: both are plain commands.
    int const code = lParam != 0 ? int(HIWORD(wParam)) : CN_COMMAND;
    return OnCmdMsg(LOWORD(wParam), code);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return superProc_ ? CallWindowProcA(superProc_, m_hWnd, message, wParam, lParam)
                      : ::DefWindowProcA(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default()
{
    return DefWindowProc(messageInHand.message, messageInHand.wParam, messageInHand.lParam);
}

void CWnd::PostNcDestroy()
{
}

void CWnd::OnSize(UINT, int, int)
{
    Default();
}

void CWnd::OnGetMinMaxInfo(MINMAXINFO*)
{
    Default();
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return ::SendMessageA(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) const
{
    if (!m_hWnd) {  // to the system a null window is the calling thread
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    return ::PostMessageA(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PreTranslateMessage(MSG*)
{
    return FALSE;
}

BOOL CWnd::WalkPreTranslateTree(HWND hWndStop, MSG* pMsg)
{
    for (HWND window = pMsg->hwnd; window; window = ::GetParent(window)) {
        CWnd* const object = FromHandlePermanent(window);
        if (object && object->PreTranslateMessage(pMsg))
            return TRUE;
        if (window == hWndStop)
            break;
    }
    return FALSE;
}

BOOL CWnd::UpdateData(BOOL bSaveAndValidate)
{
    CDataExchange exchange(this, bSaveAndValidate);
    try {
        DoDataExchange(&exchange);
        return TRUE;
    } catch (CUserException* exception) {  // the user has been told
        exception->Delete();
        return FALSE;
    }
}

void CWnd::DoDataExchange(CDataExchange*)
{
}
