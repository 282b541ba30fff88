#include "ui/looks/LookPainting.h"

#include "ui/looks/Strokes.h"

#include <QAbstractScrollArea>
#include <QGroupBox>
#include <QPainter>
#include <QStyleOption>
#include <QVariant>
#include <algorithm>

namespace wendmark {

namespace {

constexpr qreal radius = 4;
constexpr qreal boxRadius = 3;
constexpr qreal signStroke = 1.5; // Of the program's icons, too.
constexpr float hovered = 0.08F;
constexpr float pressed = 0.2F;
constexpr float chosen = 0.25F;
constexpr float hoveredPrimary = 0.12F;

bool has(const QStyleOption& option, QStyle::StateFlag flag) {
    return option.state.testFlag(flag);
}

bool isEnabled(const QStyleOption& option) {
    return has(option, QStyle::State_Enabled);
}

bool isHovered(const QStyleOption& option) {
    return isEnabled(option) && has(option, QStyle::State_MouseOver);
}

QColor colour(const QStyleOption& option, QPalette::ColorRole role) {
    return option.palette.color(role);
}

/// How much of the accent a control has taken on.
float touch(const QStyleOption& option) {
    if (has(option, QStyle::State_Sunken))
        return pressed;
    if (has(option, QStyle::State_On))
        return chosen;
    return isHovered(option) ? hovered : 0;
}

QColor edgeOf(const QStyleOption& option) {
    if (!isEnabled(option))
        return colour(option, QPalette::Midlight);
    return colour(option, has(option, QStyle::State_HasFocus) || isHovered(option) ? QPalette::Highlight
                                                                                   : QPalette::Mid);
}

Weight weightOf(const QStyleOption& option) {
    return isEnabled(option) && has(option, QStyle::State_HasFocus) ? Weight::strong : Weight::hairline;
}

void paintPrimary(const QStyleOption& option, QPainter& painter) {
    const QColor accent = colour(option, QPalette::Highlight);
    const QColor ink = colour(option, QPalette::HighlightedText);
    const bool down = has(option, QStyle::State_Sunken);
    const QColor fill = mixed(accent, down ? QColor(Qt::black) : ink,
                              down                ? pressed
                              : isHovered(option) ? hoveredPrimary
                                                  : 0);
    drawRound(painter, option.rect, {fill, {}, Weight::none}, radius);
    if (has(option, QStyle::State_HasFocus))
        drawRound(painter, QRectF(option.rect).adjusted(2, 2, -2, -2), {{}, ink}, radius - 2);
}

/// An open arrow head that points down, turned by so many degrees.
void paintArrow(const QStyleOption& option, QPainter& painter, qreal degrees) {
    const qreal half = std::min({option.rect.width() / 3.0, option.rect.height() / 3.0, 4.0});
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour(option, QPalette::ButtonText), signStroke, Qt::SolidLine, Qt::RoundCap));
    painter.translate(QRectF(option.rect).center());
    painter.rotate(degrees);
    painter.drawPolyline(
        QPolygonF({QPointF(-half, -half / 2), QPointF(0, half / 2), QPointF(half, -half / 2)}));
    painter.restore();
}

Surface boxOf(const QStyleOption& option, bool filled) {
    if (!filled)
        return {colour(option, QPalette::Base), edgeOf(option), weightOf(option)};
    const QColor fill = colour(option, QPalette::Highlight);
    return {fill, fill, Weight::hairline};
}

} // namespace

bool isPrimary(const QStyleOption& option, const QWidget* widget) {
    if (!isEnabled(option))
        return false;
    if (const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(&option))
        return button->features.testFlag(QStyleOptionButton::DefaultButton);
    return widget != nullptr && widget->property("isPrimary").toBool();
}

void paintButton(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    if (isPrimary(option, widget)) {
        paintPrimary(option, painter);
        return;
    }
    const QColor fill =
        mixed(colour(option, QPalette::Button), colour(option, QPalette::Highlight), touch(option));
    drawRound(painter, option.rect, {fill, edgeOf(option), weightOf(option)}, radius);
}

/// On a toolbar it is flat until the mouse comes.
void paintToolButton(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    if (!has(option, QStyle::State_AutoRaise)) {
        paintButton(option, painter, widget);
        return;
    }
    const float share = touch(option);
    if (share > 0 && isEnabled(option))
        drawRound(
            painter, option.rect,
            {mixed(colour(option, QPalette::Window), colour(option, QPalette::Highlight), share + hovered),
             {},
             Weight::none},
            radius);
}

void paintFocus(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    if (widget != nullptr && (widget->inherits("QPushButton") || isPrimary(option, widget)))
        return; // They show it at their edge.
    const auto role = has(option, QStyle::State_Selected) ? QPalette::HighlightedText : QPalette::Highlight;
    drawRound(painter, option.rect, {{}, colour(option, role)}, boxRadius);
}

void paintField(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
    const bool isWritten = isEnabled(option) && !has(option, QStyle::State_ReadOnly);
    const QColor paper = colour(option, isWritten ? QPalette::Base : QPalette::Window);
    if (frame == nullptr || frame->lineWidth <= 0) {
        painter.fillRect(option.rect, paper);
        return;
    }
    drawRound(painter, option.rect, {paper, {}, Weight::none}, radius);
    paintFieldFrame(option, painter, widget);
}

