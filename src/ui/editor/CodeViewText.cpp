// The editor's text: the document's copy of it, undo, edits beside undo, and the clipboard.
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>

#include "project/ProjectModel.h"
#include "ui/editor/CodeHighlight.h"
#include "ui/editor/CodeView.h"
#include "ui/text/Indentation.h"

namespace pixelgrove {

namespace {

// As a document holds texts: what would begin a paragraph there is a line end.
QString WithLineFeeds(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (const char16_t unit : {u'\r', u'\u2028', u'\u2029', u'\ufdd0', u'\ufdd1'})
        text.replace(QChar(unit), u'\n');
    return text;
}

}  // namespace

// The document's own plain text would turn no-break spaces into blanks; sources keep every character.
QString CodeView::TextRange(int position, int length) const {
    QTextCursor cursor(document());
    cursor.setPosition(position);
    cursor.setPosition(position + length, QTextCursor::KeepAnchor);
    QString text = cursor.selectedText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    return text;
}

void CodeView::OnContentsChange(int position, int removed, int added) {
    if (!shown_ || edit_ == Edit::Loading) return;
    QString& text = shown_->text;
    const qsizetype end = document()->characterCount() - 1;
    // The report may count the end of the last line, which is no character of the text.
    removed = int(std::clamp<qsizetype>(removed, 0, text.size() - position));
    added = int(std::clamp<qsizetype>(added, 0, end - position));
    if (position > text.size() || text.size() - removed + added != end) {
        TakeWholeText();
    } else {
        // It may also name more than was changed.
        const QString now = TextRange(position, added);
        const QStringView before = QStringView(text).sliced(position, removed);
        const qsizetype same = std::ranges::mismatch(before, QStringView(now)).in1 - before.begin();
        qsizetype tail = 0;
        while (tail < std::min(before.size(), now.size()) - same &&
               before[before.size() - 1 - tail] == now[now.size() - 1 - tail])
            ++tail;
        const QString gone = before.sliced(same, before.size() - same - tail).toString();
        const QStringView come = QStringView(now).sliced(same, now.size() - same - tail);
        if (gone.isEmpty() && come.isEmpty()) return;
        text.replace(position + same, gone.size(), come.data(), come.size());
        if (edit_ == Edit::User) history_.Record(position + same, gone, come);
        if (!gone.contains(u'\n') && !come.contains(u'\n'))
            MoveColours(*document(), int(position + same), int(gone.size()), int(come.size()));
    }
    shown_->hasText = true;
    shown_->length = uint32_t(text.size());
    shown_->allocated = shown_->length;
    mapIsCurrent_ = false;
    coloured_ = {};
    marksAreStale_ = !shown_->errorLines.lines.empty();
    FlagRecolour();
    reportsPaint_ = true;
    viewport()->update();
    // Not with the report of the paint, which may never come.
    OnStageChanged(App()->currentStage);
}

// For a change whose report doesn't fit the text: the history then can't, either.
void CodeView::TakeWholeText() {
    shown_->text = TextRange(0, document()->characterCount() - 1);
    history_.Clear();
}

void CodeView::undo() {
    if (shown_) Replay(history_.Undo(shown_->text));
}

void CodeView::redo() {
    if (shown_) Replay(history_.Redo(shown_->text));
}

void CodeView::Replay(const std::optional<UndoHistory::Change>& change) {
    if (!change) return;
    QTextCursor cursor(document());
    cursor.setPosition(int(change->position));
    cursor.setPosition(int(change->position + change->length), QTextCursor::KeepAnchor);
    edit_ = Edit::Replayed;
    cursor.insertText(change->text);
    edit_ = Edit::User;
    cursor.setPosition(int(change->position + change->text.size()));
    setTextCursor(cursor);
    FlagRecolour();
    ensureCursorVisible();
    OnCaretMoved();
}

void CodeView::ApplyUnrecorded(std::span<const LineEdit> edits) {
    if (edits.empty()) return;
    edit_ = Edit::Unrecorded;
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    int shift = 0;
    for (const LineEdit& edit : edits) {
        cursor.setPosition(edit.position + shift);
        cursor.setPosition(edit.position + shift + edit.length, QTextCursor::KeepAnchor);
        cursor.insertText(edit.text);
        history_.Note(edit.position + shift, edit.length, edit.text.size());
        shift += int(edit.text.size()) - edit.length;
    }
    history_.EndStep();
    cursor.endEditBlock();
    edit_ = Edit::User;
}

void CodeView::IndentLines(int firstLine, int lastLine, bool indent) {
    // A cursor would move with the edits.
    const int start = textCursor().selectionStart();
    const int end = textCursor().selectionEnd();
    const bool isForward = textCursor().position() == end;
    const int top = verticalScrollBar()->value();
    const int left = horizontalScrollBar()->value();
    std::vector<LineEdit> edits;
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
    ApplyUnrecorded(edits);
    const int grownEnd = std::clamp(end + growth, start, document()->characterCount() - 1);
    Select(isForward ? start : grownEnd, isForward ? grownEnd : start);
    verticalScrollBar()->setValue(top);
    horizontalScrollBar()->setValue(left);
}

void CodeView::IndentSelection() {
    const QTextCursor before = textCursor();
    if (!before.hasSelection() || !RefreshStageText()) return;
    const int top = verticalScrollBar()->value();
    const std::vector<int> depths = LineDepths(shown_->text, shown_->commentMap);
    const QTextBlock last = document()->findBlock(before.selectionEnd());
    std::vector<LineEdit> edits;
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
    ApplyUnrecorded(edits);
    const auto toPosition = [this](int line, int distance) {
        const QTextBlock block = document()->findBlockByNumber(line);
        return std::max(block.position(), block.position() + block.length() - distance);
    };
    Select(toPosition(anchorLine, anchorDistance), toPosition(caretLine, caretDistance));
    verticalScrollBar()->setValue(top);
}

bool CodeView::HasRoomFor(qsizetype length) const {
    const QTextCursor cursor = textCursor();
    const qsizetype kept =
        document()->characterCount() - 1 - (cursor.selectionEnd() - cursor.selectionStart());
    return kept + length <= kMaxTextLength;
}

// Plain text alone, and all of its characters.
QMimeData* CodeView::createMimeDataFromSelection() const {
    const QTextCursor cursor = textCursor();
    auto* plain = new QMimeData;
    plain->setText(TextRange(cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()));
    return plain;
}

bool CodeView::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText();
}

void CodeView::insertFromMimeData(const QMimeData* source) {
    if (!source->hasText()) return;
    const QString text = WithLineFeeds(source->text());
    if (!HasRoomFor(text.size())) return;
    history_.EndStep();
    textCursor().insertText(text);
    history_.EndStep();
    FlagRecolour();
    ensureCursorVisible();
}

}  // namespace pixelgrove
