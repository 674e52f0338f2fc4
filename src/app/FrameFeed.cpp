#include "app/FrameFeed.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "app/RenderReport.h"
#include "controls/LiveValues.h"
#include "media/LiveFeeds.h"
#include "render/FrameRenderer.h"
#include "render/PastFrames.h"
#include "render/Presentation.h"

namespace pixelgrove {

namespace {

// Those in which iFrame is 0.
constexpr int kStartFrames = 2;

QString FramesText(int from, int to) {
    if (from == to) return QStringLiteral("frame %1 is").arg(from);
    return QStringLiteral("frames %1 to %2 are").arg(from).arg(to);
}

}  // namespace

FrameFeed::FrameFeed(RenderRun& run, const RenderOptions& options, SoundFile* sound)
    : run_(run), options_(options), sound_(sound) {
    if (options.hasRate) run.context->fixedFrameRate = float(options.rate.PerSecond());
    SetDate(1);
}

void FrameFeed::SetDate(int frame) {
    if (options_.date) run_.context->fixedDate = DateOfFrame(*options_.date, options_.rate, frame);
}

QString FrameFeed::DrawNext() {
    ++frame_;
    SetDate(frame_);
    if (sound_) {
        QString reason;
        if (!sound_->HearUpTo(UnitsAfter(options_.rate, frame_, sound_->Rate()), &reason))
            return QStringLiteral("%1 can't be heard at frame %2: %3.")
                .arg(options_.audio)
                .arg(frame_)
                .arg(reason);
        PublishAudioBlock(sound_->Rows());
    }
    if (RenderFrameTick(run_)) return {};
    return QStringLiteral("frame %1 can't be drawn.").arg(frame_);
}

void FrameFeed::SkipNext() {
    ++frame_;
    UpdateUniformValues(run_.context->uniforms, MsSinceFirstFrame());
    SkipStages(*run_.context);
}

QString FrameFeed::DrawUpTo(int frame, RenderProgress& progress) {
    while (frame_ < frame) {
        if (const QString problem = DrawNext(); !problem.isEmpty()) return problem;
        progress.Show(frame_);
    }
    return {};
}

QString FrameFeed::GoToFirst(RenderProgress& progress) {
    const int before = options_.first - 1;
    if (before == 0) return {};
    const std::optional<PastUse> past = FindPastUse(*run_.context);
    if (!past) return QStringLiteral("frame 1 can't be drawn.");
    int drawn = past->readsChannels ? std::min(before, kStartFrames) : 0;
    if (past->stage != kStageNone) {
        drawn = before;
        PrintError(
            QStringLiteral("pixelgrove-render: %1 drawn without being written: %2 builds on past frames.")
                .arg(FramesText(1, before), StageName(past->stage)));
    } else if (drawn < before) {
        PrintError(QStringLiteral("pixelgrove-render: %1 left out: no stage builds on past frames.")
                       .arg(FramesText(drawn + 1, before)));
    } else {
        PrintError(QStringLiteral("pixelgrove-render: %1 drawn without being written: channels are set up in "
                                  "frames 1 and 2.")
                       .arg(FramesText(1, before)));
    }
    for (const auto& [reads, what] : {std::pair{past->readsDate, "iDate, which --date"},
                                      {past->readsFrameRate, "iFrameRate, which --rate"}}) {
        if (!reads) continue;
        PrintError(QStringLiteral("pixelgrove-render: a stage reads %1 would make the same in each run.")
                       .arg(QLatin1String(what)));
    }
    if (const QString problem = DrawUpTo(drawn, progress); !problem.isEmpty()) return problem;
    while (frame_ < before)
        SkipNext();
    return {};
}

}  // namespace pixelgrove
