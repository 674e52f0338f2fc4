// The fonts of control widgets, which fit themselves to the widget's size. Main thread.
#pragma once

#include <QFont>

namespace pixelgrove {

// The font for parts of which the smallest is that high.
QFont FittedFont(int smallestHeight);
// The same font, narrower and then smaller where the text would not fit into the width, but never below what
// can be read.
QFont NarrowedFont(QFont font, const QString& text, int width);

}  // namespace pixelgrove
