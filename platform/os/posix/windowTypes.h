// windowTypes.h: the types and numbers of windows and their messages.
#pragma once

#include "platform/os/posix/types.h"

struct HMENU__;
using HMENU = HMENU__*;
struct HICON__;
using HICON = HICON__*;
using HCURSOR = HICON;
struct HBRUSH__;
using HBRUSH = HBRUSH__*;

using WNDPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};
using LPMSG = MSG*;

struct WNDCLASSA {
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
};

struct WNDCLASSEXA {
    UINT cbSize;
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
    HICON hIconSm;
};

struct CREATESTRUCTA {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCSTR lpszName;
    LPCSTR lpszClass;
    DWORD dwExStyle;
};
using LPCREATESTRUCTA = CREATESTRUCTA*;

struct STYLESTRUCT {
    DWORD styleOld;
    DWORD styleNew;
};

struct WINDOWPOS {
    HWND hwnd;
    HWND hwndInsertAfter;
    int x;
    int y;
    int cx;
    int cy;
    UINT flags;
};

struct MINMAXINFO {
    POINT ptReserved;
    POINT ptMaxSize;
    POINT ptMaxPosition;
    POINT ptMinTrackSize;
    POINT ptMaxTrackSize;
};
using LPMINMAXINFO = MINMAXINFO*;

#define HWND_MESSAGE (reinterpret_cast<HWND>(static_cast<LONG_PTR>(-3)))
#define HWND_TOP (reinterpret_cast<HWND>(static_cast<LONG_PTR>(0)))
#define HWND_BOTTOM (reinterpret_cast<HWND>(static_cast<LONG_PTR>(1)))
#define HWND_TOPMOST (reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1)))
#define HWND_NOTOPMOST (reinterpret_cast<HWND>(static_cast<LONG_PTR>(-2)))

#define MAKEINTATOM(atom) (reinterpret_cast<LPSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(atom))))
#define MAKEWPARAM(low, high) (static_cast<WPARAM>(static_cast<DWORD>(MAKELONG(low, high))))
#define MAKELPARAM(low, high) (static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(low, high))))

// Messages.
#define WM_NULL 0x0000u
#define WM_CREATE 0x0001u
#define WM_DESTROY 0x0002u
#define WM_MOVE 0x0003u
#define WM_SIZE 0x0005u
#define WM_ACTIVATE 0x0006u
#define WM_SETFOCUS 0x0007u
#define WM_KILLFOCUS 0x0008u
#define WM_ENABLE 0x000Au
#define WM_SETREDRAW 0x000Bu
#define WM_SETTEXT 0x000Cu
#define WM_GETTEXT 0x000Du
#define WM_GETTEXTLENGTH 0x000Eu
#define WM_PAINT 0x000Fu
#define WM_CLOSE 0x0010u
#define WM_QUIT 0x0012u
#define WM_SHOWWINDOW 0x0018u
#define WM_CANCELMODE 0x001Fu
#define WM_GETMINMAXINFO 0x0024u
#define WM_SETFONT 0x0030u
#define WM_GETFONT 0x0031u
#define WM_WINDOWPOSCHANGING 0x0046u
#define WM_WINDOWPOSCHANGED 0x0047u
#define WM_NOTIFY 0x004Eu
#define WM_STYLECHANGING 0x007Cu
#define WM_STYLECHANGED 0x007Du
#define WM_NCCREATE 0x0081u
#define WM_NCDESTROY 0x0082u
#define WM_NCCALCSIZE 0x0083u
#define WM_GETDLGCODE 0x0087u
#define WM_NCLBUTTONDOWN 0x00A1u
#define WM_NCLBUTTONUP 0x00A2u
#define WM_NCRBUTTONDOWN 0x00A4u
#define WM_NCRBUTTONUP 0x00A5u
#define WM_NCMBUTTONDOWN 0x00A7u
#define WM_NCMBUTTONUP 0x00A8u
#define WM_KEYDOWN 0x0100u
#define WM_KEYUP 0x0101u
#define WM_CHAR 0x0102u
#define WM_SYSKEYDOWN 0x0104u
#define WM_SYSKEYUP 0x0105u
#define WM_INITDIALOG 0x0110u
#define WM_COMMAND 0x0111u
#define WM_SYSCOMMAND 0x0112u
#define WM_TIMER 0x0113u
#define WM_MOUSEMOVE 0x0200u
#define WM_LBUTTONDOWN 0x0201u
#define WM_LBUTTONUP 0x0202u
#define WM_LBUTTONDBLCLK 0x0203u
#define WM_RBUTTONDOWN 0x0204u
#define WM_RBUTTONUP 0x0205u
#define WM_MBUTTONDOWN 0x0207u
#define WM_MBUTTONUP 0x0208u
#define WM_MOUSEWHEEL 0x020Au
#define WM_PARENTNOTIFY 0x0210u
#define WM_USER 0x0400u
#define WM_APP 0x8000u

#define SIZE_RESTORED 0

