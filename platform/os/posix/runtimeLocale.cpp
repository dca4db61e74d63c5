#include "platform/os/runtimeLocale.h"

#include "platform/os/posix/locale.h"

#include <clocale>

namespace zk::os {
namespace {

// Texts are UTF-8 in every language.
char const* localeOf(unsigned int codePage) noexcept
{
    switch (codePage) {
    case 932: return "ja_JP.UTF-8";
    case 936: return "zh_CN.UTF-8";
    case 949: return "ko_KR.UTF-8";
    case 950: return "zh_TW.UTF-8";
    default: return "en_US.UTF-8";
    }
}

}  // namespace

unsigned int usersCodePage() noexcept
{
    DWORD codePage = 0;
    GetLocaleInfoA(GetUserDefaultLCID(), LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                   reinterpret_cast<LPSTR>(&codePage), sizeof codePage);
    return codePage;
}

bool setRuntimeLocale(unsigned int codePage) noexcept
{
    return std::setlocale(LC_ALL, localeOf(codePage)) != nullptr;
}

}  // namespace zk::os
