#include "library/widgets/PageField.h"

#include <QLineEdit>
#include <algorithm>

namespace pixelgrove {

PageField::PageField(QWidget* parent) : QAbstractSpinBox(parent) {
    connect(this, &QAbstractSpinBox::editingFinished, this, &PageField::Committed);
}

void PageField::Show(quint32 page) {
    lineEdit()->setText(QString::number(page));
}

QString PageField::Text() const {
    return lineEdit()->text();
}

void PageField::stepBy(int steps) {
    Q_EMIT Stepped(steps);
}

QAbstractSpinBox::StepEnabled PageField::stepEnabled() const {
    return StepUpEnabled | StepDownEnabled;
}

// Digits of ASCII, or nothing while the user types.
QValidator::State PageField::validate(QString& input, int&) const {
    const bool isNumber = std::ranges::all_of(input, [](QChar unit) { return unit >= u'0' && unit <= u'9'; });
    if (!isNumber) return QValidator::Invalid;
    return input.isEmpty() ? QValidator::Intermediate : QValidator::Acceptable;
}

}  // namespace pixelgrove
