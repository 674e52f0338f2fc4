// LibraryWorker: a thread for what takes the browser long: scans of the cache, questions to the service. The
// window lives on meanwhile, input and all.
//
// One job at a time. Main thread; owned by the browser. Destruction stops the job and waits for it.
#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <stop_token>

#include "net/WebClient.h"
#include "platform/SynchronizedValue.h"
#include "platform/Thread.h"

namespace pixelgrove {

// What a job works with, on the worker. A requested stop ends a fetch at once; other work asks for it.
struct LibraryTask {
    std::stop_token stop;
    FetchFunction fetch;
    std::function<void()> tell;  // has the job's `told` called on the main thread, once for many calls
};

struct LibraryJob {
    std::function<void(const LibraryTask& task)> work;  // on the worker
    std::function<void()> told = {};                    // on the main thread, when `tell` was called
    std::function<void()> done;                         // on the main thread, once the work is over
};

class LibraryWorker : public QObject {
    Q_OBJECT

  public:
    explicit LibraryWorker(const FetchLimits& limits = {});
    ~LibraryWorker() override;

    // Has the running job stop and this one follow it; of several that wait the last one stays. A job that is
    // replaced so before it began is dropped without a word, and one for which the system has no thread is
    // done at once, without its work.
    void Start(LibraryJob job);
    // Asks the running job to stop, and the one that waits to do so once it begins; `done` of both is called.
    void Stop();
    bool IsBusy() const { return running_.has_value(); }

  protected:
    bool event(QEvent* event) override;

  private:
    struct News {
        bool isPosted = false;
        bool isTold = false;
        bool isDone = false;
    };
    void Begin(LibraryJob job);
    void Post(bool News::*what);

    WebClient client_;  // the worker's, while there is one
    std::optional<LibraryJob> running_;
    std::optional<LibraryJob> waiting_;
    bool stopsNext_ = false;  // the one that waits
    std::stop_source stop_;
    std::optional<Thread> thread_;
    SynchronizedValue<News> news_;  // written by the worker, taken by the main thread
};

}  // namespace pixelgrove
