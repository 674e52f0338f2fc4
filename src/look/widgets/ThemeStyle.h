// ThemeStyle: the style of all controls: Fusion, with buttons, edits, boxes, indicators and arrows painted in
// the colours of Theme(). What it paints follows the control's size down to a few pixels, as controls of
// scaled forms have them, and never clips a text to paddings.
//
// Made by ApplyTheme, owned by the application. Main thread.
#pragma once

#include <QProxyStyle>

namespace pixelgrove {

class ThemeStyle : public QProxyStyle {
    Q_OBJECT

  public:
    ThemeStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
};

}  // namespace pixelgrove
