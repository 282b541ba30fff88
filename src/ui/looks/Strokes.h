#pragma once

#include <QColor>
#include <QRect>

class QPainter;

/// Lines and shapes that are as sharp at 125 % as at 100 or 200 %: they begin and end on pixels of the
/// screen.
namespace wendmark {

enum class Side { top, bottom, left, right };

/// How an edge is drawn, in hairlines: as many pixels of the screen as fit into one of the program's.
enum class Weight { none = 0, hairline = 1, strong = 2 };

struct Surface {
    QColor fill;
    QColor edge;
    Weight weight = Weight::hairline;
};

/// Width of a hairline in the painter's units.
qreal hairlineOf(const QPainter& painter);

/// A rectangle with round corners, its edge inside of `place`.
void drawRound(QPainter& painter, const QRectF& place, const Surface& surface, qreal radius);

/// A hairline along one side of `place`, inside of it.
void drawHairline(QPainter& painter, const QRectF& place, Side side, const QColor& colour);

/// Hairlines along all sides.
void drawBorder(QPainter& painter, const QRectF& place, const QColor& colour);

/// Of two colours, with this much of the second one: 0 to 1.
QColor mixed(const QColor& one, const QColor& other, float share);

} // namespace wendmark
