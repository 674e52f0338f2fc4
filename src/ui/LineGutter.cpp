#include "ui/LineGutter.h"

#include <QCoreApplication>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>

#include "ui/CodeView.h"
#include "windows/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr int kMinDigits = 3;
constexpr int kLeftPadding = 8;
constexpr int kRightPadding = 8;

const QColor kErrorGround(255, 128, 128);
const QColor kErrorText(0x40, 0x40, 0x40);

}  // namespace

LineGutter::LineGutter(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

void LineGutter::Attach(CodeView& editor) {
    editor_ = &editor;
    connect(&editor, &CodeView::ViewChanged, this, [this] {
        setFont(editor_->font());
        const int digits = std::max(kMinDigits, int(QString::number(editor_->blockCount()).size()));
        if (digits != digits_) {
            digits_ = digits;
            updateGeometry();
        }
        update();
    });
}

QSize LineGutter::sizeHint() const {
    const int digitWidth = fontMetrics().horizontalAdvance(u'0');
    return {kLeftPadding + std::max(kMinDigits, digits_) * digitWidth + kRightPadding, 0};
}

void LineGutter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Theme().panel);
    if (!editor_) return;
    // The strip and the editor stand side by side, but the editor's text begins below its frame.
    const int offset =
        editor_->viewport()->mapTo(editor_->window(), QPoint()).y() - mapTo(window(), QPoint()).y();
    const int caretLine = editor_->CaretLine();
    for (const CodeView::VisibleLine& line : editor_->VisibleLines()) {
        const QRect row(0, line.top + offset, width(), line.height);
        QColor text = Theme().faintText;
        if (editor_->IsErrorLine(line.line)) {
            painter.fillRect(row.adjusted(0, 0, -2, 0), kErrorGround);
            text = kErrorText;
        } else if (line.line == caretLine) {
            painter.fillRect(row.adjusted(0, 0, -2, 0), Theme().buttonHover);
            text = Theme().text;
        }
        painter.setPen(text);
        painter.drawText(row.adjusted(0, 0, -kRightPadding, 0), Qt::AlignRight | Qt::AlignTop,
                         QString::number(line.line));
    }
}

void LineGutter::wheelEvent(QWheelEvent* event) {
    if (editor_) QCoreApplication::sendEvent(editor_->viewport(), event);
}

}  // namespace pixelgrove
