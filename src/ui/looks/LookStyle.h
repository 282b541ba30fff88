#pragma once

#include <QProxyStyle>

namespace wendmark {

/// The program's own style: flat controls with hairlines, on a grid of 8 pixels, in the colours of whatever
/// palette there is. What it does not draw itself, the toolkit's plain style does.
class LookStyle final : public QProxyStyle {
    Q_OBJECT

public:
    LookStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;

private:
    void drawChosenMenuItem(const QStyleOption& option, QPainter& painter, const QWidget* widget) const;
    void drawToolButtonLabel(const QStyleOption& option, QPainter& painter, const QWidget* widget) const;
    QRect scrollBarPart(const QStyleOptionComplex& option, SubControl part, const QWidget* widget) const;
};

} // namespace wendmark
