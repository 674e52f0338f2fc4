// FrameFeed: draws the frames of an animation in their order, each with the sound and the date of its moment.
//
// The program's one thread, with the context current and the project compiled.
#pragma once

#include <QString>
#include <memory>

#include "app/RenderOptions.h"
#include "app/RenderProgress.h"
#include "render/RenderThread.h"
#include "soundfile/SoundFile.h"

namespace pixelgrove {

class FrameFeed {
  public:
    // sound may be null. All live as long as the object.
    FrameFeed(RenderRun& run, const RenderOptions& options, SoundFile* sound);

    // Leaves the engine as it is after all frames before the first that is wanted: leaves out what no stage
    // misses, draws the others, and says on stderr which, and what else a run of the whole would do
    // otherwise. A sentence when that fails, else empty.
    QString GoToFirst(RenderProgress& progress);

    // The next frame. A sentence when it can't be drawn, else empty.
    QString DrawNext();

  private:
    QString DrawUpTo(int frame, RenderProgress& progress);
    void SkipNext();
    void SetDate(int frame);

    RenderRun& run_;
    const RenderOptions& options_;
    SoundFile* const sound_;
    int frame_ = 0;  // the last one
};

}  // namespace pixelgrove
