#include "ui/ProjectCommands.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

#include "controls/LiveValues.h"
#include "core/BaseFolders.h"
#include "core/ProjectModel.h"
#include "platform/Files.h"
#include "render/RenderThread.h"
#include "shadertoy/ProjectFile.h"
#include "shadertoy/ProjectJson.h"

namespace pixelgrove {

namespace {

const QString kProjectFilter = QStringLiteral("JSON Files (*.json);;All Files (*)");

QString ProjectFolder() {
    return NormalizePath(PathOf(PathId::ProjectFiles));
}

// The running form of what is edited, as a file holds it.
ShaderProject ProjectFromEditor() {
    const RunRequest snapshot = SnapshotProject();
    ShaderProject project;
    project.version = snapshot.version;
    project.info = snapshot.info;
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        if (!snapshot.hasText[id]) continue;
        ShaderStage& stage = project.stages[id];
        stage.kind = id;
        stage.source = BakeDefines(snapshot.texts[id]);
        stage.channels = snapshot.channels[id];
        for (uint32_t channel = 0; channel < kChannelCount; ++channel)
            stage.channels[channel].channelIndex = channel;
    }
    return project;
}

}  // namespace

UserDialogs MakeUserDialogs(QWidget* window) {
    UserDialogs dialogs;
    dialogs.confirm = [window](const QString& caption, const QString& text) {
        return QMessageBox::warning(window, caption, text,
                                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                                    QMessageBox::Cancel) == QMessageBox::Yes;
    };
    dialogs.chooseProjectToOpen = [window](const QString& folder) {
        return QFileDialog::getOpenFileName(window, QStringLiteral("Open Project"), folder, kProjectFilter);
    };
    dialogs.chooseProjectToSave = [window](const QString& suggestion) {
        QFileDialog dialog(window, QStringLiteral("Save Project As"), QFileInfo(suggestion).path(),
                           kProjectFilter);
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setDefaultSuffix(QStringLiteral("json"));
        dialog.selectFile(QFileInfo(suggestion).fileName());
        if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return QString();
        return dialog.selectedFiles().constFirst();
    };
    return dialogs;
}

bool ProjectCommands::ConfirmLoss() {
    if (!shaderModified) return true;
    return dialogs.confirm(
        QStringLiteral("Warning: Unsaved changes"),
        QStringLiteral("You've made changes to the current shader that have not been saved. If you proceed, "
                       "those changes will be lost.\n\nDo you wish to proceed?"));
}

void ProjectCommands::New() {
    ClearProject(true);
}

void ProjectCommands::OpenProject() {
    if (!ConfirmLoss()) return;
    const QString path = dialogs.chooseProjectToOpen(ProjectFolder());
    if (path.isEmpty()) {
        App()->host->SetStatusText(QStringLiteral("Error loading file."));
        return;
    }
    Load(path);
}

bool ProjectCommands::Load(const QString& path) {
    AppState& app = *App();
    ShaderProject project;
    const ProjectFileResult result = LoadProjectFile(path, project);
    if (result.status != ProjectFileStatus::Loaded && result.status != ProjectFileStatus::NoImageStage) {
        app.host->SetStatusText(QStringLiteral("Error loading project.\n") + result.message);
        return false;
    }
    AdoptProject(project, path);
    shaderModified = false;
    app.host->ShowTitle(false);
    QString status = QStringLiteral("Project loaded.");
    if (!result.message.isEmpty()) status += u'\n' + result.message;
    app.host->SetStatusText(status);
    return true;
}

void ProjectCommands::SaveProjectAs() {
    AppState& app = *App();
    QFileInfo suggestion(app.fileName);
    if (!suggestion.isAbsolute()) suggestion.setFile(ProjectFolder() + u'/' + suggestion.fileName());
    const QString path = dialogs.chooseProjectToSave(suggestion.filePath());
    if (path.isEmpty()) return;
    if (!SaveProjectJson(path, ProjectFromEditor())) {
        app.host->SetStatusText(QStringLiteral("Error saving file."));
        return;
    }
    app.fileName = path.size() < kFileNameCapacity ? path : QFileInfo(path).fileName();
    shaderModified = false;
    app.host->ShowTitle(false);
    app.host->SetStatusText(QStringLiteral("File saved."));
}

}  // namespace pixelgrove
