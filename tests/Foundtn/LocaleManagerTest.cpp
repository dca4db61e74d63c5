#include "Foundtn/util/LocaleManager.h"

#include "tests/support/freshProcess.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <type_traits>

namespace {

static_assert(std::has_virtual_destructor_v<LocaleManager>);

std::string current()
{
    return std::setlocale(LC_ALL, nullptr);
}

// A locale other than "C" that the system has: a category alone makes one too.
std::string switchToAnother()
{
    for (char const* const name : {"C.UTF-8", "en_US.UTF-8", ".1252", "English"}) {
        if (std::setlocale(LC_CTYPE, name) && current() != "C")
            return current();
    }
    return {};
}

TEST_IN_FRESH_PROCESS(LocaleManager, switchesToTheOriginalLocaleAndBackAtTheLastRelease)
{
    LocaleManager locale;
    std::string const other = switchToAnother();
    ASSERT_NE(other, "");

    EXPECT_EQ(locale.AddRef(), 1);
    EXPECT_EQ(current(), "C");
    EXPECT_EQ(locale.AddRef(), 2);
    EXPECT_EQ(current(), "C");

    EXPECT_EQ(locale.Release(), 1);
    EXPECT_EQ(current(), "C");
    EXPECT_EQ(locale.Release(), 0);
    EXPECT_EQ(current(), other);
}

TEST_IN_FRESH_PROCESS(LocaleManager, ignoresAReleaseTooMany)
{
    LocaleManager locale;
    locale.AddRef();
    locale.AddRef();
    locale.Release();
    locale.Release();
    std::string const other = switchToAnother();

    EXPECT_EQ(locale.Release(), 0);
    EXPECT_EQ(current(), other);
    EXPECT_EQ(locale.AddRef(), 1);
    EXPECT_EQ(current(), "C");
    EXPECT_EQ(locale.Release(), 0);
    EXPECT_EQ(current(), other);
}

TEST_IN_FRESH_PROCESS(LocaleManager, takesTheLocaleOfTheFirstObjectAsTheOriginal)
{
    std::string const other = switchToAnother();
    EXPECT_EQ(std::string(LocaleManager::getOrigLocale()), other);
    std::setlocale(LC_ALL, "C");

    LocaleManager locale;
    EXPECT_EQ(std::string(LocaleManager::getOrigLocale()), other);
    locale.AddRef();
    EXPECT_EQ(current(), other);
    locale.Release();
    EXPECT_EQ(current(), "C");
}

TEST_IN_FRESH_PROCESS(LocaleManager, leavesTheOriginalLocaleInForce)
{
    LocaleManager locale;
    std::string const before = current();

    locale.AddRef();
    EXPECT_EQ(current(), before);
    locale.Release();
    EXPECT_EQ(current(), before);
}

}  // namespace
