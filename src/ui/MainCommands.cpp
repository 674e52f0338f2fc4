// The main window's command table: what each id runs.
#include <QApplication>
#include <QUrl>

#include "commands/Commands.h"
#include "platform/Files.h"
#include "project/ProjectModel.h"
#include "ui/EditorMenu.h"
#include "ui/KeyCommands.h"
#include "ui/MainWindow.h"
#include "ui/editor/ShaderHelp.h"
#include "ui_EditWindow.h"

namespace pixelgrove {

namespace {

constexpr qsizetype kMaxIncludePath = 260;

void OpenIncludeFile(CodeView& editor, const UserDialogs& dialogs) {
    const QString path = IncludePathOf(TakeIncludeName(editor));
    if (IsPlainFile(path)) dialogs.openTextEditor(path.left(kMaxIncludePath), 0);
}

void OpenShaderHelp(const CodeView& editor, const UserDialogs& dialogs) {
    if (const std::optional<QUrl> page = ShaderHelpUrl(editor.textCursor().selectedText()))
        dialogs.openUrl(*page);
}

// The place of an id among the ten of a list; -1 for one that isn't among them.
int EntryIndex(int id, int firstId) {
    return id >= firstId && id < firstId + StringList::kCapacity ? id - firstId : -1;
}

}  // namespace

void MainWindow::SendCommand(int id, intptr_t) {
    if (!IsCommandAvailable(id)) return;
    switch (id) {
        case kCmdOk:
        case kCmdCancel:
            close();
            return;
        case kCmdPlay:
            playback_.Play();
            return;
        case kCmdPlayAnew:
            playback_.PlayAnew();
            return;
        case kCmdPause:
            playback_.Pause();
            return;
        case kCmdStop:
            playback_.Stop();
            return;
        case kCmdStart:
            playback_.Start();
            return;
        case kCmdCompileResult:
            playback_.OnCompileResult();
            return;
        case kCmdRestart:
            playback_.Restart();
            return;
        case kCmdRandomize:
            playback_.OnRandomize();
            return;
        case kCmdSetStartToCurrent:
            playback_.SetStartToCurrent();
            return;
        case kCmdFpsTarget:
            playback_.CommitFpsTarget();
            return;
        case kCmdUseGdiDisplay:
            App()->run->useGdiDisplay = App()->run->useGdiDisplay ? 0 : 1;
            menus_->SetTick(id, App()->run->useGdiDisplay != 0);
            return;
        case kCmdShowChannelBuffers:
            App()->run->showChannelBuffers = App()->run->showChannelBuffers ? 0 : 1;
            menus_->SetTick(id, App()->run->showChannelBuffers != 0);
            RefreshChannelPanel();
            return;
        case kCmdPaletteChanged:
            TakeSharedPalette();
            return;
        case kCmdEditUndo:
            form_->editor->undo();
            return;
        case kCmdEditRedo:
            form_->editor->redo();
            return;
        case kCmdEditPaste:
            form_->editor->paste();
            return;
        case kCmdEditCopy:
            form_->editor->copy();
            return;
        case kCmdEditCut:
            form_->editor->cut();
            return;
        case kCmdEditDelete:
            form_->editor->textCursor().removeSelectedText();
            return;
        case kCmdEditSelectAll:
            form_->editor->selectAll();
            return;
        case kCmdIndentSelection:
            form_->editor->IndentSelection();
            return;
        case kCmdFind:
        case kCmdReplace:
            find_.Open(id == kCmdReplace);
            return;
        case kCmdFindNext:
        case kCmdFindPrevious:
            find_.FindAgain(id == kCmdFindNext);
            return;
        case kCmdZoomIn:
            form_->editor->SetZoom(form_->editor->ZoomPercent() + CodeView::kZoomStep);
            return;
        case kCmdZoomOut:
            form_->editor->SetZoom(form_->editor->ZoomPercent() - CodeView::kZoomStep);
            return;
        case kCmdZoomNormal:
            form_->editor->SetZoom(CodeView::kNormalZoom);
            return;
        case kCmdNextPane:
        case kCmdPreviousPane:
            FocusNeighbourPane(*form_, id == kCmdNextPane);
            return;
        case kCmdNextStage:
        case kCmdPreviousStage:
            SelectStage(NeighbourStage(App()->project.currentStage, id == kCmdNextStage));
            return;
        case kCmdShaderHelp:
            OpenShaderHelp(*form_->editor, projects_.dialogs);
            return;
        case kCmdOpenInclude:
            OpenIncludeFile(*form_->editor, projects_.dialogs);
            return;
        case kCmdNew:
            projects_.New();
            return;
        case kCmdRestorePrevious:
            projects_.RestorePrevious();
            return;
        case kCmdOpenProject:
            projects_.OpenProject();
            return;
        case kCmdSaveProject:
            projects_.SaveProject();
            return;
        case kCmdSaveProjectAs:
            projects_.SaveProjectAs();
            return;
        case kCmdOpenFile:
            projects_.OpenFile();
            return;
        case kCmdSaveFileAs:
            projects_.SaveFileAs();
            return;
        case kCmdLoadLayout:
            layouts_.Load();
            return;
        case kCmdSaveLayout:
            layouts_.Save();
            RefreshLayoutMenu();
            return;
        case kCmdLockWindows:
            ToggleLockWindows();
            return;
        case kCmdSnapToEdges:
            ToggleSnapping();
            return;
        case kCmdAnimationWindow:
            ToggleOutputWindow();
            return;
        case kCmdStageImage:
            SelectStage(kStageImage);
            return;
        case kCmdStageAdd:
            form_->stageButtons->PopUpAddMenu();
            return;
        case kCmdBeep:
            QApplication::beep();
            return;
        default:
            break;
    }
    if (id >= kCmdChannelFirst && id <= kCmdChannelLast)
        channelPanel_.PopUpMenu(uint32_t(id - kCmdChannelFirst));
    if (id >= kCmdStageCommon && id <= kCmdStageCubeA) SelectStage(uint32_t(id - kCmdStageAdd));
    if (id >= kCmdFrameBufferFormatFirst && id <= kCmdFrameBufferFormatLast) ChooseFrameBufferFormat(id);
    if (id >= kCmdMultisampleFirst && id <= kCmdMultisampleLast) ChooseMultisample(id);
    if (id >= kCmdSiteFirst && id <= kCmdSiteLast) projects_.dialogs.openUrl(SiteUrl(id));
    if (const int index = EntryIndex(id, kCmdRecentFileFirst); index >= 0) projects_.OpenRecentFile(index);
    if (const int index = EntryIndex(id, kCmdRecentProjectFirst); index >= 0)
        projects_.OpenRecentProject(index);
    if (const QString layout = menus_->LayoutName(id); !layout.isEmpty()) layouts_.LoadNamed(layout);
}

void MainWindow::ChooseFrameBufferFormat(int id) {
    AppState& app = *App();
    if (const FrameBufferFormatRow* old = FindFrameBufferFormatOf(app.run->frameBufferFormat))
        menus_->SetTick(old->commandId, false);
    const FrameBufferFormatRow* chosen = FindFrameBufferFormat(id);
    if (chosen && chosen->isAccepted) app.run->frameBufferFormat = chosen->format;
    menus_->SetTick(id, true);
}

void MainWindow::ChooseMultisample(int id) {
    App()->display.multisampleIndex = uint32_t(id - kCmdMultisampleFirst);
    for (int other = kCmdMultisampleFirst; other <= kCmdMultisampleLast; ++other)
        menus_->SetTick(other, other == id);
}

}  // namespace pixelgrove
