// DiskReload: "Reload when Changed on Disk". Reads the open file again when another program has changed it,
// and what plays goes on with the new text; so that the workbench is the picture beside the user's own
// editor.
//
// Unsaved changes here are given up only after a question, one for each change of the file. Compile messages
// of such a reload go to standard error as well, in the form of core/ProblemLines.h. Main thread; owned by
// the main window.
#pragma once

#include <QTimer>

#include "platform/FileWatch.h"

namespace pixelgrove {

struct AppState;
class CommandRegistry;
class MessagePane;
class Playback;
class ProjectCommands;

class DiskReload {
  public:
    // What is handed in outlives this object. Off at first. Takes over what these two tell of the open file
    // and of compiling.
    DiskReload(AppState& app, ProjectCommands& projects, Playback& playback, MessagePane& pane);

    void Register(CommandRegistry& commands);
    bool IsOn() const { return isOn_; }

  private:
    void Toggle();
    // The open file is another one, or this program has read or written it.
    void Follow();
    void OnChanged();
    bool HasUnsavedChanges() const;
    bool ReadAgain();
    void PlayOn();
    void PrintErrors();

    AppState& app_;
    ProjectCommands& projects_;
    Playback& playback_;
    MessagePane& pane_;
    FileWatch watch_;
    QTimer later_;  // a change waits for a dialog or a load to end
    bool isOn_ = false;
    bool isAsking_ = false;
    bool isReading_ = false;
    bool awaitsResult_ = false;  // of the compiler, for the text that was read again
};

}  // namespace pixelgrove
