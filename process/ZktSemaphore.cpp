#include "process/ZktSemaphore.h"

namespace {

constexpr long unitsByDefault = 0xFFFFFF;

}  // namespace

ZktSemaphore::ZktSemaphore() : ZktSemaphore(nullptr, unitsByDefault, unitsByDefault, nullptr)
{
}

ZktSemaphore::ZktSemaphore(SECURITY_ATTRIBUTES* security, long initialCount, long maximumCount,
                           char const* name)
    : handle_(
          CreateSemaphoreA(security, static_cast<LONG>(initialCount), static_cast<LONG>(maximumCount), name))
{
}

ZktSemaphore::~ZktSemaphore()
{
    CloseHandle(handle_);
}
