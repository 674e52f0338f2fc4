#include "ui/editor/EditorMenu.h"

#include <QMenu>
#include <QTextBlock>
#include <QVariant>

#include "commands/Commands.h"
#include "commands/MenuTable.h"
#include "core/BaseFolders.h"
#include "platform/Files.h"
#include "platform/TextScan.h"
#include "ui/editor/CodeView.h"
#include "windows/widgets/MenuBuilder.h"

namespace pixelgrove {

namespace {

constexpr qsizetype kMaxLineLength = 1023;
constexpr const char* kIncludeProperty = "currentIncludeFile";

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

void ShowEditorMenu(CodeView& editor, const CommandRegistry& commands, const QPoint& globalPosition,
                    std::function<void(int commandId)> runCommand) {
    const QPoint position = editor.viewport()->mapFromGlobal(globalPosition);
    const QString include = IncludeNameOf(editor.cursorForPosition(position).block().text());
    editor.setProperty(kIncludeProperty, include.isEmpty() ? QVariant() : QVariant(include));

    auto* menu = new QMenu(&editor);
    menu->setObjectName(QStringLiteral("editorMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (!include.isEmpty()) {
        menu->addAction(QStringLiteral("Open \"%1\"").arg(MenuText(include)))->setData(int(kCmdOpenInclude));
        menu->addSeparator();
    }
    FillMenu(*menu, EditorMenuRows(), [&commands](int id) { return commands.StateOf(id); });
    QObject::connect(
        menu, &QMenu::triggered, &editor,
        [runCommand = std::move(runCommand)](const QAction* action) { runCommand(action->data().toInt()); });
    menu->popup(globalPosition);
}

}  // namespace pixelgrove
