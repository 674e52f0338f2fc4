#include "camera/CameraCapture.h"

#include <QString>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

#include "camera/CameraDevice.h"
#include "camera/CameraStream.h"
#include "media/LiveFeeds.h"
#include "platform/SynchronizedValue.h"
#include "platform/Thread.h"

namespace pixelgrove {

namespace {

constexpr size_t kStackBytes = 8 << 20;

// Held by the thread as well, so that one that hangs touches nothing else that lives.
class Capture {
  public:
    Capture() : stream_([this](BitmapRef picture) { Take(std::move(picture)); }, IsCameraWatched) {}

    void Run() {
        QString note = WatchCamera();
        const std::lock_guard lock(lock_);
        hasEnded_ = true;
        // A picture from before is no picture of what the next run sees.
        if (!isLeft_) Publish(nullptr, std::move(note));
        ended_.notify_all();
    }
    bool HasEnded() {
        const std::lock_guard lock(lock_);
        return hasEnded_;
    }
    // False when the thread hasn't come to its end by then.
    bool End() {
        stream_.Stop();
        std::unique_lock lock(lock_);
        ended_.wait_for(lock, std::chrono::milliseconds(kCameraStopWaitMs), [this] { return hasEnded_; });
        isLeft_ = !hasEnded_;
        return hasEnded_;
    }

  private:
    QString WatchCamera() {
        const CameraSource source = ChosenCamera();
        if (source.description.isEmpty()) return source.problem;
        QString reason = stream_.Watch(source.description);
        if (reason.isEmpty()) return {};
        if (!reason.endsWith(u'.')) reason += u'.';
        return QStringLiteral("The camera gives no pictures: ") + reason;
    }
    void Take(BitmapRef picture) {
        const std::lock_guard lock(lock_);
        if (!isLeft_) Publish(std::move(picture), {});
    }
    static void Publish(BitmapRef picture, QString note) {
        PublishCameraPicture(std::move(picture));
        PublishCameraNote(std::move(note));
    }

    CameraStream stream_;
    std::mutex lock_;
    std::condition_variable ended_;
    bool hasEnded_ = false;  // under lock_
    bool isLeft_ = false;    // under lock_
};

struct Service {
    std::shared_ptr<Capture> capture;
    std::unique_ptr<Thread> thread;
};

SynchronizedValue<Service> service;

}  // namespace

void StartCamera() {
    const Hold held(service);
    if (held->capture && !held->capture->HasEnded()) return;
    auto capture = std::make_shared<Capture>();
    auto thread = std::make_unique<Thread>();
    PublishCameraNote(QStringLiteral("The camera is being opened."));
    if (!thread->Start(kStackBytes, [capture] { capture->Run(); })) {
        PublishCameraNote(QStringLiteral("The system gives no thread for the camera."));
        return;
    }
    held->capture = std::move(capture);
    // The one before has ended, so joining it takes no time.
    held->thread = std::move(thread);
}

void StopCamera() {
    const Service last = service.Exchange({});
    if (!last.capture) return;
    if (last.capture->End())
        last.thread->Join();
    else
        last.thread->Detach();
}

}  // namespace pixelgrove