// Styles.
#define WS_OVERLAPPED 0x00000000u
#define WS_TABSTOP 0x00010000u
#define WS_MAXIMIZEBOX 0x00010000u
#define WS_GROUP 0x00020000u
#define WS_MINIMIZEBOX 0x00020000u
#define WS_THICKFRAME 0x00040000u
#define WS_SYSMENU 0x00080000u
#define WS_HSCROLL 0x00100000u
#define WS_VSCROLL 0x00200000u
#define WS_DLGFRAME 0x00400000u
#define WS_BORDER 0x00800000u
#define WS_CAPTION 0x00C00000u
#define WS_MAXIMIZE 0x01000000u
#define WS_CLIPCHILDREN 0x02000000u
#define WS_CLIPSIBLINGS 0x04000000u
#define WS_DISABLED 0x08000000u
#define WS_VISIBLE 0x10000000u
#define WS_MINIMIZE 0x20000000u
#define WS_CHILD 0x40000000u
#define WS_POPUP 0x80000000u
#define WS_OVERLAPPEDWINDOW                                                                                  \
    (WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX)

#define WS_EX_DLGMODALFRAME 0x00000001u
#define WS_EX_NOPARENTNOTIFY 0x00000004u
#define WS_EX_TOPMOST 0x00000008u
#define WS_EX_CONTROLPARENT 0x00010000u

#define CW_USEDEFAULT (static_cast<int>(0x80000000u))

// Positions.
#define SWP_NOSIZE 0x0001u
#define SWP_NOMOVE 0x0002u
#define SWP_NOZORDER 0x0004u
#define SWP_NOREDRAW 0x0008u
#define SWP_NOACTIVATE 0x0010u
#define SWP_FRAMECHANGED 0x0020u
#define SWP_SHOWWINDOW 0x0040u
#define SWP_HIDEWINDOW 0x0080u
#define SWP_NOCOPYBITS 0x0100u
#define SWP_NOOWNERZORDER 0x0200u

#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_NORMAL 1
#define SW_SHOWMINIMIZED 2
#define SW_SHOWMAXIMIZED 3
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5
#define SW_MINIMIZE 6
#define SW_SHOWMINNOACTIVE 7
#define SW_SHOWNA 8
#define SW_RESTORE 9
#define SW_SHOWDEFAULT 10

#define GW_HWNDFIRST 0u
#define GW_HWNDLAST 1u
#define GW_HWNDNEXT 2u
#define GW_HWNDPREV 3u
#define GW_OWNER 4u
#define GW_CHILD 5u

// What SetWindowLongPtrA() and its companions reach.
#define GWL_STYLE (-16)
#define GWL_EXSTYLE (-20)
#define GWL_ID (-12)
#define GWLP_WNDPROC (-4)
#define GWLP_HINSTANCE (-6)
#define GWLP_HWNDPARENT (-8)
#define GWLP_ID (-12)
#define GWLP_USERDATA (-21)

// Controls.
#define BS_PUSHBUTTON 0x00000000u
#define BS_DEFPUSHBUTTON 0x00000001u
#define BS_CHECKBOX 0x00000002u
#define BS_AUTOCHECKBOX 0x00000003u
#define BS_RADIOBUTTON 0x00000004u
#define BS_3STATE 0x00000005u
#define BS_AUTO3STATE 0x00000006u
#define BS_GROUPBOX 0x00000007u
#define BS_AUTORADIOBUTTON 0x00000009u
#define BS_TYPEMASK 0x0000000Fu

#define BM_GETCHECK 0x00F0u
#define BM_SETCHECK 0x00F1u
#define BM_GETSTATE 0x00F2u
#define BM_SETSTATE 0x00F3u
#define BM_SETSTYLE 0x00F4u
#define BM_CLICK 0x00F5u

#define BST_UNCHECKED 0x0000u
#define BST_CHECKED 0x0001u
#define BST_INDETERMINATE 0x0002u
#define BST_PUSHED 0x0004u

#define BN_CLICKED 0
#define EN_SETFOCUS 0x0100
#define EN_KILLFOCUS 0x0200
#define EN_CHANGE 0x0300
#define EN_UPDATE 0x0400

#define ES_MULTILINE 0x0004u

#define EM_SETSEL 0x00B1u
#define EM_GETLINECOUNT 0x00BAu
#define EM_SETREADONLY 0x00CFu

#define STM_SETICON 0x0170u
#define STM_GETICON 0x0171u

#define CB_SETEDITSEL 0x0142u
#define CB_ADDSTRING 0x0143u
#define CB_GETCOUNT 0x0146u
#define CB_GETCURSEL 0x0147u
#define CB_SETCURSEL 0x014Eu

#define DLGC_DEFPUSHBUTTON 0x0010
#define DLGC_UNDEFPUSHBUTTON 0x0020
#define DLGC_RADIOBUTTON 0x0040
#define DLGC_STATIC 0x0100
#define DLGC_BUTTON 0x2000

// Taking messages.
#define PM_NOREMOVE 0x0000u
#define PM_REMOVE 0x0001u
#define PM_NOYIELD 0x0002u
