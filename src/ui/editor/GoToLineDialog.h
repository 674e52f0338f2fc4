// The question which line to go to. Main thread.
#pragma once

namespace pixelgrove {

class CodeView;

// Waits for the user and puts the editor's caret there: in the last line for a number beyond it.
void AskForLine(CodeView& editor);

}  // namespace pixelgrove
