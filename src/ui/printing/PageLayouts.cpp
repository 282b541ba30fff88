#include "ui/printing/PageLayouts.h"

#include "platform/Strings.h"
#include "ui/printing/PrintedText.h"

#include <QCoreApplication>
#include <QPainter>
#include <QRegularExpression>
#include <algorithm>

namespace wendmark {

namespace {

constexpr double gap = 8;
constexpr double headerHeight = 40;
constexpr double captionWidth = 80;
constexpr double rowHeight = 18;
constexpr QSizeF pictureSize(160, 120);
constexpr double propertyCaptionWidth = 240;

QString tr(const char* text) {
    return QCoreApplication::translate("wendmark::PageLayouts", text);
}

/// Returns what is left of the page below its header.
QRectF paintHeader(QPainter& painter, const QRectF& page, const std::string& header) {
    drawPlainText(painter, page.topLeft(), {page.width(), headerHeight - gap}, toQString(header), true);
    painter.setPen(Qt::black);
    const double line = page.top() + headerHeight - gap / 2;
    painter.drawLine(QPointF(page.left(), line), QPointF(page.right(), line));
    return page.adjusted(0, headerHeight + gap, 0, 0);
}

/// A caption with its text beside it; returns how far down both reach.
template <typename Draw>
double paintCaptioned(QPainter& painter, const QPointF& place, double width, const QString& caption,
                      const Draw& draw) {
    const double captionHeight = drawPlainText(painter, place, {width, rowHeight * 2}, caption, true);
    const double textHeight = draw(QPointF(place.x() + width + gap, place.y()));
    return place.y() + std::max(captionHeight, textHeight) + gap / 2;
}

} // namespace

void frmPrintTemplate::paint(QPainter& painter, const QRectF& page, const StopSheet& sheet) const {
    const QRectF room = paintHeader(painter, page, sheet.header);
    const double height = room.height() / blocksOnAPage;
    for (std::size_t k = 0; k < blocksOnAPage; ++k) {
        const QRectF place(room.left(), room.top() + static_cast<double>(k) * height, room.width(),
                           height - 2 * gap);
        if (k < sheet.blocks.size())
            paintBlock(painter, place, sheet.blocks[k]);
    }
}

void frmPrintTemplate::paintBlock(QPainter& painter, const QRectF& place, const StopBlock& block) const {
    painter.setPen(QPen(Qt::gray, 0.5));
    painter.drawRect(QRectF(QPointF(place.right() - pictureSize.width(), place.top()), pictureSize));
    const double width = place.width() - pictureSize.width() - captionWidth - 2 * gap;
    double y = paintCaptioned(painter, place.topLeft(), captionWidth, tr("Title:"), [&](const QPointF& at) {
        return drawHtml(painter, at, {width, rowHeight * 2}, toQString(block.title), {});
    });
    y = paintCaptioned(painter, {place.left(), y}, captionWidth, tr("Page:"), [&](const QPointF& at) {
        return drawPlainText(painter, at, {width, rowHeight * 2}, toQString(block.address));
    });
    QString text = toQString(block.text);
    // The line break between narration and instruction; those inside them are of no meaning in HTML.
    text.replace(QRegularExpression(QStringLiteral("\r(?!\n)")), QStringLiteral("<br>"));
    paintCaptioned(painter, {place.left(), y}, captionWidth, tr("Narration:"), [&](const QPointF& at) {
        return drawHtml(painter, at, {width, place.bottom() - at.y()}, text, m_pictureFolder);
    });
    painter.setPen(QPen(Qt::lightGray, 0.5));
    painter.drawLine(QPointF(place.left(), place.bottom() + gap),
                     QPointF(place.right(), place.bottom() + gap));
}

void frmPrintProp::paint(QPainter& painter, const QRectF& page, const PropertySheet& sheet) {
    const QRectF room = paintHeader(painter, page, sheet.header);
    const double valueWidth = room.width() - propertyCaptionWidth - gap;
    double y = room.top();
    for (const PropertySheet::Row& row : sheet.rows)
        y = paintCaptioned(
            painter, {room.left(), y}, propertyCaptionWidth, toQString(row.caption), [&](const QPointF& at) {
                return drawPlainText(painter, at, {valueWidth, rowHeight * 3}, toQString(row.value));
            });
    y += gap;
    const double half = (room.width() - gap) / 2;
    const auto paintPair = [&](const QString& left, const QString& right, bool bold) {
        const double leftHeight = drawPlainText(painter, {room.left(), y}, {half, rowHeight * 2}, left, bold);
        const double rightHeight =
            drawPlainText(painter, {room.left() + half + gap, y}, {half, rowHeight * 2}, right, bold);
        y += std::max(leftHeight, rightHeight) + gap / 2;
    };
    paintPair(tr("Launch URL"), tr("Launch File Name"), true);
    const std::size_t points = sheet.launchURLs.size();
    for (std::size_t i = 0; i < points; ++i) {
        // The last line that has room says how many have none.
        if (y + 4 * rowHeight > room.bottom() && i + 1 < points) {
            paintPair(tr("... and %1 more").arg(points - i), {}, false);
            return;
        }
        paintPair(toQString(sheet.launchURLs[i]), toQString(sheet.launchFileNames[i]), false);
    }
}

} // namespace wendmark
