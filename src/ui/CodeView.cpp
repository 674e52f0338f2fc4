#include "ui/CodeView.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>
#include <set>

#include "core/ProjectModel.h"
#include "windows/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr int kTabWidthColumns = 4;

// The document's plain text would turn no-break spaces into blanks; sources keep every character.
QString TextOf(const QTextDocument& document) {
    QString text = document.toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    return text;
}

// A line separator would be a line break on screen without being a line of its own, and the lines that
// messages name would be off.
QString WithoutLineSeparators(QString text) {
    return text.replace(QChar::LineSeparator, u'\n');
}

}  // namespace

CodeView::CodeView(QWidget* parent) : QPlainTextEdit(parent) {
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFont(CodeFont());
    UpdateTabStop();
    connect(document(), &QTextDocument::contentsChange, this, &CodeView::OnContentsChange);
    connect(this, &QPlainTextEdit::updateRequest, this, &CodeView::ViewChanged);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] {
        if (shown_ && shown_->onChange) shown_->onChange(false, false);
        Q_EMIT ViewChanged();
    });
}

void CodeView::LoadDocument(StageDocument& incoming) {
    if (shown_ && shown_ == App()->currentDocument && shown_->hasText) {
        shown_->caretPosition = textCursor().position();
        shown_->anchorPosition = textCursor().anchor();
        shown_->firstVisibleLine = firstVisibleBlock().blockNumber();
    }
    shown_ = nullptr;  // the swap is no edit
    setPlainText(WithoutLineSeparators(incoming.text));
    const int end = document()->characterCount() - 1;
    QTextCursor cursor(document());
    cursor.setPosition(std::clamp(incoming.anchorPosition, 0, end));
    cursor.setPosition(std::clamp(incoming.caretPosition, 0, end), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    verticalScrollBar()->setValue(std::max(0, incoming.firstVisibleLine));
    horizontalScrollBar()->setValue(0);
    shown_ = &incoming;
    RefreshErrorMarks();
    Q_EMIT ViewChanged();
}

bool CodeView::StoreText() {
    if (!shown_) return false;
    QString text = TextOf(*document());
    if (text == shown_->text) return false;
    SetDocumentText(*shown_, text);
    return true;
}

void CodeView::OnContentsChange(int position, int, int added) {
    if (!shown_ || !StoreText()) return;
    bool spanHasControls = false;
    const QTextBlock last = document()->findBlock(position + added);
    for (QTextBlock block = document()->findBlock(position); block.isValid(); block = block.next()) {
        const QString line = block.text();
        spanHasControls |= line.contains(QLatin1String("uniform")) || line.contains(QLatin1String("#define"));
        if (block == last) break;
    }
    RefreshErrorMarks();
    if (shown_->onChange) shown_->onChange(true, spanHasControls);
}

bool CodeView::IsErrorLine(int line) const {
    return shown_ && std::ranges::find(shown_->errorLines.lines, line) != shown_->errorLines.lines.end();
}

void CodeView::RefreshErrorMarks() {
    QList<QTextEdit::ExtraSelection> marks;
    if (shown_) {
        QColor ground = FromBgr(shown_->errorLines.markerColour);
        ground.setAlpha(70);  // the text above it stays readable
        // A line with several errors is named several times, and translucent grounds would add up.
        for (int line : std::set<int>(shown_->errorLines.lines.begin(), shown_->errorLines.lines.end())) {
            const QTextBlock block = document()->findBlockByNumber(line - 1);
            if (!block.isValid()) continue;
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(block);
            mark.format.setBackground(ground);
            mark.format.setProperty(QTextFormat::FullWidthSelection, true);
            marks.append(mark);
        }
    }
    setExtraSelections(marks);
    Q_EMIT ViewChanged();
}

int CodeView::FullyVisibleLineCount() const {
    return std::max(1, viewport()->height() / std::max(1, fontMetrics().lineSpacing()));
}

void CodeView::GoToLine(int line) {
    const int index = std::clamp(line, 1, blockCount()) - 1;
    const int first = firstVisibleBlock().blockNumber();
    const int span = FullyVisibleLineCount();
    if (index < first || index >= first + span) verticalScrollBar()->setValue(std::max(0, index - span / 2));
    setTextCursor(QTextCursor(document()->findBlockByNumber(index)));
    setFocus();
}

QString CodeView::CaretStatus() const {
    const QTextCursor cursor = textCursor();
    return QStringLiteral("Ln: %1 / %2\t Ch: %3")
        .arg(cursor.blockNumber() + 1)
        .arg(blockCount())
        .arg(cursor.positionInBlock() + 1);
}

std::vector<CodeView::VisibleLine> CodeView::VisibleLines() const {
    std::vector<VisibleLine> lines;
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF area = blockBoundingGeometry(block).translated(contentOffset());
        if (area.top() >= viewport()->height()) break;
        lines.push_back({block.blockNumber() + 1, int(area.top()), int(area.height())});
    }
    return lines;
}

void CodeView::keyPressEvent(QKeyEvent* event) {
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
        event->modifiers().testFlag(Qt::ShiftModifier)) {
        textCursor().insertBlock();
        ensureCursorVisible();
        event->accept();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

void CodeView::insertFromMimeData(const QMimeData* source) {
    if (!source->hasText()) return;
    textCursor().insertText(WithoutLineSeparators(source->text()));
    ensureCursorVisible();
}

void CodeView::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    Q_EMIT ViewChanged();
}

void CodeView::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        UpdateTabStop();
        Q_EMIT ViewChanged();
    }
}

void CodeView::UpdateTabStop() {
    setTabStopDistance(QFontMetricsF(font()).horizontalAdvance(u' ') * kTabWidthColumns);
}

}  // namespace pixelgrove
