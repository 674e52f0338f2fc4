// FindReplace: find and replace in an editor, by dialogs that stay open beside it. It keeps the texts for the
// next dialog. Main thread.
#pragma once

#include "ui/editor/FindDialog.h"

class QPlainTextEdit;

namespace pixelgrove {

struct UserDialogs;

class FindReplace {
  public:
    // Both live as long as it does. No dialog asks for anything after that.
    FindReplace(QPlainTextEdit& editor, const UserDialogs& dialogs) : editor_(editor), dialogs_(dialogs) {}
    FindReplace(const FindReplace&) = delete;
    FindReplace& operator=(const FindReplace&) = delete;

    // Shows one more dialog, owned by the editor's window. It begins with the editor's selection as what to
    // find, unless that is empty or too long, else with the last text of any dialog; and with the last text
    // to replace with.
    FindDialog* Open(bool replace);

    // Looks for the last text of any dialog with the options of the last search, in the direction given.
    // Opens a dialog where nothing was ever looked for.
    void FindAgain(bool down);

  private:
    void Act(FindDialog& dialog, FindAction action);
    void FindNext(const FindRequest& request);
    void ReplaceSelection();
    int ReplaceAll(const SearchTerms& terms);

    QPlainTextEdit& editor_;
    const UserDialogs& dialogs_;
    FindTexts texts_;
    FindRequest last_;
};

}  // namespace pixelgrove
