#include "library/widgets/LibraryWorker.h"

#include <QCoreApplication>
#include <QEvent>
#include <utility>

namespace pixelgrove {

namespace {

// Name look-ups of the system take some of it.
constexpr size_t kStackBytes = 1 << 20;

QEvent::Type NewsType() {
    static const QEvent::Type type = QEvent::Type(QEvent::registerEventType());
    return type;
}

}  // namespace

LibraryWorker::LibraryWorker(const FetchLimits& limits) : client_(limits) {}

LibraryWorker::~LibraryWorker() {
    Stop();
    thread_.reset();
}

void LibraryWorker::Start(LibraryJob job) {
    if (!running_) {
        Begin(std::move(job));
        return;
    }
    waiting_ = std::move(job);
    stopsNext_ = false;
    stop_.request_stop();
}

void LibraryWorker::Stop() {
    stopsNext_ = waiting_.has_value();
    stop_.request_stop();
}

void LibraryWorker::Begin(LibraryJob job) {
    running_ = std::move(job);
    stop_ = std::stop_source();
    if (std::exchange(stopsNext_, false)) stop_.request_stop();
    thread_.emplace();
    const auto work = [this, work = running_->work, stop = stop_.get_token()] {
        work({stop, [this, stop](const QString& url) { return client_.Fetch(url, stop); },
              [this] { Post(&News::isTold); }});
        Post(&News::isDone);
    };
    if (!thread_->Start(kStackBytes, work)) Post(&News::isDone);
}

void LibraryWorker::Post(bool News::*what) {
    const Hold news(news_);
    (*news).*what = true;
    if (!std::exchange(news->isPosted, true)) QCoreApplication::postEvent(this, new QEvent(NewsType()));
}

bool LibraryWorker::event(QEvent* event) {
    if (event->type() != NewsType()) return QObject::event(event);
    const News news = news_.Exchange({});
    if (news.isTold && running_ && running_->told) running_->told();
    if (!news.isDone || !running_) return true;
    thread_.reset();
    const LibraryJob finished = std::move(*running_);
    running_.reset();
    std::optional<LibraryJob> next = std::exchange(waiting_, std::nullopt);
    if (next) Begin(std::move(*next));
    if (finished.done) finished.done();
    return true;
}

}  // namespace pixelgrove
