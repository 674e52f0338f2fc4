#include "ui/editor/StageText.h"

#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <utility>

#include "core/CommentMap.h"
#include "project/ProjectModel.h"

namespace pixelgrove {

StageText::StageText(QTextDocument& document) : document_(document) {
    connect(&document, &QTextDocument::contentsChange, this, &StageText::OnContentsChange);
}

void StageText::Follow(StageDocument& stage) {
    history_.Clear();
    mapIsCurrent_ = false;
    stage_ = &stage;
    const QString text = Range(0, Length());
    if (text != stage.text) SetDocumentText(stage, text);
}

void StageText::Forget() {
    stage_ = nullptr;
    history_.Clear();
}

bool StageText::RefreshCommentMap() {
    if (!stage_ || stage_->text.isEmpty()) return false;
    if (!mapIsCurrent_) stage_->commentMap = BuildCommentMap(stage_->text);
    mapIsCurrent_ = true;
    return true;
}

qsizetype StageText::Length() const {
    return document_.characterCount() - 1;
}

// The document's own plain text would turn no-break spaces into blanks; sources keep every character.
QString StageText::Range(qsizetype position, qsizetype length) const {
    QTextCursor cursor(&document_);
    cursor.setPosition(int(position));
    cursor.setPosition(int(position + length), QTextCursor::KeepAnchor);
    QString text = cursor.selectedText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    return text;
}

void StageText::OnContentsChange(int position, int removed, int added) {
    if (!stage_) return;
    QString& text = stage_->text;
    const qsizetype end = Length();
    TextEdit edit{*stage_, 0, {}, end};
    // The report may count the end of the last line, which is no character of the text.
    removed = int(std::min<qsizetype>(removed, text.size() - position));
    added = int(std::min<qsizetype>(added, end - position));
    if (removed < 0 || added < 0 || text.size() - removed + added != end) {
        // It doesn't fit the text, and so the history can't, either.
        edit.removed = std::exchange(text, Range(0, end));
        history_.Clear();
    } else {
        // It may also name more than was changed.
        const QString now = Range(position, added);
        const QStringView before = QStringView(text).sliced(position, removed);
        const qsizetype same = std::ranges::mismatch(before, QStringView(now)).in1 - before.begin();
        qsizetype tail = 0;
        while (tail < std::min(before.size(), now.size()) - same &&
               before[before.size() - 1 - tail] == now[now.size() - 1 - tail])
            ++tail;
        edit.position = position + same;
        edit.removed = before.sliced(same, before.size() - same - tail).toString();
        const QStringView come = QStringView(now).sliced(same, now.size() - same - tail);
        edit.added = come.size();
        if (edit.removed.isEmpty() && come.isEmpty()) return;
        text.replace(edit.position, edit.removed.size(), come.data(), come.size());
        if (author_ == Author::User) history_.Record(edit.position, edit.removed, come);
    }
    stage_->hasText = true;
    stage_->length = uint32_t(text.size());
    stage_->allocated = stage_->length;
    mapIsCurrent_ = false;
    Q_EMIT Edited(edit);
}

std::optional<qsizetype> StageText::Undo() {
    return stage_ ? Replay(history_.Undo(stage_->text)) : std::nullopt;
}

std::optional<qsizetype> StageText::Redo() {
    return stage_ ? Replay(history_.Redo(stage_->text)) : std::nullopt;
}

std::optional<qsizetype> StageText::Replay(const std::optional<UndoHistory::Change>& change) {
    if (!change) return std::nullopt;
    QTextCursor cursor(&document_);
    cursor.setPosition(int(change->position));
    cursor.setPosition(int(change->position + change->length), QTextCursor::KeepAnchor);
    author_ = Author::History;
    cursor.insertText(change->text);
    author_ = Author::User;
    return change->position + change->text.size();
}

void StageText::Apply(std::span<const UndoHistory::Change> edits) {
    history_.EndStep();
    ApplyAs(Author::User, edits);
}

void StageText::ApplyUnrecorded(std::span<const UndoHistory::Change> edits) {
    ApplyAs(Author::Unrecorded, edits);
}

void StageText::ApplyAs(Author author, std::span<const UndoHistory::Change> edits) {
    if (edits.empty()) return;
    author_ = author;
    QTextCursor cursor(&document_);
    cursor.beginEditBlock();
    qsizetype shift = 0;
    for (const UndoHistory::Change& edit : edits) {
        const qsizetype position = edit.position + shift;
        cursor.setPosition(int(position));
        cursor.setPosition(int(position + edit.length), QTextCursor::KeepAnchor);
        cursor.insertText(edit.text);
        if (author == Author::Unrecorded) history_.Note(position, edit.length, edit.text.size());
        shift += edit.text.size() - edit.length;
    }
    cursor.endEditBlock();
    history_.EndStep();
    author_ = Author::User;
}

}  // namespace pixelgrove
