#include "ui/FileCommands.h"

#include <QFileInfo>
#include <algorithm>
#include <optional>

#include "core/BaseFolders.h"
#include "persist/RecentList.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "project/ProjectModel.h"
#include "ui/MessagePane.h"
#include "ui/ProjectCommands.h"

namespace pixelgrove {

namespace {

FileQuestion SourceQuestion(const QString& caption) {
    FileQuestion question;
    question.caption = caption;
    question.folder = PathOf(PathId::Shaders);
    question.filters = {QStringLiteral("Fragment Shader Files (*.glsl)"), QStringLiteral("All Files (*)")};
    question.defaultSuffix = QStringLiteral("glsl");
    return question;
}

// The list's entry by value, as loading it moves it to the top; empty when there is none.
QString EntryOf(const StringList* list, int index) {
    return list ? list->entries.value(index) : QString();
}

}  // namespace

QString SavingFailed(const QString& reason) {
    const QString words = QStringLiteral("Error saving file.");
    return reason.isEmpty() ? words : words + u'\n' + reason;
}

QString LostCharacters(const std::array<qsizetype, kStageCount>& counts, const QString& page, bool isSaved) {
    QString words;
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        if (counts[id] == 0) continue;
        const bool isOne = counts[id] == 1;
        const QString were = isOne ? QStringLiteral("was") : QStringLiteral("were");
        words += QStringLiteral("\n%1: %2 %3 %4 saved as \"?\".")
                     .arg(StageName(id), QString::number(counts[id]),
                          isOne ? QStringLiteral("character") : QStringLiteral("characters"),
                          isSaved ? were : QStringLiteral("will be"));
    }
    if (!words.isEmpty()) words += QStringLiteral("\nOnly %1 can be saved.").arg(page);
    return words;
}

QByteArray ToAscii(QStringView text) {
    QByteArray bytes(text.size(), Qt::Uninitialized);
    std::ranges::transform(text, bytes.begin(),
                           [](QChar unit) { return unit.unicode() < 0x80 ? char(unit.unicode()) : '?'; });
    return bytes;
}

void ProjectCommands::OpenFile() {
    if (!ConfirmLoss()) return;
    const QString path = dialogs.askForFile(SourceQuestion(QStringLiteral("Open File")));
    if (path.isEmpty()) return;
    pane_.Say(LoadSourceFile(path) ? QStringLiteral("File loaded.") : QStringLiteral("Error loading file."));
}

void ProjectCommands::SaveFileAs() {
    FileQuestion question = SourceQuestion(QStringLiteral("Save File As"));
    question.forSaving = true;
    const QString path = dialogs.askForFile(question);
    if (path.isEmpty()) return;
    const StageDocument* document = app_.project.currentDocument;
    QString reason;
    if (!document || document->text.isEmpty() || !WriteWholeFile(path, ToAscii(document->text), &reason)) {
        pane_.Say(SavingFailed(reason));
        return;
    }
    const OpenedFile& file = app_.project.openFile;
    if (file.stage == app_.project.currentStage && file.path == QFileInfo(path).absoluteFilePath())
        NoteOpenFile(path, file.stage);
    std::array<qsizetype, kStageCount> lost{};
    lost[app_.project.currentStage] =
        std::ranges::count_if(document->text.toUcs4(), [](uint point) { return point >= 0x80; });
    pane_.Say(QStringLiteral("File saved.") + LostCharacters(lost, QStringLiteral("US-ASCII"), true));
}

bool ProjectCommands::LoadSourceFile(const QString& path) {
    std::optional<QByteArray> bytes = ReadWholeFile(path, kMaxSourceFileBytes);
    if (!bytes || !app_.project.currentDocument) return false;
    PushRecent(app_.recent.recentFiles.get(), path);
    // Text ends at a zero byte.
    if (const qsizetype end = bytes->indexOf('\0'); end >= 0) bytes->truncate(end);
    ReplaceShownText(app_.project, FromCodePage(*bytes));
    NoteOpenFile(path, app_.project.currentStage);
    return true;
}

bool ProjectCommands::LoadSourceAgain(const QString& path) {
    const bool isLoaded = LoadSourceFile(path);
    pane_.Say(isLoaded ? QStringLiteral("File read again.")
                       : QStringLiteral("The changed file can't be read."));
    return isLoaded;
}

bool ProjectCommands::LoadSource(const QString& path) {
    const bool isLoaded = LoadSourceFile(path);
    if (isLoaded) SetOpenFileName(app_.project, path);
    pane_.Say(isLoaded ? QStringLiteral("File loaded.") : QStringLiteral("Error loading file."));
    return isLoaded;
}

void ProjectCommands::OpenRecentFile(int index) {
    const QString path = EntryOf(app_.recent.recentFiles.get(), index);
    if (!path.isEmpty() && ConfirmLoss()) LoadSource(path);
}

void ProjectCommands::OpenRecentProject(int index) {
    const QString path = EntryOf(app_.recent.recentProjects.get(), index);
    if (path.isEmpty() || !ConfirmLoss()) return;
    // The path itself, also where so short a one would give way to the project's own name.
    if (LoadFrom(path, {}) == Taken::Project) SetOpenFileName(app_.project, path);
}

void ProjectCommands::DropFiles(const QStringList& paths) {
    if (paths.isEmpty() || IsLoading() || !ConfirmLoss()) return;
    const QString& path = paths.constFirst();
    if (path.contains(QLatin1String(".json"), Qt::CaseInsensitive)) {
        Load(path, {QStringLiteral("File loaded."), QStringLiteral("Failed to load file.")});
        return;
    }
    if (LoadSourceFile(path)) SetOpenFileName(app_.project, path);
    // Said also when the file could not be read.
    pane_.Say(paths.size() > 1
                  ? QStringLiteral("First file loaded (drag-n-drop of multiple files not allowed).")
                  : QStringLiteral("File loaded."));
}

}  // namespace pixelgrove
