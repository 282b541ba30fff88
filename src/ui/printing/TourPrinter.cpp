#include "ui/printing/TourPrinter.h"

#include "ui/printing/PageLayouts.h"

#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>

namespace wendmark {

namespace {

constexpr double unitsPerInch = 96;
constexpr QMarginsF margins(18, 18, 18, 18); // Millimetres.

} // namespace

bool printTour(QPagedPaintDevice& device, const PrintedTour& tour, const QString& pictureFolder,
               const std::function<void()>& betweenSheets) {
    device.setPageMargins(margins, QPageLayout::Millimeter);
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    const double scale = device.logicalDpiX() / unitsPerInch;
    painter.scale(scale, scale);
    const QRectF page(0, 0, device.width() / scale, device.height() / scale);
    bool ok = true;
    const frmPrintTemplate stopLayout(pictureFolder);
    for (const StopSheet& sheet : tour.stops) {
        stopLayout.paint(painter, page, sheet);
        ok = device.newPage() && ok;
        if (betweenSheets)
            betweenSheets();
    }
    frmPrintProp::paint(painter, page, tour.properties);
    return painter.end() && ok;
}

} // namespace wendmark
