#include "render/FrameRecorder.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <mutex>

#include "media/ImageFiles.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/TextScan.h"
#include "recording/FramePath.h"
#include "render/RenderContext.h"
#include "render/StageTargets.h"

namespace pixelgrove {

namespace {

constexpr uint32_t kFramesPerSecond = 60;
constexpr int64_t kLongestSleepNs = 20'000'000;

// The trouble stands below the progress until the recording ends: alone it would go by unseen.
QString WithTrouble(const QString& line, const QString& trouble) {
    return trouble.isEmpty() ? line : line + u'\n' + trouble;
}

QString ClosingLine(const RunControls& controls) {
    const QString line = QStringLiteral("Recording complete: %1 frames.").arg(controls.recordFrameIndex - 1);
    const uint32_t lost = controls.recordFramesLost;
    if (lost == 0) return line;
    return line + QStringLiteral("\n%1 of them could not be saved.").arg(lost);
}

QString ProgressLine(const RunControls& controls) {
    const uint32_t number = controls.recordFrameIndex;
    const uint32_t total = controls.recordFrameTotal;
    if (total == kManualStopFrames) return QStringLiteral("Recording frame %1 (manual stop)").arg(number);
    return QStringLiteral("Recording frame %1 of %2").arg(number).arg(total);
}

// Ends the recording with the line that says so. Under the recording's lock.
void Close(RunControls& controls, Host& host, const QString& trouble = {}) {
    controls.recordingActive = 0;
    controls.recordFrameTotal = 0;
    host.PostStatus(WithTrouble(ClosingLine(controls), trouble));
}

QString UnsavedLine(uint32_t number, const QString& reason) {
    return QStringLiteral("Frame %1 could not be saved.\n%2").arg(number).arg(reason);
}

// Until the time is over, or what it is spent for has ended.
void Rest(const RenderRun& run) {
    const RunControls& controls = *run.controls;
    const int64_t endNs = CounterNs() + int64_t(controls.recordFrameDelayMs) * 1'000'000;
    while (run.stopRequested == 0 && controls.recordingActive == run.recording) {
        const int64_t now = CounterNs();
        if (now >= endNs) return;
        SleepUntilNs(std::min(endNs, now + kLongestSleepNs));
    }
}

// With its folder when that is missing. On failure reason names the file.
bool SaveFrame(const Bitmap& frame, const QString& path, QString& reason) {
    QDir().mkpath(QFileInfo(NormalizePath(path)).path());
    QString words;
    if (SaveBitmapImage(frame, path, &words)) return true;
    reason = QStringLiteral("%1: %2").arg(InQuotes(path), words);
    return false;
}

}  // namespace

void SetRecordingState(AppState& app, uint32_t seconds) {
    RunControls& controls = *app.run;
    const std::scoped_lock hold(controls.recordingLock);
    if (controls.recordingActive != 0) {
        Close(controls, *app.host);
        return;
    }
    controls.recordFrameIndex = 1;
    controls.recordFrameTotal = seconds * kFramesPerSecond;
    controls.RequestRecording();
    const QString line = QStringLiteral("Preparing to record...");
    app.host->PostStatus(controls.hasContext != 0 ? line : line + QStringLiteral("\nPress Play to begin."));
}

void ToggleFrameCapture(RunControls& controls) {
    const std::scoped_lock hold(controls.recordingLock);
    controls.recordFrameTotal = 0;
    if (controls.recordingActive != 0)
        controls.recordingActive = 0;
    else
        controls.RequestRecording();
}

std::optional<int> RecordedPercent(const RunControls& controls) {
    const uint32_t total = controls.recordFrameTotal;
    if (controls.recordingActive == 0 || total == 0 || total == kManualStopFrames) return std::nullopt;
    const uint64_t done = std::max<uint32_t>(controls.recordFrameIndex, 1) - 1;
    return int(std::min<uint64_t>(done * 100 / total, 100));
}

SurfaceSize RecordSize(const RunControls& controls) {
    return {int(controls.recordWidth), int(controls.recordHeight)};
}

void ForceSize(RenderContext& context, std::optional<SurfaceSize> size) {
    context.forcedSizeOn = size.has_value();
    context.forcedSize = size.value_or(SurfaceSize{});
}

void FollowRecording(RenderRun& run) {
    const uint32_t asked = run.controls->recordingActive;
    if (asked == run.recording) return;
    run.recording = asked;
    run.recordingTrouble.clear();
    ForceSize(*run.context, asked != 0 ? std::optional(RecordSize(*run.controls)) : std::nullopt);
}

void RecordFrame(RenderRun& run) {
    RunControls& controls = *run.controls;
    uint32_t number = 0;
    std::optional<QString> path;
    {
        const std::scoped_lock hold(controls.recordingLock);
        if (controls.recordingActive != run.recording) return;
        number = controls.recordFrameIndex;
        if (run.framePath) path = BuildFramePath(run.framePath->Copy(), number);
        if (path) controls.recordFrameIndex = number + 1;
    }
    Rest(run);
    run.isSavingFrame = true;
    QString reason = QStringLiteral("The filename format gives no path.");
    const bool isSaved = path && SaveFrame(*run.frame, *path, reason);
    run.isSavingFrame = false;
    run.WithGate([&](Host& host) {
        const std::scoped_lock hold(controls.recordingLock);
        const bool goesOn = controls.recordingActive == run.recording;
        if (!isSaved && goesOn && path) ++controls.recordFramesLost;
        if (!isSaved && run.recordingTrouble.isEmpty()) run.recordingTrouble = UnsavedLine(number, reason);
        if (!goesOn) {
            // The closing line, which is out, counts this frame.
            if (!isSaved) host.PostStatus(UnsavedLine(number, reason));
        } else if (controls.recordFrameIndex > controls.recordFrameTotal) {
            Close(controls, host, run.recordingTrouble);
        } else {
            host.PostStatus(WithTrouble(ProgressLine(controls), run.recordingTrouble));
        }
    });
}

void NoteUndrawnFrame(RenderRun& run) {
    RunControls& controls = *run.controls;
    const SurfaceSize size = run.context->forcedSize;
    run.WithGate([&](Host& host) {
        const std::scoped_lock hold(controls.recordingLock);
        if (controls.recordingActive != run.recording) return;
        const QString trouble =
            QStringLiteral("The frame could not be drawn at %1 x %2.").arg(size.width).arg(size.height);
        host.PostStatus(WithTrouble(ProgressLine(controls), trouble));
    });
}

void SaveCapture(RenderRun& run) {
    if (!run.framePath) return;
    if (!run.frame) {
        const SurfaceSize size = run.context->renderSize;
        run.frame = CreateFrameBitmap(size.width, size.height);
        if (!run.frame || !ReadBackStage(*run.context, kStageImage, *run.frame)) return;
    }
    const auto path = BuildFramePath(run.framePath->Copy(), uint32_t(TickCountMs()));
    if (!path) return;
    QString reason;
    run.isSavingFrame = true;
    SaveFrame(*run.frame, *path, reason);
    run.isSavingFrame = false;
}

void LeaveRecording(RenderRun& run) {
    ForceSize(*run.context, std::nullopt);
    run.frame.reset();
    RunControls& controls = *run.controls;
    const std::scoped_lock hold(controls.recordingLock);
    if (controls.recordingActive != run.recording) return;
    controls.recordingActive = 0;
    controls.recordFrameTotal = 0;
}

}  // namespace pixelgrove
