// RangeControl: the widget of a numeric control. With modulation it has one handle while the kind is Fixed,
// else a low and a high one, and shows the wave between them. Main thread.
#pragma once

#include "controls/widgets/ControlWidget.h"

namespace pixelgrove {

class ControlCombo;
class ElidedLabel;
class NumberBox;
class SliderWidget;
class WavePreview;
enum class SliderHandle : int32_t;
enum class ControlPart : char;

class RangeControl : public ControlWidget {
    Q_OBJECT

  public:
    RangeControl(const UniformControl& record, QWidget* parent);

    void Save(UniformControl& record) const override;
    void Load(const UniformControl& record) override;
    const RangeControlState* Range() const override { return &state_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    // What only a control with modulation has.
    void MakeModulationParts();
    NumberBox* MakeBox(SliderHandle handle, const QString& word);
    QWidget* WidgetOf(ControlPart part) const;
    void PlaceParts();
    void FitFonts(int smallestHeight);

    void ShowKind();
    void ShowTexts();
    void ShowToolTips();
    void DrawPreview(bool drawRandom);
    void AcceptSlider();
    void AcceptBox(NumberBox& box, SliderHandle handle, float value, bool whole);
    void AcceptKind(int row);
    // Something but the texts changed.
    void Report();

    RangeControlState state_;
    bool placed_ = false;
    ElidedLabel* name_;
    ElidedLabel* minimum_;
    ElidedLabel* maximum_;
    SliderWidget* slider_;
    NumberBox* value_;
    NumberBox* low_ = nullptr;
    NumberBox* high_ = nullptr;
    ControlCombo* kind_ = nullptr;
    WavePreview* preview_ = nullptr;
    SliderWidget* frequency_ = nullptr;
    SliderWidget* phase_ = nullptr;
};

}  // namespace pixelgrove
