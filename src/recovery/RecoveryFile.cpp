#include "recovery/RecoveryFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <set>
#include <utility>

#include "platform/Files.h"
#include "platform/Random.h"

namespace pixelgrove {

namespace {

const QString kCopyEnding = QStringLiteral(".json");
const QString kLockEnding = QStringLiteral(".lock");

constexpr int kNameTries = 8;

QString NewStem(const QString& folder) {
    return folder + QStringLiteral("/%1-%2")
                        .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss")))
                        .arg(SystemRandom32(), 8, 16, QLatin1Char('0'));
}

// What processes that were killed while they wrote left behind. None that lives writes for a minute.
void RemoveUnfinished(const QString& folder) {
    const QDateTime longAgo = QDateTime::currentDateTime().addSecs(-60);
    for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden))
        if (file.fileName().startsWith(u'.') && file.lastModified() < longAgo) QFile::remove(file.filePath());
}

}  // namespace

std::unique_ptr<RecoveryFile> RecoveryFile::Create(const QString& folder) {
    if (folder.isEmpty() || !MakeFolder(folder)) return nullptr;
    for (int i = 0; i < kNameTries; ++i) {
        const QString stem = NewStem(folder);
        if (QFileInfo::exists(stem + kCopyEnding)) continue;
        if (std::optional<FileLock> lock = FileLock::Take(stem + kLockEnding))
            return std::unique_ptr<RecoveryFile>(new RecoveryFile(stem, *std::move(lock)));
    }
    return nullptr;
}

std::vector<std::unique_ptr<RecoveryFile>> RecoveryFile::TakeDead(const QString& folder) {
    std::vector<std::unique_ptr<RecoveryFile>> dead;
    if (folder.isEmpty()) return dead;
    RemoveUnfinished(folder);
    std::set<QString> names;
    for (const QString& entry : QDir(folder).entryList(QDir::Files))
        if (entry.endsWith(kCopyEnding) || entry.endsWith(kLockEnding))
            names.insert(entry.section(u'.', 0, 0));
    for (const QString& name : names) {
        const QString stem = folder + u'/' + name;
        std::optional<FileLock> lock = FileLock::Take(stem + kLockEnding);
        if (!lock) continue;
        std::unique_ptr<RecoveryFile> file(new RecoveryFile(stem, *std::move(lock)));
        if (IsPlainFile(file->CopyPath())) dead.push_back(std::move(file));
    }
    const auto age = [](const auto& file) { return std::pair(file->WrittenAt(), file->stem_); };
    std::ranges::sort(dead, std::ranges::greater(), age);
    return dead;
}

RecoveryFile::~RecoveryFile() {
    if (!IsPlainFile(CopyPath())) QFile::remove(stem_ + kLockEnding);
}

QString RecoveryFile::CopyPath() const {
    return stem_ + kCopyEnding;
}

bool RecoveryFile::Write(QByteArrayView bytes, QString* reason) {
    return WriteWholeFile(CopyPath(), bytes, reason);
}

std::optional<QByteArray> RecoveryFile::Read() const {
    return ReadWholeFile(CopyPath());
}

QDateTime RecoveryFile::WrittenAt() const {
    return QFileInfo(CopyPath()).lastModified();
}

void RecoveryFile::Remove() {
    QFile::remove(CopyPath());
}

QString RecoveryFile::KeepAside(const QString& suffix) {
    QString aside = stem_ + u'.' + suffix;
    if (!QFile::rename(CopyPath(), aside)) return {};
    const QStringList kinds = {QStringLiteral("*.") + kRefusedSuffix, QStringLiteral("*.") + kDamagedSuffix};
    QDir folder = QFileInfo(stem_).dir();
    const QStringList kept = folder.entryList(kinds, QDir::Files, QDir::Time);
    for (const QString& oldest : kept.mid(kKeptAside))
        folder.remove(oldest);
    return aside;
}

}  // namespace pixelgrove
