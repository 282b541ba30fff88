#include "ui/controls/LoadingIndicator.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <numbers>

namespace wendmark {

namespace {

constexpr int side = 24; // Pixels, like the toolbar's icons.
constexpr qreal radius = 8;

/// The lit part of the moon in frame 1 (new) to 8: the half disc towards the sun, plus or minus the ellipse
/// whose edge is the border between day and night.
QPainterPath litPart(std::int16_t frame, const QPointF& centre) {
    const qreal phase = (frame - 1) * 2 * std::numbers::pi / LoadingIndicator::frameCount;
    const bool waxing = phase < std::numbers::pi;
    QPainterPath half;
    half.moveTo(centre);
    const QRectF disc(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    half.arcTo(disc, waxing ? -90 : 90, 180);
    half.closeSubpath();
    const qreal width = std::abs(std::cos(phase)) * radius;
    QPainterPath border;
    border.addEllipse(centre, width, radius);
    return std::cos(phase) > 0 ? half.subtracted(border) : half.united(border);
}

} // namespace

LoadingIndicator::LoadingIndicator(QWidget* parent) : QWidget(parent) {
    setFixedSize(side, side);
}

void LoadingIndicator::tick(bool busy) {
    if (m_busyFrame == 0)
        m_busyFrame = 1;
    if (!busy) {
        show(1);
        return;
    }
    show(m_busyFrame);
    ++m_busyFrame;
    if (m_busyFrame > frameCount)
        m_busyFrame = 1;
}

void LoadingIndicator::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = palette().color(QPalette::ButtonText);
    const QPointF centre(width() / 2.0, height() / 2.0);
    painter.fillPath(litPart(m_shownFrame, centre), ink);
    painter.setPen(QPen(ink, 1.5));
    painter.drawEllipse(centre, radius, radius);
}

void LoadingIndicator::show(std::int16_t frame) {
    if (frame == m_shownFrame)
        return;
    m_shownFrame = frame;
    update();
}

} // namespace wendmark
