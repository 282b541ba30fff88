#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>

class QWebEngineProfile;

namespace wendmark {

class BrowserPage;

/// Finds out what a page calls itself, by loading it where nobody sees it.
class PageTitle final : public QObject {
    Q_OBJECT

public:
    /// The profile must outlive it. Of files, only those in `folder` are read.
    PageTitle(QWebEngineProfile& profile, QString folder, QObject* parent);
    ~PageTitle() override;

    /// Asks for the title of the page at this address, and no longer for that of another.
    void ask(const QUrl& address);

    void cancel();

signals:
    /// Plain text, on one line, not empty. A page without a title is never told of.
    void found(const QUrl& address, const QString& title);

private:
    QWebEngineProfile& m_profile;
    QString m_folder;
    QPointer<BrowserPage> m_page; ///< There while it is being loaded.
    QTimer m_patience;
};

} // namespace wendmark
