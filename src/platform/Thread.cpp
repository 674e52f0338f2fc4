#include "platform/Thread.h"

#include <memory>
#include <utility>

namespace pixelgrove {

namespace {

void* RunWork(void* work) {
    const std::unique_ptr<std::function<void()>> own(static_cast<std::function<void()>*>(work));
    (*own)();
    return nullptr;
}

}  // namespace

bool Thread::Start(size_t stackBytes, std::function<void()> work) {
    auto own = std::make_unique<std::function<void()>>(std::move(work));
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return false;
    isJoinable_ = pthread_attr_setstacksize(&attributes, stackBytes) == 0 &&
                  pthread_create(&handle_, &attributes, RunWork, own.get()) == 0;
    pthread_attr_destroy(&attributes);
    if (isJoinable_) own.release();  // the thread's now
    return isJoinable_;
}

void Thread::Join() {
    if (std::exchange(isJoinable_, false)) pthread_join(handle_, nullptr);
}

void Thread::Detach() {
    if (std::exchange(isJoinable_, false)) pthread_detach(handle_);
}

}  // namespace pixelgrove
