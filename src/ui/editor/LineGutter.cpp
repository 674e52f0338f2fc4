#include "ui/editor/LineGutter.h"

#include <QCoreApplication>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>

#include "ui/editor/CodeView.h"

namespace pixelgrove {

namespace {

constexpr int kMinDigits = 3;
constexpr int kLeftPadding = 6;
constexpr int kNumberRight = 8;  // the numbers end here, all from the right edge
constexpr int kRuleRight = 6;    // the vertical rule
constexpr int kGroundRight = 2;  // a row's ground ends here

const QColor kText(0x40, 0x40, 0x40);
const QColor kGround(0xff, 0xff, 0xff);

}  // namespace

LineGutter::LineGutter(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void LineGutter::Attach(CodeView& editor) {
    editor_ = &editor;
    connect(&editor, &CodeView::ViewChanged, this, [this] {
        font_ = editor_->font();
        font_.setPixelSize(std::max(1, editor_->LineHeight() - 2));
        const int digits = std::max(kMinDigits, int(QString::number(editor_->blockCount()).size()));
        const int wide = kLeftPadding + digits * QFontMetrics(font_).horizontalAdvance(u'0') + kNumberRight;
        if (wide != width_) {
            width_ = wide;
            updateGeometry();
        }
        update();
    });
}

QSize LineGutter::sizeHint() const {
    return {width_, 0};
}

void LineGutter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(font_);
    painter.fillRect(rect(), kGround);
    if (editor_) {
        // The strip and the editor stand side by side, but the editor's text begins below its frame.
        const int offset =
            editor_->viewport()->mapTo(editor_->window(), QPoint()).y() - mapTo(window(), QPoint()).y();
        const int caretLine = editor_->CaretLine();
        for (const CodeView::VisibleLine& line : editor_->VisibleLines()) {
            const QRect row(0, line.top + offset, width(), line.height);
            const bool isCaretLine = line.line == caretLine;
            QColor ground = isCaretLine ? kText : kGround;
            if (editor_->IsErrorLine(line.line)) ground = editor_->ErrorColour();
            painter.fillRect(row.adjusted(0, 0, -kGroundRight, 0), ground);
            painter.setPen(isCaretLine ? kGround : kText);
            painter.drawText(row.adjusted(0, 0, -kNumberRight, 0), Qt::AlignRight | Qt::AlignVCenter,
                             QString::number(line.line));
        }
    }
    painter.fillRect(QRect(width() - kRuleRight, 0, 1, height()), Qt::black);
}

void LineGutter::wheelEvent(QWheelEvent* event) {
    if (editor_) QCoreApplication::sendEvent(editor_->viewport(), event);
}

}  // namespace pixelgrove
