#include "ui/Playback.h"

#include <algorithm>
#include <cmath>

#include "commands/Commands.h"
#include "core/AppState.h"
#include "core/PlayTime.h"
#include "platform/Clock.h"
#include "project/ProjectModel.h"
#include "render/widgets/OffscreenOutput.h"
#include "render/widgets/WindowSurface.h"
#include "ui_EditWindow.h"

namespace pixelgrove {

namespace {

constexpr int kRefreshIntervalMs = 250;
constexpr uint32_t kRestartDelayMs = 100;
constexpr int kTimeDecimals = 3;

QString TimeText(float time) {
    return QString::number(double(time), 'f', kTimeDecimals);
}

uint32_t ClampedFps(int fps) {
    return uint32_t(std::clamp(fps, int(kMinFps), int(kMaxFps)));
}

}  // namespace

float NumberFromText(const QString& text) {
    bool ok = false;
    const float number = text.trimmed().toFloat(&ok);
    return ok && std::isfinite(number) ? number : 0.0f;
}

Playback::Playback(Ui::EditWindow& form) : form_(form) {
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
    const bool openGlOk = App()->display.openGlOk;
    const bool active = state != ButtonState::Idle;
    const QWidget* focus = form_.playButton->window()->focusWidget();
    form_.playButton->setEnabled(state == ButtonState::Idle && openGlOk);
    form_.recordButton->setEnabled(false);  // there is no recorder in this version
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
    AppState& app = *App();
    for (QString& errors : app.project.stageErrors)
        errors.clear();
    // Every stage's marks, not the shown one's alone: they name lines of a text that is compiled anew.
    for (StageDocument& document : app.project.documents)
        document.errorLines.lines.clear();
    form_.editor->RefreshErrorMarks();
}

void Playback::Play() {
    AppState& app = *App();
    ForgetErrors();
    form_.editor->RefreshStageText();
    app.run->paused = 0;
    app.run->recordFrameIndex = 1;
    app.host->RefreshStageTabs();
    const bool onlyClears = app.renderThread != nullptr;
    ToggleRun();
    if (onlyClears) app.host->SetStatusText(QStringLiteral("Press Play again to compile."));
}

void Playback::PlayAnew() {
    if (!App()->display.openGlOk) return;
    if (App()->renderThread) {
        ToggleRun();
        SetButtonState(ButtonState::Idle);
    }
    Play();
}

std::shared_ptr<OutputSurface> Playback::ChooseSurface() {
    const AppState& app = *App();
    if (!app.outputSurface || IsRetired(*app.outputSurface)) return CreateOffscreenOutput(lastOutputSize_);
    NoteOutputSize(app.outputSurface->ClientSize());
    return app.outputSurface;
}

void Playback::ToggleRun() {
    refresh_.stop();
    if (App()->renderThread) {
        StopRenderThread();
        // Thumbnails may show what the run drew.
        App()->host->RefreshChannelPanel();
        return;
    }
    const std::shared_ptr<OutputSurface> surface = ChooseSurface();
    if (!surface) {
        App()->host->SetStatusText(QStringLiteral("The window system gives no surface to draw on."));
        return;
    }
    auto makeRequest = [&] {
        RunRequest request = SnapshotProject(*App());
        request.randomizeStart = form_.randomizeCheck->isChecked();
        request.startTime = NumberFromText(form_.startTimeEdit->text());
        request.surface = surface;
        return request;
    };
    const uint32_t rate = ClampedFps(form_.fpsTarget->Number());
    form_.fpsTarget->setValue(int(rate));
    if (!ToggleRenderThread(makeRequest, rate, prepareRun))
        App()->host->SetStatusText(QStringLiteral("The system gives no thread to play on."));
}

void Playback::Pause() {
    AppState& app = *App();
    app.run->paused = app.run->paused ? 0 : 1;
    SetButtonState(app.run->paused ? ButtonState::Paused : ButtonState::Running);
}

void Playback::Stop() {
    AppState& app = *App();
    if (app.run->hasContext == 0) return;
    app.run->paused = 0;
    ToggleRun();
    SetButtonState(ButtonState::Idle);
}

void Playback::Start() {
    RunControls& run = *App()->run;
    if (run.hasContext == 0) return;
    const float time =
        form_.randomizeCheck->isChecked() ? RandomStartTime() : NumberFromText(form_.startTimeEdit->text());
    run.timeRequest.Ask({.time = time, .framesAnew = true});
}

void Playback::Restart() {
    AppState& app = *App();
    if (!app.display.openGlOk) return;
    app.host->SendCommand(kCmdStop, 0);
    SleepMs(kRestartDelayMs);
    app.host->SendCommand(kCmdPlay, 0);
}

void Playback::OnCompileResult() {
    AppState& app = *App();
    if (!app.renderThread) return;
    if (!app.run->compileFailed) {
        app.host->SetStatusText(QStringLiteral("Compilation successful."));
        SetButtonState(ButtonState::Running);
        ForgetErrors();
        refresh_.start();
    } else {
        app.project.stageErrors = app.renderThread->ReportedErrors();
        SetButtonState(ButtonState::Idle);
        ShowStageErrors();
        // Without a compiler's log there is one sentence, which names its stage: shown whatever the editor
        // shows.
        if (const QString failure = app.renderThread->ReportedFailure(); !failure.isEmpty()) {
            app.host->SetStatusText(failure);
            app.host->MarkErrorLines();
        }
        app.run->recordingActive = 0;
    }
    app.host->RefreshStageTabs();
}

void Playback::OnRandomize() {
    const bool fixedStart = !form_.randomizeCheck->isChecked();
    form_.startTimeEdit->setEnabled(fixedStart);
    form_.setStartButton->setEnabled(fixedStart);
}

void Playback::SetStartToCurrent() {
    AppState& app = *App();
    // The displayed number counts, with its three decimals, not the exact time behind it.
    app.project.startTime = NumberFromText(form_.currentTimeText->text());
    form_.startTimeEdit->setText(TimeText(app.project.startTime));
    if (app.run->hasContext) app.run->timeRequest.Ask({app.project.startTime});
}

void Playback::CommitFpsTarget() {
    bool isNumber = false;
    const int number = form_.fpsTarget->Number(&isNumber);
    if (!isNumber) return;
    App()->run->fpsTarget = ClampedFps(number);
    form_.fpsTarget->setValue(int(App()->run->fpsTarget));
}

void Playback::RefreshDisplays() {
    AppState& app = *App();
    if (app.run->hasContext) {
        form_.currentTimeText->setText(TimeText(app.run->playTime));
        form_.fpsCurrentEdit->setText(QString::number(app.run->fpsCurrent));
    } else {
        form_.randomizeCheck->setChecked(true);
        form_.startTimeEdit->setText(TimeText(app.project.startTime));
    }
    app.run->fpsTarget = ClampedFps(int(app.run->fpsTarget));
    if (!form_.fpsTarget->IsBeingChanged()) form_.fpsTarget->setValue(int(app.run->fpsTarget));
}

void Playback::NoteOutputSize(SurfaceSize size) {
    if (size.width > 0 && size.height > 0) lastOutputSize_ = size;
}

}  // namespace pixelgrove
