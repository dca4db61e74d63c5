#include "Foundtn/util/CZK_UTIL_DLLApp.h"

#include <gtest/gtest.h>

#include <typeinfo>

namespace {

// Static objects of one file are made in order: the frame of the library is older.
bool const wasMadeAtLoad = typeid(zk::moduleFrame()) == typeid(CZK_UTIL_DLLApp);

TEST(ModuleFrame, isMadeWhenTheModuleIsLoaded)
{
    EXPECT_TRUE(wasMadeAtLoad);
}

TEST(ModuleFrame, isNotTheApplicationThoughItLives)
{
    EXPECT_EQ(zk::moduleFrame().m_pszAppName, nullptr);
    EXPECT_EQ(AfxGetApp(), nullptr);
    EXPECT_FALSE(zk::moduleFrame().m_bAutoDelete);
}

}  // namespace
