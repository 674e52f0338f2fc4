// What keys and the mouse do in the editor beside what they do in every text field.
#include <QCursor>
#include <QKeyEvent>
#include <QTextBlock>
#include <QToolTip>
#include <algorithm>
#include <iterator>
#include <utility>

#include "ui/editor/CodeView.h"
#include "ui/editor/CompletionList.h"
#include "ui/text/Indentation.h"
#include "ui/text/Links.h"

namespace pixelgrove {

namespace {

// Left and Up are not among them.
constexpr int kRecolouringKeys[] = {
    Qt::Key_Backspace, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_End,    Qt::Key_Home,
    Qt::Key_Right,     Qt::Key_Down,   Qt::Key_Execute,  Qt::Key_Insert, Qt::Key_Delete,
    Qt::Key_C,         Qt::Key_V,      Qt::Key_X,
};

constexpr Qt::KeyboardModifiers kCommandModifiers = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

bool IsRedo(const QKeyEvent& event) {
    return event.matches(QKeySequence::Redo) ||
           (event.key() == Qt::Key_Y && event.modifiers() == Qt::ControlModifier);
}

}  // namespace

void CodeView::FlagForKey(const QKeyEvent& event) {
    const QString text = event.text();
    // The characters of Ctrl+F and Ctrl+H.
    const bool isFlaggingText =
        !text.isEmpty() && text != QStringView(u"\u0006") && text != QStringView(u"\b");
    if (isFlaggingText || std::ranges::find(kRecolouringKeys, event.key()) != std::end(kRecolouringKeys))
        FlagRecolour();
}

void CodeView::keyPressEvent(QKeyEvent* event) {
    event->accept();
    if (completions_->TakeKey(*event)) return;
    if (QToolTip::isVisible()) QToolTip::hideText();
    const qsizetype lengthBefore = text_.Length();
    isInKey_ = true;
    HandleKey(event);
    isInKey_ = false;
    CompleteAfterKey(*event, lengthBefore);
}

void CodeView::HandleKey(QKeyEvent* event) {
    FlagForKey(*event);
    if (event->key() == Qt::Key_Control)
        UpdateHoveredLink(viewport()->mapFromGlobal(QCursor::pos()), Qt::ControlModifier);
    if (event->matches(QKeySequence::Undo)) {
        undo();
        return;
    }
    if (IsRedo(*event)) {
        redo();
        return;
    }
    if (MoveInLongLine(*event)) return;
    const bool isPlain = !(event->modifiers() & kCommandModifiers);
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!isPlain) break;
            BreakLine();
            return;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            if (!isPlain) break;
            TabKey(event->key() == Qt::Key_Tab && !event->modifiers().testFlag(Qt::ShiftModifier));
            return;
        default:
            break;
    }
    const QString text = event->text();
    if (!text.isEmpty() && text.front().isPrint()) {
        if (!HasRoomFor(text.size())) return;
        if (text == QStringView(u"}") && autoIndentPending_) PrepareClosingBrace();
    }
    QPlainTextEdit::keyPressEvent(event);
}

// With Shift too: a line break of any other kind would be no line of its own.
void CodeView::BreakLine() {
    if (!HasRoomFor(1)) return;
    const QString indent = IndentOfNextLine(textCursor().block().text());
    textCursor().insertBlock();
    if (!indent.isEmpty() && HasRoomFor(indent.size())) {
        const UndoHistory::Change edit{textCursor().position(), 0, indent};
        text_.ApplyUnrecorded({&edit, 1});
    }
    autoIndentPending_ = true;
    ensureCursorVisible();
}

void CodeView::TabKey(bool indent) {
    const QTextCursor cursor = textCursor();
    if (!cursor.hasSelection()) {
        if (HasRoomFor(1)) textCursor().insertText(QStringLiteral("\t"));
        ensureCursorVisible();
        return;
    }
    const int first = document()->findBlock(cursor.selectionStart()).blockNumber();
    const int last = document()->findBlock(cursor.selectionEnd()).blockNumber();
    if (indent && !HasRoomFor(cursor.selectionEnd() - cursor.selectionStart() + last - first + 1)) return;
    IndentLines(first, last, indent);
}

