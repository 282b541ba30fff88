#include "ui/stops/FoundStops.h"

#include "commands/StopCommands.h"
#include "commands/TourDocument.h"
#include "model/StopAddress.h"
#include "model/StopTransfer.h"
#include "platform/Strings.h"
#include "ui/ProgramParts.h"
#include "ui/dialogs/TourFileNames.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMimeData>
#include <QMimeDatabase>
#include <QUrl>
#include <algorithm>

namespace wendmark {

namespace {

QString tr(const char* text, int n = -1) {
    return QCoreApplication::translate("FoundStops", text, nullptr, n);
}

bool isEmpty(const FoundLinks& found) {
    return found.stops.empty() && found.files.empty();
}

FoundLinks findLinks(const QMimeData& data) {
    if (data.hasHtml()) {
        if (FoundLinks found = linksInHtml(toUtf8(data.html())); !isEmpty(found))
            return found;
    }
    const QString list = QStringLiteral("text/uri-list");
    if (data.hasFormat(list))
        return linksInUriList(data.data(list).toStdString());
    return linksInPlainText(toUtf8(data.text()));
}

enum class FileKind { page, picture, other };

/// What browsers show in a frame, by the name alone, as they do.
FileKind kindOf(const QString& path) {
    const QMimeType type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    if (type.name() == QLatin1String("text/html") || type.name() == QLatin1String("application/xhtml+xml"))
        return FileKind::page;
    return type.name().startsWith(QLatin1String("image/")) ? FileKind::picture : FileKind::other;
}

/// Takes files into the tour as the pages of new stops.
class FileTaker final {
public:
    FileTaker(const ProgramParts& parts, QWidget& window) : m_parts(parts), m_window(window) {}

    /// Puts the stop for this file behind the first `place` ones; without one, the file is left out.
    bool take(const FoundFile& file, std::vector<Stop>& stops, std::size_t place) {
        const QString path = toQString(file.path);
        const FileKind kind = kindOf(path);
        const QFileInfo info(path);
        if (kind == FileKind::other || !info.isFile() || !info.isReadable())
            return false;
        const std::string name = kind == FileKind::page ? m_parts.fileNames.nameForPage(path, &m_window)
                                                        : m_parts.fileNames.nameForImage(path, &m_window);
        if (name.empty() || isTaken(name))
            return false;
        m_files.push_back({file.path, name});
        Stop stop = newStop();
        stop.stopTitle = file.title;
        const std::string copy = m_parts.document.workspace().workingFile(name);
        stop.stopURL =
            stopAddressFor(toUtf8(QUrl::fromLocalFile(toQString(copy)).toString(QUrl::FullyEncoded)));
        stops.insert(stops.begin() + static_cast<std::ptrdiff_t>(std::min(place, stops.size())), stop);
        return true;
    }

    const std::vector<AddedFile>& files() const { return m_files; }

private:
    /// By another of the files that come at the same time.
    bool isTaken(const std::string& name) const {
        return std::any_of(m_files.begin(), m_files.end(),
                           [&](const AddedFile& file) { return file.name == name; });
    }

    const ProgramParts& m_parts;
    QWidget& m_window;
    std::vector<AddedFile> m_files;
};

StopListResult takeLinks(const ProgramParts& parts, const FoundLinks& found, std::int16_t position,
                         QWidget& window, QString& notice) {
    const int room = std::max(0, tourCapacity - parts.document.model().stopCount());
    if (found.stops.size() + found.files.size() > static_cast<std::size_t>(room))
        return {StopListResult::Answer::noRoom, room, {}}; // Before anybody is asked for names.
    std::vector<Stop> stops = found.stops;
    FileTaker taker(parts, window);
    std::size_t leftOut = found.leftOut;
    for (const FoundFile& file : found.files) {
        if (!taker.take(file, stops, file.stopsAhead + taker.files().size()))
            ++leftOut;
    }
    if (leftOut > 0)
        notice = tr("Left out, because they are no pages for a tour: %n", static_cast<int>(leftOut));
    if (stops.empty()) {
        notice = tr("There is no address of a page in it.");
        return {StopListResult::Answer::unchanged, room, {}};
    }
    return parts.document.insertStops(position, stops, taker.files());
}

} // namespace

FoundStops findStops(const QMimeData& data) {
    FoundStops found;
    found.own = decodeStops(data.data(toQString(stopsMimeType)).toStdString());
    if (!found.own)
        found.links = findLinks(data);
    return found;
}

StopListResult takeStops(const ProgramParts& parts, const FoundStops& found, int position, QWidget& window,
                         QString& notice) {
    const auto place = static_cast<std::int16_t>(position);
    StopListResult result = found.own ? parts.document.insertStops(place, *found.own)
                                      : takeLinks(parts, found.links, place, window, notice);
    QStringList notCopied;
    for (const std::string& name : result.notCopied)
        notCopied.append(toQString(name));
    if (!notCopied.isEmpty())
        notice = tr("Could not be copied into the tour: %1").arg(notCopied.join(QStringLiteral(", ")));
    return result;
}

} // namespace wendmark
