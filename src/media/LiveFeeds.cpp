#include "media/LiveFeeds.h"

#include <utility>

#include "platform/SynchronizedValue.h"

namespace pixelgrove {

namespace {

struct LiveFeeds {
    SynchronizedValue<AudioBlock> audio;
    SynchronizedValue<BitmapRef> camera;
};

// Never destroyed: a capture thread may outlive the end of main.
LiveFeeds& Feeds() {
    static auto* feeds = new LiveFeeds;
    return *feeds;
}

}  // namespace

void PublishAudioBlock(const AudioBlock& block) {
    *Hold(Feeds().audio) = block;
}

AudioBlock LatestAudioBlock() {
    return Feeds().audio.Copy();
}

void PublishCameraPicture(BitmapRef picture) {
    if (picture && (picture->bitsPerPixel != 32 || !picture->IsComplete())) picture = nullptr;
    Feeds().camera.Exchange(std::move(picture));
}

BitmapRef LatestCameraPicture() {
    return Feeds().camera.Copy();
}

}  // namespace pixelgrove
