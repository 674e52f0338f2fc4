// The editor's view: documents and their saved places, marks, zoom, what the gutter needs.
#include "ui/editor/CodeView.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <set>

#include "core/AppState.h"
#include "look/widgets/Theme.h"
#include "platform/TextScan.h"
#include "ui/editor/CompletionList.h"
#include "ui/text/Indentation.h"

namespace pixelgrove {

namespace {

constexpr int kCaretWidthPixels = 2;
constexpr int kErrorMarkAlpha = 70;  // the text above it stays readable
constexpr int kBracketMarkAlpha = 90;
constexpr int kMinZoom = 20;
constexpr int kMaxZoom = 500;

// Colouring all of a longer text at once would take longer than its loading; it gets its colours as it is
// seen.
constexpr qsizetype kMaxColouredAtOnce = 4 << 20;

// A page of its own, whatever the program's colours are: those of the words are made for white. The name is
// that of the class, so that menus and scroll bars inside keep the program's look.
const QString kStyle = QStringLiteral(
    "pixelgrove--CodeView { background: white; color: black;"
    " selection-background-color: #2f6fc4; selection-color: white; }");

QColor BracketGround() {
    QColor ground = Theme().accent;
    ground.setAlpha(kBracketMarkAlpha);
    return ground;
}

}  // namespace

CodeView::CodeView(QWidget* parent)
    : QPlainTextEdit(parent),
      layout_(new CodeLayout(new QTextDocument(this))),
      text_(*layout_->document()),
      completions_(new CompletionList(this)),
      normalFont_(CodeFont()) {
    layout_->document()->setDocumentLayout(layout_);
    layout_->caretPosition = [this] { return textCursor().position(); };
    setDocument(layout_->document());
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setStyleSheet(kStyle);
    setFont(normalFont_);
    setCursorWidth(kCaretWidthPixels);
    setUndoRedoEnabled(false);
    viewport()->setMouseTracking(true);
    UpdateTabStop();
    connect(&text_, &StageText::Edited, this, &CodeView::OnEdited);
    // Marks need the layout, which hears of an edit only after that.
    connect(document(), &QTextDocument::contentsChanged, this, [this] {
        MarkBrackets();
        if (marksAreStale_) RefreshErrorMarks();
    });
    connect(completions_, &CompletionList::Chosen, this, &CodeView::TakeCompletion);
    connect(completions_, &CompletionList::Selected, this, &CodeView::ShowHelpBeside);
    connect(completions_, &CompletionList::Dismissed, this, [this] {
        offer_.isDismissed = true;
        QToolTip::hideText();
    });
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& /*rect*/, int scrolled) {
        if (scrolled != 0 && !isInKey_) HideCompletions();
    });
    connect(this, &QPlainTextEdit::selectionChanged, this, &CodeView::MarkBrackets);
    connect(this, &QPlainTextEdit::updateRequest, this, &CodeView::ViewChanged);
    // In a long line the toolkit knows too little to name what changed.
    connect(this, &QPlainTextEdit::updateRequest, this, [this] {
        if (IsLongLine(textCursor().block())) viewport()->update(cursorRect());
    });
    connect(this, &QPlainTextEdit::selectionChanged, this, [this] {
        if (layout_->HasLongLines()) viewport()->update();
    });
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &CodeView::OnCaretMoved);
    for (QScrollBar* bar : {verticalScrollBar(), horizontalScrollBar()}) {
        const auto endScroll = [this] {
            FlagRecolour();
            viewport()->update();
        };
        connect(bar, &QScrollBar::sliderReleased, this, endScroll);
        // The wheel moves the slider, which is not among these.
        connect(bar, &QScrollBar::actionTriggered, this, [endScroll](int action) {
            if (action != QAbstractSlider::SliderMove && action != QAbstractSlider::SliderNoAction)
                endScroll();
        });
    }
}

void CodeView::SaveView(StageDocument& document) const {
    document.caretPosition = textCursor().position();
    document.anchorPosition = textCursor().anchor();
    document.firstVisibleLine = firstVisibleBlock().blockNumber();
    document.horizontalScroll = horizontalScrollBar()->value();
    document.zoomPercent = zoomPercent_;
    document.viewSaved = true;
}

void CodeView::LoadDocument(StageDocument& incoming, StageSwitch how) {
    if (how == StageSwitch::KeepsView && Shown() && Shown()->hasText) SaveView(*Shown());
    const bool isFirst = how == StageSwitch::Anew;
    if (isFirst) incoming.viewSaved = false;
    isLoading_ = true;
    text_.Forget();
    hoveredLink_ = QTextCursor();
    HideCompletions();
    offer_ = {};
    brackets_.reset();
    setPlainText(WithLineFeeds(incoming.text));
    setUndoRedoEnabled(false);  // a new text turns it on
    text_.Follow(incoming);
    const bool colourAll = incoming.text.size() <= kMaxColouredAtOnce;
    coloured_ = {};
    if (colourAll) Recolour({0, incoming.text.size()});
    // The first text of a project is no change of it.
    needsRecolour_ = !isFirst || !colourAll;
    report_.reset();
    reportsPaint_ = !isFirst || colourAll;
    if (incoming.viewSaved) SetZoom(incoming.zoomPercent);
    const int end = document()->characterCount() - 1;
    Select(incoming.viewSaved ? std::clamp(incoming.anchorPosition, 0, end) : 0,
           incoming.viewSaved ? std::clamp(incoming.caretPosition, 0, end) : 0);
    verticalScrollBar()->setValue(incoming.viewSaved ? std::max(0, incoming.firstVisibleLine) : 0);
    sideWish_ = incoming.viewSaved ? std::max(0, incoming.horizontalScroll) : 0;
    horizontalScrollBar()->setValue(*sideWish_);
    isLoading_ = false;
    RefreshErrorMarks();
    MarkBrackets();
    viewport()->update();
}

