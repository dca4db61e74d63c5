#include "platform/os/threadName.h"

#include <cstddef>

namespace zk::os {
namespace {

constexpr DWORD nameException = 0x406D1388;

// What a debugger expects as the exception's arguments.
struct NameRecord {
    unsigned int type;
    char const* name;
    unsigned int threadId;
    unsigned int flags;
};
constexpr DWORD argumentCount = sizeof(NameRecord) / sizeof(ULONG_PTR);
static_assert(argumentCount == 3);

LONG CALLBACK passOver(EXCEPTION_POINTERS* exception)
{
    return exception->ExceptionRecord->ExceptionCode == nameException ? EXCEPTION_CONTINUE_EXECUTION
                                                                      : EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void nameThread(DWORD threadId, char const* name) noexcept
{
    DWORD const lastError = GetLastError();
    NameRecord const record{0x1000, name, threadId, 0};
    constexpr ULONG asTheFirst = 1;
    if (PVOID const handler = AddVectoredExceptionHandler(asTheFirst, passOver)) {
        RaiseException(nameException, 0, argumentCount, reinterpret_cast<ULONG_PTR const*>(&record));
        RemoveVectoredExceptionHandler(handler);
    }
    SetLastError(lastError);
}

}  // namespace zk::os
