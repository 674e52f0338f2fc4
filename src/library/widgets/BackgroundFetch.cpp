#include "library/widgets/BackgroundFetch.h"

#include <QEventLoop>
#include <atomic>
#include <utility>

namespace pixelgrove {

FetchResult BackgroundFetch::Fetch(const QString& url, const Progress& progress) {
    if (isFetching_) return {FetchFailure::Stopped, QStringLiteral("another fetch is under way"), {}};
    isFetching_ = true;

    // The worker's until it is done; what it stays as without one.
    FetchResult result{
        FetchFailure::NoConnection, QStringLiteral("the system gives no thread to fetch on"), {}};
    std::atomic<qint64> bytes = 0;
    qint64 told = -1;
    const auto tell = [&] {
        const qint64 now = bytes.load(std::memory_order_relaxed);
        if (progress && std::exchange(told, now) != now) progress(url, now);
    };
    QEventLoop loop;
    WebJob job;
    job.work = [&](const WebTask& task) {
        result = task.client.Fetch(url, task.stop, [&](qint64 soFar) {
            bytes.store(soFar, std::memory_order_relaxed);
            task.tell();
            return true;
        });
    };
    job.told = tell;
    job.done = [&] { loop.quit(); };
    worker_.Start(std::move(job));
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    // The loop ends early when the program is to end.
    worker_.Drop();
    tell();
    isFetching_ = false;
    return result;
}

}  // namespace pixelgrove
