#include "Foundtn/util/LocaleManager.h"

#include <clocale>

namespace {

CString originalLocale;

// A copy: the C library's own text changes with the next call.
CString currentLocale()
{
    return std::setlocale(LC_ALL, nullptr);
}

}  // namespace

LocaleManager::LocaleManager()
{
    init();
}

LocaleManager::~LocaleManager() = default;

void LocaleManager::init()
{
    if (originalLocale.IsEmpty())
        originalLocale = currentLocale();
}

int LocaleManager::AddRef()
{
    if (count_ == 0) {
        saved_ = currentLocale();
        if (saved_ != originalLocale)
            std::setlocale(LC_ALL, originalLocale);
    }
    return ++count_;
}

int LocaleManager::Release()
{
    if (count_ < 1)
        return count_;
    if (--count_ != 0)
        return count_;
    if (saved_ != originalLocale)
        std::setlocale(LC_ALL, saved_);
    saved_.Empty();
    return 0;
}

CString LocaleManager::getOrigLocale()
{
    init();
    return originalLocale;
}
