#include "process/ZktMutex.h"

ZktMutex::ZktMutex() : ZktMutex(nullptr, 0, nullptr)
{
}

ZktMutex::ZktMutex(int initialOwner) : ZktMutex(nullptr, initialOwner, nullptr)
{
}

ZktMutex::ZktMutex(SECURITY_ATTRIBUTES* security, int initialOwner, char const* name)
    : handle_(CreateMutexA(security, initialOwner, name))
{
}

ZktMutex::~ZktMutex()
{
    CloseHandle(handle_);
}
