// CameraStream: the pictures of one camera, as they come, in the form that a texture takes.
//
// By GStreamer, of which nothing is loaded before. Watch is called once, by any thread; Stop by any other.
#pragma once

#include <QByteArray>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>

#include "media/Bitmap.h"
#include "platform/SynchronizedValue.h"

typedef struct _GstAppSink GstAppSink;
typedef struct _GstBus GstBus;
typedef struct _GstElement GstElement;
typedef struct _GstMessage GstMessage;

namespace pixelgrove {

class CameraStream {
  public:
    using TakeFunction = std::function<void(BitmapRef)>;
    using WantFunction = std::function<bool()>;

    // take gets each picture, on a thread of GStreamer's, until Watch returns: 32 bits, the top row first, no
    // more of it than is used (media/LiveFeeds.h). isWanted is asked there before each: while it isn't, what
    // a camera gives is dropped as it comes, which costs next to nothing, and take gets null once.
    CameraStream(TakeFunction take, WantFunction isWanted);
    CameraStream(const CameraStream&) = delete;
    CameraStream& operator=(const CameraStream&) = delete;

    // Opens the source of this description and returns when it gives no more pictures or after Stop, with the
    // reason; empty after Stop. Takes 640 x 480 pixels where the source has them, raw or as JPEG. Blocks as
    // long as the camera does in opening and closing.
    QString Watch(const QByteArray& source);
    // Counts for good. Doesn't wait.
    void Stop();

  private:
    struct FreeBus {
        void operator()(GstBus* bus) const;
    };

    QString Play(const QByteArray& source);
    QString WaitForEnd(GstBus* bus) const;
    void DropUnwanted(GstElement* pipeline);
    bool Passes();
    void TakePicture(GstAppSink* sink) const;

    const TakeFunction take_;
    const WantFunction isWanted_;
    bool hasPassed_ = false;  // the last one that came; GStreamer's thread
    std::atomic<bool> isStopped_{false};
    // Where Stop leaves word; there while Watch waits.
    SynchronizedValue<std::shared_ptr<GstBus>> bus_;
};

}  // namespace pixelgrove
