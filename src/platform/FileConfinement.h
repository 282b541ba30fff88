#pragma once

#include <QStringList>
#include <QUrl>
#include <QWebEngineUrlRequestInterceptor>

namespace wendmark {

/// Blocks every request for a file outside the allowed folders. A tour is other people's HTML that is run
/// from disk, and a page from disk may talk to the web, so what it could read it could send away.
class FileConfinement final : public QWebEngineUrlRequestInterceptor {
    Q_OBJECT

public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    /// A folder counts from when it exists.
    void setAllowedFolders(const QStringList& folders) { m_folders = folders; }

    /// Whether a page may show or read what is at this address. Addresses other than of files always may.
    bool allows(const QUrl& address) const;

    void interceptRequest(QWebEngineUrlRequestInfo& info) override;

private:
    QStringList m_folders;
};

} // namespace wendmark
