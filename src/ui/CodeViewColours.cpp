// The editor's colouring passes: over a text that is loaded, and over what is on screen when it is painted.
#include <QPaintEvent>
#include <algorithm>

#include "core/ProjectModel.h"
#include "ui/CodeHighlight.h"
#include "ui/CodeView.h"
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

bool CodeView::RefreshStageText() {
    if (!shown_ || shown_->text.isEmpty()) return false;
    if (!mapIsCurrent_) shown_->commentMap = BuildCommentMap(shown_->text);
    mapIsCurrent_ = true;
    return true;
}

void CodeView::Recolour(qsizetype start, qsizetype end) {
    // An empty text has no colours, and what the last pass saw stands.
    if (!RefreshStageText()) return;
    if (end < 0) end = shown_->text.size();
    const Colouring colouring = ColourText(shown_->text, shown_->commentMap, start, end);
    controlWordsSeen_ = colouring.HasControlWords();
    ApplyColours(*document(), start, end, colouring.spans);
}

void CodeView::RecolourVisible() {
    if (!shown_) return;
    colouringInProgress_ = true;
    qsizetype start = cursorForPosition(QPoint(0, 0)).position();
    const qsizetype end =
        cursorForPosition(QPoint(viewport()->width() - 1, viewport()->height() - 1)).position();
    // A word that the left edge cuts is looked at whole.
    const QStringView text = shown_->text;
    for (int i = 0; i < kMaxWordLength && start > 0 && start <= text.size(); ++i, --start)
        if (!IsWordCharacter(text[start - 1])) break;
    Recolour(start, end);
    needsRecolour_ = false;
    colouringInProgress_ = false;
    if (reportsPaint_) ReportPaintedChange();
    reportsPaint_ = true;
    Q_EMIT ViewChanged();
}

// Behind the paint: what hears of it may change widgets, which must not happen inside one.
void CodeView::ReportPaintedChange() {
    if (reportPending_) return;
    reportPending_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!reportPending_) return;
            reportPending_ = false;
            if (shown_ && shown_->onChange) shown_->onChange(true, controlWordsSeen_);
        },
        Qt::QueuedConnection);
}

void CodeView::paintEvent(QPaintEvent* event) {
    if (needsRecolour_ && !colouringInProgress_ && !IsCaretOnly(event->region())) RecolourVisible();
    QPlainTextEdit::paintEvent(event);
}

}  // namespace pixelgrove
