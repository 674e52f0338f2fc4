#include "net/WebWorker.h"

#include <QCoreApplication>
#include <QEvent>
#include <utility>

namespace pixelgrove {

namespace {

QEvent::Type NewsType() {
    static const QEvent::Type type = QEvent::Type(QEvent::registerEventType());
    return type;
}

}  // namespace

WebWorker::WebWorker(const FetchLimits& limits) : client_(limits) {}

WebWorker::~WebWorker() {
    Drop();
}

void WebWorker::Start(WebJob job) {
    if (!running_) {
        Begin(std::move(job));
        return;
    }
    waiting_ = std::move(job);
    stopsNext_ = false;
    stop_.request_stop();
}

void WebWorker::Stop() {
    stopsNext_ = waiting_.has_value();
    stop_.request_stop();
}

void WebWorker::Drop() {
    stop_.request_stop();
    thread_.reset();
    running_.reset();
    waiting_.reset();
    stopsNext_ = false;
    news_.Exchange({});
}

void WebWorker::Begin(WebJob job) {
    running_ = std::move(job);
    stop_ = std::stop_source();
    if (std::exchange(stopsNext_, false)) stop_.request_stop();
    thread_.emplace();
    const auto work = [this, work = running_->work, stop = stop_.get_token()] {
        work({stop, client_, [this, stop](const QString& url) { return client_.Fetch(url, stop); },
              [this] { Post(&News::isTold); }});
        Post(&News::isDone);
    };
    if (!thread_->Start(kWebStackBytes, work)) Post(&News::isDone);
}

void WebWorker::Post(bool News::*what) {
    const Hold news(news_);
    (*news).*what = true;
    if (!std::exchange(news->isPosted, true)) QCoreApplication::postEvent(this, new QEvent(NewsType()));
}

bool WebWorker::event(QEvent* event) {
    if (event->type() != NewsType()) return QObject::event(event);
    const News news = news_.Exchange({});
    if (news.isTold && running_ && running_->told) running_->told();
    if (!news.isDone || !running_) return true;
    thread_.reset();
    const WebJob finished = std::move(*running_);
    running_.reset();
    std::optional<WebJob> next = std::exchange(waiting_, std::nullopt);
    if (next) Begin(std::move(*next));
    if (finished.done) finished.done();
    return true;
}

}  // namespace pixelgrove
