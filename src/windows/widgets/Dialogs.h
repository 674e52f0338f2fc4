// Dialogs in the program's own frame: the base of modal ones, questions, and the choice of a file.
//
// Main thread. Every function that waits for the user runs an event loop of its own, in which all other
// windows take no input. The owner may be any widget of the window that the dialog belongs to, or null.
#pragma once

#include <QStringList>
#include <functional>

#include "windows/widgets/FrameWindow.h"

class QEventLoop;

namespace pixelgrove {

// The rectangle moved into the area; where it is too large, its upper left corner is in there.
QRect MovedInto(QRect rect, const QRect& area);

// The middle of the owner's window, or of the screen where that isn't seen, kept inside the work area; the
// caption wins over the lower edge.
QRect PlaceOver(const QWidget* owner, const QSize& size);

// A modal window: Exec shows it in the middle of its owner, inside the work area, and waits. Escape and the
// caption's close end it with false; Enter presses the button that has the focus, else the default one. It
// can be shown again.
class FrameDialog : public FrameWindow {
    Q_OBJECT

  public:
    explicit FrameDialog(QWidget* owner, Kind kind = Kind::Dialog);
    // Exec presents it under this name to the registry: it is shown where it was last. Before Exec.
    void SetRegistryName(const QString& name) { registryName_ = name; }
    // True when Done(true) ended it. False also when the dialog is destroyed meanwhile, as with its owner, or
    // waits already.
    bool Exec();
    // Hides the dialog and ends the waiting.
    void Done(bool accepted);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    QString registryName_;  // empty for none
    QEventLoop* loop_ = nullptr;
    bool accepted_ = false;
};

// Waits like Exec, then deletes the dialog, which may be gone before that, with its owner. whenAccepted is
// called before, when Done(true) ended it; the answer is whether it was.
bool ExecOnce(FrameDialog* dialog, const std::function<void()>& whenAccepted);

// What a key does in such a window, also one that isn't modal: Escape closes it, Enter presses the button
// that has the focus, else the default one. False for other keys, and where there is no button.
bool TakeDialogKey(QWidget& window, const QKeyEvent& key);

enum class Answer { Yes, No, Cancel };

// A warning with the three buttons, in plain text; Cancel is the default one, and what Escape and closing
// mean. The letters Y and N answer too.
Answer AskYesNoCancel(QWidget* owner, const QString& caption, const QString& text);

// A message with an OK button, in plain text; returns when it was closed.
void ShowInformation(QWidget* owner, const QString& caption, const QString& text);

struct FileQuestion {
    QString caption;
    QString folder;          // where it starts; made if it can be and is missing
    QString fileName;        // suggested name, may be empty
    QStringList filters;     // "JSON Files (*.json)", "All Files (*)"
    QString defaultSuffix;   // of a name typed without one, without the dot; may be empty
    QStringList suffixes;    // one for each filter, in place of defaultSuffix; empty for none
    int filterIndex = 0;     // the filter that is shown first
    bool forSaving = false;  // an existing file is asked about before it is chosen
};

// The chosen path, which has the default suffix if it was typed without one; empty when cancelled. For
// opening the file exists, and a name that fits a file as it was typed stays; for saving its folder exists.
QString AskForFile(QWidget* owner, const FileQuestion& question);

// Several files of one folder, to open; all of them exist. Empty when cancelled.
QStringList AskForFiles(QWidget* owner, const FileQuestion& question);

// A folder that exists, by the question's caption and folder; empty when cancelled. Where it starts isn't
// made, but looked for above.
QString AskForFolder(QWidget* owner, const FileQuestion& question);

}  // namespace pixelgrove
