#pragma once

#include <QSizeF>
#include <QString>

class QPainter;
class QPointF;

/// Texts of a tour on paper. Lengths are in units of 1/96 inch.
namespace wendmark {

/// Draws HTML, black on white, into a box. What does not fit is left out from the end of a word on, and an
/// ellipsis tells so; no line is cut through. Pictures are those of the tour's folder; others stay away.
/// Returns the height that was used.
double drawHtml(QPainter& painter, const QPointF& place, const QSizeF& box, const QString& html,
                const QString& pictureFolder);

/// The same for plain text, in bold if wanted.
double drawPlainText(QPainter& painter, const QPointF& place, const QSizeF& box, const QString& text,
                     bool bold = false);

} // namespace wendmark
