#include "ui/site/ColorBar.h"

#include "ui/dialogs/DialogParts.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

namespace wendmark {

namespace {

/// Light green to bright white, numbers 10 to 15 of the usual sixteen colours.
constexpr std::array<Colour, ColorBar::segmentCount> colours = {65280, 16776960, 255, 16711935, 65535, white};

} // namespace

ColorBar::ColorBar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("picColorBar"));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    moveTo(1);
}

Colour ColorBar::colourOf(int k) {
    return colours.at(static_cast<std::size_t>(k - 1));
}

QString ColorBar::nameOf(int k) {
    const QString names[] = {tr("light green"),   tr("light cyan"), tr("light red"),
                             tr("light magenta"), tr("yellow"),     tr("white")};
    return names[k - 1];
}

QSize ColorBar::sizeHint() const {
    return {18 * dialogGap, 3 * dialogGap};
}

QSize ColorBar::minimumSizeHint() const {
    return {12 * dialogGap, 3 * dialogGap};
}

void ColorBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    PaintColorBar(painter);
}

void ColorBar::PaintColorBar(QPainter& painter) const {
    const double width = static_cast<double>(this->width()) / segmentCount;
    for (int k = 1; k <= segmentCount; ++k) {
        const Colour colour = colourOf(k);
        const QRectF segment((k - 1) * width, 0, width, height());
        painter.fillRect(segment, QColor(colour & 255, colour >> 8 & 255, colour >> 16 & 255));
        if (hasFocus() && k == m_current) {
            painter.setPen(QPen(Qt::black, 1, Qt::DotLine));
            painter.drawRect(segment.adjusted(3, 3, -4, -4));
        }
    }
    painter.setPen(Qt::black);
    for (int k = 1; k < segmentCount; ++k)
        painter.drawLine(QPointF(k * width, 0), QPointF(k * width, height()));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void ColorBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    moveTo(segmentAt(event->position().x()));
    emit chosen(m_current);
}

void ColorBar::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Left || key == Qt::Key_Right) {
        moveTo(std::clamp(m_current + (key == Qt::Key_Left ? -1 : 1), 1, segmentCount));
    } else if (key == Qt::Key_Space) {
        emit chosen(m_current);
    } else if (key >= Qt::Key_1 && key < Qt::Key_1 + segmentCount) {
        moveTo(key - Qt::Key_0);
        emit chosen(m_current);
    } else {
        QWidget::keyPressEvent(event);
    }
}

bool ColorBar::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    if (const auto* const help = dynamic_cast<QHelpEvent*>(event); help != nullptr)
        QToolTip::showText(help->globalPos(),
                           tr("Colour the selected bookmarks %1").arg(nameOf(segmentAt(help->x()))));
    return true;
}

int ColorBar::segmentAt(double x) const {
    return std::clamp(static_cast<int>(x / (static_cast<double>(width()) / segmentCount)) + 1, 1,
                      segmentCount);
}

void ColorBar::moveTo(int k) {
    m_current = k;
    setAccessibleName(tr("Colour of the selected bookmarks: %1").arg(nameOf(k)));
    update();
}

} // namespace wendmark
