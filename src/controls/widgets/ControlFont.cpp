#include "controls/widgets/ControlFont.h"

#include <QFontMetrics>
#include <algorithm>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr int kProbePixels = 100;
constexpr double kLineSpace = 1.4;  // the height of a part for each of its text
constexpr int kNaturalStretch = 100;
constexpr int kStretches[] = {90, 80};
constexpr double kLeastSize = 0.6;  // of the fitted font
constexpr int kLegiblePixels = 6;

}  // namespace

QFont FittedFont(int smallestHeight) {
    QFont font = FormFont();
    font.setPixelSize(kProbePixels);
    const double probe = QFontMetrics(font).size(Qt::TextSingleLine, QStringLiteral("X")).height();
    const double ratio = probe / std::max(1, smallestHeight) * kLineSpace;
    font.setPixelSize(std::max(1, int(kProbePixels / ratio)));
    return font;
}

QFont NarrowedFont(QFont font, const QString& text, int width) {
    const auto fits = [&] { return QFontMetrics(font).horizontalAdvance(text) <= width; };
    for (int stretch : kStretches) {
        if (fits()) return font;
        font.setStretch(std::min(stretch, font.stretch() > 0 ? font.stretch() : kNaturalStretch));
    }
    const int least = std::max(int(font.pixelSize() * kLeastSize), kLegiblePixels);
    while (font.pixelSize() > least && !fits())
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

}  // namespace pixelgrove
