// LiveFeeds: what audio and camera capture leave for the renderer, whichever thread captures and whether any
// does. Process-wide; blank until the first delivery.
//
// Any thread. Each delivery is copied or handed over whole under a lock that is never held longer than that.
#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <functional>

#include "media/Bitmap.h"

namespace pixelgrove {

constexpr int kAudioColumns = 512;
constexpr int kAudioRows = 2;

// The audio texture as shaders see it, one byte a texel: row 0 the spectrum from 0 Hz to 20 kHz, 255 for
// full; row 1 the waveform in the order of time, 0 for its lowest value and 255 for its highest.
using AudioBlock = std::array<uint8_t, size_t(kAudioColumns) * kAudioRows>;

void PublishAudioBlock(const AudioBlock& block);
AudioBlock LatestAudioBlock();
// Whether anyone took the latest block since the last call of this one, which is for the thread that hears.
bool TakeAudioInterest();

enum class SoundState : uint8_t {
    None,       // no output of sound was found so far
    Listening,  // one is listened to, whether anything plays on it or not
    Lost,       // it was, and is gone for good
};

struct SoundReport {
    SoundState state = SoundState::None;
    uint64_t blocks = 0;  // published so far
};

void PublishSoundState(SoundState state);
SoundReport LatestSoundReport();

// The part of a camera's picture that is used, from the first row and column in memory.
constexpr int kCameraWidth = 640;
constexpr int kCameraHeight = 480;

// Puts a picture of 32 bits in place of the last one; one that was not looked at is lost. Null, and a picture
// of another form, take the last one away.
void PublishCameraPicture(BitmapRef picture);
// Null while there is none. Stays what it is until the next delivery.
BitmapRef LatestCameraPicture();
// Whether somebody asked for a picture, or for the camera, within the last kCameraLookMs: while nobody does,
// a camera need not make any.
bool IsCameraWatched();
constexpr int kCameraLookMs = 3000;  // a slow shader takes a picture less than once a second

// Why there is no picture, as a sentence for the user; empty when there is one or nobody has asked.
void PublishCameraNote(QString note);
QString CameraNote();

// What opens the camera, so that who draws needs not link it: a program with a camera gives this at its start
// and takes it back, as an empty function, at its end. It is called from any thread, perhaps often and from
// several at once, and must not wait.
void SetCameraOpener(std::function<void()> open);
// Says that pictures are needed. Nothing in a program without a camera.
void OpenCamera();

}  // namespace pixelgrove
