// The look of all windows: one palette, one style sheet, the colours that painted widgets share.
//
// Main thread.
#pragma once

#include <QColor>
#include <QFont>

class QApplication;

namespace pixelgrove {

namespace theme {
inline const QColor kWindow(0x26, 0x29, 0x2e);
inline const QColor kPanel(0x2e, 0x32, 0x38);  // group boxes
inline const QColor kField(0x1b, 0x1d, 0x21);  // editor, message pane, edits
inline const QColor kButton(0x3b, 0x40, 0x48);
inline const QColor kLine(0x4a, 0x50, 0x59);  // frames
inline const QColor kText(0xe4, 0xe6, 0xea);
inline const QColor kFaintText(0x8b, 0x92, 0x9c);
inline const QColor kAccent(0x4f, 0xa3, 0xd9);
}  // namespace theme

// Once, after QApplication was made and before the first window.
void ApplyTheme(QApplication& application);

// The fixed-width font of the editor, its gutter and the message pane.
QFont CodeFont();

}  // namespace pixelgrove
