// The editor's text: what an edit asks of the view, undo, indentation, and the clipboard.
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>

#include "platform/TextScan.h"
#include "ui/editor/CodeHighlight.h"
#include "ui/editor/CodeView.h"
#include "ui/text/Indentation.h"

namespace pixelgrove {

// Before the layout hears of the edit.
void CodeView::OnEdited(const TextEdit& edit) {
    const QStringView come = QStringView(edit.stage.text).sliced(edit.position, edit.added);
    if (!edit.removed.contains(u'\n') && !come.contains(u'\n'))
        MoveColours(*document(), int(edit.position), int(edit.removed.size()), int(edit.added));
    coloured_ = {};
    bracketsMayBeNew_ = true;
    marksAreStale_ = !edit.stage.errorLines.lines.empty();
    FlagRecolour();
    reportsPaint_ = true;
    viewport()->update();
    // At once: the report of the paint may never come.
    Q_EMIT TextEdited(edit);
}

void CodeView::undo() {
    ShowReplayed(text_.Undo());
}

void CodeView::redo() {
    ShowReplayed(text_.Redo());
}

void CodeView::ShowReplayed(std::optional<qsizetype> caret) {
    if (!caret) return;
    Select(int(*caret), int(*caret));
    FlagRecolour();
    ensureCursorVisible();
    OnCaretMoved();
}

void CodeView::IndentLines(int firstLine, int lastLine, bool indent) {
    // A cursor would move with the edits.
    const int start = textCursor().selectionStart();
    const int end = textCursor().selectionEnd();
    const bool isForward = textCursor().position() == end;
    const int top = verticalScrollBar()->value();
    const int left = horizontalScrollBar()->value();
    std::vector<UndoHistory::Change> edits;
    int growth = 0;
    for (QTextBlock block = document()->findBlockByNumber(firstLine);
         block.isValid() && block.blockNumber() <= lastLine; block = block.next()) {
        if (indent) {
            edits.push_back({block.position(), 0, QStringLiteral("\t")});
            ++growth;
            continue;
        }
        const QString line = block.text();
        const QString unindented = UnindentedLine(line);
        if (unindented == line) continue;
        // Only what differs, so that steps of the history around it stay whole.
        qsizetype tail = 0;
        while (tail < unindented.size() &&
               line[line.size() - 1 - tail] == unindented[unindented.size() - 1 - tail])
            ++tail;
        edits.push_back({block.position(), int(line.size() - tail), unindented.chopped(tail)});
        growth += int(unindented.size() - line.size());
    }
    text_.ApplyUnrecorded(edits);
    const int grownEnd = std::clamp(end + growth, start, document()->characterCount() - 1);
    Select(isForward ? start : grownEnd, isForward ? grownEnd : start);
    verticalScrollBar()->setValue(top);
    horizontalScrollBar()->setValue(left);
}

void CodeView::EditLines(const std::function<LineEdit(QStringView, TextSelection)>& make) {
    if (!Shown()) return;
    const LineEdit edit = make(Shown()->text, {textCursor().anchor(), textCursor().position()});
    qsizetype growth = 0;
    for (const UndoHistory::Change& change : edit.changes)
        growth += change.text.size() - change.length;
    if (edit.changes.empty() || text_.Length() + growth > kMaxTextLength) return;
    text_.Apply(edit.changes);
    Select(int(edit.selection.anchor), int(edit.selection.caret));
    ensureCursorVisible();
}

void CodeView::IndentSelection() {
    const QTextCursor before = textCursor();
    if (!before.hasSelection() || !RefreshStageText()) return;
    const int top = verticalScrollBar()->value();
    const std::vector<int> depths = LineDepths(Shown()->text, Shown()->commentMap);
    const QTextBlock last = document()->findBlock(before.selectionEnd());
    std::vector<UndoHistory::Change> edits;
    for (QTextBlock block = document()->findBlock(before.selectionStart()); block.isValid();
         block = block.next()) {
        const size_t number = size_t(block.blockNumber());
        const QString line = block.text();
        if (number < depths.size() && depths[number] >= 0 && !line.isEmpty()) {
            const qsizetype blanks = LeadingBlanks(line);
            const QString indent(std::min(depths[number], kMaxDepthTabs), u'\t');
            if (line.first(blanks) != indent) edits.push_back({block.position(), int(blanks), indent});
        }
        if (block == last) break;
    }
    // Both ends of the selection keep their distance to the ends of their lines.
    const auto fromLineEnd = [this](int position) {
        const QTextBlock block = document()->findBlock(position);
        return std::pair(block.blockNumber(), block.position() + block.length() - position);
    };
    const auto [anchorLine, anchorDistance] = fromLineEnd(before.anchor());
    const auto [caretLine, caretDistance] = fromLineEnd(before.position());
    text_.ApplyUnrecorded(edits);
    const auto toPosition = [this](int line, int distance) {
        const QTextBlock block = document()->findBlockByNumber(line);
        return std::max(block.position(), block.position() + block.length() - distance);
    };
    Select(toPosition(anchorLine, anchorDistance), toPosition(caretLine, caretDistance));
    verticalScrollBar()->setValue(top);
}

bool CodeView::HasRoomFor(qsizetype length) const {
    const QTextCursor cursor = textCursor();
    const qsizetype kept = text_.Length() - (cursor.selectionEnd() - cursor.selectionStart());
    return kept + length <= kMaxTextLength;
}

// Plain text alone, and all of its characters.
QMimeData* CodeView::createMimeDataFromSelection() const {
    const QTextCursor cursor = textCursor();
    auto* plain = new QMimeData;
    plain->setText(text_.Range(cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()));
    return plain;
}

bool CodeView::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText();
}

void CodeView::insertFromMimeData(const QMimeData* source) {
    if (source->hasText()) ReplaceSelection(source->text());
}

void CodeView::ReplaceSelection(const QString& withText) {
    const QString text = WithLineFeeds(withText);
    if (!HasRoomFor(text.size())) return;
    text_.EndStep();
    textCursor().insertText(text);
    text_.EndStep();
    FlagRecolour();
    ensureCursorVisible();
}

void CodeView::InsertLine(const QString& line) {
    const QTextBlock block = document()->findBlock(textCursor().selectionStart());
    if (block.blockNumber() > 0) Select(block.position(), block.position());
    ReplaceSelection(line + u'\n');
}

QStringList CodeView::SelectedLines() const {
    const QTextCursor selection = textCursor();
    QStringList lines;
    if (!selection.hasSelection()) return lines;
    for (QTextBlock block = document()->findBlock(selection.selectionStart());
         block.isValid() && block.position() < selection.selectionEnd(); block = block.next())
        lines.append(block.text());
    return lines;
}

}  // namespace pixelgrove
