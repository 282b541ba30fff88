#pragma once

#include "publish/PrintedTour.h"

#include <QString>
#include <functional>

class QPagedPaintDevice;

namespace wendmark {

/// Prints the tour on a printer or into a PDF file. Pictures of narrations come from `pictureFolder`. Calls
/// `betweenSheets`, unless it is empty, after each sheet of stops. False when the device fails.
bool printTour(QPagedPaintDevice& device, const PrintedTour& tour, const QString& pictureFolder,
               const std::function<void()>& betweenSheets = nullptr);

} // namespace wendmark
