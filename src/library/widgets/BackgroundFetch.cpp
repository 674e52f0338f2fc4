#include "library/widgets/BackgroundFetch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <atomic>
#include <utility>

#include "platform/Thread.h"

namespace pixelgrove {

namespace {

// Name look-ups of the system take some of it.
constexpr size_t kStackBytes = 1 << 20;

QEvent::Type NewsType() {
    static const QEvent::Type type = QEvent::Type(QEvent::registerEventType());
    return type;
}

// Where the worker leaves its news: what is shared stands in atomics, and a plain event tells that it is
// there.
class News : public QObject {
  public:
    News(QEventLoop& loop, std::function<void(qint64)> tell) : loop_(loop), tell_(std::move(tell)) {}

    // Worker. One event at a time is on its way, however many pieces come.
    void SetBytes(qint64 bytes) {
        bytes_.store(bytes, std::memory_order_relaxed);
        Post();
    }
    void SetDone() {
        isDone_.store(true, std::memory_order_relaxed);
        Post();
    }

    // Main thread.
    void Tell() {
        const qint64 bytes = bytes_.load(std::memory_order_relaxed);
        if (bytes == told_) return;
        told_ = bytes;
        tell_(bytes);
    }
    bool event(QEvent* event) override {
        if (event->type() != NewsType()) return QObject::event(event);
        // What was set before this is seen below; what is set after it posts again.
        isPosted_.exchange(false, std::memory_order_acq_rel);
        Tell();
        if (isDone_.load(std::memory_order_relaxed)) loop_.quit();
        return true;
    }

  private:
    void Post() {
        if (!isPosted_.exchange(true, std::memory_order_acq_rel))
            QCoreApplication::postEvent(this, new QEvent(NewsType()));
    }

    QEventLoop& loop_;
    std::function<void(qint64)> tell_;
    qint64 told_ = -1;
    std::atomic<qint64> bytes_ = 0;
    std::atomic<bool> isDone_ = false;
    std::atomic<bool> isPosted_ = false;
};

}  // namespace

FetchResult BackgroundFetch::Fetch(const QString& url, const Progress& progress) {
    if (isFetching_) return {FetchFailure::Stopped, QStringLiteral("another fetch is under way"), {}};
    isFetching_ = true;
    stop_ = std::stop_source();

    FetchResult result;  // the worker's until it is joined
    QEventLoop loop;
    News news(loop, [&](qint64 bytes) {
        if (progress) progress(url, bytes);
    });
    Thread worker;
    const bool isStarted = worker.Start(kStackBytes, [&, stop = stop_.get_token()] {
        result = client_.Fetch(url, stop, [&news](qint64 bytes) {
            news.SetBytes(bytes);
            return true;
        });
        news.SetDone();
    });
    if (isStarted) {
        loop.exec(QEventLoop::ExcludeUserInputEvents);
        // The loop ends early when the program is to end.
        stop_.request_stop();
        worker.Join();
        news.Tell();
    } else {
        result = {FetchFailure::NoConnection, QStringLiteral("the system gives no thread to fetch on"), {}};
    }
    isFetching_ = false;
    return result;
}

}  // namespace pixelgrove
