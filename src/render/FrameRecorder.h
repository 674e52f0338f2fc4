// The frame recorder: a run's frames as numbered picture files.
//
// A recording is a request in RunControls: the main thread begins and ends it here, the run's thread counts
// its frames, writes them and ends it after the last. Without a run it waits for the next one. What the user
// is told of it goes through Host::PostStatus, each line together with the change that it tells of.
#pragma once

#include <cstdint>
#include <optional>

#include "render/RenderThread.h"

namespace pixelgrove {

// Begins a recording of that many seconds of animation, 60 frames each, or of kManualStopSeconds until it is
// ended; ends the one that goes on, whatever the seconds. Main thread.
void SetRecordingState(AppState& app, uint32_t seconds);

// The Record button: one frame at the record size, under the number that is next; ends what goes on without a
// word. Main thread.
void ToggleFrameCapture(RunControls& controls);

// How much of a recording with a known end is done, in percent; nothing without one. Any thread.
std::optional<int> RecordedPercent(const RunControls& controls);

// The rest: the run's thread.

SurfaceSize RecordSize(const RunControls& controls);
// The frames have this size from the next one on, or that of the window.
void ForceSize(RenderContext& context, std::optional<SurfaceSize> size);

// Takes up a recording that was asked for, or the end of one, and with it the size of the frames to come. A
// recording keeps the size that it began with.
void FollowRecording(RenderRun& run);

// RenderRun::frame goes to its file, after the rest that was asked for, and the recording goes on
// or ends. Nothing when it was ended while the frame was drawn. A folder that is missing is made.
void RecordFrame(RenderRun& run);

// A frame could not be drawn; the next one takes its place.
void NoteUndrawnFrame(RenderRun& run);

// The frame goes to a file aside from the recording, which has the tick count for its number.
void SaveCapture(RenderRun& run);

// The thread ends, and with it the recording that it follows; a newer request stays.
void LeaveRecording(RenderRun& run);

}  // namespace pixelgrove
