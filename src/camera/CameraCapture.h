// CameraCapture: the thread that watches the camera and leaves its pictures in media/LiveFeeds.h.
//
// One for the process, from the first need of a picture to shut-down, whether or not a shader reads it then.
// Any thread starts and stops it.
#pragma once

namespace pixelgrove {

constexpr int kCameraStopWaitMs = 500;

// Starts the capture unless it runs. Doesn't wait: the camera is sought and opened on the capture's thread,
// and until it gives pictures there is none. One that gives no more leaves none either, and a note that says
// why; the next call then looks for a camera anew.
void StartCamera();

// Ends the capture and waits for its thread, up to kCameraStopWaitMs. One that hangs longer, as in opening a
// device, is left to itself and publishes nothing more. Nothing without a capture.
void StopCamera();

}  // namespace pixelgrove
