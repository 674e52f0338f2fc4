#include "media/LiveFeeds.h"

#include <mutex>
#include <utility>

namespace pixelgrove {

namespace {

struct LiveFeeds {
    std::mutex audioLock;
    AudioBlock audio{};
    std::mutex cameraLock;
    BitmapRef camera;
};

// Never destroyed: a capture thread may outlive the end of main.
LiveFeeds& Feeds() {
    static auto* feeds = new LiveFeeds;
    return *feeds;
}

}  // namespace

void PublishAudioBlock(const AudioBlock& block) {
    LiveFeeds& feeds = Feeds();
    const std::lock_guard hold(feeds.audioLock);
    feeds.audio = block;
}

AudioBlock LatestAudioBlock() {
    LiveFeeds& feeds = Feeds();
    const std::lock_guard hold(feeds.audioLock);
    return feeds.audio;
}

void PublishCameraPicture(BitmapRef picture) {
    if (picture && (picture->bitsPerPixel != 32 || !picture->IsComplete())) picture = nullptr;
    LiveFeeds& feeds = Feeds();
    const std::lock_guard hold(feeds.cameraLock);
    std::swap(feeds.camera, picture);  // the old one is freed with the argument, after the lock
}

BitmapRef LatestCameraPicture() {
    LiveFeeds& feeds = Feeds();
    const std::lock_guard hold(feeds.cameraLock);
    return feeds.camera;
}

}  // namespace pixelgrove