void paintFieldFrame(const QStyleOption& option, QPainter& painter, const QWidget*) {
    drawRound(painter, option.rect, {{}, edgeOf(option), weightOf(option)}, radius);
}

/// What is worked with has a stronger edge than what is only looked at.
void paintFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    const bool isField = qobject_cast<const QAbstractScrollArea*>(widget) != nullptr && isEnabled(option);
    drawBorder(painter, option.rect, colour(option, isField ? QPalette::Mid : QPalette::Midlight));
}

void paintMenuFrame(const QStyleOption& option, QPainter& painter, const QWidget*) {
    drawBorder(painter, option.rect, colour(option, QPalette::Mid));
}

/// Below its title.
void paintGroup(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    constexpr int gap = 4;
    QRect frame = option.rect;
    const auto* const group = qobject_cast<const QGroupBox*>(widget);
    if (group != nullptr && !group->title().isEmpty())
        frame.setTop(frame.top() + option.fontMetrics.height() + gap);
    drawRound(painter, frame, {{}, colour(option, QPalette::Midlight)}, radius);
}

void paintCheckBox(const QStyleOption& option, QPainter& painter, const QWidget*) {
    const bool half = has(option, QStyle::State_NoChange);
    const bool filled = half || has(option, QStyle::State_On);
    const QRectF box(option.rect);
    drawRound(painter, box, boxOf(option, filled), boxRadius);
    if (!filled)
        return;
    const auto at = [&box](qreal x, qreal y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour(option, QPalette::HighlightedText), 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawPolyline(half ? QPolygonF({at(0.28, 0.5), at(0.72, 0.5)})
                              : QPolygonF({at(0.24, 0.52), at(0.42, 0.7), at(0.76, 0.3)}));
    painter.restore();
}

void paintRadioButton(const QStyleOption& option, QPainter& painter, const QWidget*) {
    const bool filled = has(option, QStyle::State_On);
    const QRectF disc(option.rect);
    drawRound(painter, disc, boxOf(option, filled), disc.width() / 2);
    if (!filled)
        return;
    const qreal inset = disc.width() / 3;
    const QRectF dot = disc.adjusted(inset, inset, -inset, -inset);
    drawRound(painter, dot, {colour(option, QPalette::HighlightedText), {}, Weight::none}, dot.width() / 2);
}

void paintTabBarBase(const QStyleOption& option, QPainter& painter, const QWidget*) {
    drawHairline(painter, option.rect, Side::bottom, colour(option, QPalette::Midlight));
}

/// The chosen one is underlined.
void paintTab(const QStyleOption& option, QPainter& painter, const QWidget*) {
    constexpr qreal thickness = 3;
    const bool selected = has(option, QStyle::State_Selected);
    if (!selected && !isHovered(option))
        return;
    QRectF line(option.rect);
    line.setTop(line.bottom() - thickness);
    painter.fillRect(line, colour(option, selected ? QPalette::Highlight : QPalette::Mid));
}

void paintHeader(const QStyleOption& option, QPainter& painter, const QWidget*) {
    painter.fillRect(option.rect, colour(option, QPalette::Window));
    for (const Side side : {Side::bottom, Side::right})
        drawHairline(painter, option.rect, side, colour(option, QPalette::Midlight));
}

void paintArrowUp(const QStyleOption& option, QPainter& painter, const QWidget*) {
    paintArrow(option, painter, 180);
}

void paintArrowDown(const QStyleOption& option, QPainter& painter, const QWidget*) {
    paintArrow(option, painter, 0);
}

void paintArrowLeft(const QStyleOption& option, QPainter& painter, const QWidget*) {
    paintArrow(option, painter, 90);
}

void paintArrowRight(const QStyleOption& option, QPainter& painter, const QWidget*) {
    paintArrow(option, painter, 270);
}

void paintNothing(const QStyleOption&, QPainter&, const QWidget*) {}

void paintComboBox(const QStyleOption& option, QPainter& painter, const QRect& arrow) {
    const auto* const combo = qstyleoption_cast<const QStyleOptionComboBox*>(&option);
    const bool isField = combo != nullptr && combo->editable;
    const QColor fill =
        isField ? colour(option, isEnabled(option) ? QPalette::Base : QPalette::Window)
                : mixed(colour(option, QPalette::Button), colour(option, QPalette::Highlight), touch(option));
    drawRound(painter, option.rect, {fill, edgeOf(option), weightOf(option)}, radius);
    QStyleOption place(option);
    place.rect = arrow;
    paintArrow(place, painter, 0);
}

void paintScrollBar(const QStyleOption& option, QPainter& painter, const QRect& slider) {
    constexpr qreal inset = 3;
    painter.fillRect(option.rect, colour(option, QPalette::Window));
    if (!isEnabled(option) || slider.isEmpty())
        return;
    const bool touched = isHovered(option) || has(option, QStyle::State_Sunken);
    const QRectF handle = QRectF(slider).adjusted(inset, inset, -inset, -inset);
    drawRound(painter, handle, {colour(option, touched ? QPalette::Dark : QPalette::Mid), {}, Weight::none},
              std::min(handle.width(), handle.height()) / 2);
}

} // namespace wendmark