void CodeView::Forget() {
    text_.Forget();
}

void CodeView::OnCaretMoved() {
    if (!isLoading_) BringLongLineIntoView();
    if (!isInKey_) HideCompletions();
    MarkBrackets();
    Q_EMIT ViewChanged();
}

void CodeView::Select(int anchor, int position) {
    QTextCursor cursor(document());
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

bool CodeView::IsErrorLine(int line) const {
    return Shown() && std::ranges::find(Shown()->errorLines.lines, line) != Shown()->errorLines.lines.end();
}

QColor CodeView::ErrorColour() const {
    return FromBgr(Shown() ? Shown()->errorLines.markerColour : ErrorLineList().markerColour);
}

QColor CodeView::ErrorGround() const {
    QColor ground = ErrorColour();
    ground.setAlpha(kErrorMarkAlpha);
    return ground;
}

void CodeView::RefreshErrorMarks() {
    marksAreStale_ = false;
    ShowMarks();
    Q_EMIT ViewChanged();
}

// Without a selection: its ground would hide them.
void CodeView::MarkBrackets() {
    if (isLoading_) return;
    std::optional<BracketPair> pair;
    const int caret = textCursor().position();
    if (Shown() && !textCursor().hasSelection() && text_.Length() == Shown()->text.size() &&
        IsBracketBeside(Shown()->text, caret) && RefreshStageText())
        pair = BracketsAt(Shown()->text, Shown()->commentMap, caret);
    // An edit may have taken the marks with the brackets that it replaced.
    if (pair == brackets_ && (!pair || !bracketsMayBeNew_)) return;
    bracketsMayBeNew_ = false;
    brackets_ = pair;
    ShowMarks();
    if (layout_->HasLongLines()) viewport()->update();
}

void CodeView::ShowMarks() {
    QList<QTextEdit::ExtraSelection> marks;
    if (Shown()) {
        // A line with several errors is named several times, and translucent grounds would add up.
        for (int line : std::set<int>(Shown()->errorLines.lines.begin(), Shown()->errorLines.lines.end())) {
            const QTextBlock block = document()->findBlockByNumber(line - 1);
            if (!block.isValid() || IsLongLine(block)) continue;
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(block);
            mark.format.setBackground(ErrorGround());
            mark.format.setProperty(QTextFormat::FullWidthSelection, true);
            marks.append(mark);
        }
    }
    if (brackets_) {
        for (const qsizetype at : {brackets_->opening, brackets_->closing}) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(document());
            mark.cursor.setPosition(int(at));
            mark.cursor.setPosition(int(at) + 1, QTextCursor::KeepAnchor);
            mark.format.setBackground(BracketGround());
            marks.append(mark);
        }
    }
    if (hoveredLink_.hasSelection()) {
        QTextEdit::ExtraSelection mark;
        mark.cursor = hoveredLink_;
        mark.format.setFontUnderline(true);
        marks.append(mark);
    }
    if (!marks.isEmpty() || !extraSelections().isEmpty()) setExtraSelections(marks);
}

int CodeView::FullyVisibleLineCount() const {
    return std::max(1, viewport()->height() / LineHeight());
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
        // The last line's area also has the margin below the text.
        lines.push_back(
            {block.blockNumber() + 1, int(area.top()), std::min(int(area.height()), LineHeight())});
    }
    return lines;
}

void CodeView::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QPlainTextEdit::wheelEvent(event);
        return;
    }
    // One step a turn, whatever the size of the delta.
    if (const int delta = event->angleDelta().y(); delta != 0)
        SetZoom(zoomPercent_ + (delta > 0 ? kZoomStep : -kZoomStep));
    event->accept();
}

void CodeView::SetZoom(int percent) {
    percent = std::clamp(percent, kMinZoom, kMaxZoom);
    if (percent == zoomPercent_) return;
    HideCompletions();
    zoomPercent_ = percent;
    QFont font = normalFont_;
    // Fonts have either size; the other one is negative.
    if (font.pixelSize() > 0) {
        font.setPixelSize(std::max(1, (font.pixelSize() * percent + 50) / 100));
    } else {
        font.setPointSizeF(font.pointSizeF() * percent / 100);
    }
    setFont(font);
}

void CodeView::resizeEvent(QResizeEvent* event) {
    const int left = sideWish_.value_or(horizontalScrollBar()->value());
    QPlainTextEdit::resizeEvent(event);
    // The bar ends with the longest of the lines that are laid out, and a new width leaves none of them.
    if (left > 0) {
        VisibleLines();
        blockBoundingRect(textCursor().block());
        horizontalScrollBar()->setValue(left);
    }
    Q_EMIT ViewChanged();
}

void CodeView::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        // Somebody else's font is the new normal one.
        if (zoomPercent_ == kNormalZoom) normalFont_ = font();
        UpdateTabStop();
        Q_EMIT ViewChanged();
    }
}

void CodeView::UpdateTabStop() {
    setTabStopDistance(QFontMetricsF(font()).horizontalAdvance(u' ') * kTabColumns);
}

}  // namespace pixelgrove
