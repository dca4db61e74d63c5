#include "platform/classlib/CException.h"

#include "platform/classlib/AfxMessageBox.h"
#include "platform/classlib/CString.h"
#include "platform/classlib/textTables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

struct Released {
    void operator()(CException* exception) const { exception->Delete(); }
};
using Caught = std::unique_ptr<CException, Released>;

template <class Call>
Caught caughtFrom(Call call)
{
    try {
        call();
    } catch (CException* exception) {
        return Caught(exception);
    }
    return nullptr;
}

// Tells of its end.
class Watched : public CException {
public:
    Watched(BOOL autoDelete, bool& gone) : CException(autoDelete), gone_(gone) { }
    ~Watched() override { gone_ = true; }

private:
    bool& gone_;
};

// Takes over the form that is called for exceptions as they are caught.
class Talkative : public CException {
public:
    using CException::GetErrorMessage;
    BOOL GetErrorMessage(LPSTR buffer, UINT size, UINT* helpContext) override
    {
        if (helpContext)
            *helpContext = 77;
        std::snprintf(buffer, size, "Too much.");
        return TRUE;
    }
};

// Notes what it was to show.
class NotingPresenter : public zk::MessageBoxPresenter {
public:
    NotingPresenter() { before_ = zk::installMessageBoxPresenter(this); }
    ~NotingPresenter() override { zk::installMessageBoxPresenter(before_); }

    int present(char const* text, char const*, UINT type, UINT helpId) override
    {
        shown = text;
        shownType = type;
        shownHelp = helpId;
        return IDRETRY;
    }

    CString shown;
    UINT shownType = 0;
    UINT shownHelp = 0;

private:
    zk::MessageBoxPresenter* before_;
};

}  // namespace

TEST(Exception, madeForTheHeapIsDeletedByDelete)
{
    bool gone = false;
    auto* const exception = new Watched(TRUE, gone);

    exception->Delete();

    EXPECT_TRUE(gone);
}

TEST(Exception, madeOtherwiseIsLeftAloneByDelete)
{
    bool gone = false;
    Watched exception(FALSE, gone);

    exception.Delete();

    EXPECT_FALSE(gone);
}

TEST(Exception, isDeletedByDeleteUnlessItSaysOtherwise)
{
    CException const exception;

    EXPECT_TRUE(exception.m_bAutoDelete);
}

TEST(Exception, hasNoTextOfItsOwn)
{
    CException exception;
    char text[8] = "poison";
    UINT help = 99;

    EXPECT_FALSE(exception.GetErrorMessage(text, sizeof text, &help));

    EXPECT_STREQ(text, "");
    EXPECT_EQ(help, 0u);
}

TEST(Exception, tellsItsTextThroughBothForms)
{
    CNotSupportedException exception;
    CNotSupportedException const& constant = exception;
    CException& base = exception;
    char texts[3][64];

    EXPECT_TRUE(exception.GetErrorMessage(texts[0], sizeof texts[0]));
    EXPECT_TRUE(constant.GetErrorMessage(texts[1], sizeof texts[1]));
    EXPECT_TRUE(base.GetErrorMessage(texts[2], sizeof texts[2]));

    for (auto const& text : texts)
        EXPECT_STREQ(text, "The operation is not supported.");
}

TEST(Exception, cutsItsTextToTheBuffer)
{
    CMemoryException exception;  // "Out of memory."
    struct {
        UINT size;
        char const* text;
    } const rows[] = {
        {1, ""}, {2, "O"}, {14, "Out of memory"}, {15, "Out of memory."}, {16, "Out of memory."},
    };
    for (auto const& row : rows) {
        char buffer[20];
        std::fill_n(buffer, sizeof buffer, '~');

        EXPECT_TRUE(exception.GetErrorMessage(buffer, row.size));

        EXPECT_STREQ(buffer, row.text);
        EXPECT_EQ(buffer[row.size], '~') << "one past a buffer of " << row.size;
    }
}

TEST(Exception, writesNoTextWithoutRoom)
{
    CMemoryException exception;
    char buffer[] = "~";
    UINT help = 99;

    EXPECT_FALSE(exception.GetErrorMessage(buffer, 0, &help));
    EXPECT_FALSE(exception.GetErrorMessage(nullptr, 10));

    EXPECT_STREQ(buffer, "~");
    EXPECT_EQ(help, 0u);
}

