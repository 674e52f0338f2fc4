#include "ui/Theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>

namespace pixelgrove {

namespace {

QPalette DarkPalette() {
    using namespace theme;
    QPalette palette;
    palette.setColor(QPalette::Window, kWindow);
    palette.setColor(QPalette::WindowText, kText);
    palette.setColor(QPalette::Base, kField);
    palette.setColor(QPalette::AlternateBase, kPanel);
    palette.setColor(QPalette::Text, kText);
    palette.setColor(QPalette::PlaceholderText, kFaintText);
    palette.setColor(QPalette::Button, kButton);
    palette.setColor(QPalette::ButtonText, kText);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, kPanel);
    palette.setColor(QPalette::ToolTipText, kText);
    palette.setColor(QPalette::Highlight, kAccent.darker(140));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, kAccent);
    palette.setColor(QPalette::Light, kButton.lighter(125));
    palette.setColor(QPalette::Midlight, kButton.lighter(110));
    palette.setColor(QPalette::Mid, kLine);
    palette.setColor(QPalette::Dark, kField);
    palette.setColor(QPalette::Shadow, Qt::black);
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x6c, 0x72, 0x7b));
    return palette;
}

// Only what the palette can't say: paddings, corners and the frames of groups.
const char kStyleSheet[] = R"(
QGroupBox { background: #2e3238; border: 1px solid #4a5059; border-radius: 4px;
            margin-top: 8px; padding: 4px 0 0 0; }
QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left; left: 8px; padding: 0 4px;
                   color: #aab1bb; }
QPushButton { background: #3b4048; border: 1px solid #555c66; border-radius: 3px; padding: 4px 5px; }
QPushButton:hover { background: #474d57; }
QPushButton:pressed { background: #2b2f35; }
QPushButton:checked { background: #33688a; border-color: #4fa3d9; }
QPushButton:focus { border-color: #4fa3d9; }
QPushButton:disabled { background: #30343a; border-color: #3d4249; color: #6c727b; }
QLineEdit { background: #1b1d21; border: 1px solid #4a5059; border-radius: 3px; padding: 3px 5px; }
QLineEdit:focus { border-color: #4fa3d9; }
QLineEdit:read-only { background: #25282d; }
QLineEdit:disabled { color: #6c727b; }
QToolButton { background: #3b4048; border: 1px solid #555c66; border-radius: 2px; padding: 0; }
QToolButton:hover { background: #474d57; }
QToolButton:pressed { background: #2b2f35; }
QPlainTextEdit { border: 1px solid #4a5059; }
QMenuBar { background: #26292e; padding: 2px; }
QMenuBar::item { padding: 4px 9px; background: transparent; border-radius: 3px; }
QMenuBar::item:selected { background: #3b4048; }
QMenu { background: #2e3238; border: 1px solid #4a5059; padding: 4px; }
QMenu::item { padding: 4px 26px 4px 24px; border-radius: 3px; }
QMenu::item:selected { background: #33688a; }
QMenu::item:disabled { color: #6c727b; }
QMenu::separator { height: 1px; background: #4a5059; margin: 4px 6px; }
QToolTip { background: #2e3238; color: #e4e6ea; border: 1px solid #4a5059; padding: 3px; }
QSplitter::handle { background: #26292e; }
QLabel[faint="true"] { color: #8b929c; }
)";

}  // namespace

void ApplyTheme(QApplication& application) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(DarkPalette());
    application.setStyleSheet(QString::fromLatin1(kStyleSheet));
}

QFont CodeFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPointSizeF(10.5);
    return font;
}

}  // namespace pixelgrove
