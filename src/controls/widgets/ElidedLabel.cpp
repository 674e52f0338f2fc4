#include "controls/widgets/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "look/widgets/Theme.h"

namespace pixelgrove {

ElidedLabel::ElidedLabel(Qt::Alignment alignment, QWidget* parent)
    : QWidget(parent), alignment_(alignment | Qt::AlignVCenter) {}

void ElidedLabel::SetText(const QString& text) {
    text_ = text;
    setAccessibleName(text);
    update();
}

QString ElidedLabel::Shown() const {
    return fontMetrics().elidedText(text_, Qt::ElideRight, width());
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(Theme().text);
    painter.drawText(rect(), int(alignment_) | Qt::TextSingleLine, Shown());
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const QPoint place = static_cast<QHelpEvent*>(event)->globalPos();
    QToolTip::showText(place, Shown() == text_ ? QString() : PlainToolTip(text_), this);
    return true;
}

QString PlainToolTip(const QString& text) {
    // As rich text, for only that is broken into lines; escaped, so that it is none.
    return QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped());
}

}  // namespace pixelgrove
