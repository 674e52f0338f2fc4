// The fonts of control widgets, and their lists, which fit themselves to the widget's size.
//
// Main thread.
#pragma once

#include <QComboBox>
#include <QFont>

namespace pixelgrove {

// The font for parts of which the smallest is that high.
QFont FittedFont(int smallestHeight);
// The same font, smaller where the text would not fit into the width, but never below what can be read.
QFont NarrowedFont(QFont font, const QString& text, int width);

// The width that a closed box of that size leaves to its text.
int ComboTextWidth(const QSize& box);
// Makes room for the whole texts in the opened list, as far as the screen has it.
void WidenList(QComboBox& combo);

}  // namespace pixelgrove
