#include "Foundtn/util/CZK_UTIL_DLLApp.h"

#include <gtest/gtest.h>

#include <typeinfo>

namespace {

TEST(ModuleFrame, livesAsLongAsTheModule)
{
    EXPECT_EQ(typeid(zk::moduleFrame()), typeid(CZK_UTIL_DLLApp));
    EXPECT_EQ(zk::moduleFrame().m_pszAppName, nullptr);
    EXPECT_FALSE(zk::moduleFrame().m_bAutoDelete);
}

TEST(ModuleFrame, isNotTheApplicationThoughItLives)
{
    ASSERT_EQ(typeid(zk::moduleFrame()), typeid(CZK_UTIL_DLLApp));

    EXPECT_EQ(AfxGetApp(), nullptr);
}

}  // namespace
