// Whether windows can be shown at all.
//
// Asked before QApplication is made, because that ends the process when it finds no display.
#pragma once

#include <QString>

namespace pixelgrove {

// Chooses the X11 platform of the window library unless the user chose others without it: layouts and
// snapping need absolute window places, which other display protocols refuse. Programs that this one starts
// get what the user chose.
void ChooseWindowPlatform();

// After that. An empty text when an X display can be had, else a text for the user that says what is missing.
QString MissingDisplayText();

}  // namespace pixelgrove
