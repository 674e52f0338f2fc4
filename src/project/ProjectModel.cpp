#include "project/ProjectModel.h"

#include <QFileInfo>
#include <algorithm>
#include <memory>
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

ProjectObserver& Observer(const EditingForm& form) {
    static NoObserver none;
    return form.observer ? *form.observer : none;
}

void ShowStage(EditingForm& form, uint32_t id, StageSwitch how) {
    StageDocument& document = form.documents[id];
    document.length = uint32_t(document.text.size());
    Observer(form).LoadDocument(document, how);
    form.currentDocument = &document;
    form.currentStage = id;
    ShowStageErrors(form);
    Observer(form).RefreshStageTabs();
    Observer(form).RefreshChannelPanel();
}

bool DiffersFromSaved(const EditingForm& form, uint32_t id) {
    const StageDocument& document = form.documents[id];
    // Image has its place also where a project has no text for it.
    if (id != kStageImage && document.hasText != form.saved.hasText[id]) return true;
    return document.text != form.saved.texts[id] ||
           !std::ranges::equal(form.channels[id], form.saved.channels[id], SameInFile);
}

void RefreshModified(EditingForm& form) {
    form.shaderModified =
        form.changesDiscarded || std::ranges::find(form.stageDiffers, true) != form.stageDiffers.end();
}

void GiveDefaultText(EditingForm& form, uint32_t id) {
    stageTabs[id].exists = 1;
    SetDocumentText(form.documents[id], DefaultSource(id));
}

// Moves one stage that was read into the editing form.
void AdoptStage(EditingForm& form, uint32_t id, ShaderStage& stage) {
    StageDocument& document = form.documents[id];
    document = StageDocument();
    const QByteArray source = std::exchange(stage.source, QByteArray());
    SetDocumentText(document, stage.text.isNull() ? FromCodePage(source) : stage.text, 1);
    stageTabs[id].exists = 1;
    stageTabs[id].stageId = int32_t(id);
    for (size_t i = 0; i < kChannelCount; ++i) {
        if (stage.channels[i].kind == kChannelUnused) continue;
        form.channels[id][i] = std::exchange(stage.channels[i], ChannelInput());
    }
}

}  // namespace

void FreeDocuments(EditingForm& form) {
    for (StageDocument& document : form.documents)
        document = StageDocument();
}

void ClearProject(EditingForm& form, bool addImage) {
    const bool wasModified = form.shaderModified;
    KeepPreviousProject(form);
    FreeDocuments(form);
    for (uint32_t id = 0; id < kStageCount; ++id) {
        form.stageErrors[id].clear();
        form.channels[id] = {};
        stageTabs[id].exists = id == kStageNone || id == kStageImage ? 1 : 0;
    }
    form.projectInfo = ShaderInfo();
    form.projectVersion = kDefaultProjectVersion;
    form.projectFile.clear();
    form.openFile = OpenedFile();
    form.currentStage = kStageNone;
    form.currentDocument = nullptr;
    if (addImage) GiveDefaultText(form, kStageImage);
    MarkProjectSaved(form);
    form.changesDiscarded = form.shaderModified = wasModified;
    if (!addImage) return;
    form.fileName = QStringLiteral("Untitled.json");
    ShowStage(form, kStageImage, StageSwitch::Anew);
    Observer(form).ShowTitle(form.shaderModified);
    Observer(form).RebuildControlTree();
}

void AddStage(EditingForm& form, uint32_t id) {
    if (id == kStageNone || id >= kStageCount || stageTabs[id].stageId != int32_t(id)) return;
    GiveDefaultText(form, id);
    OnStageChanged(form, id);
}

void ShowStageErrors(const EditingForm& form) {
    if (!form.stageErrors[form.currentStage].empty()) {
        Observer(form).ShowMessages(form.stageErrors[form.currentStage], QStringLiteral("\n"));
        return;
    }
    QString text = QStringLiteral("[ %1 ] No errors.").arg(StageName(form.currentStage));
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        if (!form.stageErrors[id].empty()) text += QStringLiteral("\n%1 has errors.").arg(StageName(id));
    }
    Observer(form).SetStatusText(text);
}

void SelectStage(EditingForm& form, uint32_t id) {
    if (id < kStageCount && id != form.currentStage) ShowStage(form, id, StageSwitch::KeepsView);
}

