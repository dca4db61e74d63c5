#include "platform/classlib/CString.h"
#include "platform/classlib/textTables.h"
#include "platform/os/os.h"

#include <gtest/gtest.h>

namespace {

#define ZK_TEXT(id, text) {id, text},
ZkText const compiledTexts[] = {
#include "resources/hostTexts.inc"
};
#undef ZK_TEXT

// The test program holds the list as resources on Windows; elsewhere there are none.
TEST(NumberedTexts, areFoundInTheProgramsOwnResourcesWhereTheSystemHasThem)
{
    if (zk::os::nativeSeparatorIsBackslash()) {
        for (ZkText const& compiled : compiledTexts) {
            CString text;
            EXPECT_TRUE(text.LoadString(compiled.id)) << compiled.id;
            EXPECT_STREQ(text, compiled.text);
        }
    } else {
        CString text("old");
        EXPECT_FALSE(text.LoadString(compiledTexts[0].id));
        EXPECT_STREQ(text, "");
    }
}

}  // namespace
