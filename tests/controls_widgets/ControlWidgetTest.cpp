#include "controls/widgets/ControlWidget.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>
#include <memory>

#include "controls/ControlTemplates.h"
#include "controls/RangeState.h"
#include "controls/widgets/NumberBox.h"
#include "controls/widgets/SliderWidget.h"
#include "controls/widgets/WavePreview.h"
#include "look/widgets/Theme.h"
#include "support/DisplayTest.h"
#include "windows/widgets/DialogScaler.h"

namespace pixelgrove {
namespace {

constexpr QSize kArea(380, 100);

UniformControl Numeric(float minimum, float maximum, float value, bool isFloat = true,
                       bool hasModulation = true) {
    UniformControl record;
    record.type = isFloat ? kControlFloat : kControlInt;
    record.displayName = QStringLiteral("Light");
    InitialiseRange(record.range, hasModulation, isFloat, record.displayName, minimum, maximum, value);
    return record;
}

class ControlWidgetTest : public DisplayTest {
  protected:
    void TearDown() override {
        form.reset();
        DisplayTest::TearDown();
    }

    void Show(const UniformControl& record) {
        form = std::make_unique<QWidget>();
        form->setFont(FormFont());
        form->resize(395, 195);
        control = ControlWidget::Make(record, form.get());
        control->setGeometry(QRect(QPoint(5, 5), kArea));
        changes = std::make_unique<QSignalSpy>(control, &ControlWidget::Changed);
        form->show();
        form->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        if (control->Range()) slider = PartAt<SliderWidget>(ControlPart::Slider);
    }

    // The visible part that stands where the template has it.
    template <typename T>
    T* PartAt(ControlPart part) {
        const bool list = !control->Range();
        const ControlTemplate& rows =
            list ? ComboTemplate(4) : RangeTemplate(control->Range()->hasModulation != 0, 4);
        const QRect place = TemplatePlaces(rows, control->size()).Place(part);
        for (T* widget : control->findChildren<T*>())
            if (widget->geometry() == place && widget->isVisible()) return widget;
        return nullptr;
    }

    void Drag(const QPoint& from, const QPoint& to) {
        QTest::mousePress(slider, Qt::LeftButton, {}, from);
        QTest::mouseMove(slider, to);
        QTest::mouseRelease(slider, Qt::LeftButton, {}, to);
    }

    // From where it stands to that part of the track, at that part of its height.
    void DragHandle(SliderHandle handle, double to, double y) {
        const int centre = HandleRect(slider->State(), handle, slider->size()).left() + kHandleWidth / 2;
        const int row = int(slider->height() * y);
        Drag({std::clamp(centre, 0, slider->width() - 1), row}, {int(slider->width() * to), row});
    }

    void Wheel(QWidget* widget, const QPointF& at, int delta) {
        QWheelEvent event(at, widget->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(widget, &event);
    }

    std::unique_ptr<QWidget> form;
    ControlWidget* control = nullptr;
    SliderWidget* slider = nullptr;
    std::unique_ptr<QSignalSpy> changes;
};

TEST_F(ControlWidgetTest, ADragMovesTheValueAndTellsOfEachChange) {
    Show(Numeric(0, 10, 5));
    DragHandle(SliderHandle::Value, 0.25, 0.5);
    EXPECT_NEAR(control->Range()->value, 2.5f, 0.03f);
    EXPECT_EQ(changes->size(), 1);
    EXPECT_EQ(PartAt<NumberBox>(ControlPart::Value)->text(),
              RangeText(*control->Range(), control->Range()->value));
    Drag({slider->width() - 5, 5}, {10, 5});  // not on the handle
    Drag({slider->width() / 4, 5}, {slider->width() + 500, 5});
    EXPECT_EQ(control->Range()->value, 10.0f);
    UniformControl record;
    control->Save(record);
    EXPECT_EQ(record.range.value, 10.0f);
    EXPECT_EQ(record.range.name, QStringLiteral("Light"));
}

}  // namespace
}  // namespace pixelgrove
