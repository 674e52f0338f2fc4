#include "ui/FpsField.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>
#include <algorithm>

#include "commands/Commands.h"
#include "core/AppState.h"

namespace pixelgrove {

namespace {

constexpr int kGap = 2;
constexpr int kWidestArrow = 24;

}  // namespace

FpsField::FpsField(QWidget* parent) : QWidget(parent), edit_(new QLineEdit(this)) {
    edit_->setObjectName(QStringLiteral("fpsTargetEdit"));
    edit_->setProperty("controlId", int(kCtlFpsTarget));
    edit_->setAlignment(Qt::AlignRight);
    edit_->setMaxLength(6);
    edit_->installEventFilter(this);

    for (int by : {1, -1}) {
        auto* arrow = new QToolButton(this);
        arrow->setObjectName(by > 0 ? QStringLiteral("fpsUpButton") : QStringLiteral("fpsDownButton"));
        arrow->setProperty("controlId", int(kCtlFpsUpDown));
        arrow->setArrowType(by > 0 ? Qt::UpArrow : Qt::DownArrow);
        arrow->setAutoRepeat(true);
        arrow->setFocusPolicy(Qt::NoFocus);
        (by > 0 ? up_ : down_) = arrow;
        connect(arrow, &QToolButton::clicked, this, [this, by] { Step(by); });
    }
    setFocusProxy(edit_);
}

// By hand: the form gives any size, also one below what a layout would hold out for.
void FpsField::resizeEvent(QResizeEvent*) {
    const int arrowWidth = std::clamp(width() / 4, 8, kWidestArrow);
    const int half = height() / 2;
    edit_->setGeometry(0, 0, width() - arrowWidth - kGap, height());
    up_->setGeometry(width() - arrowWidth, 0, arrowWidth, half);
    down_->setGeometry(width() - arrowWidth, half, arrowWidth, height() - half);
}

int FpsField::Number(bool* ok) const {
    bool isNumber = false;
    const int number = edit_->text().trimmed().toInt(&isNumber);
    if (ok) *ok = isNumber;
    return isNumber ? number : 0;
}

void FpsField::SetNumber(int number) {
    const QString text = QString::number(number);
    if (edit_->text() != text) edit_->setText(text);
    edit_->setModified(false);
}

bool FpsField::IsBeingChanged() const {
    return edit_->hasFocus() && edit_->isModified();
}

void FpsField::Step(int by) {
    edit_->setFocus();  // so that leaving the edit commits the new text
    SetNumber(std::clamp(Number() + by, int(kMinFps), int(kMaxFps)));
    edit_->setModified(true);
    edit_->selectAll();
}

bool FpsField::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) Q_EMIT Committed();
    if (event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
            case Qt::Key_Return:
            case Qt::Key_Enter:
                Q_EMIT Committed();
                edit_->setModified(false);
                return true;
            case Qt::Key_Up:
                Step(1);
                return true;
            case Qt::Key_Down:
                Step(-1);
                return true;
            default:
                break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace pixelgrove
