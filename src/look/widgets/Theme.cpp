#include "look/widgets/Theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <algorithm>
#include <cmath>

#include "look/widgets/ThemeStyle.h"

namespace pixelgrove {

namespace {

constexpr double kReadable = 4.5;      // the contrast that text keeps on a ground
constexpr double kKeptContrast = 0.7;  // the part of a weaker pair's own contrast that it keeps
constexpr double kLegible = 3.0;       // of faint text
constexpr double kStep = 0.02;         // of a mixture on the way to its contrast
constexpr int kFormFontPixels = 12;

double Luminance(const QColor& colour) {
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QColor Mix(const QColor& from, const QColor& to, double part) {
    const auto mixed = [part](int a, int b) { return int(std::lround(a + (b - a) * part)); };
    return {mixed(from.red(), to.red()), mixed(from.green(), to.green()), mixed(from.blue(), to.blue())};
}

// The ground of that part of text, or of less where the text would not be readable on it.
QColor Ground(const QColor& window, const QColor& text, double part) {
    const double wanted = std::min(kReadable, Contrast(window, text) * kKeptContrast);
    while (part > 0 && Contrast(Mix(window, text, part), text) < wanted)
        part -= kStep;
    return Mix(window, text, std::max(0.0, part));
}

// The mixture of that part of text, or of more where it would be too weak on the ground.
QColor Ink(const QColor& window, const QColor& text, double part, const QColor& ground, double wanted) {
    while (part < 1 && Contrast(Mix(window, text, part), ground) < wanted)
        part += kStep;
    return Mix(window, text, std::min(1.0, part));
}

ThemeColours& Current() {
    static ThemeColours colours = MakeThemeColours(UiColours());
    return colours;
}

QPalette MakePalette(const ThemeColours& theme) {
    QPalette palette;
    palette.setColor(QPalette::Window, theme.window);
    palette.setColor(QPalette::WindowText, theme.text);
    palette.setColor(QPalette::Base, theme.field);
    palette.setColor(QPalette::AlternateBase, theme.panel);
    palette.setColor(QPalette::Text, theme.text);
    palette.setColor(QPalette::PlaceholderText, theme.faintText);
    palette.setColor(QPalette::Button, theme.button);
    palette.setColor(QPalette::ButtonText, theme.text);
    palette.setColor(QPalette::BrightText, theme.text);
    palette.setColor(QPalette::ToolTipBase, theme.panel);
    palette.setColor(QPalette::ToolTipText, theme.text);
    palette.setColor(QPalette::Highlight, theme.accent);
    palette.setColor(QPalette::HighlightedText, theme.accentText);
    palette.setColor(QPalette::Link, theme.accent);
    palette.setColor(QPalette::LinkVisited, theme.accent);
    palette.setColor(QPalette::Light, theme.line);
    palette.setColor(QPalette::Midlight, theme.buttonHover);
    palette.setColor(QPalette::Mid, theme.line);
    palette.setColor(QPalette::Dark, theme.line);
    palette.setColor(QPalette::Shadow, theme.line);
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                     QPalette::HighlightedText, QPalette::PlaceholderText})
        palette.setColor(QPalette::Disabled, role, theme.faintText);
    palette.setColor(QPalette::Disabled, QPalette::Base, theme.window);
    palette.setColor(QPalette::Disabled, QPalette::Button, theme.panel);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, theme.button);
    return palette;
}

// What neither the palette nor the style says. Of the grounds and corners of widgets that shrink with their
// form the style takes care: a sheet would clip their text to what its paddings leave.
const char kStyleSheet[] = R"(
QGroupBox { background: @panel; border: 1px solid @line; border-radius: 4px;
            margin-top: 8px; padding: 4px 0 0 0; }
QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left; left: 8px; padding: 0 4px;
                   color: @faint; }
