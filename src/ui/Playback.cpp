#include "ui/Playback.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "commands/Commands.h"
#include "core/AppState.h"
#include "core/PlayTime.h"
#include "platform/Clock.h"
#include "project/ProjectModel.h"
#include "render/FrameRecorder.h"
#include "render/RenderContext.h"
#include "render/widgets/OffscreenOutput.h"
#include "render/widgets/WindowSurface.h"
#include "ui/MessagePane.h"
#include "ui_EditWindow.h"

namespace pixelgrove {

namespace {

constexpr int kRefreshIntervalMs = 250;
constexpr int64_t kRestartDelayNs = 100'000'000;
constexpr int kTimeDecimals = 3;

QString TimeText(float time) {
    return QString::number(double(time), 'f', kTimeDecimals);
}

}  // namespace

float NumberFromText(const QString& text) {
    bool ok = false;
    const float number = text.trimmed().toFloat(&ok);
    return ok && std::isfinite(number) ? number : 0.0f;
}

Playback::Playback(Ui::EditWindow& form, AppState& app, ControlSet& controls, Player& player,
                   MessagePane& pane)
    : form_(form), app_(app), controls_(controls), player_(player), pane_(pane) {
    refresh_.setInterval(kRefreshIntervalMs);
    QObject::connect(&refresh_, &QTimer::timeout, [this] { RefreshDisplays(); });
}

void Playback::SetUp() {
    OnRandomize();
    RefreshDisplays();
    form_.currentTimeText->setText(TimeText(0.0f));
    form_.fpsCurrentEdit->setText(QStringLiteral("0"));
    SetButtonState(ButtonState::Idle);
}

void Playback::SetButtonState(ButtonState state) {
    const bool openGlOk = app_.display.openGlOk;
    const bool active = state != ButtonState::Idle;
    const QWidget* focus = form_.playButton->window()->focusWidget();
    form_.playButton->setEnabled(state == ButtonState::Idle && openGlOk);
    form_.recordButton->setEnabled(state != ButtonState::Paused && openGlOk);
    form_.pauseButton->setEnabled(active);
    form_.stopButton->setEnabled(active);
    form_.startButton->setEnabled(state == ButtonState::Running && openGlOk);
    form_.pauseButton->setChecked(state == ButtonState::Paused);
    // A button that is disabled by its own key would pass the focus on to whatever control comes next.
    for (const QPushButton* button :
         {form_.playButton, form_.recordButton, form_.pauseButton, form_.stopButton, form_.startButton})
        if (button == focus && !button->isEnabled())
            (active ? form_.stopButton : form_.playButton)->setFocus(Qt::TabFocusReason);
}

void Playback::ForgetErrors() {
    for (CompileMessages& errors : app_.project.stageErrors)
        errors.clear();
    // Every stage's marks, not the shown one's alone: they name lines of a text that is compiled anew.
    for (StageDocument& document : app_.project.documents)
        document.errorLines.lines.clear();
    form_.editor->RefreshErrorMarks();
}

void Playback::Play() {
    ForgetErrors();
    form_.editor->RefreshStageText();
    app_.run->paused = 0;
    app_.run->recordFrameIndex = 1;
    form_.stageButtons->Refresh();
    const bool onlyClears = player_.currentRun != nullptr;
    ToggleRun();
    // Below the log, which is still what the user works by.
    if (onlyClears) pane_.Add(QStringLiteral("Press Play again to compile."));
}

void Playback::PlayAnew() {
    if (!app_.display.openGlOk) return;
    if (player_.currentRun) {
        ToggleRun();
        SetButtonState(ButtonState::Idle);
    }
    Play();
}

bool Playback::PlayOn() {
    if (!app_.display.openGlOk || !player_.currentRun) return false;
    const bool wasPaused = app_.run->paused != 0;
    std::shared_ptr<RenderRun> run = player_.currentRun;
    const std::shared_ptr<OutputSurface> surface = run->request.surface;
    EndRun(true);
    playedUpTo_ = run->HandOver();
    // A context that it kept has to be gone before another takes the surface.
    run.reset();
    SetButtonState(ButtonState::Idle);
    Play();
    playedUpTo_.reset();
    if (!player_.currentRun || player_.currentRun->request.surface != surface) surface->SetInUse(false);
    if (wasPaused) app_.run->paused = 1;
    return player_.currentRun != nullptr;
}

std::shared_ptr<OutputSurface> Playback::ChooseSurface() {
    if (player_.outputSurface && !IsRetired(*player_.outputSurface)) {
        NoteOutputSize(player_.outputSurface->ClientSize());
        return player_.outputSurface;
    }
    // What plays off the screen goes on there with its pictures.
    if (playedUpTo_ && playedUpTo_->context && !IsRetired(*playedUpTo_->context->surface))
        return playedUpTo_->context->surface;
    return CreateOffscreenOutput(lastOutputSize_);
}

void Playback::EndRun(bool keepsSurface) {
    refresh_.stop();
    StopRenderThread(app_, player_, keepsSurface);
    if (runEnded) runEnded();
}

void Playback::ToggleRun() {
    if (player_.currentRun) {
        EndRun(false);
        return;
    }
    refresh_.stop();
    const std::shared_ptr<OutputSurface> surface = ChooseSurface();
    if (!surface) {
        pane_.Say(QStringLiteral("The window system gives no surface to draw on."));
        return;
    }
    auto makeRequest = [&] {
        RunRequest request = SnapshotProject(app_, controls_);
        request.randomizeStart = form_.randomizeCheck->isChecked();
        request.startTime = NumberFromText(form_.startTimeEdit->text());
        request.playedUpTo = std::exchange(playedUpTo_, std::nullopt);
        request.surface = surface;
        return request;
    };
    const uint32_t rate = ClampedFps(form_.fpsTarget->Number());
    form_.fpsTarget->setValue(int(rate));
    if (!ToggleRenderThread(app_, player_, makeRequest, rate, prepareRun))
        pane_.Say(QStringLiteral("The system gives no thread to play on."));
}

void Playback::Record() {
    ToggleFrameCapture(*app_.run);
    // A run that failed to compile stays until it is cleared by Play.
    if (!player_.currentRun) Play();
}

void Playback::Pause() {
    app_.run->paused = app_.run->paused ? 0 : 1;
    SetButtonState(app_.run->paused ? ButtonState::Paused : ButtonState::Running);
}

void Playback::Stop() {
    if (app_.run->hasContext == 0) return;
    app_.run->paused = 0;
    ToggleRun();
    SetButtonState(ButtonState::Idle);
}

void Playback::Start() {
    RunControls& run = *app_.run;
    if (run.hasContext == 0) return;
    const float time =
        form_.randomizeCheck->isChecked() ? RandomStartTime() : NumberFromText(form_.startTimeEdit->text());
    run.timeRequest.Ask({.time = time, .framesAnew = true});
}

void Playback::Restart() {
    if (!app_.display.openGlOk) return;
    // The stop's own time is part of the wait.
    const int64_t playAtNs = CounterNs() + kRestartDelayNs;
    Stop();
    SleepUntilNs(playAtNs);
    // A run that has no context yet is stopped here.
    PlayAnew();
}

void Playback::RestartFailedRun() {
    if (!player_.currentRun || failed_.lock() != player_.currentRun) return;
    if (app_.run->restartRequested.exchange(0) != 0) app_.host->PostCommand(kCmdRestart, 0);
}

void Playback::OnCompileResult() {
    if (!player_.currentRun) return;
    if (!app_.run->compileFailed) {
        pane_.Say(QStringLiteral("Compilation successful."));
        SetButtonState(app_.run->paused ? ButtonState::Paused : ButtonState::Running);
        ForgetErrors();
        refresh_.start();
    } else {
        app_.project.stageErrors = player_.currentRun->ReportedErrors();
        SetButtonState(ButtonState::Idle);
        ShowStageErrors(app_.project);
        // Without a compiler's log there is one sentence, which names its stage: shown whatever the editor
        // shows.
        if (const CompileMessages failure = player_.currentRun->ReportedFailure(); !failure.empty())
            pane_.Show(failure, QString());
        app_.run->DropRecording();
        failed_ = player_.currentRun;
        if (compileFailed) compileFailed();
        RestartFailedRun();
    }
    form_.stageButtons->Refresh();
}

void Playback::OnRandomize() {
    const bool fixedStart = !form_.randomizeCheck->isChecked();
    form_.startTimeEdit->setEnabled(fixedStart);
    form_.setStartButton->setEnabled(fixedStart);
}

void Playback::SetStartToCurrent() {
    // The displayed number counts, with its three decimals, not the exact time behind it.
    app_.project.startTime = NumberFromText(form_.currentTimeText->text());
    form_.startTimeEdit->setText(TimeText(app_.project.startTime));
    if (app_.run->hasContext) app_.run->timeRequest.Ask({app_.project.startTime});
}

void Playback::CommitFpsTarget() {
    bool isNumber = false;
    const int number = form_.fpsTarget->Number(&isNumber);
    if (!isNumber) return;
    app_.run->fpsTarget = ClampedFps(number);
    form_.fpsTarget->setValue(int(app_.run->fpsTarget));
}

void Playback::RefreshDisplays() {
    if (app_.run->hasContext) {
        form_.currentTimeText->setText(TimeText(app_.run->playTime));
        form_.fpsCurrentEdit->setText(QString::number(app_.run->fpsCurrent));
    } else {
        form_.randomizeCheck->setChecked(true);
        form_.startTimeEdit->setText(TimeText(app_.project.startTime));
    }
    app_.run->fpsTarget = ClampedFps(app_.run->fpsTarget);
    if (!form_.fpsTarget->IsBeingChanged()) form_.fpsTarget->setValue(int(app_.run->fpsTarget));
    if (refreshed) refreshed();
}

void Playback::NoteOutputSize(SurfaceSize size) {
    if (size.width > 0 && size.height > 0) lastOutputSize_ = size;
}

}  // namespace pixelgrove
