#include "platform/os/posix/dialogs.h"

#include "platform/os/posix/lastError.h"

HWND CreateDialogParamA(HINSTANCE, LPCSTR, HWND, DLGPROC, LPARAM) noexcept
{
    SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return nullptr;
}

BOOL IsDialogMessageA(HWND, MSG*) noexcept
{
    return FALSE;
}
