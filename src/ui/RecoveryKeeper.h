// RecoveryKeeper: keeps a copy of the project on the disk while it has unsaved changes, so that they outlive
// a process that dies, as in a driver that can't bear a shader; and offers the copies of processes that did.
//
// The copy is written before each run and soon after the last change, and removed once nothing is unsaved.
// Main thread; owned by the main window.
#pragma once

#include <QElapsedTimer>
#include <QStringList>
#include <QTimer>
#include <memory>

#include "recovery/RecoveryFile.h"
#include "windows/widgets/UserDialogs.h"

namespace pixelgrove {

class MessagePane;
struct AppState;

class RecoveryKeeper {
  public:
    // What is handed in outlives this object.
    RecoveryKeeper(AppState& app, MessagePane& pane);

    // From now on copies are kept in this folder; before, nothing is done. With an empty path there are none.
    void Start(const QString& folder);

    // The project was changed, saved or replaced.
    void NoteChange();
    // Brings the copy up to the project now. False when it can't be written, for the system's reason where it
    // gives one.
    bool Update(QString* reason = nullptr);
    // The project is given up or saved, by the user's wish: nothing is kept from here on.
    void Finish();

    // Asks for each copy of a dead process, newest first, whether to restore it, until one is: that project
    // is shown then, unsaved, and the copy is this process's. A refused copy is kept aside, as is one that
    // can't be read; one that was neither restored nor refused waits for the next start.
    struct Outcome {
        bool isRestored = false;
        QStringList messages;  // for the user, one sentence each
    };
    Outcome Offer(const UserDialogs& dialogs);

    static constexpr int kQuietMs = 2000;
    // A change waits no longer than this, however quickly others follow.
    static constexpr int kLongestMs = 5000;

  private:
    void OnTimer();

    AppState& app_;
    MessagePane& pane_;
    QString folder_;
    std::unique_ptr<RecoveryFile> file_;  // from the first copy on
    QTimer timer_;
    QElapsedTimer sinceFirstChange_;  // valid while a change waits
    bool failureTold_ = false;
};

}  // namespace pixelgrove
