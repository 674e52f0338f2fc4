#include "controls/widgets/ControlWidget.h"

#include <QApplication>
#include <QComboBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolTip>
#include <QWheelEvent>
#include <QtTest>
#include <cmath>
#include <limits>
#include <memory>

#include "controls/ControlTemplates.h"
#include "controls/LiveValues.h"
#include "controls/RangeState.h"
#include "controls/widgets/ElidedLabel.h"
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
    EXPECT_EQ(changes->size(), 1);
    Drag({slider->width() / 4, 5}, {slider->width() + 500, 5});
    EXPECT_EQ(control->Range()->value, 10.0f);
    UniformControl record;
    control->Save(record);
    EXPECT_EQ(record.range.value, 10.0f);
    EXPECT_EQ(record.range.name, QStringLiteral("Light"));

    Show(Numeric(0, 10, 5, false));
    const int y = slider->height() / 2;
    const auto x = [&](double value) { return int(value / 10 * slider->width()) + 1; };
    QTest::mousePress(slider, Qt::LeftButton, {}, {x(5), y});
    for (double value : {5.2, 5.5, 5.8, 6.2, 6.6})
        QTest::mouseMove(slider, {x(value), y});
    EXPECT_EQ(changes->size(), 1) << "a move within a whole number is none";
    EXPECT_EQ(PartAt<NumberBox>(ControlPart::Value)->text(), QStringLiteral("6"));
}

TEST_F(ControlWidgetTest, TwoHandlesAnswerMouseWheelAndKeys) {
    UniformControl record = Numeric(0, 1, 0.5f);
    record.range.modulationKind = kModulationSine;
    Show(record);
    const RangeControlState& range = *control->Range();
    DragHandle(SliderHandle::Low, 0.5, 0.1);
    DragHandle(SliderHandle::High, 0.5, 0.9);
    EXPECT_NEAR(range.low, 0.5f, 0.01f);
    EXPECT_NEAR(range.high, 0.5f, 0.01f);
    DragHandle(SliderHandle::High, 0.25, 0.5);  // where both are
    EXPECT_NEAR(range.high, 0.25f, 0.01f);
    EXPECT_NEAR(range.low, 0.5f, 0.01f);
    EXPECT_EQ(PartAt<NumberBox>(ControlPart::High)->text(), RangeText(range, range.high));

    const float low = range.low;
    const float high = range.high;
    const double middle = slider->height() / 2.0;
    Wheel(slider, {3, middle}, 120);
    EXPECT_FLOAT_EQ(range.high, high + 0.001f);
    Wheel(slider, {3, middle - 1}, -240);
    EXPECT_FLOAT_EQ(range.low, low - 0.001f);

    slider->setFocus();
    const struct {
        Qt::Key key;
        float low, high;
    } keys[] = {{Qt::Key_Up, low - 0.001f, high + 0.001f},  // keys go to the low one
                {Qt::Key_Right, low, high + 0.001f},
                {Qt::Key_PageUp, low + 0.01f, high + 0.001f},
                {Qt::Key_Left, low + 0.009f, high + 0.001f},
                {Qt::Key_Home, 0, high + 0.001f},
                {Qt::Key_Down, 0, high + 0.001f},
                {Qt::Key_PageDown, 0, high - 0.009f},
                {Qt::Key_End, 0, 1},
                {Qt::Key_Right, 0, 1}};
    for (const auto& row : keys) {
        QTest::keyClick(slider, row.key);
        EXPECT_NEAR(range.low, row.low, 1e-6) << row.key;
        EXPECT_NEAR(range.high, row.high, 1e-6) << row.key;
    }
}

TEST_F(ControlWidgetTest, BoxesCountWhenTheyAreLeftOrEntered) {
    const struct {
        const char* typed;
        Qt::Key key;
        float value;
        const char* shown;
        int changes;
    } rows[] = {{"7.25", Qt::Key_Return, 7.25f, "7.25", 1}, {"7.25", Qt::Key_Tab, 7.25f, "7.25", 1},
                {"99", Qt::Key_Tab, 10, "10.000", 1},       {"-inf", Qt::Key_Enter, 0, "0.000", 1},
                {"2 or so", Qt::Key_Enter, 2, "2.000", 1},  {"7", Qt::Key_Escape, 5, "5.000", 0},
                {"", Qt::Key_Tab, 5, "5.000", 0},           {"word", Qt::Key_Return, 5, "5.000", 0},
                {"nan", Qt::Key_Return, 5, "5.000", 0},     {"5.000", Qt::Key_Tab, 5, "5.000", 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.typed);
        Show(Numeric(0, 10, 5));
        auto* box = PartAt<NumberBox>(ControlPart::Value);
        box->setFocus();
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Delete);
        QTest::keyClicks(box, QLatin1String(row.typed));
        EXPECT_EQ(control->Range()->value, 5.0f) << "typing alone changes nothing";
        QTest::keyClick(box, row.key);
        EXPECT_EQ(control->Range()->value, row.value);
        EXPECT_EQ(slider->State().value, row.value);
        EXPECT_EQ(box->text(), QLatin1String(row.shown));
        EXPECT_EQ(changes->size(), row.changes);
    }
}