QMenuBar { background: @panel; color: @text; padding: 1px; }
QMenuBar::item { padding: 3px 8px; background: transparent; border-radius: 3px; }
QMenuBar::item:selected { background: @hover; }
QMenuBar::item:pressed { background: @accent; color: @onAccent; }
QMenuBar::item:disabled { color: @faint; }
QMenu { background: @panel; border: 1px solid @line; padding: 4px; }
QMenu::item { padding: 4px 26px 4px 24px; border-radius: 3px; }
QMenu::item:selected { background: @accent; color: @onAccent; }
QMenu::item:disabled { color: @faint; background: transparent; }
QMenu::item:disabled:selected { background: @button; }
QMenu::separator { height: 1px; background: @line; margin: 4px 6px; }
QMenu::right-arrow { width: 8px; }
QToolTip { background: @panel; color: @text; border: 1px solid @line; padding: 2px; }
QScrollBar { background: @field; }
QScrollBar:vertical { width: 13px; margin: 0; }
QScrollBar:horizontal { height: 13px; margin: 0; }
QScrollBar::handle { background: @handle; border: 2px solid @field; border-radius: 5px; }
QScrollBar::handle:vertical { min-height: 24px; }
QScrollBar::handle:horizontal { min-width: 24px; }
QScrollBar::handle:hover, QScrollBar::handle:pressed { background: @accent; }
QScrollBar::handle:disabled { background: @button; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; border: none; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QAbstractScrollArea::corner { background: @field; border: none; }
QTabWidget::pane { border: 1px solid @line; border-radius: 3px; top: -1px; }
QTabBar::tab { background: @panel; color: @text; border: 1px solid @line; padding: 3px 9px; margin-top: 2px;
               border-top-left-radius: 3px; border-top-right-radius: 3px; }
QTabBar::tab:selected { background: @down; border-bottom-color: @down; margin-top: 0; }
QTabBar::tab:hover:!selected { background: @hover; }
QTabBar::tab:disabled { color: @faint; }
QTableView { gridline-color: @line; }
QHeaderView { background: @panel; }
QHeaderView::section { background: @panel; color: @text; border: none; border-right: 1px solid @line;
                       border-bottom: 1px solid @line; padding: 2px 5px; }
QHeaderView::section:hover { background: @hover; }
QTableCornerButton::section { background: @panel; border: none; }
QSplitter::handle { background: @button; }
QSplitter::handle:horizontal { width: 5px; }
QSplitter::handle:vertical { height: 5px; }
QSplitter::handle:hover, QSplitter::handle:pressed { background: @accent; }
QSlider::groove:horizontal { height: 4px; background: @button; border: 1px solid @line; border-radius: 2px; }
QSlider::groove:vertical { width: 4px; background: @button; border: 1px solid @line; border-radius: 2px; }
QSlider::sub-page:horizontal, QSlider::add-page:vertical { background: @handle; border: 1px solid @line;
                                                           border-radius: 2px; }
QSlider::handle { background: @text; border: 1px solid @window; border-radius: 4px; }
QSlider::handle:horizontal { width: 9px; margin: -6px 0; }
QSlider::handle:vertical { height: 9px; margin: 0 -6px; }
QSlider::handle:hover, QSlider::handle:focus { background: @accent; }
QSlider::handle:disabled, QSlider::sub-page:disabled { background: @line; }
QProgressBar { background: @field; color: @text; border: 1px solid @line; border-radius: 3px;
               text-align: center; }
QProgressBar::chunk { background: @down; border-radius: 2px; }
QLabel[faint="true"] { color: @faint; }
)";

QString MakeStyleSheet(const ThemeColours& theme) {
    const std::pair<const char*, const QColor&> names[] = {
        {"@window", theme.window},   {"@text", theme.text},           {"@panel", theme.panel},
        {"@field", theme.field},     {"@button", theme.button},       {"@hover", theme.buttonHover},
        {"@down", theme.buttonDown}, {"@line", theme.line},           {"@faint", theme.faintText},
        {"@accent", theme.accent},   {"@onAccent", theme.accentText}, {"@handle", theme.faintText},
    };
    QString sheet = QString::fromLatin1(kStyleSheet);
    for (const auto& [name, colour] : names)
        sheet.replace(QLatin1String(name), colour.name());
    return sheet;
}

}  // namespace

double Contrast(const QColor& a, const QColor& b) {
    const double first = Luminance(a);
    const double second = Luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor FromBgr(uint32_t blueGreenRed) {
    return {int(blueGreenRed & 255), int(blueGreenRed >> 8 & 255), int(blueGreenRed >> 16 & 255)};
}

ThemeColours MakeThemeColours(const UiColours& colours) {
    ThemeColours theme;
    theme.rows = colours;
    theme.window = FromBgr(colours[UiColour::WindowBackground]);
    theme.text = FromBgr(colours[UiColour::WindowText]);
    const auto ground = [&theme](double part) { return Ground(theme.window, theme.text, part); };
    theme.field = ground(0.06);
    theme.panel = ground(0.10);
    theme.button = ground(0.16);
    theme.buttonHover = ground(0.24);
    theme.buttonDown = ground(0.34);
    theme.activeFrame = ground(0.28);
    theme.inactiveFrame = ground(0.16);
    theme.line = Mix(theme.window, theme.text, 0.38);
    // Both give way to the text's own colour where a weak pair leaves no room between it and the ground.
    theme.faintText = Ink(theme.window, theme.text, 0.5, theme.button, kLegible);
    theme.accent = Ink(theme.window, theme.text, 0.72, theme.window, kReadable);
    theme.accentText = theme.window;
    return theme;
}

const ThemeColours& Theme() {
    return Current();
}

void ApplyTheme(QApplication& application, const UiColours& colours) {
    Current() = MakeThemeColours(colours);
    // A widget that the old sheet had a hand in would keep its old palette.
    application.setStyleSheet(QString());
    QApplication::setStyle(new ThemeStyle);
    QApplication::setPalette(MakePalette(Theme()));
    application.setStyleSheet(MakeStyleSheet(Theme()));
}

QFont CodeFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPointSizeF(10.5);
    return font;
}

QFont FormFont() {
    QFont font = QApplication::font();
    font.setPixelSize(kFormFontPixels);
    return font;
}

}  // namespace pixelgrove
