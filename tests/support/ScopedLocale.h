// ScopedLocale.h: puts a locale in force for the life of the object.
//
//   ScopedLocale const german("German_Germany.1252");
//   if (!german.isSet())
//       GTEST_SKIP() << "...";                         // the machine does not have it
//
// Process-wide.
#pragma once

#include <clocale>
#include <string>

class ScopedLocale {
public:
    explicit ScopedLocale(char const* name)
        : before_(std::setlocale(LC_ALL, nullptr)), isSet_(std::setlocale(LC_ALL, name) != nullptr)
    {
    }
    ~ScopedLocale() { std::setlocale(LC_ALL, before_.c_str()); }
    ScopedLocale(ScopedLocale const&) = delete;
    ScopedLocale& operator=(ScopedLocale const&) = delete;

    bool isSet() const { return isSet_; }

private:
    std::string before_;
    bool isSet_;
};
