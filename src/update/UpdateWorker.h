// UpdateWorker: an update check on a thread of its own.
//
// Owned by the window that shows what comes out; its thread alone, the main one, calls it. Destruction ends a
// fetch that is under way, which takes no time to speak of.
#pragma once

#include <QString>
#include <optional>
#include <stop_token>

#include "net/WebClient.h"
#include "platform/SynchronizedValue.h"
#include "platform/Thread.h"

namespace pixelgrove {

class UpdateWorker {
  public:
    explicit UpdateWorker(const FetchLimits& limits = kLimits) : limits_(limits) {}
    ~UpdateWorker() { stop_.request_stop(); }

    // Once. False when the system gives no thread: there will be no text then.
    bool Start(const QString& address, const QString& ownStamp);
    // What the check says, as soon as it is over; nothing before, and nothing again once it was taken.
    std::optional<QString> TakeText() { return text_.Exchange(std::nullopt); }

  private:
    // More than anybody has to say about a release.
    static constexpr FetchLimits kLimits{.bytes = qint64(4) << 20};

    const FetchLimits limits_;
    std::stop_source stop_;
    SynchronizedValue<std::optional<QString>> text_;  // written by the thread, once
    Thread thread_;                                   // the last member: it is joined before the others go
};

}  // namespace pixelgrove
