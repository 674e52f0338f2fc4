#include "ui/FpsField.h"

#include <QLineEdit>
#include <QWheelEvent>

#include "commands/Commands.h"
#include "core/RunControls.h"

namespace pixelgrove {

FpsField::FpsField(QWidget* parent) : QSpinBox(parent) {
    setProperty("controlId", int(kCtlFpsTarget));
    setRange(int(kMinFps), int(kMaxFps));
    setKeyboardTracking(false);
    setAlignment(Qt::AlignRight);
    lineEdit()->setMaxLength(6);
    connect(this, &FpsField::editingFinished, this, [this] { lineEdit()->setModified(false); });
}

int FpsField::Number(bool* ok) const {
    return lineEdit()->text().trimmed().toInt(ok);
}

bool FpsField::IsBeingChanged() const {
    return hasFocus() && lineEdit()->isModified();
}

void FpsField::stepBy(int steps) {
    QSpinBox::stepBy(steps);
    lineEdit()->setModified(true);
}

QValidator::State FpsField::validate(QString& text, int&) const {
    bool isNumber = false;
    text.trimmed().toInt(&isNumber);
    return isNumber ? QValidator::Acceptable : QValidator::Intermediate;
}

int FpsField::valueFromText(const QString& text) const {
    return text.trimmed().toInt();
}

// A turn over the form is no wish for another rate.
void FpsField::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace pixelgrove
