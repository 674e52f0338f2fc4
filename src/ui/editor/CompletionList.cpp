#include "ui/editor/CompletionList.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

namespace pixelgrove {

namespace {

constexpr int kMaxRows = 8;
constexpr int kSidePixels = 6;  // beside the longest word

}  // namespace

CompletionList::CompletionList(QWidget* editor) : QListView(editor) {
    hide();
    setObjectName(QStringLiteral("completions"));
    setAccessibleName(QStringLiteral("Completions"));
    setFocusPolicy(Qt::NoFocus);
    viewport()->setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    completer_.setModel(&words_);
    completer_.setCaseSensitivity(Qt::CaseInsensitive);
    completer_.setModelSorting(QCompleter::CaseInsensitivelySortedModel);
    setModel(completer_.completionModel());
    connect(this, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& row) { Q_EMIT Chosen(row.data().toString()); });
}

void CompletionList::SetWords(const QStringList& words) {
    words_.setStringList(words);
}

void CompletionList::ShowFor(const QString& beginning, const QRect& caret) {
    completer_.setCompletionPrefix(beginning);
    setCurrentIndex({});
    if (model()->rowCount() == 0 || words_.rowCount() == 0) {
        hide();
        return;
    }
    setFont(parentWidget()->font());  // with the zoom
    PlaceBeside(caret);
    scrollToTop();
    show();
    raise();
}

// Below the caret, or above it where there is more room.
void CompletionList::PlaceBeside(const QRect& caret) {
    const QRect area = parentWidget()->contentsRect();
    const int rows = std::min(model()->rowCount(), kMaxRows);
    int letters = 0;
    for (int row = 0; row < model()->rowCount(); ++row)
        letters = std::max(letters, int(model()->index(row, 0).data().toString().size()));
    const int border = 2 * frameWidth();
    const bool scrolls = model()->rowCount() > rows;
    const int width = letters * fontMetrics().horizontalAdvance(u'm') + 2 * kSidePixels + border +
                      (scrolls ? verticalScrollBar()->sizeHint().width() : 0);
    const int wanted = rows * sizeHintForRow(0) + border;
    const int below = area.bottom() - caret.bottom();
    const int above = caret.top() - area.top();
    const bool isBelow = below >= wanted || below >= above;
    const int height = std::min(wanted, isBelow ? below : above);
    const int left = std::clamp(caret.left(), area.left(), std::max(area.left(), area.right() - width));
    setGeometry(left, isBelow ? caret.bottom() + 1 : caret.top() - height, std::min(width, area.width()),
                height);
}

void CompletionList::Step(int rows) {
    const int count = model()->rowCount();
    const int row = currentIndex().isValid() ? currentIndex().row() + rows : rows > 0 ? 0 : count - 1;
    setCurrentIndex(model()->index(std::clamp(row, 0, count - 1), 0));
    Q_EMIT Selected(currentIndex().data().toString(), visualRect(currentIndex()));
}

bool CompletionList::TakeKey(const QKeyEvent& key) {
    if (!isVisible() || (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
    switch (key.key()) {
        case Qt::Key_Down:
            Step(1);
            return true;
        case Qt::Key_Up:
            Step(-1);
            return true;
        case Qt::Key_PageDown:
            Step(kMaxRows);
            return true;
        case Qt::Key_PageUp:
            Step(-kMaxRows);
            return true;
        case Qt::Key_Escape:
            hide();
            Q_EMIT Dismissed();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Tab:
            if (!currentIndex().isValid()) return false;
            Q_EMIT Chosen(currentIndex().data().toString());
            return true;
        default:
            return false;
    }
}

}  // namespace pixelgrove
