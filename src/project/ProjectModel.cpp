#include "project/ProjectModel.h"

#include <algorithm>
#include <utility>

#include "core/CommentMap.h"
#include "platform/CodePage.h"
#include "platform/TextScan.h"

namespace pixelgrove {

namespace {

constexpr float kDefaultProjectVersion = 0.1f;
constexpr qsizetype kServiceIdLength = 6;

// A name that doesn't fit its field leaves it empty.
QString FittedFileName(const QString& name) {
    return name.size() < kFileNameCapacity ? name : QString();
}

// Shows the stage as if nothing had been shown before.
void ShowStageAnew(AppState& app, uint32_t id) {
    app.currentStage = kStageNone;
    app.currentDocument = nullptr;
    SelectStage(id);
}

bool DiffersFromSaved(const AppState& app, uint32_t id) {
    const StageDocument& document = app.documents[id];
    // Image has its place also where a project has no text for it.
    if (id != kStageImage && document.hasText != app.saved.hasText[id]) return true;
    return document.text != app.saved.texts[id] ||
           !std::ranges::equal(app.channels[id], app.saved.channels[id], SameInFile);
}

void RefreshModified(AppState& app) {
    shaderModified =
        app.changesDiscarded || std::ranges::find(app.stageDiffers, true) != app.stageDiffers.end();
}

void GiveDefaultText(uint32_t id) {
    stageTabs[id].exists = 1;
    SetDocumentText(App()->documents[id], DefaultSource(id));
}

// Moves one stage that was read into the editing form.
void AdoptStage(AppState& app, uint32_t id, ShaderStage& stage) {
    StageDocument& document = app.documents[id];
    document = StageDocument();
    const QByteArray source = std::exchange(stage.source, QByteArray());
    SetDocumentText(document, stage.text.isNull() ? FromCodePage(source) : stage.text, 1);
    stageTabs[id].exists = 1;
    stageTabs[id].stageId = int32_t(id);
    for (size_t i = 0; i < kChannelCount; ++i) {
        if (stage.channels[i].kind == kChannelUnused) continue;
        app.channels[id][i] = std::exchange(stage.channels[i], ChannelInput());
    }
}

}  // namespace

void FreeDocuments() {
    for (StageDocument& document : App()->documents)
        document = StageDocument();
}

void ClearProject(bool addImage) {
    AppState& app = *App();
    const bool wasModified = shaderModified;
    KeepPreviousProject();
    FreeDocuments();
    for (uint32_t id = 0; id < kStageCount; ++id) {
        app.stageErrors[id].clear();
        app.channels[id] = {};
        stageTabs[id].exists = id == kStageNone || id == kStageImage ? 1 : 0;
    }
    app.projectInfo = ShaderInfo();
    app.projectVersion = kDefaultProjectVersion;
    app.projectFile.clear();
    app.currentStage = kStageNone;
    // The record that was shown is empty now; the editor must not put its old text back there.
    app.currentDocument = nullptr;
    if (addImage) GiveDefaultText(kStageImage);
    MarkProjectSaved();
    app.changesDiscarded = shaderModified = wasModified;
    if (!addImage) return;
    app.fileName = QStringLiteral("Untitled.json");
    ShowStageAnew(app, kStageImage);
    app.host->ShowTitle(shaderModified);
    app.host->RebuildControlTree();
}

void AddStage(uint32_t id) {
    if (id == kStageNone || id >= kStageCount || stageTabs[id].stageId != int32_t(id)) return;
    GiveDefaultText(id);
    OnStageChanged(id);
}

void ShowStageErrors() {
    AppState& app = *App();
    if (!app.stageErrors[app.currentStage].isEmpty()) {
        app.host->SetStatusText(app.stageErrors[app.currentStage]);
        app.host->MarkErrorLines();
        return;
    }
    QString text = QStringLiteral("[ %1 ] No errors.").arg(StageName(app.currentStage));
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        if (!app.stageErrors[id].isEmpty()) text += QStringLiteral("\n%1 has errors.").arg(StageName(id));
    }
    app.host->SetStatusText(text);
}

void SelectStage(uint32_t id) {
    AppState& app = *App();
    if (id >= kStageCount || id == app.currentStage) return;
    StageDocument& document = app.documents[id];
    document.length = uint32_t(document.text.size());
    // The host finds the outgoing document still current, to save its view.
    app.host->LoadDocument(document);
    app.currentDocument = &document;
    app.currentStage = id;
    ShowStageErrors();
    app.host->RefreshStageTabs();
    app.host->RefreshChannelPanel();
}

