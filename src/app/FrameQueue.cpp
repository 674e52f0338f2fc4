#include "app/FrameQueue.h"

#include <algorithm>
#include <utility>

namespace pixelgrove {

namespace {

constexpr size_t kStackBytes = size_t(8) << 20;

}  // namespace

FrameQueue::FrameQueue(int threads, WriteFunction write) : write_(std::move(write)) {
    for (int i = 0; i < threads; ++i) {
        auto thread = std::make_unique<Thread>();
        if (!thread->Start(kStackBytes, [this] { Work(); })) break;
        threads_.push_back(std::move(thread));
    }
}

void FrameQueue::Write(std::unique_lock<std::mutex>& lock, Job job) {
    lock.unlock();
    const QString failure = write_(job.frame, *job.picture);
    lock.lock();
    spare_.push_back(std::move(job.picture));
    if (failure.isEmpty() || (failedFrame_ != 0 && failedFrame_ < job.frame)) return;
    failedFrame_ = job.frame;
    failure_ = failure;
    jobs_.clear();
    jobTaken_.notify_one();
}

void FrameQueue::Work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        jobAdded_.wait(lock, [this] { return isClosed_ || !jobs_.empty(); });
        if (jobs_.empty()) return;
        Job job = std::move(jobs_.front());
        jobs_.pop_front();
        jobTaken_.notify_one();
        Write(lock, std::move(job));
    }
}

bool FrameQueue::Put(int frame, std::shared_ptr<Bitmap> picture) {
    std::unique_lock lock(mutex_);
    // One for each thread waits beside the one that it writes.
    jobTaken_.wait(
        lock, [this] { return failedFrame_ != 0 || jobs_.size() < std::max<size_t>(threads_.size(), 1); });
    if (failedFrame_ != 0) return false;
    if (threads_.empty()) {
        Write(lock, {frame, std::move(picture)});
        return failedFrame_ == 0;
    }
    jobs_.push_back({frame, std::move(picture)});
    jobAdded_.notify_one();
    return true;
}

std::shared_ptr<Bitmap> FrameQueue::TakeSpare() {
    const std::lock_guard lock(mutex_);
    if (spare_.empty()) return nullptr;
    std::shared_ptr<Bitmap> picture = std::move(spare_.back());
    spare_.pop_back();
    return picture;
}

QString FrameQueue::Finish() {
    {
        const std::lock_guard lock(mutex_);
        isClosed_ = true;
    }
    jobAdded_.notify_all();
    for (const auto& thread : threads_)
        thread->Join();
    const std::lock_guard lock(mutex_);
    return failure_;
}

}  // namespace pixelgrove
