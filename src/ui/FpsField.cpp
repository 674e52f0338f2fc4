#include "ui/FpsField.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/AppState.h"
#include "core/Commands.h"

namespace pixelgrove {

FpsField::FpsField(QWidget* parent) : QWidget(parent), edit_(new QLineEdit(this)) {
    edit_->setObjectName(QStringLiteral("fpsTargetEdit"));
    edit_->setProperty("controlId", int(kCtlFpsTarget));
    edit_->setAlignment(Qt::AlignRight);
    edit_->setMaxLength(6);
    edit_->installEventFilter(this);
    edit_->setMinimumWidth(fontMetrics().horizontalAdvance(u'0') * 5 + 14);

    auto* arrows = new QWidget(this);
    arrows->setObjectName(QStringLiteral("fpsUpDown"));
    arrows->setProperty("controlId", int(kCtlFpsUpDown));
    auto* column = new QVBoxLayout(arrows);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(1);
    for (int by : {1, -1}) {
        auto* arrow = new QToolButton(arrows);
        arrow->setObjectName(by > 0 ? QStringLiteral("fpsUpButton") : QStringLiteral("fpsDownButton"));
        arrow->setArrowType(by > 0 ? Qt::UpArrow : Qt::DownArrow);
        arrow->setAutoRepeat(true);
        arrow->setFocusPolicy(Qt::NoFocus);
        arrow->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
        arrow->setFixedWidth(18);
        arrow->setMinimumHeight(10);
        column->addWidget(arrow);
        connect(arrow, &QToolButton::clicked, this, [this, by] { Step(by); });
    }

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    row->addWidget(edit_, 1);
    row->addWidget(arrows);
    setFocusProxy(edit_);
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
}

void FpsField::Step(int by) {
    edit_->setFocus();  // so that leaving the edit commits the new text
    SetNumber(std::clamp(Number() + by, int(kMinFps), int(kMaxFps)));
    edit_->selectAll();
}

bool FpsField::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) Q_EMIT Committed();
    if (event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
            case Qt::Key_Return:
            case Qt::Key_Enter:
                Q_EMIT Committed();
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
