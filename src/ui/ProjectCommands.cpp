#include "ui/ProjectCommands.h"

#include <QFileInfo>
#include <QLocale>
#include <QUrl>
#include <array>
#include <cstdio>

#include "core/BaseFolders.h"
#include "library/CacheNames.h"
#include "library/PageAddress.h"
#include "library/ShaderService.h"
#include "library/widgets/BackgroundFetch.h"
#include "persist/RecentList.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/TextScan.h"
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

bool IsLoaded(const ProjectFileResult& result) {
    return result.status == ProjectFileStatus::Loaded || result.status == ProjectFileStatus::NoImageStage;
}

void PrintWarnings(const ProjectFileResult& result, const QString& source) {
    for (const QString& warning : result.warnings)
        std::fprintf(stderr, "pixelgrove: %s: %s\n", qPrintable(source), qPrintable(warning));
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

ProjectFileResult ProjectCommands::Read(const Reading& reading, ShaderProject& project) {
    BackgroundFetch fetch;
    const BackgroundFetch::Progress progress = [this](const QString& url, qint64 bytes) {
        if (!fetchProgress) return;
        fetchProgress(QStringLiteral("Loading %1, %2 so far...")
                          .arg(QUrl(url).fileName(), QLocale::c().formattedDataSize(bytes)));
    };
    const ShaderService asked{service, [&](const QString& url) { return fetch.Fetch(url, progress); }};
    fetch_ = &fetch;
    if (loading) loading(true);
    ProjectFileResult result = reading(asked, project);
    fetch_ = nullptr;
    if (loading) loading(false);
    return result;
}

void ProjectCommands::StopLoading() {
    if (fetch_) fetch_->Stop();
}

bool ProjectCommands::Adopt(const ProjectFileResult& result, ShaderProject& project, const QStringList& words,
                            const QString& name) {
    QStringList lines = words;
    if (!result.message.isEmpty()) lines.append(result.message);
    lines.append(result.warnings);
    QString status = lines.join(u'\n');
    if (IsLoaded(result)) {
        AdoptProject(app_.project, project, name);
        status += LostCharactersOfProject(false);
    }
    pane_.Say(status);
    return IsLoaded(result);
}

bool ProjectCommands::Load(const QString& path, const LoadWords& words) {
    return LoadFrom(path, words) != Taken::Nothing;
}

ProjectCommands::Taken ProjectCommands::LoadFrom(const QString& path, const LoadWords& words) {
    if (IsLoading()) return Taken::Nothing;
    const bool isFile = IsPlainFile(path) || !IsShaderId(path);
    ShaderProject project;
    const ProjectFileResult result =
        Read([&path](const ShaderService& asked,
                     ShaderProject& read) { return LoadProjectFromService(asked, path, read); },
             project);
    const QFileInfo file(NormalizePath(path));
    if (result.status == ProjectFileStatus::ManyShaders)
        return TakeFound(result.choices, QStringLiteral("file %1").arg(InQuotes(file.fileName())),
                         file.absolutePath());
    PrintWarnings(result, path);
    QStringList lines;
    // What went wrong with a shader of the service is one line.
    if (IsLoaded(result) || isFile) lines.append(IsLoaded(result) ? words.done : words.failed);
    if (!Adopt(result, project, lines, path)) return Taken::Nothing;
    // A file that holds more than was read of it is not written over without a question.
    if (isFile && result.isComplete) app_.project.projectFile = file.absoluteFilePath();
    if (isFile) NoteOpenFile(path, kStageNone);
    return Taken::Project;
}

ProjectCommands::Taken ProjectCommands::TakeFound(const FoundShaders& found, const QString& whence,
                                                  const QString& folder) {
    const bool isMany = found.shaders.size() > 1;
    const std::optional<size_t> chosen = !isMany        ? std::optional<size_t>(0)
                                         : chooseShader ? chooseShader(found)
                                                        : std::nullopt;
    if (!chosen || *chosen >= found.shaders.size()) {
        pane_.Say(QStringLiteral("No shader was chosen of the %1 in the %2.")
                      .arg(qsizetype(found.shaders.size()) + found.leftOut)
                      .arg(whence));
        return Taken::Nothing;
    }
    const FoundShader& shader = found.shaders[*chosen];
    const QString name = shader.name.isEmpty() ? shader.id : shader.name;
    const QString what =
        found.form == TextForm::Glsl
            ? QStringLiteral("GLSL text")
            : QStringLiteral("%1%2").arg(isMany ? QStringLiteral("Shader") : QStringLiteral("Project"),
                                         name.isEmpty() ? QString() : u' ' + InQuotes(name));
    ShaderProject project;
    const ProjectFileResult result = Read(
        [&](const ShaderService& asked, ShaderProject& read) {
            return LoadFoundWithService(asked, shader, QStringLiteral("text"), folder, read);
        },
        project);
    PrintWarnings(result, whence);
    const QString words = !IsLoaded(result) ? LoadWords().failed
                          : found.form == TextForm::Glsl
                              ? QStringLiteral("%1 taken from the %2 as the Image stage.").arg(what, whence)
                              : QStringLiteral("%1 taken from the %2.").arg(what, whence);
    const bool hasName = !project.info.name.isEmpty();
    if (!Adopt(result, project, {words}, hasName ? QString() : QStringLiteral("Untitled.json")))
        return Taken::Nothing;
    return isMany ? Taken::OneOfMany : Taken::Project;
}

void ProjectCommands::TakeText(const QString& text, const QString& whence) {
    if (IsLoading()) return;
    const FoundShaders found = FindShadersInText(text);
    const QString id = found.form == TextForm::None ? ShaderIdOfText(service, text) : QString();
    if (found.form == TextForm::None && id.isEmpty()) {
        pane_.Say(text.trimmed().isEmpty()
                      ? QStringLiteral("The %1 holds no text.").arg(whence)
                      : QStringLiteral(
                            "The %1 holds no project, no address or id of a shader, and no GLSL text with "
                            "a mainImage.")
                            .arg(whence));
        return;
    }
    if (!ConfirmLoss()) return;
    if (id.isEmpty()) {
        TakeFound(found, whence, {});
    } else {
        Load(id, {QStringLiteral("Shader %1 loaded.").arg(InQuotes(id)), {}});
    }
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
    NoteOpenFile(path, kStageNone);
    pane_.Say(QStringLiteral("File saved.") + LostCharactersOfProject(true));
}

void ProjectCommands::NoteOpenFile(const QString& path, uint32_t stage) {
    OpenedFile& file = app_.project.openFile;
    file = {QFileInfo(NormalizePath(path)).absoluteFilePath(), stage, app_.project.documents[stage].text};
    if (openFileTouched) openFileTouched();
}

void ProjectCommands::RestorePrevious() {
    if (RestorePreviousProject(app_.project)) pane_.Say(QStringLiteral("Previous project restored."));
}

}  // namespace pixelgrove
