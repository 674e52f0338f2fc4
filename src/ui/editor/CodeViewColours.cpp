// The editor's colouring passes: over a text that is loaded, and over what is on screen when it is painted.
#include <QPaintEvent>
#include <QTextBlock>
#include <algorithm>
#include <utility>

#include "ui/editor/CodeHighlight.h"
#include "ui/editor/CodeView.h"
#include "ui/text/GlslWords.h"

namespace pixelgrove {

namespace {

// The caret's blinking and moving repaints strips of its own width and a few pixels beside it, two of which
// may touch. Nothing else is as narrow, and on it no colours are renewed.
constexpr int kMaxCaretStripPixels = 24;

bool IsCaretOnly(const QRegion& region) {
    return std::all_of(region.begin(), region.end(),
                       [](const QRect& strip) { return strip.width() <= kMaxCaretStripPixels; });
}

}  // namespace

// What is on screen, from the top left to the bottom right. A word that the left edge cuts is looked at
// whole.
CodeView::Stretch CodeView::VisibleText() const {
    qsizetype start = PositionAt(QPoint(0, 0));
    const qsizetype end = PositionAt(QPoint(viewport()->width() - 1, viewport()->height() - 1));
    const QStringView text = Shown()->text;
    for (int i = 0; i < kMaxWordLength && start > 0 && start <= text.size(); ++i, --start)
        if (!IsWordCharacter(text[start - 1])) break;
    return {start, end};
}

// Long lines get their colours as they are painted, and only there: from them it takes whether what is on
// screen of them has a word that could be a control.
void CodeView::Recolour(Stretch stretch) {
    // An empty text has no colours, and what the last pass saw stands.
    if (!RefreshStageText()) return;
    controlWordsSeen_ = false;
    for (QTextBlock block = document()->findBlock(int(stretch.start));
         block.isValid() && block.position() <= stretch.end;) {
        Stretch part{std::max(stretch.start, qsizetype(block.position())), stretch.end};
        const bool isLong = IsLongLine(block);
        if (isLong) {
            part = VisiblePart(block);
            block = block.next();
        } else {
            while (block.isValid() && block.position() <= stretch.end && !IsLongLine(block))
                block = block.next();
            if (block.isValid()) part.end = std::min(part.end, qsizetype(block.position()) - 1);
        }
        const Colouring colouring = ColourText(Shown()->text, Shown()->commentMap, part.start, part.end);
        controlWordsSeen_ = controlWordsSeen_ || colouring.HasControlWords();
        if (!isLong) ApplyColours(*document(), part.start, part.end, colouring.spans);
    }
    const bool meets = stretch.start <= coloured_.end && stretch.end >= coloured_.start;
    coloured_ = meets
                    ? Stretch{std::min(stretch.start, coloured_.start), std::max(stretch.end, coloured_.end)}
                    : stretch;
}

void CodeView::RecolourVisible() {
    if (!Shown()) return;
    colouringInProgress_ = true;
    Recolour(VisibleText());
    needsRecolour_ = false;
    colouringInProgress_ = false;
    if (reportsPaint_) ReportPaintedChange();
    reportsPaint_ = true;
    Q_EMIT ViewChanged();
}

// Behind the paint: what hears of it may change widgets, which must not happen inside one.
void CodeView::ReportPaintedChange() {
    const bool isQueued = report_.has_value();
    report_ = controlWordsSeen_ || report_.value_or(false);
    if (isQueued) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            const std::optional<bool> hasControlWords = std::exchange(report_, std::nullopt);
            if (hasControlWords && Shown()) Q_EMIT PaintedAnew(*hasControlWords);
        },
        Qt::QueuedConnection);
}

void CodeView::paintEvent(QPaintEvent* event) {
    sideWish_.reset();
    if (Shown() && !colouringInProgress_ && !IsCaretOnly(event->region())) {
        if (needsRecolour_) {
            RecolourVisible();
        } else if (const Stretch visible = VisibleText();
                   visible.start < coloured_.start || visible.end > coloured_.end) {
            // It came on screen without an event that may have changed its colours: no change to report.
            colouringInProgress_ = true;
            Recolour(visible);
            colouringInProgress_ = false;
        }
    }
    QPlainTextEdit::paintEvent(event);
    if (layout_->HasLongLines()) PaintLongLines(event->region());
}

}  // namespace pixelgrove
