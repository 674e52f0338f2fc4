// EndWatch: lets the program save what it holds when it is made to end: by SIGTERM, SIGINT or SIGHUP, or by a
// library that calls exit(), as that of the window system does when the server is gone.
//
// One at a time, made on the main thread with an application object.
#pragma once

#include <QSocketNotifier>
#include <functional>

namespace pixelgrove {

// The process ends this long after the first signal at the latest, saved or not.
constexpr unsigned kEndPatienceS = 10;

class EndWatch {
  public:
    // save runs on the main thread, at most once, from whichever event loop runs there or from within exit().
    // Then the process ends at once, without taking anything apart: with 128 plus the signal's number, or
    // with exit's status. A second signal ends it without waiting for save. Signals that were ignored before
    // stay so.
    explicit EndWatch(std::function<void()> save);
    // From here on signals and exit() do what they did before.
    ~EndWatch();
    EndWatch(const EndWatch&) = delete;
    EndWatch& operator=(const EndWatch&) = delete;

  private:
    QSocketNotifier notifier_;
};

}  // namespace pixelgrove
