// Thread: a thread with a stack of a chosen size, whose start may fail without an exception.
//
// Owned and used by one thread. What is neither joined nor detached is joined when the object goes.
#pragma once

#include <pthread.h>

#include <cstddef>
#include <functional>

namespace pixelgrove {

class Thread {
  public:
    Thread() = default;
    ~Thread() { Join(); }
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    // Runs work on a new thread; only once for an object. False, with work not run, when the system gives no
    // thread or no memory for its stack.
    bool Start(size_t stackBytes, std::function<void()> work);
    // Waits for the end of the thread; nothing without one.
    void Join();
    // Lets the thread go on by itself.
    void Detach();

  private:
    pthread_t handle_{};
    bool isJoinable_ = false;
};

}  // namespace pixelgrove
