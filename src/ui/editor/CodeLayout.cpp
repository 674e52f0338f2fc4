#include "ui/editor/CodeLayout.h"

#include <QTextDocument>
#include <QTextOption>
#include <algorithm>

namespace pixelgrove {

namespace {

// Where the toolkit's own picture of a long line is out of everybody's sight.
constexpr qreal kFarLeft = -1e6;

// One line for the first letter alone. To make it the toolkit looks at the whole text, so it is kept when the
// text changes.
void HideFromToolkit(QTextBlock block) {
    QTextLayout* layout = block.layout();
    if (layout->lineCount() == 1 && layout->lineAt(0).position().x() == kFarLeft) return;
    layout->setCacheEnabled(true);
    // Else the toolkit would seek a place to break the line, and the letter that tells its direction.
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAnywhere);
    option.setTextDirection(Qt::LeftToRight);
    layout->setTextOption(option);
    layout->beginLayout();
    QTextLine line = layout->createLine();
    line.setNumColumns(1);
    line.setPosition({kFarLeft, 0});
    layout->endLayout();
    block.setLineCount(1);
}

}  // namespace

CodeLayout::CodeLayout(QTextDocument* document) : QPlainTextDocumentLayout(document) {}

LetterWidths& CodeLayout::FreshLetters() const {
    const QFont font = document()->defaultFont();
    const qreal tabDistance = document()->defaultTextOption().tabStopDistance();
    if (!letters_ || letters_->Font() != font || letters_->TabDistance() != tabDistance)
        letters_.emplace(font, tabDistance);
    return *letters_;
}

const LetterWidths& CodeLayout::Letters() const {
    return FreshLetters();
}

LongLine& CodeLayout::FreshLineOf(const QTextBlock& block, int column, int changed) const {
    auto* line = static_cast<LongLine*>(block.userData());
    if (!line) {
        line = new LongLine;
        QTextBlock(block).setUserData(line);
    }
    line->SetText(block.text(), column, changed, FreshLetters());
    return *line;
}

const LongLine& CodeLayout::LineOf(const QTextBlock& block) const {
    const auto* line = static_cast<const LongLine*>(block.userData());
    if (line && line->Text().size() == block.length() - 1) return *line;
    return FreshLineOf(block, -1, 0);
}

QSizeF CodeLayout::documentSize() const {
    QSizeF size = QPlainTextDocumentLayout::documentSize();
    if (longest_ > 0) size.setWidth(std::max(size.width(), longest_ + 2 * document()->documentMargin()));
    return size;
}

QRectF CodeLayout::blockBoundingRect(const QTextBlock& block) const {
    if (!IsLongLine(block)) return QPlainTextDocumentLayout::blockBoundingRect(block);
    HideFromToolkit(block);
    const qreal margin = document()->documentMargin();
    qreal left = 0;
    if (const int caret = caretPosition ? caretPosition() : -1; block.contains(caret)) {
        // The toolkit adds what its own line says, which knows of the first letter and of the line's end.
        const int column = caret - block.position();
        const QTextLine line = block.layout()->lineForTextPosition(column);
        left = margin + LineOf(block).PlaceOf(column, Letters());
        if (line.isValid()) left -= line.cursorToX(column);
    }
    return {left, 0, 0, Letters().LineHeight() + (block.next().isValid() ? 0 : margin)};
}

void CodeLayout::MeasureLongest() {
    longest_ = 0;
    for (QTextBlock block = document()->firstBlock(); block.isValid(); block = block.next())
        if (IsLongLine(block)) longest_ = std::max(longest_, LineOf(block).Width());
}

void CodeLayout::documentChanged(int from, int removed, int added) {
    const QTextBlock first = document()->findBlock(from);
    const QTextBlock last = document()->findBlock(std::max(from, from + added - 1));
    const QSizeF before = documentSize();
    bool concernsLong = longest_ > 0 && document()->blockCount() != blockCount_;
    // A new font or tab width comes as a change of everything.
    const bool isWhole = from == 0 && added >= document()->characterCount() - 1;
    if (isWhole) letters_.reset();
    if (first == last && IsLongLine(first) && document()->blockCount() == blockCount_) {
        const int column = std::max(0, from - first.position());
        const int behind = std::min(from + added - first.position(), first.length() - 1);
        FreshLineOf(first, isWhole ? -1 : column, std::max(0, behind - column));
        HideFromToolkit(first);
        MeasureLongest();
        if (documentSize() != before) Q_EMIT documentSizeChanged(documentSize());
        Q_EMIT updateBlock(first);
        return;
    }
    for (QTextBlock block = first; block.isValid(); block = block.next()) {
        concernsLong = concernsLong || block.userData() || IsLongLine(block);
        block.setUserData(nullptr);
        if (block == last) break;
    }
    blockCount_ = document()->blockCount();
    QPlainTextDocumentLayout::documentChanged(from, removed, added);
    if (!concernsLong) return;
    MeasureLongest();
    if (documentSize() != before) Q_EMIT documentSizeChanged(documentSize());
}

}  // namespace pixelgrove
