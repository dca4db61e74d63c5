#include "platform/os/posix/controls.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/shieldedLock.h"
#include "platform/os/posix/textOperations.h"
#include "platform/os/posix/threadRecord.h"
#include "platform/os/posix/windowTable.h"
#include "platform/os/posix/windows.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace zk::os {
namespace {

struct Classes {
    std::mutex mutex;
    std::vector<std::shared_ptr<WindowClass>> classes;
    ATOM nextAtom = 0xC000;
    inline static bool isMade = false;

    Classes()
    {
        isMade = true;
        for (Control const& control : controls())
            add(control.className, control.procedure, 0, nullptr);
    }

    std::shared_ptr<WindowClass> const& add(char const* name, WNDPROC procedure, int extraBytes,
                                            HINSTANCE instance)
    {
        auto added = std::make_shared<WindowClass>();
        added->name = name;
        added->atom = nextAtom;
        added->procedure = procedure;
        added->extraBytes = extraBytes;
        added->instance = instance;
        classes.push_back(std::move(added));
        ++nextAtom;
        return classes.back();
    }

    auto find(LPCSTR nameOrAtom)
    {
        auto const number = reinterpret_cast<std::uintptr_t>(nameOrAtom);
        bool const isAtom = number < 0x10000;
        return std::find_if(classes.begin(), classes.end(), [&](std::shared_ptr<WindowClass> const& entry) {
            return isAtom ? entry->atom == number : _stricmp(entry->name.c_str(), nameOrAtom) == 0;
        });
    }
};

// Never destroyed: windows are made and closed by static objects too.
Classes& classes()
{
    static NeverDestroyed<Classes> instance;
    return instance.object;
}

AtModuleEnd<[] {
    if (!Classes::isMade)
        return;
    ShieldedLock const lock(classes().mutex);
    std::vector<std::shared_ptr<WindowClass>>().swap(classes().classes);
}> const emptiedClasses;

DWORD registerClass(char const* name, WNDPROC procedure, int extraBytes, HINSTANCE instance, ATOM& atom)
{
    constexpr int mostExtraBytes = 1 << 16;
    constexpr ATOM lastAtom = 0xFFFF;
    bool const isNumber = reinterpret_cast<std::uintptr_t>(name) < 0x10000;
    if (isNumber || !*name || !procedure || extraBytes < 0 || extraBytes > mostExtraBytes)
        return ERROR_INVALID_PARAMETER;
    Shield const shield;
    Classes& all = classes();
    std::lock_guard const lock(all.mutex);
    if (all.find(name) != all.classes.end())
        return ERROR_CLASS_ALREADY_EXISTS;
    if (all.nextAtom == lastAtom)
        return ERROR_NOT_ENOUGH_MEMORY;
    atom = all.add(name, procedure, extraBytes, instance)->atom;
    return ERROR_SUCCESS;
}

// Runs `work`, which gives an error number, and turns memory that runs out into one.
template <class Work>
BOOL reportOf(Work&& work) noexcept
{
    try {
        return report(work());
    } catch (std::bad_alloc const&) {
        return report(ERROR_NOT_ENOUGH_MEMORY);
    }
}

}  // namespace

std::shared_ptr<WindowClass> findWindowClass(LPCSTR nameOrAtom)
{
    Shield const shield;
    Classes& all = classes();
    std::lock_guard const lock(all.mutex);
    auto const entry = all.find(nameOrAtom);
    return entry != all.classes.end() ? *entry : nullptr;
}

}  // namespace zk::os

using namespace zk::os;

ATOM RegisterClassExA(WNDCLASSEXA const* description) noexcept
{
    ATOM atom = 0;
    reportOf([&]() -> DWORD {
        if (description->cbSize != sizeof *description)
            return ERROR_INVALID_PARAMETER;
        return registerClass(description->lpszClassName, description->lpfnWndProc, description->cbWndExtra,
                             description->hInstance, atom);
    });
    return atom;
}

ATOM RegisterClassA(WNDCLASSA const* description) noexcept
{
    ATOM atom = 0;
    reportOf([&] {
        return registerClass(description->lpszClassName, description->lpfnWndProc, description->cbWndExtra,
                             description->hInstance, atom);
    });
    return atom;
}

BOOL UnregisterClassA(LPCSTR name, HINSTANCE) noexcept
{
    return reportOf([&]() -> DWORD {
        WindowTable const table;  // guards the count of windows
        Classes& all = classes();
        std::lock_guard const lock(all.mutex);
        auto const entry = all.find(name);
        if (entry == all.classes.end())
            return ERROR_CLASS_DOES_NOT_EXIST;
        if ((*entry)->windows > 0)
            return ERROR_CLASS_HAS_WINDOWS;
        all.classes.erase(entry);
        return ERROR_SUCCESS;
    });
}

int GetClassNameA(HWND handle, LPSTR name, int room) noexcept
{
    WindowTable const table;
    Window const* const window = table.require(handle);
    if (!window)
        return 0;
    if (room <= 0) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    std::size_t const length = window->windowClass->name.copy(name, static_cast<std::size_t>(room) - 1);
    name[length] = '\0';
    return static_cast<int>(length);
}
