// BackgroundFetch: fetches for the main thread while its windows live on.
//
// The fetch itself runs on a worker. Meanwhile the main thread handles all events but the user's: windows are
// painted, timers run, input waits until the fetch is over. So a caller gets its answer by a plain call, and
// finds the program changed by nothing but events: posted commands wait too where their queue is told to
// (CommandQueue::Postpone).
//
// Main thread. Owned by a window or a load, which outlives the fetch.
#pragma once

#include <QString>
#include <functional>

#include "net/WebWorker.h"

namespace pixelgrove {

class BackgroundFetch {
  public:
    explicit BackgroundFetch(const FetchLimits& limits = {}) : worker_(limits) {}

    // Called now and then with the bytes of the answer so far, first with 0, last of all with their full
    // number.
    using Progress = std::function<void(const QString& url, qint64 bytes)>;

    // As WebClient::Fetch. At once Stopped when called from an event that came during another, which goes on,
    // and NoConnection where the system gives no thread. An end of the program that is asked for meanwhile
    // stops it.
    FetchResult Fetch(const QString& url, const Progress& progress = {});

    // Ends the fetch under way; nothing without one. For the events that come during it.
    void Stop() { worker_.Stop(); }
    bool IsFetching() const { return isFetching_; }

  private:
    WebWorker worker_;
    bool isFetching_ = false;
};

}  // namespace pixelgrove
