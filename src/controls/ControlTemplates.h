// ControlTemplates: where the parts of a control widget stand in it, told by letter templates.
//
// A template is a set of rows of one length; each character is one cell of a grid over the widget, and the
// cells of one letter are the box of that part. Pure.
#pragma once

#include <QRect>
#include <QSize>
#include <optional>
#include <string>
#include <vector>

namespace pixelgrove {

// The letters of the parts.
enum class ControlPart : char {
    Name = 'N',
    Minimum = 'M',
    Maximum = 'X',
    Slider = 'S',
    Low = 'L',
    High = 'H',
    Value = '3',
    Combo = 'C',
    Preview = 'Z',
    Frequency = 'W',
    Phase = 'O',
    Randomize = 'B',
};

using TemplateRows = std::vector<std::string>;

// The parts of a range stand where set 1 has them, but for the value box, which takes the place of low and
// high: it stands where set 0 has it.
struct ControlTemplate {
    TemplateRows set1;
    TemplateRows set0;
};

// By the number of rows, taken into 1 to 4.
const ControlTemplate& RangeTemplate(bool hasModulation, int layoutRows);
// Both sets are the same. By the number of rows, taken into 1 to 3.
const ControlTemplate& ComboTemplate(int layoutRows);

// A box as fractions of its widget.
struct TemplateBox {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

// The box from the part's first cell, row by row, to its last column and its last row; none when the rows
// don't hold the letter.
std::optional<TemplateBox> TemplateRect(const TemplateRows& rows, ControlPart part);

// The box in pixels of a widget of that size.
QRect PixelRect(const TemplateBox& box, const QSize& size);

// Finds the places of one widget's parts, one after another.
class TemplatePlaces {
  public:
    TemplatePlaces(const ControlTemplate& form, const QSize& size) : form_(form), size_(size) {}

    // Where the part stands; a part without cells stands where the last one did that had some.
    QRect Place(ControlPart part);

  private:
    const ControlTemplate& form_;
    QSize size_;
    TemplateBox last_;
};

}  // namespace pixelgrove
