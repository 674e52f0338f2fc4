#include "ui/MessagePlaces.h"

#include <QMouseEvent>
#include <QPlainTextEdit>
#include <vector>

#include "core/AppState.h"
#include "project/ProjectModel.h"
#include "ui/MessagePane.h"
#include "ui/editor/CodeView.h"
#include "ui/editor/EditorMenu.h"
#include "windows/widgets/UserDialogs.h"

namespace pixelgrove {

namespace {

constexpr qsizetype kMarkedLineLength = 62;

bool IsStageName(const QString& name) {
    for (uint32_t id = kStageCommon; id < kStageCount; ++id)
        if (name == StageName(id)) return true;
    return false;
}

// The stage's name stands anywhere in the beginning of the line: a message about another stage that speaks of
// this one marks a line here too.
bool Names(const CompileMessage& message, uint32_t stage) {
    return message.text.left(kMarkedLineLength).contains(StageName(stage), Qt::CaseInsensitive);
}

}  // namespace

MessagePlaces::MessagePlaces(QPlainTextEdit& view, MessagePane& pane, CodeView& editor, EditingForm& project,
                             UserDialogs& dialogs)
    : pane_(pane), editor_(editor), project_(project), dialogs_(dialogs) {
    view.viewport()->installEventFilter(this);
}

void MessagePlaces::Show(const CompileMessages& messages, const QString& end) {
    pane_.Show(messages, end);
    if (!project_.currentDocument) return;
    std::vector<int32_t>& marks = project_.currentDocument->errorLines.lines;
    marks.clear();
    for (const CompileMessage& message : messages)
        if (!message.place.isEmpty() && Names(message, project_.currentStage)) marks.push_back(message.line);
    editor_.RefreshErrorMarks();
}

void MessagePlaces::JumpTo(const CompileMessage& message) {
    if (message.place.isEmpty()) return;
    if (!IsStageName(message.place)) {
        dialogs_.openTextEditor(IncludePathOf(message.place), message.line);
        return;
    }
    // The stage on screen stays, whichever stage the message names; line 1 moves nothing.
    if (message.line > 1) editor_.GoToLine(message.line);
}

bool MessagePlaces::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::MouseButtonDblClick) return false;
    const auto* click = static_cast<QMouseEvent*>(event);
    if (click->button() != Qt::LeftButton) return false;
    if (const CompileMessage* message = pane_.MessageAt(click->pos())) JumpTo(*message);
    return true;
}

}  // namespace pixelgrove
