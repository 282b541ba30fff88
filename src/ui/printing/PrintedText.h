#pragma once

#include <QSizeF>
#include <QString>

class QPainter;
class QPointF;

/// Texts of a tour on paper. Lengths are in units of 1/96 inch.
namespace wendmark {

/// UTF-16 units of a text that are laid out: many times what fits into a box, tags included.
inline constexpr qsizetype mostLaidOut = 20'000;

/// Draws HTML, black on white, into a box. What does not fit is left out from the end of a word on, and an
/// ellipsis tells so; no line is cut through. Pictures are those of the tour's folder; others stay away.
/// Returns the height that was used.
double drawHtml(QPainter& painter, const QPointF& place, const QSizeF& box, const QString& html,
                const QString& pictureFolder);

/// The same for plain text, in bold if wanted.
double drawPlainText(QPainter& painter, const QPointF& place, const QSizeF& box, const QString& text,
                     bool bold = false);

} // namespace wendmark