TEST(Exception, isThrownAsThePointerOfItsClass)
{
    struct {
        void (*call)();
        CRuntimeClass* thrown;
        char const* text;
    } const rows[] = {
        {[] { AfxThrowMemoryException(); }, RUNTIME_CLASS(CMemoryException), "Out of memory."},
        {[] { AfxThrowNotSupportedException(); }, RUNTIME_CLASS(CNotSupportedException),
         "The operation is not supported."},
        {[] { AfxThrowInvalidArgException(); }, RUNTIME_CLASS(CInvalidArgException),
         "An argument is invalid."},
        {[] { AfxThrowResourceException(); }, RUNTIME_CLASS(CResourceException),
         "A needed resource is not available."},
        {[] { AfxThrowUserException(); }, RUNTIME_CLASS(CUserException), "The operation was stopped."},
    };
    for (auto const& row : rows) {
        Caught const caught = caughtFrom(row.call);

        ASSERT_NE(caught, nullptr) << row.text;
        EXPECT_EQ(caught->GetRuntimeClass(), row.thrown);
        EXPECT_TRUE(caught->IsKindOf(RUNTIME_CLASS(CSimpleException)));
        EXPECT_TRUE(caught->IsKindOf(RUNTIME_CLASS(CException)));
        char text[64];
        EXPECT_TRUE(caught->GetErrorMessage(text, sizeof text));
        EXPECT_STREQ(text, row.text);
    }
}

TEST(MemoryException, isOneStaticObjectThatNeedsNoMemory)
{
    Caught const first = caughtFrom([] { AfxThrowMemoryException(); });
    CException* const firstObject = first.get();
    first->Delete();

    Caught const second = caughtFrom([] { AfxThrowMemoryException(); });

    EXPECT_EQ(second.get(), firstObject);
    EXPECT_FALSE(second->m_bAutoDelete);
}

TEST(ExceptionReport, showsTheTextWithTheHelpPage)
{
    NotingPresenter presenter;
    Talkative exception;

    int const answer = exception.ReportError(MB_RETRYCANCEL | MB_ICONSTOP, 500);

    EXPECT_EQ(answer, IDRETRY);
    EXPECT_EQ(presenter.shown, "Too much.");
    EXPECT_EQ(presenter.shownType, MB_RETRYCANCEL | MB_ICONSTOP);
    EXPECT_EQ(presenter.shownHelp, 77u);
}

TEST(ExceptionReport, showsTheNumberedTextForOneWithoutText)
{
    static ZkText const texts[] = {{990017, "The plan failed."}};
    zkRegisterTexts(texts, 1);
    NotingPresenter presenter;
    CException exception;

    exception.ReportError(MB_OK, 990017);
    zkUnregisterTexts(texts);

    EXPECT_EQ(presenter.shown, "The plan failed.");
    EXPECT_EQ(presenter.shownHelp, 990017u);
}

TEST(ExceptionReport, showsAGeneralTextWhenThereIsNoOther)
{
    NotingPresenter presenter;
    CException exception;

    exception.ReportError();
    CString const withoutNumber = presenter.shown;
    exception.ReportError(MB_OK, 990018);

    EXPECT_EQ(withoutNumber, "An error occurred that has no description.");
    EXPECT_EQ(presenter.shown, withoutNumber);
}

TEST(MessageBoxText, getsTheIconOfItsKind)
{
    NotingPresenter presenter;
    struct {
        UINT asked;
        UINT shown;
    } const rows[] = {
        {MB_OK, MB_OK | MB_ICONEXCLAMATION},
        {MB_OKCANCEL, MB_OKCANCEL | MB_ICONEXCLAMATION},
        {MB_YESNO | MB_DEFBUTTON2, MB_YESNO | MB_DEFBUTTON2 | MB_ICONQUESTION},
        {MB_YESNOCANCEL, MB_YESNOCANCEL | MB_ICONQUESTION},
        {MB_ABORTRETRYIGNORE, MB_ABORTRETRYIGNORE},
        {MB_RETRYCANCEL, MB_RETRYCANCEL},
        {MB_YESNO | MB_ICONSTOP, MB_YESNO | MB_ICONSTOP},
    };
    for (auto const& row : rows) {
        AfxMessageBox("?", row.asked);

        EXPECT_EQ(presenter.shownType, row.shown) << "asked for " << row.asked;
    }
}

TEST(MessageBoxText, isTheNumberedOneWithItsNumberAsHelpPage)
{
    static ZkText const texts[] = {{990019, "Numbered"}};
    zkRegisterTexts(texts, 1);
    NotingPresenter presenter;

    int const answer = AfxMessageBox(990019u);
    UINT const ownHelp = presenter.shownHelp;
    AfxMessageBox(990019u, MB_OK, 3);
    zkUnregisterTexts(texts);

    EXPECT_EQ(answer, IDRETRY);
    EXPECT_EQ(presenter.shown, "Numbered");
    EXPECT_EQ(ownHelp, 990019u);
    EXPECT_EQ(presenter.shownHelp, 3u);
}

TEST(MessageBoxText, isEmptyForANullTextAndAMissingNumber)
{
    NotingPresenter presenter;
    presenter.shown = "poison";

    AfxMessageBox(static_cast<char const*>(nullptr));
    EXPECT_EQ(presenter.shown, "");

    presenter.shown = "poison";
    AfxMessageBox(990020u);
    EXPECT_EQ(presenter.shown, "");
}

TEST(MessageBoxPresenter, givesWayToTheOneBefore)
{
    NotingPresenter outer;
    {
        NotingPresenter inner;
        AfxMessageBox("inner");

        EXPECT_EQ(inner.shown, "inner");
    }
    AfxMessageBox("outer");

    EXPECT_EQ(outer.shown, "outer");
}
