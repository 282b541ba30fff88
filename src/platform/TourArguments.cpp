#include "platform/TourArguments.h"

#include <QDir>
#include <QFileInfo>
#include <QSysInfo>
#include <QUrl>

namespace wendmark {

namespace {

bool isThisComputer(const QString& host) {
    return host.isEmpty() || host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0 ||
           host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
}

/// The path of a "file:" address; anything else stays. A folder of such a name comes first.
QString pathOf(const QString& argument) {
    if (!argument.startsWith(QLatin1String("file:"), Qt::CaseInsensitive) || QFileInfo::exists(argument))
        return argument;
    QUrl address(argument);
    if (!isThisComputer(address.host()))
        return argument;
    address.setHost({});
    return address.toLocalFile();
}

QString tourOf(const QString& argument) {
    const QFileInfo tour(pathOf(argument));
    return QDir::cleanPath(tour.isFile() ? tour.absolutePath() : tour.absoluteFilePath());
}

} // namespace

QStringList toursFrom(const QStringList& arguments) {
    QStringList tours;
    for (const QString& argument : arguments) {
        if (!argument.isEmpty())
            tours.append(tourOf(argument));
    }
    return tours;
}

} // namespace wendmark
