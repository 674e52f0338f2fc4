// AudioCapture: the thread that hears the desktop and leaves spectrum and waveform in media/LiveFeeds.h.
//
// One for the process, from start-up to shut-down, whether or not a shader listens. Any thread starts and
// stops it.
#pragma once

#include <memory>

#include "audio/AudioParameters.h"

namespace pixelgrove {

constexpr int kAudioStopWaitMs = 1000;

// Starts the capture, or counts one more user where it runs; the parameters are then those of the first.
// False when the system gives no thread or no memory. Doesn't wait for a sound server: where there is none
// the thread ends by itself, and what was heard last stays.
bool StartAudioCapture(std::shared_ptr<const AudioParameters> parameters);

// One user less; the last one's call waits for the thread, up to kAudioStopWaitMs. One that hangs longer is
// left to itself and publishes nothing more. Nothing without a user.
void StopAudioCapture();

}  // namespace pixelgrove
