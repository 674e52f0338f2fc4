#include "project/ProjectModel.h"

#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "core/CommentMap.h"
#include "platform/CodePage.h"
#include "platform/TextScan.h"
#include "project/ProjectObserver.h"

namespace pixelgrove {

namespace {

constexpr float kDefaultProjectVersion = 0.1f;
constexpr qsizetype kServiceIdLength = 6;

class NoObserver final : public ProjectObserver {
    void LoadDocument(StageDocument&, StageSwitch) override {}
    void ShowTitle(bool) override {}
    void SetStatusText(const QString&) override {}
    void ShowMessages(const CompileMessages&, const QString&) override {}
    void RefreshStageTabs() override {}
    void RefreshChannelPanel() override {}
    void RebuildControlTree() override {}
};

ProjectObserver& Observer(const AppState& app) {
    static NoObserver none;
    return app.project.observer ? *app.project.observer : none;
}

void ShowStage(AppState& app, uint32_t id, StageSwitch how) {
    StageDocument& document = app.project.documents[id];
    document.length = uint32_t(document.text.size());
    Observer(app).LoadDocument(document, how);
    app.project.currentDocument = &document;
    app.project.currentStage = id;
    ShowStageErrors();
    Observer(app).RefreshStageTabs();
    Observer(app).RefreshChannelPanel();
}

bool DiffersFromSaved(const AppState& app, uint32_t id) {
    const StageDocument& document = app.project.documents[id];
    // Image has its place also where a project has no text for it.
    if (id != kStageImage && document.hasText != app.project.saved.hasText[id]) return true;
    return document.text != app.project.saved.texts[id] ||
           !std::ranges::equal(app.project.channels[id], app.project.saved.channels[id], SameInFile);
}

void RefreshModified(AppState& app) {
    app.project.shaderModified =
        app.project.changesDiscarded ||
        std::ranges::find(app.project.stageDiffers, true) != app.project.stageDiffers.end();
}

void GiveDefaultText(uint32_t id) {
    stageTabs[id].exists = 1;
    SetDocumentText(App()->project.documents[id], DefaultSource(id));
}

// Moves one stage that was read into the editing form.
void AdoptStage(AppState& app, uint32_t id, ShaderStage& stage) {
    StageDocument& document = app.project.documents[id];
    document = StageDocument();
    const QByteArray source = std::exchange(stage.source, QByteArray());
    SetDocumentText(document, stage.text.isNull() ? FromCodePage(source) : stage.text, 1);
    stageTabs[id].exists = 1;
    stageTabs[id].stageId = int32_t(id);
    for (size_t i = 0; i < kChannelCount; ++i) {
        if (stage.channels[i].kind == kChannelUnused) continue;
        app.project.channels[id][i] = std::exchange(stage.channels[i], ChannelInput());
    }
}

}  // namespace

void FreeDocuments() {
    for (StageDocument& document : App()->project.documents)
        document = StageDocument();
}

void ClearProject(bool addImage) {
    AppState& app = *App();
    const bool wasModified = app.project.shaderModified;
    KeepPreviousProject();
    FreeDocuments();
    for (uint32_t id = 0; id < kStageCount; ++id) {
        app.project.stageErrors[id].clear();
        app.project.channels[id] = {};
        stageTabs[id].exists = id == kStageNone || id == kStageImage ? 1 : 0;
    }
    app.project.projectInfo = ShaderInfo();
    app.project.projectVersion = kDefaultProjectVersion;
    app.project.projectFile.clear();
    app.project.currentStage = kStageNone;
    app.project.currentDocument = nullptr;
    if (addImage) GiveDefaultText(kStageImage);
    MarkProjectSaved();
    app.project.changesDiscarded = app.project.shaderModified = wasModified;
    if (!addImage) return;
    app.project.fileName = QStringLiteral("Untitled.json");
    ShowStage(app, kStageImage, StageSwitch::Anew);
    Observer(app).ShowTitle(app.project.shaderModified);
    Observer(app).RebuildControlTree();
}

void AddStage(uint32_t id) {
    if (id == kStageNone || id >= kStageCount || stageTabs[id].stageId != int32_t(id)) return;
    GiveDefaultText(id);
    OnStageChanged(id);
}

void ShowStageErrors() {
    AppState& app = *App();
    if (!app.project.stageErrors[app.project.currentStage].empty()) {
        Observer(app).ShowMessages(app.project.stageErrors[app.project.currentStage], QStringLiteral("\n"));
        return;
    }
    QString text = QStringLiteral("[ %1 ] No errors.").arg(StageName(app.project.currentStage));
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        if (!app.project.stageErrors[id].empty())
            text += QStringLiteral("\n%1 has errors.").arg(StageName(id));
    }
    Observer(app).SetStatusText(text);
}