TEST_F(ControlWidgetTest, TheKindDecidesWhatIsShown) {
    const std::pair<int, int> shownRows[] = {
        {kModulationFixed, 0}, {kModulationRandom, 6}, {kModulationNoise, -1}, {kModulationTriangle, -1}};
    for (const auto& [kind, row] : shownRows) {
        UniformControl record = Numeric(0, 10, 5);
        record.range.modulationKind = kind;
        Show(record);
        const bool moving = kind != kModulationFixed;
        EXPECT_EQ(PartAt<QComboBox>(ControlPart::Combo)->currentIndex(), row);
        EXPECT_EQ(control->Range()->modulationKind, kind);
        EXPECT_EQ(PartAt<NumberBox>(ControlPart::Value) == nullptr, moving);
        for (ControlPart part : {ControlPart::Low, ControlPart::High, ControlPart::Preview,
                                 ControlPart::Frequency, ControlPart::Phase})
            EXPECT_EQ(PartAt<QWidget>(part) != nullptr, moving) << char(part);
    }
    // From the keys, through all kinds: the handles' values stay, also behind a level by chance.
    Show(Numeric(0, 10, 5));
    auto* combo = PartAt<QComboBox>(ControlPart::Combo);
    combo->setFocus();
    for (int kind = 1; kind < kModulationKinds; ++kind) {
        QTest::keyClick(combo, Qt::Key_Down);
        EXPECT_EQ(control->Range()->modulationKind, kind);
        EXPECT_EQ(changes->size(), kind);
    }
    QTest::keyClick(combo, Qt::Key_Home);
    EXPECT_EQ(control->Range()->value, 5.0f);
    EXPECT_TRUE(PartAt<NumberBox>(ControlPart::Value));

    Show(Numeric(0, 10, 5, true, false));
    EXPECT_FALSE(control->findChild<QComboBox*>());
    EXPECT_FALSE(control->findChild<WavePreview*>());
    EXPECT_EQ(control->findChildren<QLineEdit*>().size(), 1);
}

TEST_F(ControlWidgetTest, APreviewShowsTheWaveAndWhereItIs) {
    UniformControl record = Numeric(0, 10, 5);
    record.range.modulationKind = kModulationSquare;
    record.range.low = 2.5f;
    record.range.frequency = 2;
    Show(record);
    auto* preview = PartAt<WavePreview>(ControlPart::Preview);
    const auto pixel = [&](double x, double y) {
        return preview->grab().toImage().pixelColor(int(x * preview->width()), int(y * preview->height()));
    };
    EXPECT_EQ(pixel(0.1, 0.9), FromBgr(0x461914)) << "below the band";
    EXPECT_EQ(pixel(0.4, 0.5), FromBgr(0xd24b3c));
    EXPECT_EQ(pixel(0.9, 0.5), FromBgr(0xd24b3c));
    EXPECT_NE(pixel(0.1, 0.5), FromBgr(0xd24b3c));

    // Two periods in 16 s: at 19.2 s the picture stands at 0.2 again.
    auto frame = std::make_unique<UniformTable>();
    const QColor before = pixel(0.2, 0.9);
    UpdateUniformValues(*frame, 19200);
    EXPECT_TRUE(PumpUntil([&] { return pixel(0.2, 0.9) != before; }));
    UpdateUniformValues(*frame, 20000);
    EXPECT_TRUE(PumpUntil([&] { return pixel(0.2, 0.9) == before; }));

    PartAt<SliderWidget>(ControlPart::Frequency)->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
    EXPECT_EQ(control->Range()->frequency, 0.0f);
    QTest::keyClick(PartAt<SliderWidget>(ControlPart::Phase), Qt::Key_End);
    EXPECT_FLOAT_EQ(control->Range()->phase, 6.2831855f);
    EXPECT_EQ(changes->size(), 2);
}

TEST_F(ControlWidgetTest, ALevelByChanceIsDrawnOncePerChange) {
    UniformControl record = Numeric(0, 10, 5);
    record.range.modulationKind = kModulationRandom;
    Show(record);
    const float drawn = control->Range()->value;
    EXPECT_GE(drawn, 0.0f);
    EXPECT_LE(drawn, 1.0f);
    control->resize(control->size() * 2);
    EXPECT_EQ(control->Range()->value, drawn);
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_NE(control->Range()->value, drawn);
}

