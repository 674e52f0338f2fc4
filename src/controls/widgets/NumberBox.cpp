#include "controls/widgets/NumberBox.h"

#include <QKeyEvent>
#include <QPainter>
#include <cmath>
#include <cstdlib>

#include "platform/TextScan.h"

namespace pixelgrove {

namespace {

constexpr int kStripeWidth = 3;

bool IsEnter(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

NumberBox::NumberBox(QWidget* parent) : QLineEdit(parent) {
    setAlignment(Qt::AlignHCenter);
}

void NumberBox::Show(const QString& text) {
    shown_ = text;
    setText(text);
    // Where the text is too long, its first digits count most.
    setCursorPosition(0);
}

void NumberBox::SetStripe(const QColor& colour) {
    stripe_ = colour;
    setTextMargins(kStripeWidth - 1, 0, 0, 0);
}

void NumberBox::Commit() {
    if (text() == shown_) return;
    const QByteArray typed = text().trimmed().toUtf8();
    char* end = nullptr;
    const float value = strtof_l(typed.constData(), &end, PlainLocale());
    if (end == typed.constData() || std::isnan(value)) return Show(shown_);
    shown_ = text();
    Q_EMIT Committed(value, *end == 0);
}

bool NumberBox::event(QEvent* event) {
    // These keys are the box's own, whatever the window has them for.
    if (event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape || IsEnter(key)) {
            event->accept();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void NumberBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        Show(shown_);
    else if (IsEnter(event->key()))
        Commit();
    else
        return QLineEdit::keyPressEvent(event);
    selectAll();
}

void NumberBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) Commit();
}

void NumberBox::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (stripe_.isValid()) QPainter(this).fillRect(2, 2, kStripeWidth, height() - 4, stripe_);
}

}  // namespace pixelgrove
