#include "ui/looks/Strokes.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace wendmark {

namespace {

/// The rectangle with its sides between pixels of the screen, so that nothing of it is blurred.
QRectF onPixels(const QPainter& painter, const QRectF& place) {
    const QTransform toScreen = painter.deviceTransform();
    const QRectF there = toScreen.mapRect(place);
    const QPointF topLeft(std::round(there.left()), std::round(there.top()));
    const QPointF bottomRight(std::round(there.right()), std::round(there.bottom()));
    return toScreen.inverted().mapRect(QRectF(topLeft, bottomRight));
}

} // namespace

qreal hairlineOf(const QPainter& painter) {
    const qreal scale = painter.deviceTransform().m11();
    return std::max(1.0, std::floor(scale)) / scale;
}

void drawRound(QPainter& painter, const QRectF& place, const Surface& surface, qreal radius) {
    const qreal line = hairlineOf(painter) * static_cast<int>(surface.weight);
    const qreal inset = line / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(surface.weight == Weight::none ? QPen(Qt::NoPen) : QPen(surface.edge, line));
    painter.setBrush(surface.fill.isValid() ? QBrush(surface.fill) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(onPixels(painter, place).adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

void drawHairline(QPainter& painter, const QRectF& place, Side side, const QColor& colour) {
    const QRectF whole = onPixels(painter, place);
    const qreal line = hairlineOf(painter);
    QRectF edge = whole;
    if (side == Side::top)
        edge.setBottom(whole.top() + line);
    else if (side == Side::bottom)
        edge.setTop(whole.bottom() - line);
    else if (side == Side::left)
        edge.setRight(whole.left() + line);
    else
        edge.setLeft(whole.right() - line);
    painter.fillRect(edge, colour);
}

void drawBorder(QPainter& painter, const QRectF& place, const QColor& colour) {
    for (const Side side : {Side::top, Side::bottom, Side::left, Side::right})
        drawHairline(painter, place, side, colour);
}

QColor mixed(const QColor& one, const QColor& other, float share) {
    const auto mix = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                            mix(one.blueF(), other.blueF()));
}

} // namespace wendmark
