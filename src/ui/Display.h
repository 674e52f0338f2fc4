// Whether windows can be shown at all.
//
// Asked before QApplication is made, because that ends the process when it finds no display.
#pragma once

#include <QString>

namespace pixelgrove {

// Chooses the X11 platform of the window library unless the user chose one: layouts and snapping need
// absolute window places, which other display protocols refuse.
void ChooseWindowPlatform();

// An empty text when a display can be had, else a sentence for the user that says what is missing. Only the
// X11 platform is looked at; another that the user chose is taken to be there.
QString MissingDisplayText();

}  // namespace pixelgrove
