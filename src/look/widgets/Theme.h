// The look of all windows: one palette, one style and one style sheet, made from the two window colours of
// the settings, and the colours that painted widgets share.
//
// Main thread.
#pragma once

#include <QColor>
#include <QFont>

#include "look/UiColours.h"

class QApplication;

namespace pixelgrove {

// All but the window's two colours are mixtures of them, so that any readable pair gives a readable program:
// where the pair's own contrast is 7:1 or more, its text has at least 4.5:1 on all grounds here.
struct ThemeColours {
    UiColours rows;  // what they are made from
    QColor window;   // "Window Background"
    QColor text;     // "Window Text"
    QColor panel;    // caption, menus, the gutter
    QColor field;    // editor, message pane, edits
    QColor button;
    QColor buttonHover;
    QColor buttonDown;  // a button that is pressed or checked
    QColor line;        // frames of fields and groups
    QColor faintText;   // what matters less; disabled text
    QColor accent;      // selection, focus
    QColor accentText;
    QColor activeFrame;    // border and caption of the active window
    QColor inactiveFrame;  // and of the others
};

// Pure.
ThemeColours MakeThemeColours(const UiColours& colours);

// Of the interface's rows: 0x00BBGGRR as a colour.
QColor FromBgr(uint32_t blueGreenRed);

// How readable one colour is on the other: 1 (equal) to 21 (black and white), the ratio of their luminances.
double Contrast(const QColor& a, const QColor& b);

// The colours in force: those of the last ApplyTheme, before it the built-in ones.
const ThemeColours& Theme();

// After QApplication was made and the settings were read, before the first window; again when colours change.
void ApplyTheme(QApplication& application, const UiColours& colours);

// The fixed-width font of the editor, its gutter and the message pane.
QFont CodeFont();

// The font of forms at their base size, in pixels, so that a form's places hold on every machine.
QFont FormFont();

}  // namespace pixelgrove
