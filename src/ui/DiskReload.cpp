#include "ui/DiskReload.h"

#include <QApplication>
#include <QFileInfo>
#include <QScopedValueRollback>
#include <cstdio>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "core/AppState.h"
#include "core/ProblemLines.h"
#include "project/ProjectModel.h"
#include "project/WholeText.h"
#include "ui/MessagePane.h"
#include "ui/Playback.h"
#include "ui/ProjectCommands.h"

namespace pixelgrove {

namespace {

constexpr int kLaterMs = 200;

void PrintLines(const QString& lines) {
    std::fputs(qPrintable(lines), stderr);
    std::fflush(stderr);
}

}  // namespace

DiskReload::DiskReload(AppState& app, ProjectCommands& projects, Playback& playback, MessagePane& pane)
    : app_(app),
      projects_(projects),
      playback_(playback),
      pane_(pane),
      watch_([this] { OnChanged(); }, LooksWhole) {
    later_.setSingleShot(true);
    later_.setInterval(kLaterMs);
    QObject::connect(&later_, &QTimer::timeout, [this] { OnChanged(); });
    projects_.openFileTouched = [this] { Follow(); };
    playback_.compileFailed = [this] { PrintErrors(); };
}

void DiskReload::Register(CommandRegistry& commands) {
    commands.AddToggle(
        kCmdReloadWhenChanged, [this] { Toggle(); }, [this] { return isOn_; });
}

void DiskReload::Toggle() {
    isOn_ = !isOn_;
    Follow();
    if (isOn_ && app_.project.openFile.path.isEmpty())
        pane_.Add(QStringLiteral("The next file that is opened or saved is read again when it changes."));
}

void DiskReload::Follow() {
    // What was read again is what the watch knows already, but for changes that came since.
    if (isReading_) return;
    later_.stop();
    QString reason;
    if (!watch_.Watch(isOn_ ? app_.project.openFile.path : QString(), &reason))
        pane_.Add(QStringLiteral("Changes of the file go unseen: %1.").arg(reason));
}

bool DiskReload::HasUnsavedChanges() const {
    const EditingForm& project = app_.project;
    const OpenedFile& file = project.openFile;
    if (file.stage == kStageNone) return project.shaderModified;
    return project.documents[file.stage].text != file.text;
}

void DiskReload::OnChanged() {
    // The project may have given way to one without a file.
    if (!isOn_ || app_.project.openFile.path != watch_.Path()) {
        watch_.Watch({});
        return;
    }
    if (isAsking_) return;  // the answer is about this change too
    if (projects_.IsLoading() || QApplication::activeModalWidget()) {
        later_.start();
        return;
    }
    const QString name = QFileInfo(watch_.Path()).fileName();
    if (HasUnsavedChanges()) {
        const QScopedValueRollback asking(isAsking_, true);
        if (!projects_.dialogs.confirm(
                QStringLiteral("Warning: File changed on disk"),
                QStringLiteral("Another program has changed \"%1\", and you've made changes here that have "
                               "not been saved. If you read it again, those changes will be lost.\n\nDo you "
                               "wish to read it again?")
                    .arg(name))) {
            pane_.Say(QStringLiteral("\"%1\" was changed by another program and not read again.").arg(name));
            return;
        }
    }
    if (ReadAgain()) PlayOn();
}

bool DiskReload::ReadAgain() {
    const QScopedValueRollback reading(isReading_, true);
    EditingForm& project = app_.project;
    const OpenedFile file = project.openFile;
    const uint32_t shown = project.currentStage;
    bool isRead = false;
    if (file.stage == kStageNone) {
        isRead = projects_.Load(file.path, {QStringLiteral("Project read again."),
                                            QStringLiteral("The changed project can't be read.")});
    } else {
        // What an earlier replacement kept stays, unless this one has something to keep.
        std::unique_ptr<EditedProject> kept;
        if (!HasUnsavedChanges()) kept = std::move(project.previousProject);
        SelectStage(project, file.stage);
        isRead = projects_.LoadSourceAgain(file.path);
        if (kept) project.previousProject = std::move(kept);
    }
    if (project.documents[shown].hasText) SelectStage(project, shown);
    if (!isRead)
        PrintLines(ProblemLine(file.path, 1, 1, QStringLiteral("error"), pane_.Text().simplified()) + u'\n');
    return isRead;
}

void DiskReload::PlayOn() {
    if (app_.run->recordingActive != 0) {
        pane_.Add(QStringLiteral("A recording goes on with the text from before; press Play afterwards."));
        return;
    }
    awaitsResult_ = playback_.PlayOn();
}

void DiskReload::PrintErrors() {
    if (!std::exchange(awaitsResult_, false)) return;
    const OpenedFile& file = app_.project.openFile;
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        const CompileMessages& messages = app_.project.stageErrors[id];
        // A source file is one stage's; of the others there is no file to name.
        const bool hasFile = file.stage == kStageNone || file.stage == id;
        PrintLines(hasFile ? ProblemLinesOf(messages, file.path) : TextOf(messages));
    }
}

}  // namespace pixelgrove
