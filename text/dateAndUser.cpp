#include "text/dateAndUser.h"

#include "platform/classlib/CTime.h"
#include "platform/os/os.h"

CString omGetCurrentUser()
{
    constexpr DWORD room = 260;
    char name[room];
    DWORD length = room;
    if (GetUserNameA(name, &length))
        return CString(name);
    DWORD const found = GetEnvironmentVariableA("USERNAME", name, room);
    return found > 0 && found < room ? CString(name) : CString();
}

CString omGetCurrentTime()
{
    CTime const now = CTime::GetCurrentTime();
    __time64_t const seconds = now.GetTime();
    std::tm local;
    int const hour = _localtime64_s(&local, &seconds) == 0 ? local.tm_hour : -1;
    return now.Format("%#I:%M %z ") + (hour < 12 ? "AM " : "PM ");
}

CString omGetCurrentDate()
{
    return CTime::GetCurrentTime().Format("%a, %#d, %b %Y ");
}

CString omGetCurrentYear()
{
    return CTime::GetCurrentTime().Format("%Y");
}
