#include "ui/site/StopLine.h"

#include "commands/TourDocument.h"
#include "model/HtmlText.h"
#include "model/StopAddress.h"
#include "platform/Strings.h"
#include "ui/controls/ElidedLabel.h"

namespace wendmark {

StopLine::StopLine(TourDocument& document, QWidget* window)
    : QObject(window), m_document(document), m_label(new ElidedLabel(window)) {
    m_label->setObjectName(QStringLiteral("lblStop"));
    document.addListener(*this);
    tell();
}

StopLine::~StopLine() {
    m_document.removeListener(*this);
}

void StopLine::showPage(const QString& location) {
    m_page = stopAddressFor(toUtf8(location));
    tell();
}

void StopLine::tellStored(int stop) {
    m_storedInto = stop;
    m_stored = m_document.model().stops.at(static_cast<std::int16_t>(stop)).stopURL;
    tell();
}

void StopLine::tell() {
    const TourModel& tour = m_document.model();
    const std::int16_t n = tour.currentStop;
    if (n < 1 || n > tour.stops.held()) {
        m_label->showText(tr("The tour shows its opening page, which has no page of its own to choose."));
        return;
    }
    const Stop& stop = tour.stops.at(n);
    const QString name =
        tr("stop %1 of %2, \"%3\"").arg(n).arg(tour.stopCount()).arg(toQString(visibleText(stop.stopTitle)));
    if (stop.stopURL != m_page || m_page.empty())
        m_label->showText(tr("For %1").arg(name));
    else if (m_storedInto == n && m_stored == m_page)
        m_label->showText(tr("Done: this page is now that of %1").arg(name));
    else
        m_label->showText(tr("This is the page of %1").arg(name));
}

} // namespace wendmark
