#include "controls/widgets/RangeControl.h"

#include <algorithm>
#include <cmath>

#include "controls/ControlTemplates.h"
#include "controls/RangeState.h"
#include "controls/widgets/ControlCombo.h"
#include "controls/widgets/ControlFont.h"
#include "controls/widgets/ElidedLabel.h"
#include "controls/widgets/NumberBox.h"
#include "controls/widgets/SliderWidget.h"
#include "controls/widgets/WavePreview.h"
#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr float kMaxFrequency = 20.0f;
constexpr float kFullPhase = 6.2831855f;
constexpr double kCycleSeconds = 16.0;
constexpr int kBoxFrame = 10;  // of a box's width, its text doesn't have

// The numbers that the rows of the list carry.
constexpr int kFixedId = 0;
constexpr int kMovingId = 1;

RangeControlState SideState(float value, float maximum) {
    RangeControlState state;
    state.isFloat = 1;
    state.value = value;
    state.maximum = maximum;
    return state;
}

// The state's name, or the whole of it where the state could not hold it.
QString LabelOf(const UniformControl& record) {
    return record.displayName.startsWith(record.range.name) ? record.displayName : record.range.name;
}

// For whole numbers a move within one of them is none.
bool IsSame(const RangeControlState& state, float a, float b) {
    return state.isFloat ? a == b : std::trunc(a) == std::trunc(b);
}

}  // namespace

RangeControl::RangeControl(const UniformControl& record, QWidget* parent)
    : ControlWidget(parent),
      state_(record.range),
      name_(new ElidedLabel(Qt::AlignLeft, this)),
      minimum_(new ElidedLabel(Qt::AlignLeft, this)),
      maximum_(new ElidedLabel(Qt::AlignRight, this)) {
    // The keys go from the list at the top to the tracks at the bottom, in the order in which parts are made.
    if (state_.hasModulation) kind_ = new ControlCombo(this);
    slider_ = new SliderWidget(this);
    slider_->SetState(state_);
    connect(slider_, &SliderWidget::Moved, this, &RangeControl::AcceptSlider);
    value_ = MakeBox(SliderHandle::Value, tr("Value"));
    if (state_.hasModulation) MakeModulationParts();
    name_->SetText(LabelOf(record));
    slider_->setAccessibleName(state_.name);
    ShowTexts();
    ShowKind();
}

NumberBox* RangeControl::MakeBox(SliderHandle handle, const QString& word) {
    auto* box = new NumberBox(this);
    box->setAccessibleName(word);
    connect(box, &NumberBox::Committed, this,
            [this, box, handle](float value, bool whole) { AcceptBox(*box, handle, value, whole); });
    return box;
}

void RangeControl::MakeModulationParts() {
    low_ = MakeBox(SliderHandle::Low, tr("Low"));
    high_ = MakeBox(SliderHandle::High, tr("High"));
    low_->SetStripe(FromBgr(kLowHandleColour));
    high_->SetStripe(FromBgr(kHighHandleColour));
    preview_ = new WavePreview(this);
    phase_ = new SliderWidget(this);
    phase_->SetCaption(tr("Phase"));
    phase_->setAccessibleName(tr("Phase"));
    phase_->SetState(SideState(state_.phase, kFullPhase));
    frequency_ = new SliderWidget(this);
    frequency_->SetCaption(tr("Freq."));
    frequency_->setAccessibleName(tr("Frequency"));
    frequency_->SetState(SideState(state_.frequency, kMaxFrequency));
    connect(phase_, &SliderWidget::Moved, this, [this] {
        state_.phase = phase_->State().value;
        Report();
    });
    connect(frequency_, &SliderWidget::Moved, this, [this] {
        state_.frequency = frequency_->State().value;
        Report();
    });

    int id = kFixedId;
    for (QStringView name : ModulationNames()) {
        kind_->addItem(name.toString(), id);
        id = kMovingId;
    }
    // By the rows' numbers, the last that fits: a kind past the first one shows the last row, all others
    // none.
    kind_->setCurrentIndex(-1);
    for (int row = 0; row < kind_->count(); ++row)
        if (kind_->itemData(row).toInt() == state_.modulationKind) kind_->setCurrentIndex(row);
    connect(kind_, &ControlCombo::activated, this, &RangeControl::AcceptKind);
}

void RangeControl::Save(UniformControl& record) const {
    record.range = state_;
}

void RangeControl::Load(const UniformControl& record) {
    // What the parts are made for stays.
    const int32_t hasModulation = state_.hasModulation;
    const int32_t kind = state_.modulationKind;
    state_ = record.range;
    state_.hasModulation = hasModulation;
    if (kind_ && kind != state_.modulationKind) kind_->setCurrentIndex(state_.modulationKind);
    slider_->SetState(state_);
    if (phase_) phase_->SetState(SideState(state_.phase, kFullPhase));
    if (frequency_) frequency_->SetState(SideState(state_.frequency, kMaxFrequency));
    name_->SetText(LabelOf(record));
    ShowTexts();
    ShowKind();
    PlaceParts();
}

QWidget* RangeControl::WidgetOf(ControlPart part) const {
    switch (part) {
        case ControlPart::Name:
            return name_;
        case ControlPart::Minimum:
            return minimum_;
        case ControlPart::Maximum:
            return maximum_;
        case ControlPart::Slider:
            return slider_;
        case ControlPart::Value:
            return value_;
        case ControlPart::Low:
            return low_;
        case ControlPart::High:
            return high_;
        case ControlPart::Combo:
            return kind_;
        case ControlPart::Preview:
            return preview_;
        case ControlPart::Frequency:
            return frequency_;
        case ControlPart::Phase:
            return phase_;
        default:
            return nullptr;
    }
}

