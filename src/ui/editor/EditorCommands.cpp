#include "ui/editor/EditorCommands.h"

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "platform/Files.h"
#include "ui/editor/CodeView.h"
#include "ui/editor/EditorMenu.h"
#include "ui/editor/FindReplace.h"
#include "ui/editor/GoToLineDialog.h"
#include "ui/editor/ShaderHelp.h"
#include "windows/widgets/UserDialogs.h"

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

}  // namespace

void RegisterEditorCommands(CommandRegistry& commands, CodeView& editor, FindReplace& find,
                            const UserDialogs& dialogs) {
    commands.Add(kCmdEditUndo, [&editor] { editor.undo(); });
    commands.Add(kCmdEditRedo, [&editor] { editor.redo(); });
    commands.Add(kCmdEditCut, [&editor] { editor.cut(); });
    commands.Add(kCmdEditCopy, [&editor] { editor.copy(); });
    commands.Add(kCmdEditPaste, [&editor] { editor.paste(); });
    commands.Add(kCmdEditDelete, [&editor] { editor.textCursor().removeSelectedText(); });
    commands.Add(kCmdEditSelectAll, [&editor] { editor.selectAll(); });
    commands.Add(kCmdIndentSelection, [&editor] { editor.IndentSelection(); });
    commands.Add(kCmdFind, [&find] { find.Open(false); });
    commands.Add(kCmdReplace, [&find] { find.Open(true); });
    commands.Add(kCmdFindNext, [&find] { find.FindAgain(true); });
    commands.Add(kCmdFindPrevious, [&find] { find.FindAgain(false); });
    commands.Add(kCmdGoToLine, [&editor] { AskForLine(editor); });
    commands.Add(kCmdToggleComments, [&editor] { editor.EditLines(ToggleComments); });
    commands.Add(kCmdDuplicate, [&editor] { editor.EditLines(Duplicate); });
    for (const bool up : {false, true}) {
        commands.Add(up ? kCmdMoveLinesUp : kCmdMoveLinesDown, [&editor, up] {
            editor.EditLines(
                [up](QStringView text, TextSelection lines) { return MoveLines(text, lines, up); });
        });
    }
    const auto zoomBy = [&editor](int percent) { editor.SetZoom(editor.ZoomPercent() + percent); };
    commands.Add(kCmdZoomIn, [zoomBy] { zoomBy(CodeView::kZoomStep); });
    commands.Add(kCmdZoomOut, [zoomBy] { zoomBy(-CodeView::kZoomStep); });
    commands.Add(kCmdZoomNormal, [&editor] { editor.SetZoom(CodeView::kNormalZoom); });
    commands.Add(kCmdShaderHelp, [&editor, &dialogs] { OpenShaderHelp(editor, dialogs); });
    commands.Add(kCmdOpenInclude, [&editor, &dialogs] { OpenIncludeFile(editor, dialogs); });
    commands.Add({.first = kCmdSiteBookOfShaders, .last = kCmdSiteOneShader, .run = [&dialogs](int id) {
                      dialogs.openUrl(SiteUrl(id));
                  }});
}

}  // namespace pixelgrove
