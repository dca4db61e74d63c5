#include "platform/os/runtimeLocale.h"

#include "platform/os/os.h"

#include <clocale>

namespace zk::os {

unsigned int usersCodePage() noexcept
{
    return GetACP();
}

bool setRuntimeLocale(unsigned int codePage) noexcept
{
    switch (codePage) {
    case 932: return std::setlocale(LC_ALL, ".932") != nullptr;
    case 936: return std::setlocale(LC_ALL, ".936") != nullptr;
    case 949: return std::setlocale(LC_ALL, ".949") != nullptr;
    case 950: return std::setlocale(LC_ALL, ".950") != nullptr;
    default: return std::setlocale(LC_ALL, ".1252") != nullptr;
    }
}

}  // namespace zk::os
