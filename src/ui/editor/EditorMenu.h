// The editor's context menu, and the include file that its first entry opens.
//
// Main thread.
#pragma once

#include <QPoint>
#include <QString>
#include <QStringView>
#include <functional>

namespace pixelgrove {

class CodeView;
class CommandRegistry;

// Pops up the menu for the line below the point, without waiting for the choice, which goes to runCommand.
// The menu is a child of the editor of the name "editorMenu" and goes when it closes.
void ShowEditorMenu(CodeView& editor, const CommandRegistry& commands, const QPoint& globalPosition,
                    std::function<void(int commandId)> runCommand);

// The name between the quotes of a line that begins with #include "NAME", as far as the line's first 1023
// code units go; empty for any other line. Pure.
QString IncludeNameOf(QStringView line);

// The include name of the line that the last menu was for; empty from the second call on.
QString TakeIncludeName(CodeView& editor);

// The name itself when it is an existing file, else one of the include folder, which need not exist.
QString IncludePathOf(const QString& name);

}  // namespace pixelgrove
