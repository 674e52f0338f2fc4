// LiveControls: the tree of the controls that Image's text declares, the one that is open below it, and both
// roads of what the user sets there: a uniform's value goes to the next frame, a define's asks for a restart.
//
// Owned by the main window. Main thread.
#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "core/ControlSet.h"

class QLabel;
class QWidget;

namespace pixelgrove {

struct AppState;
class ControlTree;
class ControlWidget;
struct StageDocument;

class LiveControls : public QObject {
    Q_OBJECT

  public:
    // The area, whose layout holds the hint alone, gets the widget of the selected control; the form's
    // scaling rests while widgets are exchanged. All outlive this object.
    LiveControls(ControlTree& tree, QWidget& area, QLabel& hint, QWidget& form, AppState& app,
                 ControlSet& controls);

    // A change asked for a restart, which the next frame sends; may be empty.
    std::function<void()> restartAsked;

    // Reads the controls anew and shows them, when Image is on display. The open widget stays as it is.
    void Rebuild();
    // The same for a text that was loaded in place of the one before, also when another stage is on display.
    // A control that it doesn't have is closed.
    void RebuildForFile();
    // After what may have been an edit: hasControlWords, when a word that could make a control was seen. Does
    // nothing for a text whose controls have been read.
    void NoteEdit(bool hasControlWords);
    // Hands all values over to the frames that follow, with the open widget's.
    void Publish();

  private:
    bool IsImageShown() const;
    void Read(const StageDocument& image);
    // The open control still is what its record describes.
    bool HasOwnRecord() const;
    void Select(UniformControl* record);
    void Open(UniformControl& record);
    void Close();
    void TakeChange();

    ControlTree& tree_;
    QWidget& area_;
    QLabel& hint_;
    QWidget& form_;
    AppState& app_;
    ControlSet& controls_;
    ControlWidget* widget_ = nullptr;  // of the control that is open; null without one, as is its record
    UniformControl* open_ = nullptr;
    QString scanned_;   // Image's text when its controls were read
    QString openPath_;  // where the tree has the open control
    QString openName_;  // the record's displayName, when it was opened
};

}  // namespace pixelgrove
