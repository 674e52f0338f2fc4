#include "controls/ControlTemplates.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <sstream>

namespace pixelgrove {

namespace {

// Of runs between blanks, each a letter and how many cells it fills: "-1 N3" is "-NNN".
std::string Row(const char* runs) {
    std::istringstream words(runs);
    std::string row;
    char letter = 0;
    for (int cells = 0; words >> letter >> cells;)
        row.append(size_t(cells), letter);
    return row;
}

TemplateRows Rows(std::initializer_list<const char*> runs) {
    TemplateRows rows;
    for (const char* row : runs)
        rows.push_back(Row(row));
    return rows;
}

std::array<ControlTemplate, 4> ModulatedRangeForms() {
    return {{
        {Rows({"-1 N10 -1 M8 S21 X8 -1 L8 H8 -1 C15 -1 O6 -1 W6 -1 Z17"}),
         Rows({"-1 N10 -1 M8 S29 X8 -1 38 -1 C15 -1 O6 -1 W6 -1 Z17"})},
        {Rows({"-1 N10 -1 S54 -1 C15 -1 Z31", "-12 M12 -5 L10 H10 -5 X12 -17 O15 -1 W15"}),
         Rows({"-1 N10 -1 S54 -1 C15 -1 Z31", "-12 M12 -8 314 -8 X12 -17 O15 -1 W15"})},
        {Rows({"-1 N62 -1 C18 -1 Z31", "-1 S81 -1 Z31", "-1 M19 -1 L20 -1 H20 -1 X19 -1 O16 -1 W14"}),
         Rows({"-1 N62 -1 C18 -1 Z31", "-1 S81 -1 Z31", "-1 M24 -1 331 -1 X24 -1 O15 -1 W15"})},
        {Rows({"-1 N81 -1 Z31", "-45 C37 -1 Z31", "-1 S81 -1 Z31",
               "-1 M19 -1 L20 -1 H20 -1 X19 -1 O16 -1 W14"}),
         Rows({"-1 N81 -1 Z31", "-45 C37 -1 Z31", "-1 S81 -1 Z31", "-1 M24 -1 331 -1 X24 -1 O15 -1 W15"})},
    }};
}

std::array<ControlTemplate, 4> FixedRangeForms() {
    return {{
        {Rows({"-1 N10 -1 M8 S37 X8 -1 L8 H8 -1"}), Rows({"-1 N10 -1 M8 S45 -1 X8 38 -1"})},
        {Rows({"-1 N10 -1 S70 -1", "-12 M12 -5 L10 H10 -5 X12 -17"}),
         Rows({"-1 N10 -1 S70 -1", "-12 M12 -8 314 -8 X12 -17"})},
        {Rows({"-1 N81 -1", "-1 S81 -1", "-1 M19 -1 L20 -1 H20 -1 X19 -1"}),
         Rows({"-1 N81 -1", "-1 S81 -1", "-1 M24 -1 331 -1 X24 -1"})},
        {Rows({"-1 N81 -1", "-83", "-1 S81 -1", "-1 M19 -1 L20 -1 H20 -1 X19 -1"}),
         Rows({"-1 N81 -1", "-83", "-1 S81 -1", "-1 M24 -1 331 -1 X24 -1"})},
    }};
}

std::array<ControlTemplate, 3> ComboForms() {
    std::array<ControlTemplate, 3> forms;
    forms[0].set1 = Rows({"-1 N13 -1 C9 -1 B7 -1"});
    forms[1].set1 = Rows({"-1 N31 -1", "-2 C19 -2 B9 -1"});
    forms[2].set1 = Rows({"-1 N31 -1", "-2 C30 -1", "-2 B30 -1"});
    for (ControlTemplate& form : forms)
        form.set0 = form.set1;
    return forms;
}

template <size_t Count>
const ControlTemplate& FormOf(const std::array<ControlTemplate, Count>& forms, int layoutRows) {
    return forms[size_t(std::clamp(layoutRows, 1, int(Count)) - 1)];
}

}  // namespace

const ControlTemplate& RangeTemplate(bool hasModulation, int layoutRows) {
    static const std::array<ControlTemplate, 4> modulated = ModulatedRangeForms();
    static const std::array<ControlTemplate, 4> fixed = FixedRangeForms();
    return FormOf(hasModulation ? modulated : fixed, layoutRows);
}

const ControlTemplate& ComboTemplate(int layoutRows) {
    static const std::array<ControlTemplate, 3> forms = ComboForms();
    return FormOf(forms, layoutRows);
}

std::optional<TemplateBox> TemplateRect(const TemplateRows& rows, ControlPart part) {
    std::optional<TemplateBox> box;
    for (size_t row = 0; row < rows.size(); ++row) {
        for (size_t column = 0; column < rows[row].size(); ++column) {
            if (rows[row][column] != char(part)) continue;
            if (!box) box = TemplateBox{double(column), double(row), 0, 0};
            box->right = std::max(box->right, double(column + 1));
            box->bottom = std::max(box->bottom, double(row + 1));
        }
    }
    if (!box) return std::nullopt;
    const auto columns = double(rows.front().size());
    const auto count = double(rows.size());
    return TemplateBox{box->left / columns, box->top / count, box->right / columns, box->bottom / count};
}

QRect PixelRect(const TemplateBox& box, const QSize& size) {
    const double width = size.width();
    const double height = size.height();
    return {int(width * box.left + 0.5), int(height * box.top + 0.5),
            int((box.right - box.left) * width + 0.5), int((box.bottom - box.top) * height + 0.5)};
}

QRect TemplatePlaces::Place(ControlPart part) {
    const TemplateRows& rows = part == ControlPart::Value ? form_.set0 : form_.set1;
    last_ = TemplateRect(rows, part).value_or(last_);
    return PixelRect(last_, size_);
}

}  // namespace pixelgrove
