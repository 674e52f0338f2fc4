#include "ui/ControlCommands.h"

#include <utility>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "controls/ControlText.h"
#include "controls/widgets/ControlGenerator.h"
#include "ui/editor/CodeView.h"

namespace pixelgrove {

void RegisterControlCommands(CommandRegistry& commands, CodeView& editor, ControlSet& controls,
                             std::function<void()> publish) {
    commands.Add(kCmdInsertDefines, [&editor, &controls, publish] {
        publish();
        editor.ReplaceSelection(ExportDefinesToText(controls));
    });
    commands.Add({.first = kCmdLoadDefines,
                  .last = kCmdLoadDefines,
                  .run =
                      [&editor, &controls, publish = std::move(publish)](int) {
                          ImportDefinesFromText(controls, editor.SelectedLines());
                          publish();
                      },
                  .isAvailable = [&editor](int) { return editor.textCursor().hasSelection(); }});
    commands.Add(kCmdCreateControl, [&editor] {
        ExecOnce(new ControlGenerator(&editor, [&editor](const QString& line) { editor.InsertLine(line); }),
                 [] {});
    });
}

}  // namespace pixelgrove
