#include "ui/ProjectCommands.h"

#include <QFileInfo>
#include <QLocale>
#include <QUrl>
#include <array>
#include <cstdio>

#include "core/BaseFolders.h"
#include "library/CacheNames.h"
#include "library/ShaderService.h"
#include "library/widgets/BackgroundFetch.h"
#include "persist/RecentList.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "project/ProjectModel.h"
#include "project/RunningForm.h"
#include "shadertoy/ProjectFile.h"
#include "shadertoy/ProjectJson.h"
#include "ui/FileCommands.h"
#include "ui/MessagePane.h"

namespace pixelgrove {

namespace {

FileQuestion ProjectQuestion(const QString& caption) {
    FileQuestion question;
    question.caption = caption;
    question.folder = PathOf(PathId::ProjectFiles);
    question.filters = {QStringLiteral("JSON Files (*.json)"), QStringLiteral("All Files (*)")};
    question.defaultSuffix = QStringLiteral("json");
    return question;
}

}  // namespace

QString ProjectCommands::LostCharactersOfProject(bool isSaved) const {
    std::array<qsizetype, kStageCount> counts{};
    for (uint32_t id = kStageCommon; id < kStageCount; ++id)
        counts[id] = CountLackingCharacters(app_.project.documents[id].text);
    return LostCharacters(counts, QStringLiteral("Windows-1252"), isSaved);
}

bool ProjectCommands::ConfirmLoss() {
    if (!app_.project.shaderModified) return true;
    return dialogs.confirm(
        QStringLiteral("Warning: Unsaved changes"),
        QStringLiteral("You've made changes to the current shader that have not been saved. If you proceed, "
                       "those changes will be lost.\n\nDo you wish to proceed?"));
}

void ProjectCommands::New() {
    ClearProject(app_.project, true);
}

void ProjectCommands::OpenProject() {
    if (!ConfirmLoss()) return;
    const QString path = dialogs.askForFile(ProjectQuestion(QStringLiteral("Open Project")));
    if (path.isEmpty()) {
        pane_.Say(QStringLiteral("Error loading file."));
        return;
    }
    if (Load(path)) PushRecent(app_.recent.recentProjects.get(), path);
}

ProjectFileResult ProjectCommands::Read(const QString& idOrPath, ShaderProject& project) {
    BackgroundFetch fetch;
    const BackgroundFetch::Progress progress = [this](const QString& url, qint64 bytes) {
        if (!fetchProgress) return;
        fetchProgress(QStringLiteral("Loading %1, %2 so far...")
                          .arg(QUrl(url).fileName(), QLocale::c().formattedDataSize(bytes)));
    };
    const ShaderService asked{service, [&](const QString& url) { return fetch.Fetch(url, progress); }};
    fetch_ = &fetch;
    if (loading) loading(true);
    ProjectFileResult result = LoadProjectFromService(asked, idOrPath, project);
    fetch_ = nullptr;
    if (loading) loading(false);
    return result;
}

void ProjectCommands::StopLoading() {
    if (fetch_) fetch_->Stop();
}

bool ProjectCommands::Load(const QString& path, const LoadWords& words) {
    if (IsLoading()) return false;
    const bool isFile = IsPlainFile(path) || !IsShaderId(path);
    ShaderProject project;
    const ProjectFileResult result = Read(path, project);
    const bool isLoaded =
        result.status == ProjectFileStatus::Loaded || result.status == ProjectFileStatus::NoImageStage;
    QStringList lines;
    // What went wrong with a shader of the service is one line.
    if (isLoaded || isFile) lines.append(isLoaded ? words.done : words.failed);
    if (!result.message.isEmpty()) lines.append(result.message);
    QString status = lines.join(u'\n');
    for (const QString& warning : result.warnings) {
        status += u'\n' + warning;
        std::fprintf(stderr, "pixelgrove: %s: %s\n", qPrintable(path), qPrintable(warning));
    }
    if (isLoaded) {
        AdoptProject(app_.project, project, path);
        // A file that holds more than was read of it is not written over without a question.
        if (isFile && result.isComplete)
            app_.project.projectFile = QFileInfo(NormalizePath(path)).absoluteFilePath();
        status += LostCharactersOfProject(false);
    }
    pane_.Say(status);
    return isLoaded;
}

void ProjectCommands::DropShader(const QString& id) {
    if (!IsLoading() && ConfirmLoss()) Load(id);
}

void ProjectCommands::SaveProject() {
    const QString path = app_.project.projectFile;
    if (path.isEmpty()) {
        SaveProjectAs();
    } else {
        Save(path);
    }
}

void ProjectCommands::SaveProjectAs() {
    FileQuestion question = ProjectQuestion(QStringLiteral("Save Project As"));
    question.forSaving = true;
    const QFileInfo open(NormalizePath(app_.project.fileName));
    if (open.isAbsolute()) question.folder = open.absolutePath();
    // A source file may be open under that name, and a project must not be written over it.
    question.fileName = open.completeBaseName() + QStringLiteral(".json");
    const QString path = dialogs.askForFile(question);
    if (!path.isEmpty()) Save(path);
}

void ProjectCommands::Save(const QString& path) {
    QString reason;
    if (!SaveProjectJson(path, MakeFileForm(app_.project), &reason)) {
        pane_.Say(SavingFailed(reason));
        return;
    }
    app_.project.projectFile = QFileInfo(NormalizePath(path)).absoluteFilePath();
    MarkProjectSaved(app_.project);
    SetOpenFileName(app_.project, path);
    pane_.Say(QStringLiteral("File saved.") + LostCharactersOfProject(true));
}

void ProjectCommands::RestorePrevious() {
    if (RestorePreviousProject(app_.project)) pane_.Say(QStringLiteral("Previous project restored."));
}

}  // namespace pixelgrove
