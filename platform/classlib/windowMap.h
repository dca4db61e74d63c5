// windowMap.h: which object stands for which window.
#pragma once

#include "platform/os/os.h"

class CWnd;

namespace zk {

/// One map for the process: windows and their objects are known to all threads. All calls are atomic.
namespace windowMap {

/// False, with nothing changed, if the window has an object already.
bool enter(HWND window, CWnd* object);
void leave(HWND window) noexcept;
CWnd* find(HWND window) noexcept;

/// The temporary object of a window that has no other: made at the first call, ended by
/// deleteTemporaryObjects() in the same thread, at the latest some time after the window is gone.
CWnd* temporaryObject(HWND window);
void deleteTemporaryObjects();

}  // namespace windowMap
}  // namespace zk