void RemoveStage(EditingForm& form, uint32_t id) {
    if (id == kStageNone || id >= kStageImage) return;
    stageTabs[id].exists = 0;
    form.documents[id] = StageDocument();
    form.channels[id] = {};
    if (id == form.currentStage) ShowStage(form, kStageImage, StageSwitch::DropsView);
    OnStageChanged(form, id);
    Observer(form).RefreshStageTabs();
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

void OnStageChanged(EditingForm& form, uint32_t id) {
    form.stageDiffers[id] = DiffersFromSaved(form, id);
    RefreshModified(form);
    if (form.fileName.isEmpty()) form.fileName = QStringLiteral("Untitled");
    Observer(form).ShowTitle(form.shaderModified);
}

void MarkProjectSaved(EditingForm& form) {
    for (uint32_t id = 0; id < kStageCount; ++id) {
        form.saved.texts[id] = form.documents[id].text;
        form.saved.hasText[id] = form.documents[id].hasText;
    }
    form.saved.channels = form.channels;
    // Pictures and volumes play no part in the comparison, and are not to be held for it.
    for (auto& channels : form.saved.channels) {
        for (ChannelInput& channel : channels) {
            channel.faces = {};
            channel.volumeData = nullptr;
        }
    }
    form.stageDiffers = {};
    form.changesDiscarded = false;
    form.shaderModified = false;
}

void AdoptProject(EditingForm& form, ShaderProject& project, const QString& path) {
    ClearProject(form, false);
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        ShaderStage& stage = project.stages[id];
        if (stage.kind != kStageNone) AdoptStage(form, id, stage);
    }
    form.projectInfo = project.info;
    form.projectVersion = project.version;
    // So short a path is a service id, which says little to a reader.
    const bool isServiceId = path.size() <= kServiceIdLength;
    form.fileName = FittedFileName(isServiceId ? project.info.name + QStringLiteral(".json") : path);
    MarkProjectSaved(form);
    ShowStage(form, kStageImage, StageSwitch::Anew);
    Observer(form).ShowTitle(form.shaderModified);
    Observer(form).RebuildControlTree();
}

void SetOpenFileName(EditingForm& form, const QString& path) {
    form.fileName = path.size() < kFileNameCapacity ? path : QFileInfo(path).fileName();
    Observer(form).ShowTitle(form.shaderModified);
}

void ReplaceShownText(EditingForm& form, const QString& text) {
    StageDocument& document = *form.currentDocument;
    KeepPreviousProject(form);
    SetDocumentText(document, text);
    document.errorLines.lines.clear();
    document.caretPosition = document.anchorPosition = document.firstVisibleLine = 0;
    Observer(form).LoadDocument(document, StageSwitch::Anew);
    OnStageChanged(form, form.currentStage);
    Observer(form).RebuildControlTree();
}

EditedProject CopyOfProject(const EditingForm& form) {
    return {form.documents,   form.channels,     form.projectInfo, form.projectVersion,  form.fileName,
            form.projectFile, form.currentStage, form.saved,       form.changesDiscarded};
}

void KeepPreviousProject(EditingForm& form) {
    if (std::ranges::find(form.stageDiffers, true) == form.stageDiffers.end()) return;
    form.previousProject = std::make_unique<EditedProject>(CopyOfProject(form));
}

bool RestorePreviousProject(EditingForm& form) {
    const std::unique_ptr<EditedProject> previous = std::move(form.previousProject);
    if (!previous) return false;
    ClearProject(form, false);
    form.documents = std::move(previous->documents);
    form.channels = std::move(previous->channels);
    form.projectInfo = previous->info;
    form.projectVersion = previous->version;
    form.fileName = previous->fileName;
    form.projectFile = previous->projectFile;
    form.saved = std::move(previous->saved);
    form.changesDiscarded = previous->changesDiscarded;
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        if (form.documents[id].hasText) stageTabs[id].exists = 1;
        form.documents[id].errorLines.lines.clear();
        form.stageDiffers[id] = DiffersFromSaved(form, id);
    }
    RefreshModified(form);
    ShowStage(form, previous->shownStage, StageSwitch::Anew);
    Observer(form).ShowTitle(form.shaderModified);
    Observer(form).RebuildControlTree();
    return true;
}

}  // namespace pixelgrove