void RemoveStage(uint32_t id) {
    if (id == kStageNone || id >= kStageImage) return;
    AppState& app = *App();
    stageTabs[id].exists = 0;
    app.documents[id] = StageDocument();
    app.channels[id] = {};
    if (id == app.currentStage) {
        SelectStage(kStageImage);
        // Leaving the stage saved its view, which belongs to a text that is gone.
        app.documents[id] = StageDocument();
    }
    OnStageChanged(id);
    app.host->RefreshStageTabs();
}

std::vector<uint32_t> AddableStages() {
    std::vector<uint32_t> ids;
    for (uint32_t id = 0; id < kStageCount; ++id) {
        if (!stageTabs[id].exists) ids.push_back(id);
    }
    return ids;
}

void SetDocumentText(StageDocument& document, const QString& text, uint32_t extraAllocated) {
    document.text = WithLineFeeds(text);
    document.hasText = true;
    document.length = uint32_t(document.text.size());
    document.allocated = document.length + extraAllocated;
    document.commentMap = BuildCommentMap(document.text);
}

void OnStageChanged(uint32_t id) {
    AppState& app = *App();
    app.stageDiffers[id] = DiffersFromSaved(app, id);
    RefreshModified(app);
    if (app.fileName.isEmpty()) app.fileName = QStringLiteral("Untitled");
    app.host->ShowTitle(shaderModified);
}

void MarkProjectSaved() {
    AppState& app = *App();
    for (uint32_t id = 0; id < kStageCount; ++id) {
        app.saved.texts[id] = app.documents[id].text;
        app.saved.hasText[id] = app.documents[id].hasText;
    }
    app.saved.channels = app.channels;
    // Pictures and volumes play no part in the comparison, and are not to be held for it.
    for (auto& channels : app.saved.channels) {
        for (ChannelInput& channel : channels) {
            channel.faces = {};
            channel.volumeData = nullptr;
        }
    }
    app.stageDiffers = {};
    app.changesDiscarded = false;
    shaderModified = false;
}

void AdoptProject(ShaderProject& project, const QString& path) {
    AppState& app = *App();
    ClearProject(false);
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        ShaderStage& stage = project.stages[id];
        if (stage.kind != kStageNone) AdoptStage(app, id, stage);
    }
    app.projectInfo = project.info;
    app.projectVersion = project.version;
    // So short a path is a service id, which says little to a reader.
    const bool isServiceId = path.size() <= kServiceIdLength;
    app.fileName = FittedFileName(isServiceId ? project.info.name + QStringLiteral(".json") : path);
    MarkProjectSaved();
    ShowStageAnew(app, kStageImage);
    app.host->RebuildControlTree();
}

EditedProject CopyOfProject() {
    const AppState& app = *App();
    return {app.documents,   app.channels,     app.projectInfo, app.projectVersion,  app.fileName,
            app.projectFile, app.currentStage, app.saved,       app.changesDiscarded};
}

void KeepPreviousProject() {
    AppState& app = *App();
    if (std::ranges::find(app.stageDiffers, true) == app.stageDiffers.end()) return;
    app.previousProject = std::make_unique<EditedProject>(CopyOfProject());
}

bool RestorePreviousProject() {
    AppState& app = *App();
    const std::unique_ptr<EditedProject> previous = std::move(app.previousProject);
    if (!previous) return false;
    ClearProject(false);
    app.documents = std::move(previous->documents);
    app.channels = std::move(previous->channels);
    app.projectInfo = previous->info;
    app.projectVersion = previous->version;
    app.fileName = previous->fileName;
    app.projectFile = previous->projectFile;
    app.saved = std::move(previous->saved);
    app.changesDiscarded = previous->changesDiscarded;
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        if (app.documents[id].hasText) stageTabs[id].exists = 1;
        app.documents[id].errorLines.lines.clear();
        app.stageDiffers[id] = DiffersFromSaved(app, id);
    }
    RefreshModified(app);
    ShowStageAnew(app, previous->shownStage);
    app.host->ShowTitle(shaderModified);
    app.host->RebuildControlTree();
    return true;
}

}  // namespace pixelgrove
