// WebWorker: a thread for what takes long and may ask the network for something: fetches, scans of the cache.
// Its owner lives on meanwhile.
//
// One job at a time. Owned and used by one thread, which has an event loop: the main one. Destruction stops
// the job and waits for it.
#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <stop_token>

#include "net/WebClient.h"
#include "platform/SynchronizedValue.h"
#include "platform/Thread.h"

namespace pixelgrove {

// Of a thread that fetches: name look-ups of the system take some of it.
inline constexpr size_t kWebStackBytes = 1 << 20;

// What a job works with, on the worker. A requested stop ends a fetch at once; other work asks for it.
struct WebTask {
    std::stop_token stop;
    WebClient& client;
    FetchFunction fetch;         // by that client, with that stop
    std::function<void()> tell;  // has the job's `told` called on the owner's thread, once for many calls
};

struct WebJob {
    std::function<void(const WebTask& task)> work;  // on the worker
    std::function<void()> told = {};                // on the owner's thread, when `tell` was called
    std::function<void()> done;                     // on the owner's thread, once the work is over
};

class WebWorker : public QObject {
  public:
    explicit WebWorker(const FetchLimits& limits = {});
    ~WebWorker() override;

    // Has the running job stop and this one follow it; of several that wait the last one stays. A job that is
    // replaced so before it began is dropped without a word, and one for which the system has no thread is
    // done by and by, without its work.
    void Start(WebJob job);
    // Asks the running job to stop, and the one that waits to do so once it begins; `done` of both is called.
    void Stop();
    // Stops the running job, waits for its end and forgets it and the one that waits: neither calls anything
    // from then on.
    void Drop();
    bool IsBusy() const { return running_.has_value(); }

  protected:
    bool event(QEvent* event) override;

  private:
    struct News {
        bool isPosted = false;
        bool isTold = false;
        bool isDone = false;
    };
    void Begin(WebJob job);
    void Post(bool News::*what);

    WebClient client_;  // the worker's, while there is one
    std::optional<WebJob> running_;
    std::optional<WebJob> waiting_;
    bool stopsNext_ = false;  // the one that waits
    std::stop_source stop_;
    std::optional<Thread> thread_;
    SynchronizedValue<News> news_;  // written by the worker, taken by the owner's thread
};

}  // namespace pixelgrove