void RangeControl::resizeEvent(QResizeEvent*) {
    PlaceParts();
}

void RangeControl::PlaceParts() {
    TemplatePlaces places(RangeTemplate(state_.hasModulation != 0, state_.layoutRows), size());
    int smallestHeight = height();
    for (ControlPart part :
         {ControlPart::Name, ControlPart::Minimum, ControlPart::Maximum, ControlPart::Value,
          ControlPart::Slider, ControlPart::Low, ControlPart::High, ControlPart::Combo, ControlPart::Preview,
          ControlPart::Frequency, ControlPart::Phase}) {
        const QRect place = places.Place(part);
        QWidget* widget = WidgetOf(part);
        if (!widget) continue;
        widget->setGeometry(place);
        if (widget != slider_ && widget != preview_ && widget != frequency_ && widget != phase_)
            smallestHeight = std::min(smallestHeight, place.height());
    }
    FitFonts(smallestHeight);
    // A level by chance is drawn once, not at every size.
    DrawPreview(!placed_);
    placed_ = true;
}

void RangeControl::FitFonts(int smallestHeight) {
    const QFont font = FittedFont(smallestHeight);
    name_->setFont(font);
    // All numbers alike, so that the widest of them fits the narrowest of its places.
    QFont numbers = font;
    for (float bound : {state_.minimum, state_.maximum}) {
        const QString text = RangeText(state_, bound);
        numbers = NarrowedFont(numbers, text, minimum_->width());
        numbers = NarrowedFont(numbers, text, (low_ ? low_ : value_)->width() - kBoxFrame);
    }
    for (QWidget* widget : std::initializer_list<QWidget*>{minimum_, maximum_, value_, low_, high_})
        if (widget) widget->setFont(numbers);
    if (!kind_) return;
    QFont words = font;
    for (QStringView name : ModulationNames())
        words = NarrowedFont(words, name.toString(), kind_->TextWidth());
    kind_->setFont(words);
    kind_->WidenList();
}

void RangeControl::ShowKind() {
    const bool moving = state_.modulationKind > kModulationFixed;
    value_->setVisible(!moving);
    slider_->SetTwoHandles(moving);
    for (QWidget* widget : std::initializer_list<QWidget*>{low_, high_, preview_, frequency_, phase_})
        if (widget) widget->setVisible(moving);
    ShowToolTips();
}

void RangeControl::ShowTexts() {
    minimum_->SetText(RangeText(state_, state_.minimum));
    maximum_->SetText(RangeText(state_, state_.maximum));
    value_->Show(RangeText(state_, state_.value));
    if (low_) low_->Show(RangeText(state_, state_.low));
    if (high_) high_->Show(RangeText(state_, state_.high));
}

void RangeControl::ShowToolTips() {
    const bool moving = state_.modulationKind > kModulationFixed;
    value_->setToolTip(tr("Value: %1").arg(RangeText(state_, state_.value)));
    slider_->setToolTip(moving ? tr("Upper handle: low end of the wave. Lower handle: high end. Up and Down "
                                    "choose the one that keys move.")
                               : QString());
    if (!kind_) return;
    low_->setToolTip(tr("Low end of the wave: %1").arg(RangeText(state_, state_.low)));
    high_->setToolTip(tr("High end of the wave: %1").arg(RangeText(state_, state_.high)));
    const auto names = ModulationNames();
    const auto kind = size_t(state_.modulationKind);
    kind_->setToolTip(kind < names.size() ? tr("How the value moves: %1").arg(names[kind]) : QString());
    phase_->setToolTip(
        tr("Phase of the wave: %1 of a period").arg(double(state_.phase) / double(kFullPhase), 0, 'f', 2));
    if (state_.frequency > 0)
        frequency_->setToolTip(tr("Frequency: %1, a period every %2 s")
                                   .arg(double(state_.frequency), 0, 'f', 3)
                                   .arg(kCycleSeconds / double(state_.frequency), 0, 'f', 1));
    else
        frequency_->setToolTip(tr("Frequency: the wave stands still"));
}

void RangeControl::DrawPreview(bool drawRandom) {
    if (preview_ && state_.modulationKind > kModulationFixed) preview_->Draw(state_, drawRandom);
}

void RangeControl::Report() {
    ShowToolTips();
    DrawPreview(placed_);
    Q_EMIT Changed();
}

void RangeControl::AcceptSlider() {
    const RangeControlState& moved = slider_->State();
    const bool same = IsSame(state_, moved.low, state_.low) && IsSame(state_, moved.high, state_.high) &&
                      IsSame(state_, moved.value, state_.value);
    state_.low = moved.low;
    state_.high = moved.high;
    state_.value = moved.value;
    ShowTexts();
    if (!same) Report();
}

void RangeControl::AcceptBox(NumberBox& box, SliderHandle handle, float value, bool whole) {
    slider_->SetHandle(handle, value);
    const float taken = HandleValue(slider_->State(), handle);
    if (handle == SliderHandle::Low)
        state_.low = taken;
    else if (handle == SliderHandle::High)
        state_.high = taken;
    else
        state_.value = taken;
    if (!whole || taken != value) box.Show(RangeText(state_, taken));
    Report();
}

void RangeControl::AcceptKind(int row) {
    state_.modulationKind = row;
    // A level by chance may stand in the value, which is not the handle's.
    slider_->SetHandle(SliderHandle::Value, slider_->State().value);
    state_.value = slider_->State().value;
    value_->Show(RangeText(state_, state_.value));
    ShowKind();
    Report();
}

}  // namespace pixelgrove
