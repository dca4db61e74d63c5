// windowTable.h: the records of all windows of the process.
//
//   {
//       WindowTable const table;                        // holds the lock
//       if (Window const* const window = table.find(handle))
//           text = window->text;
//   }
//
// A window's handle is the number of its record and the record's generation, in
// 32 bits, so that the handle of a destroyed window is no window's.
#pragma once

#include "platform/os/posix/threadQueue.h"
#include "platform/os/posix/threadRecord.h"
#include "platform/os/posix/windowTypes.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace zk::os {

struct WindowClass {
    std::string name;
    ATOM atom = 0;
    WNDPROC procedure = nullptr;
    int extraBytes = 0;
    HINSTANCE instance = nullptr;
    int windows = 0;
};

struct Window {
    HWND handle = nullptr;
    std::shared_ptr<ThreadQueue> queue;  // of its thread
    std::shared_ptr<WindowClass> windowClass;
    WNDPROC procedure = nullptr;
    HINSTANCE instance = nullptr;
    std::string text;
    DWORD style = 0;
    DWORD exStyle = 0;
    RECT place{};           // relative to its parent; without one, to the screen
    HWND parent = nullptr;  // of a child window
    HWND owner = nullptr;   // of another one
    bool isMessageOnly = false;
    LONG_PTR id = 0;
    LONG_PTR userData = 0;
    std::vector<std::byte> extra;
    std::vector<HWND> children;  // from top to bottom
    int check = 0;               // of a button
    bool isEnding = false;
    bool needsSize = false;  // to be told its size and place when it is first shown
};

/// Access to the table; the lock is held for the life of the object.
class WindowTable {
public:
    WindowTable();
    WindowTable(WindowTable const&) = delete;
    WindowTable& operator=(WindowTable const&) = delete;

    /// The record of a window, or null.
    Window* find(HWND handle) const noexcept;

    /// The same, with ERROR_INVALID_WINDOW_HANDLE if there is none.
    Window* require(HWND handle) const noexcept;

    /// Makes a record, and puts it among its parent's children or the top-level windows. Null when
    /// the table is full. std::bad_alloc leaves everything as it was.
    Window* add(HWND parent, bool onTop);

    /// Takes the record away from its siblings and frees it.
    void remove(HWND handle) noexcept;

    /// The windows next to one, itself among them, from top to bottom.
    std::vector<HWND>& siblings(Window const& window) const noexcept;

    /// Puts a window among the children of another one, or with null among the top-level windows.
    void moveTo(Window& window, HWND parent, bool onTop);

    /// All windows below one, each before those below it.
    std::vector<HWND> descendants(Window const& window) const;

    bool isBelow(HWND handle, HWND ancestor) const noexcept;

    /// The screen position of a window's upper left corner.
    POINT origin(Window const& window) const noexcept;

    /// The handles of all windows of a thread.
    std::vector<HWND> ofThread(ThreadQueue const& queue) const;

private:
    Shield shield_;  // a thread that is ended must not hold the lock
    std::unique_lock<std::mutex> lock_;
};

/// The class of a name or atom, or null.
std::shared_ptr<WindowClass> findWindowClass(LPCSTR nameOrAtom);

/// Sends WM_SIZE and WM_MOVE to an overlapped window that is shown for the first time.
void tellFirstSize(HWND handle);

/// Frees the windows of a thread that has ended, without a message.
void removeWindowsOf(ThreadQueue const& queue) noexcept;

}  // namespace zk::os
