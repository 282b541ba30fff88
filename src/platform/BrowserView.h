#pragma once

#include "platform/LoadFailure.h"
#include "platform/PasswordQuestion.h"

#include <QPointF>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QUrl>
#include <QWidget>

class QAction;
class QWebEngineLoadingInfo;
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
/// the system's browser if it leads to the web, unless setNewWindowsHere() was called.
class BrowserView final : public QWidget {
    Q_OBJECT

public:
    explicit BrowserView(QWebEngineProfile& profile, QWidget* parent = nullptr);
    ~BrowserView() override;

    /// Folders whose files pages may read, and one, or none, that is open to its own pages only.
    void setAllowedFolders(const QStringList& folders, const QString& closedFolder = {});

    /// From now on pages are only looked at: no scripts run, no links are followed, and no page takes the
    /// focus.
    void setLookOnly();

    /// From now on a link that asks for a window of its own, clicked, is followed here.
    void setNewWindowsHere();

    /// From now on pages that come do not take the keyboard from the control that has it.
    void setFocusStays();

    /// From now on the menu of the right mouse button offers these first. They must outlive the view. Call
    /// once.
    void setContextActions(const QList<QAction*>& actions);

    /// Shows a page that is in no file. Its own addresses count from `folder`.
    void showPage(const QByteArray& html, const QString& folder);

    /// Goes to an address, to "file://" followed by a plain path, or to a plain path.
    void navigate(const QString& addressOrPath);

    /// Goes to an address as location() gives it. One that is refused changes nothing.
    void navigate(const QUrl& address);

    void goBack();
    void goForward();
    void reload();
    void stop();

    /// Whether a page, or a frame of it, is being loaded. A little while passes between navigate() and
    /// navigationStarted().
    bool isBusy() const;

    /// Deletes the view's window as deleteLater() does but, when a page shows a dialog of its own, not before
    /// that is closed: the engine comes back to the page.
    void deleteWindowLater();

    /// Where navigate() was sent, then what is shown.
    QUrl location() const;

    /// The same as text, percent-encoded.
    QString locationURL() const;

    /// Title of the page shown.
    QString locationName() const;

    /// While the page at this address is shown, a page in a frame of it that tries to take over the top
    /// window gets it, as it would have in older browsers: the view goes to the page of the first frame. An
    /// empty address ends it.
    void grantTakeOverOf(const QUrl& address);

    /// Whether the first frame of the page shown holds an error page of the engine: what was asked for cannot
    /// be had, or may not be framed. Known of the page for which taking over is granted.
    bool firstFrameShowsError() const;

    /// What the engine has said of refusing a page in a frame, one message for each policy. Known as above.
    const QStringList& frameRefusals() const { return m_frameRefusals; }

    /// How far the page shown is scrolled, in pixels.
    QPointF scrollPosition() const;

    /// Scrolls the page shown, also where scripts of pages do not run.
    void scrollTo(const QPointF& place);

    /// Gives the page that a frame of this name shows the body of `html`, a whole page, without loading
    /// anything again; the page hears the event "bodyreplaced". Scripts in the body do not run. Nothing
    /// happens when there is no such frame, or it shows a page of the web.
    void replaceBody(const QString& frame, const QString& html);

    /// Shows a page in a frame of this name, in place of the one there. Nothing happens without such a frame.
    void replaceFrame(const QString& frame, const QUrl& address);

    /// Tells pages from disk whether windows are dark, of which the engine knows nothing: the root element
    /// has data-look="dark" or "light".
    void setDark(bool dark);

    /// Asks for painted().
    void watchPainting();

    /// What is seen where a page has no background of its own, and until it comes.
    void setBackground(const QColor& colour);

signals:
    void navigationStarted(const QUrl& address);

    /// Pages of this kind, or of this place, are not shown: the view stays where it is.
    void navigationRefused(const QUrl& address);

    /// A page has set its status text. `source` is the address of the page of that frame.
    void statusTextChanged(const QString& text, const QUrl& source);

    /// The pointer is over a link to this address; empty when it has left it.
    void linkHovered(const QString& address);

    void busyChanged(bool busy);

    /// Once after watchPainting(), unless the page goes before: what it and its frames had got by then is on
    /// screen. Nothing is painted, and so told, while the view is hidden.
    void painted();

    /// location() has become another one: a page is on its way, has come, or comes no more.
    void locationChanged();

    /// The page and all its frames are there, or could not be had.
    void navigationCompleted(bool ok);

    /// Comes behind navigationCompleted(): why the page at this address, to which redirects may have led, is
    /// not there. What a server answers is told by serverRefused().
    void loadFailed(wendmark::LoadFailure failure, const QUrl& address);

    void locationNameChanged(const QString& title);

    /// The server has no such page and says so with this status, for example 404; its own words are shown.
    void serverRefused(int status);

    /// What is at this address is a file to be saved, which pages may not have done. The view stays where it
    /// is.
    void downloadRefused(const QUrl& address);

    /// The certificate of the server is not valid; the page is not shown.
    void certificateRefused(const QUrl& address);

    /// The page that comes needs a password. Whoever is connected answers before it returns; without an
    /// answer the page does not come.
    void passwordWanted(wendmark::PasswordQuestion& question);

    /// The process that draws the pages has died. It comes back with its page three times after a navigate();
    /// then only the next navigate() brings it back.
    void rendererDied(bool comesBack);

protected:
    /// Tab leads out of the page to the neighbours of the view, not to those of the engine's own widgets,
    /// which stand at the end of the window.
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectPage();
    void noteStart(const QUrl& address);
    void noteEnd(bool ok);
    void noteFailure(const QWebEngineLoadingInfo& loading);
    void goToNext();
    void noteIntruder();
    void giveWayToIntruder();
    void reviveRenderer();
    void keepKeyboard();

    QWebEngineView* m_view;
    BrowserPage* m_page;
    QUrl m_firstFrame;
    QStringList m_frameRefusals;
    QUrl m_intruder;              ///< The page that takes the top window over next.
    QUrl m_next;                  ///< Where to go as soon as no other load is under way.
    bool m_stopped = false;       ///< By stop().
    bool m_changesWidget = false; ///< The engine is putting another widget in its place.
    QTimer m_keyboardKeeper;      ///< For the turn of events in which it has done so.
    int m_rendererDeaths = 0;
};

/// What navigate() makes of its argument.
QUrl addressFromText(const QString& addressOrPath);

} // namespace wendmark
