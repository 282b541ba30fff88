#pragma once

#include <QStringList>
#include <QUrl>
#include <QWebEngineUrlRequestInterceptor>

namespace wendmark {

/// Blocks every request for a file outside the allowed folders. A tour is other people's HTML that is run
/// from disk, and a page from disk may talk to the web, so what it could read it could send away. Its parent
/// is the page that it confines.
class FileConfinement final : public QWebEngineUrlRequestInterceptor {
    Q_OBJECT

public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    /// A folder counts from when it exists. `closedFolder` may be empty; it is open to its own pages only:
    /// any page of it may be shown, but what else lies there is read by none that comes from elsewhere. Files
    /// and folders in it whose names begin with a dot are not part of it.
    void setAllowedFolders(const QStringList& folders, const QString& closedFolder = {}) {
        m_folders = folders;
        m_closedFolder = closedFolder;
    }

    /// While the program frames the page that is shown by one of its own, at this address, that one reads
    /// what the page may read. An empty address ends it.
    void setFramingPage(const QUrl& address);

    /// Whether a page may show or read what is at this address. Addresses other than of files always may.
    bool allows(const QUrl& address) const;

    void interceptRequest(QWebEngineUrlRequestInfo& info) override;

private:
    bool mayRead(const QUrl& address) const;
    bool showsClosedFolder() const;

    QStringList m_folders;
    QString m_closedFolder;
    QUrl m_framingPage;
};

} // namespace wendmark
