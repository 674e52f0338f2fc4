#include "ui/RecoveryKeeper.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>

#include "core/AppState.h"
#include "recovery/RecoveryCopy.h"
#include "ui/MessagePane.h"

namespace pixelgrove {

namespace {

QString NameOf(const RecoveryCopy& copy) {
    const QString name = QFileInfo(copy.project.fileName).fileName();
    return name.isEmpty() ? QStringLiteral("Untitled") : name;
}

QString QuestionAbout(const RecoveryCopy& copy, const QDateTime& written) {
    return QStringLiteral(
               "%1 was not saved when the program ended (%2). Restore?\n\n"
               "Yes opens it as it was, with its changes unsaved. No puts it aside. Cancel asks again at the "
               "next start.")
        .arg(NameOf(copy), QLocale().toString(written, QLocale::ShortFormat));
}

}  // namespace

RecoveryKeeper::RecoveryKeeper(AppState& app, MessagePane& pane) : app_(app), pane_(pane) {
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, [this] { OnTimer(); });
}

void RecoveryKeeper::Start(const QString& folder) {
    folder_ = folder;
    NoteChange();
}

void RecoveryKeeper::NoteChange() {
    if (folder_.isEmpty()) return;
    if (!app_.project.shaderModified) {
        Update();
        return;
    }
    if (!sinceFirstChange_.isValid()) sinceFirstChange_.start();
    const qint64 longest = kLongestMs - sinceFirstChange_.elapsed();
    timer_.start(int(std::clamp<qint64>(longest, 0, kQuietMs)));
}

bool RecoveryKeeper::Update(QString* reason) {
    timer_.stop();
    sinceFirstChange_.invalidate();
    if (folder_.isEmpty()) return true;
    if (!app_.project.shaderModified) {
        if (file_) file_->Remove();
        return true;
    }
    const QByteArray bytes = WriteRecoveryCopy(TakeRecoveryCopy(app_.project));
    if (!file_) file_ = RecoveryFile::Create(folder_);
    return file_ && !bytes.isEmpty() && file_->Write(bytes, reason);
}

void RecoveryKeeper::OnTimer() {
    QString reason;
    if (Update(&reason) || failureTold_) return;
    failureTold_ = true;
    if (!reason.isEmpty()) reason = QStringLiteral(" (%1)").arg(reason);
    pane_.Say(QStringLiteral("No recovery copy can be written to \"%1\"%2: save your work soon.")
                  .arg(folder_, reason));
}

void RecoveryKeeper::Finish() {
    timer_.stop();
    folder_.clear();
    if (file_) file_->Remove();
    file_.reset();
}

RecoveryKeeper::Outcome RecoveryKeeper::Offer(const UserDialogs& dialogs) {
    Outcome outcome;
    int waiting = 0;
    for (std::unique_ptr<RecoveryFile>& dead : RecoveryFile::TakeDead(folder_)) {
        if (outcome.isRestored) {
            ++waiting;
            continue;
        }
        const std::optional<QByteArray> bytes = dead->Read();
        const std::optional<RecoveryCopy> copy = bytes ? ReadRecoveryCopy(*bytes) : std::nullopt;
        if (!copy) {
            const QString aside = dead->KeepAside(kDamagedSuffix);
            outcome.messages +=
                QStringLiteral("A recovery copy can't be read. It is kept as \"%1\".").arg(aside);
            continue;
        }
        switch (dialogs.ask(QStringLiteral("Unsaved project"), QuestionAbout(*copy, dead->WrittenAt()))) {
            case Answer::Yes:
                file_ = std::move(dead);
                outcome.isRestored = true;
                outcome.messages +=
                    QStringLiteral("%1 is restored. Its changes are not saved.").arg(NameOf(*copy));
                outcome.messages += ShowRecoveryCopy(app_.project, *copy);
                break;
            case Answer::No:
                outcome.messages += QStringLiteral("The copy of %1 is put aside as \"%2\".")
                                        .arg(NameOf(*copy), dead->KeepAside(kRefusedSuffix));
                break;
            case Answer::Cancel:
                break;
        }
    }
    if (waiting > 0) {
        outcome.messages +=
            waiting == 1 ? QStringLiteral("Another unsaved project waits for the next start.")
                         : QStringLiteral("%1 more unsaved projects wait for the next start.").arg(waiting);
    }
    return outcome;
}

}  // namespace pixelgrove
