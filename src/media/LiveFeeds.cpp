#include "media/LiveFeeds.h"

#include <atomic>
#include <utility>

#include "platform/Clock.h"
#include "platform/SynchronizedValue.h"

namespace pixelgrove {

namespace {

struct LiveFeeds {
    SynchronizedValue<AudioBlock> audio;
    SynchronizedValue<SoundReport> sound;
    std::atomic<bool> isAudioWanted{false};  // readers set it, the thread that hears clears it
    SynchronizedValue<BitmapRef> camera;
    SynchronizedValue<QString> cameraNote;
    SynchronizedValue<std::function<void()>> cameraOpener;
    std::atomic<int64_t> cameraLookMs{-kCameraLookMs};  // when somebody asked last; any thread writes
};

int64_t NowMs() {
    return CounterNs() / 1'000'000;
}

// Never destroyed: a capture thread may outlive the end of main.
LiveFeeds& Feeds() {
    static auto* feeds = new LiveFeeds;
    return *feeds;
}

}  // namespace

void PublishAudioBlock(const AudioBlock& block) {
    *Hold(Feeds().audio) = block;
    ++Hold(Feeds().sound)->blocks;
}

AudioBlock LatestAudioBlock() {
    Feeds().isAudioWanted = true;
    return Feeds().audio.Copy();
}

bool TakeAudioInterest() {
    return Feeds().isAudioWanted.exchange(false);
}

void PublishSoundState(SoundState state) {
    Hold(Feeds().sound)->state = state;
}

SoundReport LatestSoundReport() {
    return Feeds().sound.Copy();
}

void PublishCameraPicture(BitmapRef picture) {
    if (picture && (picture->bitsPerPixel != 32 || !picture->IsComplete())) picture = nullptr;
    Feeds().camera.Exchange(std::move(picture));
}

BitmapRef LatestCameraPicture() {
    Feeds().cameraLookMs = NowMs();
    return Feeds().camera.Copy();
}

bool IsCameraWatched() {
    return NowMs() - Feeds().cameraLookMs <= kCameraLookMs;
}

void PublishCameraNote(QString note) {
    Feeds().cameraNote.Exchange(std::move(note));
}

QString CameraNote() {
    return Feeds().cameraNote.Copy();
}

void SetCameraOpener(std::function<void()> open) {
    Feeds().cameraOpener.Exchange(std::move(open));
}

void OpenCamera() {
    Feeds().cameraLookMs = NowMs();
    if (const std::function<void()> open = Feeds().cameraOpener.Copy()) open();
}

}  // namespace pixelgrove
