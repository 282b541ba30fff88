#pragma once

#include "publish/PrintedTour.h"

#include <QString>

class QPagedPaintDevice;

namespace wendmark {

/// Prints the tour on a printer or into a PDF file. Pictures of narrations come from `pictureFolder`. False
/// when the device fails.
bool printTour(QPagedPaintDevice& device, const PrintedTour& tour, const QString& pictureFolder);

} // namespace wendmark
