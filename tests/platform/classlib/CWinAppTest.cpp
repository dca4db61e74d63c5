#include "platform/classlib/CWinApp.h"

#include "platform/classlib/AfxMessageBox.h"
#include "platform/classlib/CString.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

// Shows its messages its own way.
class Host : public CWinApp {
public:
    using CWinApp::CWinApp;

    int DoMessageBox(LPCSTR text, UINT type, UINT helpId) override
    {
        shown = text;
        shownType = type;
        shownHelp = helpId;
        return IDYES;
    }

    CString shown;
    UINT shownType = 0;
    UINT shownHelp = 0;
};

class CaptionPresenter : public zk::MessageBoxPresenter {
public:
    int present(char const*, char const* caption, UINT, UINT) override
    {
        seen = caption;
        return IDOK;
    }

    CString seen;
};

}  // namespace

TEST(Application, isTheOneThatTheHostMade)
{
    EXPECT_EQ(AfxGetApp(), nullptr);
    {
        CWinApp const host;
        EXPECT_EQ(AfxGetApp(), &host);
    }
    EXPECT_EQ(AfxGetApp(), nullptr);
}

TEST(Application, isTheFirstAsLongAsItLives)
{
    auto first = std::make_unique<CWinApp>("first");
    CWinApp const second("second");

    EXPECT_EQ(AfxGetApp(), first.get());
    first.reset();

    EXPECT_EQ(AfxGetApp(), nullptr);
}

TEST(Application, knowsNothingAtFirst)
{
    CWinApp const host;

    EXPECT_EQ(host.m_pszAppName, nullptr);
    EXPECT_EQ(host.m_pszExeName, nullptr);
    EXPECT_EQ(host.m_pszHelpFilePath, nullptr);
    EXPECT_EQ(host.m_pszProfileName, nullptr);
    EXPECT_EQ(host.m_lpCmdLine, nullptr);
    EXPECT_EQ(host.m_pMainWnd, nullptr);
    EXPECT_EQ(host.m_hInstance, nullptr);
    EXPECT_FALSE(host.m_bAutoDelete);
}

TEST(Application, copiesItsName)
{
    char name[] = "Zentrika";
    CWinApp const host(name);

    name[0] = 'x';

    EXPECT_STREQ(host.m_pszAppName, "Zentrika");
}

TEST(Application, letsItsProfileNameBeReplaced)
{
    CWinApp host;
    for (char const* const name : {"one.ini", "two.ini"}) {
        std::free(const_cast<char*>(host.m_pszProfileName));
        char* const copy = static_cast<char*>(std::malloc(std::strlen(name) + 1));
        host.m_pszProfileName = std::strcpy(copy, name);
    }

    EXPECT_STREQ(host.m_pszProfileName, "two.ini");
}

TEST(Application, getsWhatTheSystemKnows)
{
    CWinApp host("Zentrika");
    char commandLine[] = "host -iniFile=x.ini";
    HINSTANCE const module = GetModuleHandleA(nullptr);

    ASSERT_TRUE(AfxWinInit(module, nullptr, commandLine, 5));

    EXPECT_EQ(host.m_hInstance, module);
    EXPECT_EQ(host.m_lpCmdLine, commandLine);
    EXPECT_EQ(host.m_nCmdShow, 5);
    EXPECT_STREQ(host.m_pszAppName, "Zentrika");
    EXPECT_STREQ(host.m_pszExeName, "test_classlib");
    EXPECT_STREQ(host.m_pszProfileName, "test_classlib.INI");
    CString const help(host.m_pszHelpFilePath);
    EXPECT_EQ(help.Right(18), CString(zk::os::nativeSeparator()) + "test_classlib.HLP");
    EXPECT_GT(help.GetLength(), 18);
}

TEST(Application, isNotInitialisedWhereThereIsNone)
{
    EXPECT_FALSE(AfxWinInit(nullptr, nullptr, nullptr, 0));
}

TEST(Application, tellsItsNameElseThatOfTheExecutable)
{
    EXPECT_STREQ(AfxGetAppName(), "test_classlib");

    CWinApp const host("Zentrika");

    EXPECT_STREQ(AfxGetAppName(), "Zentrika");
}

TEST(Application, tellsWhereResourcesComeFrom)
{
    EXPECT_EQ(AfxGetInstanceHandle(), GetModuleHandleA(nullptr));
    EXPECT_EQ(AfxGetResourceHandle(), GetModuleHandleA(nullptr));
    CWinApp host;
    host.m_hInstance = reinterpret_cast<HINSTANCE>(8);
    EXPECT_EQ(AfxGetInstanceHandle(), host.m_hInstance);
    EXPECT_EQ(AfxGetResourceHandle(), host.m_hInstance);

    AfxSetResourceHandle(reinterpret_cast<HINSTANCE>(16));

    EXPECT_EQ(AfxGetResourceHandle(), reinterpret_cast<HINSTANCE>(16));
    EXPECT_EQ(AfxGetInstanceHandle(), host.m_hInstance);
    AfxSetResourceHandle(nullptr);
}

TEST(Application, showsMessagesItsOwnWay)
{
    Host host;

    int const answer = AfxMessageBox("Save?", MB_YESNO, 12);

    EXPECT_EQ(answer, IDYES);
    EXPECT_EQ(host.shown, "Save?");
    EXPECT_EQ(host.shownType, UINT(MB_YESNO));
    EXPECT_EQ(host.shownHelp, 12u);
}

TEST(Application, givesItsNameToTheMessageBox)
{
    CaptionPresenter presenter;
    zk::MessageBoxPresenter* const before = zk::installMessageBoxPresenter(&presenter);
    CWinApp const host("Zentrika");

    AfxMessageBox("?");
    zk::installMessageBoxPresenter(before);

    EXPECT_EQ(presenter.seen, "Zentrika");
}

TEST(Application, startsByDefaultAndRunsToQuit)
{
    CWinApp host;
    EXPECT_TRUE(host.InitInstance());
    PostQuitMessage(7);

    EXPECT_EQ(host.Run(), 7);
}
