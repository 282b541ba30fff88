#include "platform/FileConfinement.h"

#include <QDir>
#include <QFileInfo>
#include <QWebEngineHistory>
#include <QWebEnginePage>
#include <algorithm>

namespace wendmark {

namespace {

/// The path of a file address, whether or not it names this machine. Empty where the name that the engine
/// would look for is not the one that is looked up here: another machine's, or bytes that are no text.
QString pathOf(const QUrl& address) {
    const QByteArray name = QByteArray::fromPercentEncoding(address.path(QUrl::FullyEncoded).toUtf8());
    const bool here = address.host().isEmpty() || address.host() == QLatin1String("localhost");
    if (!here || name.contains('\0') || QString::fromUtf8(name).toUtf8() != name)
        return {};
    QUrl hostless = address;
    hostless.setHost({});
    return hostless.toLocalFile();
}

/// Where a path really leads. A file that does not exist counts as lying in its folder, so that the engine
/// can say that it is missing.
QString realPath(const QString& path) {
    const QFileInfo file(path);
    if (file.exists() || file.isSymLink())
        return file.canonicalFilePath();
    const QString folder = QFileInfo(file.absolutePath()).canonicalFilePath();
    return folder.isEmpty() ? QString() : folder + QLatin1Char('/') + file.fileName();
}

/// Whether this file lies in one of the folders.
bool isWithin(const QUrl& address, const QStringList& folders) {
    const QString name = pathOf(address);
    const QString path = name.isEmpty() ? QString() : realPath(name);
    return !path.isEmpty() && std::any_of(folders.begin(), folders.end(), [&](const QString& folder) {
        const QString home = QFileInfo(folder).canonicalFilePath();
        return !home.isEmpty() && path.startsWith(home + QLatin1Char('/'));
    });
}

/// Whether it lies in this folder where authors keep what they show: files and folders whose names begin with
/// a dot are for programs.
bool isShownIn(const QUrl& address, const QString& folder) {
    if (!isWithin(address, {folder}))
        return false;
    const QString home = QFileInfo(folder).canonicalFilePath();
    const QString named = QDir::cleanPath(pathOf(address));
    const QString below = realPath(pathOf(address)).mid(home.size());
    return !below.contains(QLatin1String("/.")) && !QFileInfo(named).fileName().startsWith(QLatin1Char('.'));
}

bool isFile(const QUrl& address) {
    return address.scheme() == QLatin1String("file");
}

} // namespace

bool FileConfinement::allows(const QUrl& address) const {
    return !isFile(address) || isWithin(address, m_folders) || isShownIn(address, m_closedFolder);
}

void FileConfinement::setFramingPage(const QUrl& address) {
    m_framingPage = showsClosedFolder() ? address : QUrl();
}

void FileConfinement::interceptRequest(QWebEngineUrlRequestInfo& info) {
    const QUrl address = info.requestUrl();
    const bool isPage = info.resourceType() == QWebEngineUrlRequestInfo::ResourceTypeMainFrame;
    const bool allowed = isPage ? allows(address) : mayRead(address);
    if (!allowed)
        info.block(true);
}

bool FileConfinement::mayRead(const QUrl& address) const {
    return !isFile(address) || isWithin(address, m_folders) || (allows(address) && showsClosedFolder());
}

/// The page that is shown, not the one that is coming: while it gives way it still asks for files.
bool FileConfinement::showsClosedFolder() const {
    const auto* const page = qobject_cast<QWebEnginePage*>(parent());
    const QUrl shown = page == nullptr ? QUrl() : page->history()->currentItem().url();
    return isFile(shown) && (shown == m_framingPage || isShownIn(shown, m_closedFolder));
}

} // namespace wendmark
