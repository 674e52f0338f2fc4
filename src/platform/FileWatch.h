// FileWatch: tells when another program has changed a file, once the change is complete: also where a new
// file takes the old one's name, where it is written bit by bit, and where it is deleted and made anew. What
// counts is what the file holds; a file that is written again as it was has not changed.
//
// Changes that another machine makes on a network's file system go unseen. One thread, which runs an event
// loop.
#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Descriptor.h"

namespace pixelgrove {

class FileWatch {
  public:
    // isWhole says whether bytes look like all of such a file. Those that don't have to stand longer before
    // they count as the change.
    FileWatch(std::function<void()> changed, std::function<bool(const QByteArray& bytes)> isWhole);

    // Watches this file from now on, instead of another; what it holds now is known. An empty path ends it.
    // False, with nothing watched and the system's reason, when that can't be done.
    bool Watch(const QString& path, QString* reason = nullptr);
    const QString& Path() const { return path_; }

    // How long nothing more may happen to the file before it is read: behind a change that is complete by
    // itself, while a program has it open, and where it doesn't look whole.
    static constexpr int kQuietMs = 3;
    static constexpr int kOpenMs = 2000;
    static constexpr int kPartMs = 600;

  private:
    bool Arm(QString* reason = nullptr);
    void TakeEvents();
    void OnQuiet();

    const std::function<void()> changed_;
    const std::function<bool(const QByteArray&)> isWhole_;
    QString path_;
    QString target_;  // where links of that name lead
    std::optional<QByteArray> known_;
    Descriptor events_{-1};
    std::unique_ptr<QSocketNotifier> notifier_;
    std::vector<std::pair<int, QByteArray>> names_;  // in which watched folders
    QTimer quiet_;
    bool hadPatience_ = false;  // with what doesn't look whole
    bool isFolderGone_ = false;
};

}  // namespace pixelgrove
