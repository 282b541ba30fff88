#include "platform/FileConfinement.h"

#include <QFileInfo>
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

} // namespace

bool FileConfinement::allows(const QUrl& address) const {
    if (address.scheme() != QLatin1String("file"))
        return true;
    const QString name = pathOf(address);
    const QString path = name.isEmpty() ? QString() : realPath(name);
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
