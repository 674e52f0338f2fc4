#include "platform/FileWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "platform/Files.h"

namespace pixelgrove {

namespace {

constexpr uint32_t kComplete = IN_CLOSE_WRITE | IN_MOVED_TO;
constexpr uint32_t kUnderWay = IN_MODIFY | IN_CREATE;
constexpr uint32_t kFolderGone = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT;
// A folder that is gone may come back.
constexpr int kRetryMs = 500;

QString TargetOf(const QString& path) {
    const QString target = QFileInfo(path).canonicalFilePath();
    return target.isEmpty() ? path : target;
}

}  // namespace

FileWatch::FileWatch(std::function<void()> changed, std::function<bool(const QByteArray&)> isWhole)
    : changed_(std::move(changed)), isWhole_(std::move(isWhole)) {
    quiet_.setSingleShot(true);
    quiet_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&quiet_, &QTimer::timeout, [this] { OnQuiet(); });
}

bool FileWatch::Watch(const QString& path, QString* reason) {
    quiet_.stop();
    path_ = path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
    const bool isArmed = Arm(reason);
    if (!isArmed) path_.clear();
    known_ = path_.isEmpty() ? std::nullopt : ReadWholeFile(path_);
    return isArmed || path.isEmpty();
}

bool FileWatch::Arm(QString* reason) {
    notifier_.reset();
    events_ = Descriptor(-1);
    names_.clear();
    if (path_.isEmpty()) return false;
    target_ = TargetOf(path_);
    Descriptor events(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    for (const QString& name : {path_, target_}) {
        const QFileInfo file(name);
        const int folder =
            events.Get() < 0
                ? -1
                : inotify_add_watch(events.Get(), QFile::encodeName(file.absolutePath()).constData(),
                                    kComplete | kUnderWay | kFolderGone | IN_ONLYDIR);
        if (folder < 0) {
            if (reason) *reason = QString::fromLocal8Bit(std::strerror(errno));
            return false;
        }
        names_.emplace_back(folder, QFile::encodeName(file.fileName()));
    }
    events_ = std::move(events);
    notifier_ = std::make_unique<QSocketNotifier>(events_.Get(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { TakeEvents(); });
    return true;
}

void FileWatch::TakeEvents() {
    alignas(inotify_event) std::array<char, 16384> buffer;
    bool isComplete = false;
    bool isUnderWay = false;
    for (ssize_t size = 0; (size = read(events_.Get(), buffer.data(), buffer.size())) > 0;) {
        for (ssize_t at = 0; at < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
            at += ssize_t(sizeof(inotify_event) + event->len);
            if (event->mask & kFolderGone) isFolderGone_ = true;
            // Events may have been lost.
            if (event->mask & IN_Q_OVERFLOW) isComplete = true;
            const QByteArray name = event->len > 0 ? QByteArray(event->name) : QByteArray();
            if (name.isEmpty() || std::ranges::find(names_, std::pair(event->wd, name)) == names_.end())
                continue;
            // Of several the last tells whether a program still has the file open.
            isComplete = (event->mask & kComplete) != 0;
            isUnderWay = !isComplete;
        }
    }
    if (isComplete || isUnderWay) hadPatience_ = false;
    if (isFolderGone_) {
        quiet_.start(kRetryMs);
    } else if (isComplete || isUnderWay) {
        quiet_.start(isComplete ? kQuietMs : kOpenMs);
    }
}

void FileWatch::OnQuiet() {
    // Before the file is read, so that nothing that happens from here on is missed.
    if (isFolderGone_ || TargetOf(path_) != target_) {
        isFolderGone_ = !Arm();
        if (isFolderGone_) {
            quiet_.start(kRetryMs);
            return;
        }
    }
    const std::optional<QByteArray> bytes = ReadWholeFile(path_);
    // A file that is gone says nothing; one of that name may follow.
    if (!bytes || bytes == known_) return;
    if (!hadPatience_ && !isWhole_(*bytes)) {
        hadPatience_ = true;
        quiet_.start(kPartMs);
        return;
    }
    known_ = bytes;
    changed_();
}

}  // namespace pixelgrove