TEST_F(ControlWidgetTest, AListGivesItsChoiceAndRandomize) {
    UniformControl record;
    record.kind = 1;
    record.displayName = QStringLiteral("A & B 100%");
    for (int i = 0; i < 3; ++i)
        record.options.push_back({QStringLiteral("option %1").arg(i), i});
    record.combo = {1, 4, 1, 3};
    Show(record);
    auto* combo = PartAt<QComboBox>(ControlPart::Combo);
    auto* button = PartAt<QPushButton>(ControlPart::Randomize);
    EXPECT_EQ(combo->currentIndex(), 1);
    EXPECT_FALSE(button->isChecked()) << "starts raised";
    EXPECT_FALSE(control->Range());
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Down);
    QTest::keyClick(combo, Qt::Key_Tab);
    EXPECT_TRUE(button->hasFocus());
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_EQ(changes->size(), 2);
    control->Save(record);
    EXPECT_EQ(record.combo.selection, 2);
    EXPECT_EQ(record.combo.randomize, 1);
    QTest::mouseClick(button, Qt::LeftButton);
    record.combo.count = 2;  // the text has fewer options now
    record.combo.selection = 0;
    control->Save(record);
    EXPECT_EQ(record.combo.selection, 0);
    EXPECT_EQ(record.combo.randomize, 0);
    EXPECT_EQ(record.combo.count, 2);
    record.combo.randomize = 1;
    control->Load(record);
    EXPECT_TRUE(button->isChecked());
    EXPECT_EQ(combo->currentIndex(), 0);

    record.options.resize(100'000);
    record.combo = {0, 4, 70'000, 100'000};
    control->Load(record);
    EXPECT_EQ(combo->count(), 128);
    control->Save(record);
    EXPECT_EQ(record.combo.selection, 70'000) << "what the list doesn't show stays chosen";
}

TEST_F(ControlWidgetTest, ALongLabelIsWholeInItsToolTip) {
    UniformControl record;
    record.kind = 1;
    record.displayName = QStringLiteral("<b>50% & more</b>").repeated(20);
    Show(record);
    auto* label = PartAt<ElidedLabel>(ControlPart::Name);
    QHelpEvent ask(QEvent::ToolTip, {3, 3}, label->mapToGlobal(QPoint(3, 3)));
    QCoreApplication::sendEvent(label, &ask);
    EXPECT_EQ(label->Text(), record.displayName);
    EXPECT_TRUE(QToolTip::text().contains(record.displayName.toHtmlEscaped()));
}

TEST_F(ControlWidgetTest, AFormScalesThePlaceAndLeavesTheFontsToTheControl) {
    for (double scale : {0.5, 2.0}) {
        Show(Numeric(0, 10, 5));
        const int before = PartAt<NumberBox>(ControlPart::Value)->font().pixelSize();
        AttachScaling(*form);
        form->resize(int(400 * scale), int(200 * scale));
        EXPECT_EQ(control->size(), kArea * scale);
        auto* box = PartAt<NumberBox>(ControlPart::Value);
        ASSERT_TRUE(box);
        EXPECT_NEAR(box->font().pixelSize(), before * scale, 1.0);
        EXPECT_LE(box->fontMetrics().height(), box->height());
    }
}

TEST_F(ControlWidgetTest, OddBoundsDoNoHarm) {
    constexpr float kInf = std::numeric_limits<float>::infinity();
    const float kNan = std::nanf("");
    for (const auto& [minimum, maximum] :
         {std::pair{1.0f, 1.0f}, {kNan, kNan}, {-kInf, kInf}, {0.0f, 3e38f}, {5.0f, -5.0f}}) {
        for (int kind = 0; kind <= kModulationKinds; ++kind) {
            UniformControl record = Numeric(minimum, maximum, 1, kind % 2 == 0);
            record.range.modulationKind = kind;
            record.range.frequency = 0;
            record.range.name = QString(300, u'%');
            Show(record);
            Drag({2, 2}, {slider->width(), 5});
            Wheel(slider, {1, 1}, 120);
            for (Qt::Key key : {Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp})
                QTest::keyClick(slider, key);
            const RangeControlState& state = slider->State();
            for (SliderHandle handle : {SliderHandle::Low, SliderHandle::High, SliderHandle::Value})
                EXPECT_TRUE(HandleRect(state, handle, slider->size()).intersects(slider->rect()));
            for (const QSize& size : {QSize(0, 0), QSize(3, 2), QSize(2000, 40)}) {
                control->resize(size);
                control->grab();
            }
        }
    }
}

}  // namespace
}  // namespace pixelgrove
