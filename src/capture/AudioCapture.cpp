#include "capture/AudioCapture.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <new>
#include <utility>

#include "audio/SoundFrames.h"
#include "audio/SpectrumAnalysis.h"
#include "capture/DesktopSound.h"
#include "media/LiveFeeds.h"
#include "platform/SynchronizedValue.h"
#include "platform/Thread.h"

namespace pixelgrove {

namespace {

constexpr size_t kStackBytes = 1 << 20;

// Held by the thread as well, so that one that hangs touches nothing else that lives.
class Capture {
  public:
    explicit Capture(std::shared_ptr<const AudioParameters> parameters)
        : parameters_(std::move(parameters)),
          analysis_(*parameters_),
          frames_([this](SampleBlock& block) { PublishAudioBlock(analysis_.Analyze(block, binsFor20k_)); }),
          sound_({.take =
                      [this](const SoundFormat& format, std::span<const std::byte> packet) {
                          binsFor20k_ = BinsFor20k(format.rate);
                          frames_.Take(format, packet);
                      },
                  .onConnected = [] { PublishSoundState(SoundState::Listening); },
                  .takeInterest = TakeAudioInterest}) {}

    void Run() {
        PublishSoundState(SoundState::None);
        sound_.Listen();
        if (LatestSoundReport().state == SoundState::Listening) PublishSoundState(SoundState::Lost);
        const std::lock_guard lock(endLock_);
        hasEnded_ = true;
        ended_.notify_all();
    }
    // False when the thread hasn't come to its end by then.
    bool End() {
        sound_.Stop();
        std::unique_lock lock(endLock_);
        return ended_.wait_for(lock, std::chrono::milliseconds(kAudioStopWaitMs),
                               [this] { return hasEnded_; });
    }

  private:
    const std::shared_ptr<const AudioParameters> parameters_;
    // The thread's.
    int binsFor20k_ = kAudioColumns;
    SpectrumAnalysis analysis_;
    SoundFrames frames_;

    DesktopSound sound_;
    std::mutex endLock_;
    std::condition_variable ended_;
    bool hasEnded_ = false;  // under endLock_
};

struct Service {
    int users = 0;
    std::shared_ptr<Capture> capture;
    std::unique_ptr<Thread> thread;
};

SynchronizedValue<Service> service;

// Takes the capture out for the last user. Nothing for others.
Service TakeLast() {
    const Hold held(service);
    if (held->users > 1) {
        --held->users;
        return {};
    }
    return std::exchange(*held, {});
}

}  // namespace

bool StartAudioCapture(std::shared_ptr<const AudioParameters> parameters) try {
    const Hold held(service);
    if (held->users == 0) {
        auto capture = std::make_shared<Capture>(std::move(parameters));
        auto thread = std::make_unique<Thread>();
        if (!thread->Start(kStackBytes, [capture] { capture->Run(); })) return false;
        held->capture = std::move(capture);
        held->thread = std::move(thread);
    }
    ++held->users;
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

void StopAudioCapture() {
    const Service last = TakeLast();
    if (!last.capture) return;
    if (last.capture->End())
        last.thread->Join();
    else
        last.thread->Detach();
}

}  // namespace pixelgrove
