// The editor's part in long lines: it paints them and finds places in them, for the caret, keys and the
// mouse. See CodeLayout for why.
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleHints>
#include <QTextBlock>
#include <algorithm>

#include "ui/editor/CodeHighlight.h"
#include "ui/editor/CodeView.h"
#include "ui/text/GlslWords.h"

namespace pixelgrove {

namespace {

constexpr int kSelectionScrollMs = 50;

}  // namespace

int CodeView::PositionAt(const QPoint& at) const {
    QTextBlock block = firstVisibleBlock();
    qreal bottom = contentOffset().y() + blockBoundingRect(block).height();
    while (block.next().isValid() && bottom <= at.y()) {
        block = block.next();
        bottom += blockBoundingRect(block).height();
    }
    if (!IsLongLine(block)) return QPlainTextEdit::cursorForPosition(at).position();
    const qreal place = at.x() - contentOffset().x() - document()->documentMargin();
    return block.position() + layout_->LineOf(block).ColumnAt(place, layout_->Letters());
}

QTextCursor CodeView::cursorForPosition(const QPoint& at) const {
    QTextCursor cursor(document());
    cursor.setPosition(PositionAt(at));
    return cursor;
}

QRect CodeView::cursorRect(const QTextCursor& cursor) const {
    const QTextBlock block = cursor.block();
    if (!IsLongLine(block)) return QPlainTextEdit::cursorRect(cursor);
    const qreal place = layout_->LineOf(block).PlaceOf(cursor.positionInBlock(), layout_->Letters());
    const qreal top = blockBoundingGeometry(block).top() + contentOffset().y();
    return {int(place + document()->documentMargin() + contentOffset().x()), int(top), cursorWidth(),
            LineHeight()};
}

// In positions of the text, and with all of a word that the left edge cuts.
CodeView::Stretch CodeView::VisiblePart(const QTextBlock& block) const {
    const LongLine& line = layout_->LineOf(block);
    const qreal left = -contentOffset().x() - document()->documentMargin();
    int start = line.ColumnAt(left, layout_->Letters());
    const int end = line.ColumnAt(left + viewport()->width(), layout_->Letters());
    for (int i = 0; i < kMaxWordLength && start > 0; ++i, --start)
        if (!IsWordCharacter(line.Text()[start - 1])) break;
    return {block.position() + start, block.position() + end};
}

void CodeView::PaintLongLines(const QRegion& region) {
    QPainter painter(viewport());
    painter.setClipRegion(region);
    qreal top = contentOffset().y();
    for (QTextBlock block = firstVisibleBlock(); block.isValid() && top < viewport()->height();
         block = block.next()) {
        if (IsLongLine(block)) PaintLongLine(painter, block, top);
        top += blockBoundingRect(block).height();
    }
}

void CodeView::PaintLongLine(QPainter& painter, const QTextBlock& block, qreal top) {
    if (IsErrorLine(block.blockNumber() + 1))
        painter.fillRect(QRectF(0, top, viewport()->width(), LineHeight()), ErrorGround());
    const Stretch part = VisiblePart(block);
    const auto columns = [&block](qsizetype start, qsizetype end, const QTextCharFormat& format) {
        return QTextLayout::FormatRange{int(start - block.position()), int(end - start), format};
    };
    FormatRanges colours;
    if (RefreshStageText())
        for (const ColourSpan& span :
             ColourText(Shown()->text, Shown()->commentMap, part.start, part.end).spans)
            colours.append(columns(span.start, span.end, ColourFormat(span.colour)));
    const QAbstractTextDocumentLayout::PaintContext context = getPaintContext();
    FormatRanges selections;
    for (const QAbstractTextDocumentLayout::Selection& selection : context.selections)
        selections.append(
            columns(selection.cursor.selectionStart(), selection.cursor.selectionEnd(), selection.format));
    painter.setPen(context.palette.text().color());
    const qreal left = contentOffset().x() + document()->documentMargin();
    layout_->LineOf(block).Draw(painter, QPointF(left, top), -left, viewport()->width() - left, colours,
                                selections, layout_->Letters());
    // The caret is black on every ground, as long as it isn't blinked away.
    if (block.contains(context.cursorPosition)) painter.fillRect(cursorRect(), Qt::black);
}

// To the side the toolkit scrolls by itself.
void CodeView::BringLongLineIntoView() {
    const QTextBlock block = textCursor().block();
    if (!IsLongLine(block)) return;
    const int line = block.blockNumber();
    const int first = firstVisibleBlock().blockNumber();
    const int span = FullyVisibleLineCount();
    if (line < first) verticalScrollBar()->setValue(line);
    if (line >= first + span) verticalScrollBar()->setValue(line - span + 1);
}

// True when the key was one that the toolkit would need its own layout of a long line for.
bool CodeView::MoveInLongLine(const QKeyEvent& event) {
    const auto matches = [&event](QKeySequence::StandardKey move, QKeySequence::StandardKey select) {
        return event.matches(move) || event.matches(select);
    };
    const auto mode =
        event.modifiers().testFlag(Qt::ShiftModifier) ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor;
    QTextCursor cursor = textCursor();
    const QTextBlock block = cursor.block();
    if (matches(QKeySequence::MoveToEndOfLine, QKeySequence::SelectEndOfLine)) {
        if (!IsLongLine(block)) return false;
        cursor.setPosition(block.position() + block.length() - 1, mode);
        setTextCursor(cursor);
        return true;
    }
    QTextBlock target;
    if (matches(QKeySequence::MoveToNextLine, QKeySequence::SelectNextLine)) target = block.next();
    if (matches(QKeySequence::MoveToPreviousLine, QKeySequence::SelectPreviousLine))
        target = block.previous();
    if (!target.isValid() || !(IsLongLine(block) || IsLongLine(target))) return false;
    // The place that a series of such keys began with. In a long line it is only what was set here: the
    // toolkit leaves nothing there, or a place left of all text.
    int place = cursor.verticalMovementX();
    if (place < document()->documentMargin()) place = cursorRect().left() - int(contentOffset().x());
    int column = 0;
    if (IsLongLine(target)) {
        column = layout_->LineOf(target).ColumnAt(place - document()->documentMargin(), layout_->Letters());
    } else if (target.layout()->lineCount() > 0) {
        column = target.layout()->lineAt(0).xToCursor(place);
    }
    cursor.setPosition(target.position() + column, mode);
    cursor.setVerticalMovementX(place);
    setTextCursor(cursor);
    return true;
}

bool CodeView::PressInLongLine(const QMouseEvent& event) {
    const QTextCursor place = cursorForPosition(event.position().toPoint());
    if (event.button() != Qt::LeftButton || !IsLongLine(place.block())) return false;
    QTextCursor cursor = textCursor();
    if (!thirdPress_.hasExpired()) {
        cursor.setPosition(place.block().position());
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    } else {
        cursor.setPosition(place.position(), event.modifiers().testFlag(Qt::ShiftModifier)
                                                 ? QTextCursor::KeepAnchor
                                                 : QTextCursor::MoveAnchor);
        isSelectingInLongLine_ = true;
    }
    thirdPress_ = QDeadlineTimer();
    setTextCursor(cursor);
    return true;
}

void CodeView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTextCursor cursor = cursorForPosition(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !IsLongLine(cursor.block())) {
        QPlainTextEdit::mouseDoubleClickEvent(event);
        return;
    }
    cursor.select(QTextCursor::WordUnderCursor);
    setTextCursor(cursor);
    thirdPress_.setRemainingTime(QGuiApplication::styleHints()->mouseDoubleClickInterval());
}

void CodeView::SelectUpTo(const QPoint& at) {
    QTextCursor cursor = textCursor();
    cursor.setPosition(cursorForPosition(at).position(), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    if (viewport()->rect().contains(at)) {
        selectionScroll_.stop();
    } else if (!selectionScroll_.isActive()) {
        selectionScroll_.start(kSelectionScrollMs, this);
    }
}

void CodeView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != selectionScroll_.timerId()) {
        QPlainTextEdit::timerEvent(event);
        return;
    }
    if (QApplication::mouseButtons().testFlag(Qt::LeftButton)) {
        SelectUpTo(viewport()->mapFromGlobal(QCursor::pos()));
    } else {
        selectionScroll_.stop();
    }
}

}  // namespace pixelgrove