// The brace then replaces the blanks before it.
void CodeView::PrepareClosingBrace() {
    const int caret = textCursor().selectionStart();
    const QTextBlock block = document()->findBlock(caret);
    if (!IsOnlyBlanks(QStringView(block.text()).first(caret - block.position()))) return;
    Select(block.position(), caret);
    autoIndentPending_ = false;
}

void CodeView::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Control) UpdateHoveredLink(QPoint(-1, -1), Qt::NoModifier);
    QPlainTextEdit::keyReleaseEvent(event);
}

void CodeView::inputMethodEvent(QInputMethodEvent* event) {
    if (!HasRoomFor(event->commitString().size())) return;
    QPlainTextEdit::inputMethodEvent(event);
    // Composing has taken the line's colours.
    FlagRecolour();
}

QTextCursor CodeView::LinkCursorAt(const QPoint& at) const {
    QTextCursor cursor(document());
    if (!viewport()->rect().contains(at)) return cursor;
    const QTextCursor place = cursorForPosition(at);
    const QTextBlock block = place.block();
    // The place is the nearest gap between characters, also where the line's text doesn't reach.
    const int column = place.positionInBlock() - (cursorRect(place).x() > at.x() ? 1 : 0);
    const QRectF line = blockBoundingGeometry(block).translated(contentOffset());
    if (at.y() >= line.bottom()) return cursor;
    const auto link = FindLinkAt(block.text(), column);
    if (!link) return cursor;
    cursor.setPosition(block.position() + int(link->start));
    cursor.setPosition(block.position() + int(link->start + link->length), QTextCursor::KeepAnchor);
    return cursor;
}

void CodeView::UpdateHoveredLink(const QPoint& at, Qt::KeyboardModifiers modifiers) {
    const QTextCursor link =
        modifiers.testFlag(Qt::ControlModifier) ? LinkCursorAt(at) : QTextCursor(document());
    const bool wasLink = hoveredLink_.hasSelection();
    if (!wasLink && !link.hasSelection()) return;
    if (wasLink && link.hasSelection() && link.selectionStart() == hoveredLink_.selectionStart()) return;
    hoveredLink_ = link;
    viewport()->setCursor(link.hasSelection() ? Qt::PointingHandCursor : Qt::IBeamCursor);
    ShowMarks();
}

void CodeView::mousePressEvent(QMouseEvent* event) {
    text_.EndStep();
    pressedLink_.clear();
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::ControlModifier) {
        pressedLink_ = LinkCursorAt(event->position().toPoint()).selectedText();
        if (!pressedLink_.isEmpty()) return;
    }
    if (PressInLongLine(*event)) return;
    QPlainTextEdit::mousePressEvent(event);
}

void CodeView::mouseMoveEvent(QMouseEvent* event) {
    UpdateHoveredLink(event->position().toPoint(), event->modifiers());
    if (!pressedLink_.isEmpty()) return;
    if (isSelectingInLongLine_) {
        SelectUpTo(event->position().toPoint());
        return;
    }
    QPlainTextEdit::mouseMoveEvent(event);
    // A selection that began elsewhere: the toolkit found the line, but not the place in it.
    const QTextCursor caret = textCursor();
    if (event->buttons().testFlag(Qt::LeftButton) && caret.hasSelection() && IsLongLine(caret.block()))
        SelectUpTo(event->position().toPoint());
}

void CodeView::mouseReleaseEvent(QMouseEvent* event) {
    selectionScroll_.stop();
    if (pressedLink_.isEmpty()) {
        if (!std::exchange(isSelectingInLongLine_, false)) QPlainTextEdit::mouseReleaseEvent(event);
        return;
    }
    const QString pressed = pressedLink_;
    pressedLink_.clear();
    if (LinkCursorAt(event->position().toPoint()).selectedText() != pressed) return;
    const QUrl url(pressed);
    if (url.isValid() && !url.host().isEmpty()) Q_EMIT LinkActivated(url);
}

}  // namespace pixelgrove
