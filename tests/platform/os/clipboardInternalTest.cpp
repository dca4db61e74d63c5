// Names of formats that are registered stay, so this fills the table of a process of its own.
#include "platform/os/os.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <string>

TEST(ClipboardDeathTest, givesNoNumberAboveFFFF)
{
    auto const fill = [] {
        UINT last = 0;
        for (int i = 0; UINT const number = RegisterClipboardFormatA(("format " + std::to_string(i)).c_str());
             ++i)
            last = number;
        bool const isFull = last == 0xFFFF && GetLastError() == ERROR_NOT_ENOUGH_MEMORY &&
            RegisterClipboardFormatA("FORMAT 7") != 0;
        _exit(isFull ? 42 : 1);
    };

    EXPECT_EXIT(fill(), testing::ExitedWithCode(42), "");
}
