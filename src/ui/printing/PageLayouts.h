#pragma once

#include "publish/PrintedTour.h"

#include <QRectF>
#include <QString>

class QPainter;

/// The two layouts of printed pages. `page` is the page without its margins, in units of 1/96 inch.
namespace wendmark {

/// Three stops below one another, each with room for a picture of its page.
class frmPrintTemplate final {
public:
    /// Pictures of narrations come from this folder.
    explicit frmPrintTemplate(QString pictureFolder) : m_pictureFolder(std::move(pictureFolder)) {}

    void paint(QPainter& painter, const QRectF& page, const StopSheet& sheet) const;

private:
    void paintBlock(QPainter& painter, const QRectF& place, const StopBlock& block) const;

    QString m_pictureFolder;
};

/// The properties of the tour. Launching points that find no room are counted in the last line.
class frmPrintProp final {
public:
    static void paint(QPainter& painter, const QRectF& page, const PropertySheet& sheet);
};

} // namespace wendmark
