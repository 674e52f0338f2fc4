#include "controls/widgets/ControlWidget.h"

#include "controls/widgets/ComboControl.h"
#include "controls/widgets/RangeControl.h"
#include "windows/widgets/DialogScaler.h"

namespace pixelgrove {

ControlWidget::ControlWidget(QWidget* parent) : QWidget(parent) {
    // Its fonts follow its own size.
    setProperty(kKeepFont, true);
}

ControlWidget* ControlWidget::Make(const UniformControl& record, QWidget* parent) {
    if (record.kind == 1) return new ComboControl(record, parent);
    return new RangeControl(record, parent);
}

}  // namespace pixelgrove
