#include "ui/EditorMenu.h"

#include <QMenu>
#include <QTextBlock>
#include <QVariant>

#include "commands/Commands.h"
#include "commands/MenuTable.h"
#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "platform/Files.h"
#include "platform/TextScan.h"
#include "ui/Menus.h"
#include "ui/editor/CodeView.h"

namespace pixelgrove {

namespace {

constexpr qsizetype kMaxLineLength = 1023;
constexpr const char* kIncludeProperty = "currentIncludeFile";

struct MenuEntry {
    int commandId;  // 0 is a separator
    const char16_t* text;
};

constexpr MenuEntry kEntries[] = {
    {kCmdEditUndo, u"Undo"},
    {kCmdEditRedo, u"Redo"},
    {0, nullptr},
    {kCmdEditCut, u"Cut"},
    {kCmdEditCopy, u"Copy"},
    {kCmdEditPaste, u"Paste"},
    {kCmdEditDelete, u"Delete"},
    {0, nullptr},
    {kCmdEditSelectAll, u"Select All"},
    {0, nullptr},
    {kCmdShaderHelp, u"Shader Help"},
    {0, nullptr},
    {kCmdInsertDefines, u"Insert #defines in text"},
    {kCmdLoadDefines, u"Load #defines from text"},
    {0, nullptr},
    {kCmdCreateControl, u"Create Control"},
    {0, nullptr},
    {kCmdIndentSelection, u"Indent Selection"},
};

// The key is shown only: the entry of the Edit menu takes it.
void AddEntry(QMenu& menu, int commandId, const QString& text) {
    const QString key = FirstKeyOf(commandId);
    QAction* action = menu.addAction(key.isEmpty() ? text : text + u'\t' + key);
    action->setData(commandId);
    action->setEnabled(IsCommandAvailable(commandId));
}

}  // namespace

QString IncludeNameOf(QStringView line) {
    const QStringView directive = u"#include";
    line = line.left(kMaxLineLength);
    if (!line.startsWith(directive)) return {};
    qsizetype position = directive.size();
    SkipSpace(line, position);
    if (!SkipChar(line, position, u'"')) return {};
    const qsizetype end = line.indexOf(u'"', position);
    return line.sliced(position, (end < 0 ? line.size() : end) - position).toString();
}

QString TakeIncludeName(CodeView& editor) {
    QString name = editor.property(kIncludeProperty).toString();
    editor.setProperty(kIncludeProperty, QVariant());
    return name;
}

QString IncludePathOf(const QString& name) {
    if (IsPlainFile(name)) return name;
    return PathOf(PathId::Shaders) + QStringLiteral("/Include/") + name;
}

void ShowEditorMenu(CodeView& editor, const QPoint& globalPosition) {
    const QPoint position = editor.viewport()->mapFromGlobal(globalPosition);
    const QString include = IncludeNameOf(editor.cursorForPosition(position).block().text());
    editor.setProperty(kIncludeProperty, include.isEmpty() ? QVariant() : QVariant(include));

    auto* menu = new QMenu(&editor);
    menu->setObjectName(QStringLiteral("editorMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (!include.isEmpty()) {
        AddEntry(*menu, kCmdOpenInclude, QStringLiteral("Open \"%1\"").arg(MenuText(include)));
        menu->addSeparator();
    }
    for (const MenuEntry& entry : kEntries) {
        if (entry.commandId == 0) {
            menu->addSeparator();
        } else {
            AddEntry(*menu, entry.commandId, QString::fromUtf16(entry.text));
        }
    }
    QObject::connect(menu, &QMenu::triggered, &editor,
                     [](const QAction* action) { App()->host->SendCommand(action->data().toInt(), 0); });
    menu->popup(globalPosition);
}

}  // namespace pixelgrove
