// CCmdTarget.h: objects that handle messages by a table, the message map.
//
//   class Panel : public CWnd {
//       void OnSize(UINT type, int width, int height);
//       void OnApply();
//       LRESULT OnOutput(WPARAM, LPARAM);
//       DECLARE_MESSAGE_MAP()                        // in the class's body
//   };
//
//   BEGIN_MESSAGE_MAP(Panel, CWnd)                   // in one source file
//       ON_WM_SIZE()
//       ON_BN_CLICKED(1001, OnApply)
//       ON_MESSAGE(1025, OnOutput)
//   END_MESSAGE_MAP()
//
// A message is looked for in the map of the object's class, then in that of
// its base class, and so on. The compiler checks that a handler fits its row.
// Inside the map the class may be called ThisClass.
#pragma once

#include "platform/classlib/CObject.h"

class CCmdTarget;

/// What a row of a message map handles.
enum class ZkMessageKind : UINT {
    end,      ///< The last row.
    window,   ///< A window message.
    command,  ///< A command, or a notification of a control.
};

/// One row of a message map.
struct AFX_MSGMAP_ENTRY {
    ZkMessageKind kind;
    UINT nMessage;  ///< The window message; for a command its notification code.
    UINT nID;       ///< For a command: the first
    UINT nLastID;   ///< and the last id.
    LRESULT (*pfn)(CCmdTarget* target, WPARAM wParam, LPARAM lParam);
};

/// The message map of a class.
struct AFX_MSGMAP {
    AFX_MSGMAP const* (*pfnGetBaseMap)();  ///< Null for the last class of a chain.
    AFX_MSGMAP_ENTRY const* lpEntries;     ///< Rows; ZkMessageKind::end ends them.
};

/// The base of windows, threads and the application.
class ZK_UTIL_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)

    ~CCmdTarget() override;

    /// Calls the handler of command `nID` with notification code `nCode` (0 for a menu or a button's
    /// click). FALSE if there is none.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra = nullptr, void* pHandlerInfo = nullptr);

protected:
    CCmdTarget() = default;

    static AFX_MSGMAP const* GetThisMessageMap();
    virtual AFX_MSGMAP const* GetMessageMap() const;

    /// Calls the handler of a window message. False, with `*result` unchanged, if there is none.
    bool callMessageHandler(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
};

/// The notification code of a plain command.
#define CN_COMMAND 0

namespace zk {

// One function per handler and way of calling it, so that a map holds plain pointers.
template <auto handler>
struct MessageHandler;

template <class Class, class Result, class... Arguments, Result (Class::*handler)(Arguments...)>
struct MessageHandler<handler> {
    static LRESULT message(CCmdTarget* target, WPARAM wParam, LPARAM lParam)
    {
        return (static_cast<Class*>(target)->*handler)(wParam, lParam);
    }
    static LRESULT plain(CCmdTarget* target, WPARAM, LPARAM)
    {
        (static_cast<Class*>(target)->*handler)();
        return 0;
    }
    static LRESULT size(CCmdTarget* target, WPARAM wParam, LPARAM lParam)
    {
        (static_cast<Class*>(target)->*handler)(UINT(wParam), int(LOWORD(lParam)), int(HIWORD(lParam)));
        return 0;
    }
    static LRESULT minMaxInfo(CCmdTarget* target, WPARAM, LPARAM lParam)
    {
        (static_cast<Class*>(target)->*handler)(reinterpret_cast<MINMAXINFO*>(lParam));
        return 0;
    }
};

}  // namespace zk

/// Gives a class a message map; in its body. What follows it is protected.
#define DECLARE_MESSAGE_MAP()                                                                                \
protected:                                                                                                   \
    static AFX_MSGMAP const* GetThisMessageMap();                                                            \
    AFX_MSGMAP const* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                               \
    AFX_MSGMAP const* theClass::GetMessageMap() const                                                        \
    {                                                                                                        \
        return GetThisMessageMap();                                                                          \
    }                                                                                                        \
    AFX_MSGMAP const* theClass::GetThisMessageMap()                                                          \
    {                                                                                                        \
        using ThisClass [[maybe_unused]] = theClass;                                                         \
        using TheBaseClass = baseClass;                                                                      \
        static constexpr AFX_MSGMAP_ENTRY entries[] = {

// clang-format off
#define END_MESSAGE_MAP()                                                                                    \
            {ZkMessageKind::end, 0, 0, 0, nullptr}};                                                         \
        static constexpr AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries};                       \
        return &map;                                                                                         \
    }
// clang-format on

/// LRESULT memberFxn(WPARAM, LPARAM): any window message.
#define ON_MESSAGE(number, memberFxn)                                                                        \
    {ZkMessageKind::window, UINT(number), 0, 0, &zk::MessageHandler<&ThisClass::memberFxn>::message},

/// void memberFxn(): a command by its id, or by a range of ids.
#define ON_COMMAND(id, memberFxn) ON_CONTROL(CN_COMMAND, id, memberFxn)
#define ON_COMMAND_RANGE(id, idLast, memberFxn)                                                              \
    {ZkMessageKind::command, CN_COMMAND, UINT(id), UINT(idLast),                                             \
     &zk::MessageHandler<&ThisClass::memberFxn>::plain},

/// void memberFxn(): a notification of a control by its code, and the click on a button.
#define ON_CONTROL(code, id, memberFxn)                                                                      \
    {ZkMessageKind::command, UINT(code), UINT(id), UINT(id),                                                 \
     &zk::MessageHandler<&ThisClass::memberFxn>::plain},
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(0, id, memberFxn)

/// void OnSize(UINT type, int width, int height)
#define ON_WM_SIZE() {ZkMessageKind::window, WM_SIZE, 0, 0, &zk::MessageHandler<&ThisClass::OnSize>::size},

/// void OnGetMinMaxInfo(MINMAXINFO* info)
#define ON_WM_GETMINMAXINFO()                                                                                \
    {ZkMessageKind::window, WM_GETMINMAXINFO, 0, 0,                                                          \
     &zk::MessageHandler<&ThisClass::OnGetMinMaxInfo>::minMaxInfo},