void SelectStage(uint32_t id) {
    AppState& app = *App();
    if (id < kStageCount && id != app.project.currentStage) ShowStage(app, id, StageSwitch::KeepsView);
}

void RemoveStage(uint32_t id) {
    if (id == kStageNone || id >= kStageImage) return;
    AppState& app = *App();
    stageTabs[id].exists = 0;
    app.project.documents[id] = StageDocument();
    app.project.channels[id] = {};
    if (id == app.project.currentStage) ShowStage(app, kStageImage, StageSwitch::DropsView);
    OnStageChanged(id);
    Observer(app).RefreshStageTabs();
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
    app.project.stageDiffers[id] = DiffersFromSaved(app, id);
    RefreshModified(app);
    if (app.project.fileName.isEmpty()) app.project.fileName = QStringLiteral("Untitled");
    Observer(app).ShowTitle(app.project.shaderModified);
}

void MarkProjectSaved() {
    AppState& app = *App();
    for (uint32_t id = 0; id < kStageCount; ++id) {
        app.project.saved.texts[id] = app.project.documents[id].text;
        app.project.saved.hasText[id] = app.project.documents[id].hasText;
    }
    app.project.saved.channels = app.project.channels;
    // Pictures and volumes play no part in the comparison, and are not to be held for it.
    for (auto& channels : app.project.saved.channels) {
        for (ChannelInput& channel : channels) {
            channel.faces = {};
            channel.volumeData = nullptr;
        }
    }
    app.project.stageDiffers = {};
    app.project.changesDiscarded = false;
    app.project.shaderModified = false;
}

void AdoptProject(ShaderProject& project, const QString& path) {
    AppState& app = *App();
    ClearProject(false);
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        ShaderStage& stage = project.stages[id];
        if (stage.kind != kStageNone) AdoptStage(app, id, stage);
    }
    app.project.projectInfo = project.info;
    app.project.projectVersion = project.version;
    // So short a path is a service id, which says little to a reader.
    const bool isServiceId = path.size() <= kServiceIdLength;
    app.project.fileName = FittedFileName(isServiceId ? project.info.name + QStringLiteral(".json") : path);
    MarkProjectSaved();
    ShowStage(app, kStageImage, StageSwitch::Anew);
    Observer(app).ShowTitle(app.project.shaderModified);
    Observer(app).RebuildControlTree();
}

void SetOpenFileName(const QString& path) {
    AppState& app = *App();
    app.project.fileName = path.size() < kFileNameCapacity ? path : QFileInfo(path).fileName();
    Observer(app).ShowTitle(app.project.shaderModified);
}

void ReplaceShownText(const QString& text) {
    AppState& app = *App();
    StageDocument& document = *app.project.currentDocument;
    KeepPreviousProject();
    SetDocumentText(document, text);
    document.errorLines.lines.clear();
    document.caretPosition = document.anchorPosition = document.firstVisibleLine = 0;
    Observer(app).LoadDocument(document, StageSwitch::Anew);
    OnStageChanged(app.project.currentStage);
    Observer(app).RebuildControlTree();
}

EditedProject CopyOfProject() {
    const AppState& app = *App();
    return {app.project.documents,      app.project.channels, app.project.projectInfo,
            app.project.projectVersion, app.project.fileName, app.project.projectFile,
            app.project.currentStage,   app.project.saved,    app.project.changesDiscarded};
}

void KeepPreviousProject() {
    AppState& app = *App();
    if (std::ranges::find(app.project.stageDiffers, true) == app.project.stageDiffers.end()) return;
    app.project.previousProject = std::make_unique<EditedProject>(CopyOfProject());
}

bool RestorePreviousProject() {
    AppState& app = *App();
    const std::unique_ptr<EditedProject> previous = std::move(app.project.previousProject);
    if (!previous) return false;
    ClearProject(false);
    app.project.documents = std::move(previous->documents);
    app.project.channels = std::move(previous->channels);
    app.project.projectInfo = previous->info;
    app.project.projectVersion = previous->version;
    app.project.fileName = previous->fileName;
    app.project.projectFile = previous->projectFile;
    app.project.saved = std::move(previous->saved);
    app.project.changesDiscarded = previous->changesDiscarded;
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        if (app.project.documents[id].hasText) stageTabs[id].exists = 1;
        app.project.documents[id].errorLines.lines.clear();
        app.project.stageDiffers[id] = DiffersFromSaved(app, id);
    }
    RefreshModified(app);
    ShowStage(app, previous->shownStage, StageSwitch::Anew);
    Observer(app).ShowTitle(app.project.shaderModified);
    Observer(app).RebuildControlTree();
    return true;
}

}  // namespace pixelgrove
