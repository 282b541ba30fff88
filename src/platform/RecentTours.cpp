#include "platform/RecentTours.h"

#include "model/HtmlText.h"
#include "platform/Settings.h"
#include "platform/Strings.h"

#include <QDir>
#include <QFileInfo>

namespace wendmark {

namespace {

constexpr qsizetype longestTitle = 500; // UTF-16 units.

/// A tour as it stands in the settings, each part one text.
struct Entry {
    RecentTour tour;
    QString place; ///< Where the folder really was, with links followed: what tells tours apart.
};

constexpr qsizetype partsOfEntry = 4;

QList<Entry> readEntries(SettingsStore& settings) {
    settings.refresh();
    const QStringList parts = settings.read(recentSettings::tours);
    QList<Entry> entries;
    for (qsizetype i = 0; i + partsOfEntry <= parts.size(); i += partsOfEntry) {
        const Entry entry{{parts.at(i + 1), parts.at(i + 3).left(longestTitle),
                           QDateTime::fromString(parts.at(i), Qt::ISODate).toLocalTime()},
                          parts.at(i + 2)};
        if (entries.size() < RecentTours::most && entry.tour.time.isValid() &&
            QDir::isAbsolutePath(entry.tour.folder))
            entries.append(entry);
    }
    return entries;
}

void storeEntries(SettingsStore& settings, const QList<Entry>& entries) {
    QStringList parts;
    for (const Entry& entry : entries)
        parts << entry.tour.time.toUTC().toString(Qt::ISODate) << entry.tour.folder << entry.place
              << entry.tour.title;
    settings.store(recentSettings::tours, parts);
}

QString placeOf(const QString& folder) {
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    return canonical.isEmpty() ? folder : canonical;
}

} // namespace

RecentTours::RecentTours(SettingsStore& settings) : m_settings(settings) {}

QList<RecentTour> RecentTours::list() const {
    QList<RecentTour> tours;
    for (const Entry& entry : readEntries(m_settings))
        tours.append(entry.tour);
    return tours;
}

void RecentTours::note(const QString& folder, const QString& title, const QDateTime& now) {
    const QString clean = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    const QString place = placeOf(clean);
    QList<Entry> entries = readEntries(m_settings);
    entries.removeIf([&](const Entry& entry) { return entry.place == place || entry.tour.folder == clean; });
    const QString shown = toQString(visibleText(toUtf8(title))).left(longestTitle);
    entries.prepend({{clean, shown, now}, place});
    storeEntries(m_settings, entries.mid(0, most));
}

void RecentTours::clear() {
    m_settings.store(recentSettings::tours, {});
}

} // namespace wendmark
