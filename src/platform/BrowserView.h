#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QWidget>

class QWebEngineProfile;
class QWebEngineView;

namespace wendmark {

class BrowserPage;

/// Makes the profile that all browser views share: off the record, no downloads. It must outlive the views.
QWebEngineProfile* makeBrowserProfile(QObject* parent);

/// An embedded web browser. Hides the engine: windows see where it is, whether it is busy, and the status
/// texts of the pages.
///
/// Pages get no rights beyond showing themselves. They read files from disk only inside the allowed folders,
/// with links followed to where they lead, and open no windows; a link that asks for one, clicked, goes to
/// the system's browser if it leads to the web.
class BrowserView final : public QWidget {
    Q_OBJECT

public:
    explicit BrowserView(QWebEngineProfile& profile, QWidget* parent = nullptr);
    ~BrowserView() override;

    /// Folders whose files pages may read.
    void setAllowedFolders(const QStringList& folders);

    /// From now on pages are only looked at: no scripts run, no links are followed, and no page takes the
    /// focus.
    void setLookOnly();

    /// Shows a page that is in no file. Its own addresses count from `folder`.
    void showPage(const QByteArray& html, const QString& folder);

    /// Goes to an address, to "file://" followed by a plain path, or to a plain path.
    void navigate(const QString& addressOrPath);

    void goBack();
    void goForward();
    void reload();
    void stop();

    /// Whether a page, or a frame of it, is still being loaded.
    bool isBusy() const;

    QString locationURL() const;

    /// Title of the page shown.
    QString locationName() const;

    QWebEngineView& engineView() { return *m_view; }

signals:
    /// A page has set its status text. `source` is the address of the page of that frame.
    void statusTextChanged(const QString& text, const QUrl& source);

    /// The pointer is over a link to this address; empty when it has left it.
    void linkHovered(const QString& address);

    void busyChanged(bool busy);

    /// The page and all its frames are there, or could not be had.
    void navigationCompleted(bool ok);

    void locationNameChanged(const QString& title);

    /// The process that draws the pages has died. It comes back with its page three times after a navigate();
    /// then only the next navigate() brings it back.
    void rendererDied(bool comesBack);

private:
    void reviveRenderer();

    QWebEngineView* m_view;
    BrowserPage* m_page;
    int m_rendererDeaths = 0;
};

/// What navigate() makes of its argument.
QUrl addressFromText(const QString& addressOrPath);

} // namespace wendmark
