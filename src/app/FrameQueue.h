// FrameQueue: threads that write pictures while the next one is drawn.
//
// Owned by the thread that draws, which calls all of this. The pictures that wait are bounded, so a slow
// writer slows the drawing down and memory doesn't grow.
#pragma once

#include <QString>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "media/Bitmap.h"
#include "platform/Thread.h"

namespace pixelgrove {

class FrameQueue {
  public:
    // Called on several threads at once when there is more than one; each begins frames in their order. Gives
    // a sentence when the frame can't be written.
    using WriteFunction = std::function<QString(int frame, const Bitmap& picture)>;

    // threads is at least 1; where the system gives fewer, those do it, and without any the caller itself.
    FrameQueue(int threads, WriteFunction write);
    ~FrameQueue() { Finish(); }
    FrameQueue(const FrameQueue&) = delete;
    FrameQueue& operator=(const FrameQueue&) = delete;

    // Hands a picture over, once there is room. False when a frame before it couldn't be written: it is then
    // dropped, as all are that wait.
    bool Put(int frame, std::shared_ptr<Bitmap> picture);

    // A picture that was written, to draw into again; null when there is none.
    std::shared_ptr<Bitmap> TakeSpare();

    // Waits until all that was begun is written whole. The sentence of the first frame that failed, or empty.
    QString Finish();

  private:
    struct Job {
        int frame = 0;
        std::shared_ptr<Bitmap> picture;
    };

    void Work();
    void Write(std::unique_lock<std::mutex>& lock, Job job);

    const WriteFunction write_;
    std::vector<std::unique_ptr<Thread>> threads_;
    std::mutex mutex_;
    std::condition_variable jobAdded_, jobTaken_;
    // Below: under mutex_.
    std::deque<Job> jobs_;
    std::vector<std::shared_ptr<Bitmap>> spare_;
    int failedFrame_ = 0;  // 0 for none
    QString failure_;
    bool isClosed_ = false;
};

}  // namespace pixelgrove
