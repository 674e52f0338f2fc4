// RecoveryFile: where a process keeps the copy of its unsaved project, and how the next one finds the copies
// of those that died.
//
// In one folder each process has a name of its own: NAME.json is the copy, NAME.lock is held locked while the
// process lives. A copy whose lock can be taken is a dead process's; whoever takes it owns it. Main thread.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "platform/FileLock.h"

namespace pixelgrove {

class RecoveryFile {
  public:
    // A new name in the folder, which is made when it is missing; no copy yet. Null when there can be none.
    static std::unique_ptr<RecoveryFile> Create(const QString& folder);
    // The copies of dead processes, newest first, all locked; without a folder none. What else such processes
    // left there is removed.
    static std::vector<std::unique_ptr<RecoveryFile>> TakeDead(const QString& folder);

    // Lets go of the lock: a copy that is there is a dead process's from now on.
    ~RecoveryFile();
    RecoveryFile(const RecoveryFile&) = delete;
    RecoveryFile& operator=(const RecoveryFile&) = delete;

    // Replaces the copy whole; false, with the old one kept, when it can't be written, for the system's
    // reason.
    bool Write(QByteArrayView bytes, QString* reason = nullptr);
    // Nothing when there is no copy or it can't be read.
    std::optional<QByteArray> Read() const;
    QDateTime WrittenAt() const;
    void Remove();
    // Renames the copy to end in the suffix, so that it is no longer offered, and returns its new path; empty
    // on failure. The ten that were written last are kept aside, whatever their suffix.
    QString KeepAside(const QString& suffix);

    static constexpr int kKeptAside = 10;

  private:
    RecoveryFile(QString stem, FileLock lock) : stem_(std::move(stem)), lock_(std::move(lock)) {}
    QString CopyPath() const;

    QString stem_;  // path without ending
    FileLock lock_;
};

inline const QString kRefusedSuffix = QStringLiteral("old");
inline const QString kDamagedSuffix = QStringLiteral("bad");

}  // namespace pixelgrove
