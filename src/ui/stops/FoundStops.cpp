#include "ui/stops/FoundStops.h"

#include "base/Files.h"
#include "base/Log.h"
#include "commands/StopCommands.h"
#include "commands/TourDocument.h"
#include "model/StopAddress.h"
#include "model/StopTransfer.h"
#include "platform/Strings.h"
#include "ui/ProgramParts.h"
#include "ui/dialogs/PageFiles.h"
#include "ui/dialogs/TourFileNames.h"
#include "ui/stops/StopListModel.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMimeData>
#include <QMimeDatabase>
#include <QUrl>
#include <algorithm>
#include <map>

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

/// Takes files into the tour as the pages of stops.
class FileTaker final {
public:
    FileTaker(const ProgramParts& parts, QWidget& window) : m_parts(parts), m_window(window) {}

    /// Address of the page that the file becomes; empty when it is none, or the author gives up.
    std::string take(const QString& path) {
        const FileKind kind = kindOf(path);
        if (const char* const reason = reasonAgainst(path, kind))
            return leaveOut(path, reason);
        const std::string name = kind == FileKind::page ? m_parts.fileNames.nameForPage(path, &m_window)
                                                        : m_parts.fileNames.nameForImage(path, &m_window);
        if (name.empty())
            return leaveOut(path, "the author gave it no name");
        if (isTaken(name))
            return leaveOut(path, "another file that came with it has its name");
        if (!addFiles(path, name, kind))
            return leaveOut(path, "the author gave it up");
        const std::string copy = m_parts.document.workspace().workingFile(name);
        return stopAddressFor(toUtf8(QUrl::fromLocalFile(toQString(copy)).toString(QUrl::FullyEncoded)));
    }

    const std::vector<AddedFile>& files() const { return m_files; }

private:
    /// None: it can be taken.
    static const char* reasonAgainst(const QString& path, FileKind kind) {
        const QFileInfo info(path);
        if (!info.exists())
            return "there is no such file";
        if (!info.isFile())
            return "it is no file";
        if (kind == FileKind::other)
            return "it is neither a page nor a picture";
        return info.isReadable() ? nullptr : "it cannot be read";
    }

    std::string leaveOut(const QString& path, const char* reason) const {
        m_parts.document.log().warn(toUtf8(path) + " is left out: " + reason);
        return {};
    }

    bool addFiles(const QString& path, const std::string& name, FileKind kind) {
        const std::vector<AddedFile> added = kind == FileKind::page
                                                 ? filesOfPage(m_parts, path, name, m_files, m_window)
                                                 : std::vector<AddedFile>{{toUtf8(path), name}};
        for (const AddedFile& file : added) {
            if (!isTaken(file.name)) // Else it comes already.
                m_files.push_back(file);
        }
        return !added.empty();
    }

    /// By another of the files that come at the same time.
    bool isTaken(const std::string& name) const {
        return std::any_of(m_files.begin(), m_files.end(),
                           [&](const AddedFile& file) { return file.name == name; });
    }

    const ProgramParts& m_parts;
    QWidget& m_window;
    std::vector<AddedFile> m_files;
};

int roomIn(const ProgramParts& parts) {
    return std::max(0, tourCapacity - parts.document.model().stopCount());
}

StopListResult takeLinks(const ProgramParts& parts, const FoundLinks& found, std::int16_t position,
                         QWidget& window, QString& notice) {
    const int room = roomIn(parts);
    if (found.stops.size() + found.files.size() > static_cast<std::size_t>(room))
        return {StopListResult::Answer::noRoom, room, {}}; // Before anybody is asked for names.
    std::vector<Stop> stops = found.stops;
    FileTaker taker(parts, window);
    std::size_t leftOut = found.leftOut;
    std::size_t taken = 0;
    for (const FoundFile& file : found.files) {
        const std::size_t place = std::min(file.stopsAhead + taken, stops.size());
        Stop stop = newStop();
        stop.stopTitle = file.title;
        stop.stopURL = taker.take(toQString(file.path));
        if (stop.stopURL.empty()) {
            ++leftOut;
            continue;
        }
        ++taken;
        stops.insert(stops.begin() + static_cast<std::ptrdiff_t>(place), stop);
    }
    if (leftOut > 0)
        notice = tr("Left out: %n", static_cast<int>(leftOut));
    if (stops.empty()) {
        notice = tr("There is no address of a page in it.");
        return {StopListResult::Answer::unchanged, room, {}};
    }
    for (const Stop& stop : stops)
        parts.document.noteUntested(stop.stopURL);
    return parts.document.insertStops(position, stops, taker.files());
}

/// The file of a stop of another program that this tour lacks, or has with other contents; empty: none.
QString missingFile(const ProgramParts& parts, const QDir& folder, const Stop& stop) {
    if (isRemoteAddress(stop.stopURL) || isNewPage(stop.stopURL))
        return {};
    const std::string name = localFileName(stop.stopURL);
    const QString path = folder.filePath(toQString(name));
    const std::string present = parts.document.workspace().workingFile(name);
    const files::Contents source = files::read(toUtf8(path));
    if (!source.outcome.ok() || QFileInfo(path).dir() != folder)
        return {};
    const files::Contents own = files::read(present);
    return own.outcome.ok() && own.bytes == source.bytes ? QString() : path;
}

/// Stops that come from another program bring their pages along.
StopListResult takeOwn(const ProgramParts& parts, const FoundStops& found, std::int16_t position,
                       QWidget& window) {
    std::vector<Stop> stops = *found.own;
    const int room = roomIn(parts);
    if (stops.size() > static_cast<std::size_t>(room))
        return {StopListResult::Answer::noRoom, room, {}};
    FileTaker taker(parts, window);
    const QDir folder(found.folder);
    const bool elsewhere = folder.dirName() == QLatin1String("NewTour") &&
                           folder != QDir(toQString(parts.document.workspace().folders().newTourPath));
    std::map<std::string, std::string> addresses; // What those of before have become.
    for (Stop& stop : stops) {
        if (const auto known = addresses.find(stop.stopURL); known != addresses.end()) {
            stop.stopURL = known->second;
        } else if (const QString path = elsewhere ? missingFile(parts, folder, stop) : QString();
                   !path.isEmpty()) {
            const std::string taken = taker.take(path);
            addresses[stop.stopURL] = taken.empty() ? stop.stopURL : taken;
            stop.stopURL = addresses[stop.stopURL];
        }
    }
    return parts.document.insertStops(position, stops, taker.files());
}

} // namespace

FoundStops findStops(const QMimeData& data) {
    FoundStops found;
    found.own = decodeStops(data.data(toQString(stopsMimeType)).toStdString());
    if (!found.own)
        found.links = findLinks(data);
    found.folder = toQString(data.data(QLatin1String(stopsFolderType)).toStdString());
    return found;
}

StopListResult takeStops(const ProgramParts& parts, const FoundStops& found, int position, QWidget& window,
                         QString& notice) {
    const auto place = static_cast<std::int16_t>(position);
    StopListResult result = found.own ? takeOwn(parts, found, place, window)
                                      : takeLinks(parts, found.links, place, window, notice);
    QStringList notCopied;
    for (const std::string& name : result.notCopied)
        notCopied.append(toQString(name));
    if (!notCopied.isEmpty())
        notice = tr("Could not be copied into the tour: %1").arg(notCopied.join(QStringLiteral(", ")));
    return result;
}

} // namespace wendmark
