// How ThemeStyle paints controls: boxes, buttons, indicators, arrows, fields, in the colours of Theme(). Each
// follows the option's rectangle down to a few pixels.
//
// For ThemeStyle alone. Main thread.
#pragma once

#include <QStyleOption>

class QPainter;

namespace pixelgrove {

inline constexpr int kSidePadding = 3;  // of texts in edits and boxes
inline constexpr int kMaxArrowColumn = 18;
inline constexpr int kFocusBorder = 2;  // pixels, where others have one

inline bool IsEnabled(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Enabled);
}

inline bool HasFocus(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_HasFocus);
}

// Of texts, marks and arrows on the control, by its state.
QColor InkOf(const QStyleOption& option);

// Lines around the option's rectangle: of a frame, and the mark of the focus around what has no frame.
void DrawFrame(QPainter& painter, const QStyleOption& option);
void DrawFocusFrame(QPainter& painter, const QStyleOption& option);
// The border of an edit without its ground.
void DrawFieldBorder(QPainter& painter, const QStyleOption& option);
void DrawField(QPainter& painter, const QStyleOption& option);
void DrawButton(QPainter& painter, const QStyleOption& option);
// Tool buttons have no frame until the mouse is over them, or they are down or checked.
void DrawToolButton(QPainter& painter, const QStyleOption& option);
void DrawArrow(QPainter& painter, const QRect& rect, Qt::ArrowType direction, const QColor& colour);
void DrawCheckBox(QPainter& painter, const QStyleOption& option);
void DrawMenuTick(QPainter& painter, const QStyleOption& option);
void DrawRadioButton(QPainter& painter, const QStyleOption& option);
void DrawCombo(QPainter& painter, const QStyleOptionComboBox& option);
void DrawSpin(QPainter& painter, const QStyleOptionSpinBox& option);

// The column with the arrow, or with both, at the right of a box.
int ArrowColumn(const QRect& rect);
// Where the parts of a box lie.
QRect ComboRect(const QStyleOptionComboBox& option, QStyle::SubControl part);
QRect SpinRect(const QStyleOptionSpinBox& option, QStyle::SubControl part);

}  // namespace pixelgrove
