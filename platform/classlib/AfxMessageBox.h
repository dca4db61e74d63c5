// AfxMessageBox.h: says something to the user, and gets the answer.
//
//   if (AfxMessageBox("Overwrite model.cpp?", MB_YESNO) == IDYES)
//       ...
//
// A host that has a better way to speak to its user installs it:
//
//   class Panel : public zk::MessageBoxPresenter {
//       int present(char const* text, char const* caption, UINT type, UINT helpId) override;
//   };
//   Panel panel;
//   zk::installMessageBoxPresenter(&panel);
//
// Without one the system shows its message box. On a system without boxes a terminal
// is asked if both standard input and standard error are one; else the text goes
// to standard error and the default button is the answer. A terminal never gets
// control characters of the text.
#pragma once

#include "platform/classlib/CObject.h"

/// Shows `lpszText` with the buttons and the icon of `nType` (MB_OK, MB_YESNO | MB_ICONQUESTION, ...).
///
/// The application's CWinApp::DoMessageBox() does it, if there is an
/// application; that function, unless it was overridden, and a process without
/// application ask the presenter, and without one the system. Without an icon in
/// `nType`, OK and Cancel boxes get the warning icon, questions the question
/// mark. `nIDHelp` is the number of a help page, 0 for none. Gives the id of
/// the button (IDOK, IDYES, ...), 0 if the box could not be shown. A null text
/// counts as the empty one.
ZK_UTIL_API int AfxMessageBox(LPCSTR lpszText, UINT nType = 0, UINT nIDHelp = 0);

/// The same with the numbered text `nIDPrompt`, empty if there is none.
/// Without `nIDHelp` the text's number is that of the help page.
ZK_UTIL_API int AfxMessageBox(UINT nIDPrompt, UINT nType = 0, UINT nIDHelp = UINT(-1));

namespace zk {

/// How a host shows messages to its user.
class ZK_UTIL_API MessageBoxPresenter {
public:
    virtual ~MessageBoxPresenter();

    /// Shows the text and gives the id of the button. `type` has an icon already
    /// if the kind of box calls for one. Called by any thread that has something to say.
    virtual int present(char const* text, char const* caption, UINT type, UINT helpId) = 0;
};

/// Puts a presenter in force; null goes back to the system's box. Gives the one before, or null.
///
/// The presenter stays the caller's and lives until another one is in force.
ZK_UTIL_API MessageBoxPresenter* installMessageBoxPresenter(MessageBoxPresenter* presenter) noexcept;

/// What every message box comes down to: presenter, or else the system.
ZK_UTIL_API int showMessageBox(char const* text, UINT type, UINT helpId);

}  // namespace zk
