#include "Foundtn/util/CZK_UTIL_DLLApp.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

// Shows what a message map is seen by derived classes alone.
class SeenFrame : public CZK_UTIL_DLLApp {
public:
    using CZK_UTIL_DLLApp::callMessageHandler;
    using CZK_UTIL_DLLApp::GetMessageMap;
};

TEST(ModuleFrame, isAnApplicationObjectWithoutFieldsOfItsOwn)
{
    EXPECT_TRUE((std::is_base_of_v<CWinApp, CZK_UTIL_DLLApp>));
    EXPECT_TRUE((std::is_base_of_v<CWinThread, CZK_UTIL_DLLApp>));
    EXPECT_TRUE((std::is_base_of_v<CCmdTarget, CZK_UTIL_DLLApp>));
    EXPECT_TRUE((std::is_base_of_v<CObject, CZK_UTIL_DLLApp>));
    EXPECT_EQ(sizeof(CZK_UTIL_DLLApp), sizeof(CWinApp));
}

TEST(ModuleFrame, hasNoName)
{
    CZK_UTIL_DLLApp const frame;

    EXPECT_EQ(frame.m_pszAppName, nullptr);
}

TEST(ModuleFrame, isNeverTheProcesssApplication)
{
    EXPECT_EQ(AfxGetApp(), nullptr);  // the module's own object lives

    CZK_UTIL_DLLApp const another;

    EXPECT_EQ(AfxGetApp(), nullptr);
}

TEST(ModuleFrame, leavesTheHostItsPlace)
{
    CWinApp const host("host");

    EXPECT_EQ(AfxGetApp(), &host);
}

TEST(ModuleFrame, handlesNoMessageOfItsOwn)
{
    SeenFrame frame;
    LRESULT result = 5;

    EXPECT_NE(frame.GetMessageMap(), nullptr);
    EXPECT_FALSE(frame.callMessageHandler(1025, 0, 0, &result));
    EXPECT_EQ(result, 5);
}

}  // namespace
