#include "platform/FileConfinement.h"

#include <QFileInfo>
#include <algorithm>

namespace wendmark {

namespace {

/// Where a path really leads. A file that does not exist counts as lying in its folder, so that the engine
/// can say that it is missing.
QString realPath(const QString& path) {
    const QFileInfo file(path);
    if (file.exists() || file.isSymLink())
        return file.canonicalFilePath();
    const QString folder = QFileInfo(file.absolutePath()).canonicalFilePath();
    return folder.isEmpty() ? QString() : folder + QLatin1Char('/') + file.fileName();
}

} // namespace

bool FileConfinement::allows(const QUrl& address) const {
    if (address.scheme() != QLatin1String("file"))
        return true;
    const QString path = realPath(address.toLocalFile());
    return !path.isEmpty() && std::any_of(m_folders.begin(), m_folders.end(), [&](const QString& folder) {
        const QString home = QFileInfo(folder).canonicalFilePath();
        return !home.isEmpty() && path.startsWith(home + QLatin1Char('/'));
    });
}

void FileConfinement::interceptRequest(QWebEngineUrlRequestInfo& info) {
    if (!allows(info.requestUrl()))
        info.block(true);
}

} // namespace wendmark
