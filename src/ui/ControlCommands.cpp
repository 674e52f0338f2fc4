#include "ui/ControlCommands.h"

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "controls/widgets/ControlGenerator.h"
#include "ui/editor/CodeView.h"

namespace pixelgrove {

void RegisterControlCommands(CommandRegistry& commands, CodeView& editor) {
    commands.Add(kCmdCreateControl, [&editor] {
        ExecOnce(new ControlGenerator(&editor, [&editor](const QString& line) { editor.InsertLine(line); }),
                 [] {});
    });
}

}  // namespace pixelgrove
