// Playback: the buttons Start, Play, Stop, Record, Pause, the time and rate groups, and the hand-over to the
// run.
//
// The seam between the main thread, which owns all that is edited, and the render thread, which owns the
// running form. Nothing that is edited reaches the picture before the next Play. Main thread; owned by the
// main window.
#pragma once

#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "render/OutputSurface.h"
#include "render/Player.h"
#include "render/RenderThread.h"

namespace Ui {
class EditWindow;
}

namespace pixelgrove {

class MessagePane;

enum class ButtonState { Idle = 0, Running = 1, Paused = 2 };

class Playback {
  public:
    // What is handed in outlives this object.
    Playback(Ui::EditWindow& form, AppState& app, ControlSet& controls, Player& player, MessagePane& pane);

    // Finishes the record of each new run before its thread starts; may be empty.
    std::function<void(RenderRun&)> prepareRun;

    // After each run's end; may be empty.
    std::function<void()> runEnded;

    // The text that was to be played doesn't compile; its errors are known. May be empty.
    std::function<void()> compileFailed;

    // After each refresh of the displays; may be empty.
    std::function<void()> refreshed;

    // First state of the displays: the start time is shown and "Randomize" ticked, with its edit left
    // enabled.
    void SetUp();

    void SetButtonState(ButtonState state);

    // The press of Play: forgets all errors and starts a run. When one is there (also one that failed to
    // compile), it is ended instead.
    void Play();
    // Ends whatever runs, compiles or failed, and starts a run. Nothing without OpenGL.
    void PlayAnew();
    // Gives what plays, or failed to compile, the text of now in place of the one from before: time and pause
    // stay, and pictures of stages and the frame count where RunRequest::playedUpTo lets them. False when
    // there is nothing to play.
    bool PlayOn();
    // Asks for a single frame in a file, and plays when nothing does; ends a recording that goes on.
    void Record();
    // Pause and release.
    void Pause();
    // Ends the run; nothing while the run has no context yet.
    void Stop();
    // Sets the running shader's time and frame count back.
    void Start();
    // Stop, a short wait, Play. Nothing without OpenGL.
    void Restart();
    // A control asked for a restart and the run failed to compile, so that no frame will pass it on:
    // restarts.
    void RestartFailedRun();
    // The run reported how compiling went. Dropped when the run was ended meanwhile.
    void OnCompileResult();

    void OnRandomize();
    void SetStartToCurrent();
    void CommitFpsTarget();
    void RefreshDisplays();

    // The output window's client area, kept for runs that start when it is closed.
    void NoteOutputSize(SurfaceSize size);

    // The timer that refreshes the displays is running.
    bool IsRefreshing() const { return refresh_.isActive(); }

  private:
    // The open output window, else where the run was whose place is taken, else an off-screen surface of the
    // size that the window had last. Null without any.
    std::shared_ptr<OutputSurface> ChooseSurface();
    void ToggleRun();
    void EndRun(bool keepsSurface);
    void ForgetErrors();

    Ui::EditWindow& form_;
    AppState& app_;
    ControlSet& controls_;
    Player& player_;
    MessagePane& pane_;
    QTimer refresh_;
    std::weak_ptr<RenderRun> failed_;       // the last run that reported a failure
    std::optional<PlayedUpTo> playedUpTo_;  // for the next run
    SurfaceSize lastOutputSize_{640, 360};
};

// A number as the time edits hold it, in any form that C knows; 0 for an empty or unreadable text and for
// infinities.
float NumberFromText(const QString& text);

}  // namespace pixelgrove
