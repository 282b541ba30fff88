#pragma once

#include "platform/FileConfinement.h"
#include "platform/PasswordQuestion.h"

#include <QWebEnginePage>

class QAuthenticator;
class QWebEngineNewWindowRequest;

namespace wendmark {

/// The engine's page with what the windows need added and what tours must not do taken away.
class BrowserPage final : public QWebEnginePage {
    Q_OBJECT

public:
    BrowserPage(QWebEngineProfile& profile, QObject* parent);

    FileConfinement& confinement() { return m_confinement; }

    /// Whether pages of this kind, and of this place, are shown at all.
    bool mayShow(const QUrl& address) const;

    /// Whether a page shows a dialog of its own: until dialogEnded() the engine needs the page.
    bool showsDialog() const { return m_dialogs > 0; }

    /// Neither runs scripts nor follows links from now on.
    void setLookOnly();

    /// Nobody is before the screen from now on: asks nothing, and makes no sound.
    void setUnattended();

    /// Follows links that ask for a window of their own in this one from now on.
    void setNewWindowsHere() { m_newWindowsHere = true; }

    /// Reports, while the page at this address is shown, what its first frame shows and attempts of framed
    /// pages to take over the top window. An empty address ends it.
    void watchFramesOf(const QUrl& address);

    /// The root element of each page from disk has data-look="dark" from now on, or "light".
    void setDark(bool dark);

    /// Reports once when what the page consists of by now has been painted.
    void watchPainting();

signals:
    void statusTextSet(const QString& text, const QUrl& source);

    /// The top window stays where it is: it may not go to this address.
    void navigationRefused(const QUrl& address);

    void painted();
    void dialogEnded();

    /// Whoever is connected answers at once, with a dialog of its own. Without an answer the page does not
    /// come.
    void passwordWanted(wendmark::PasswordQuestion& question);

    void downloadRefused(const QUrl& address);
    void certificateRefused(const QUrl& address);

    /// The first frame of the page shown has got a page, an error page of the engine maybe.
    void firstFrameFilled(const QUrl& address);

    /// A page in a frame, or in a frame of that, wants the top window for itself and was refused it.
    void takeOverTried();

    /// What the engine has said on the console of a page that it refuses to show in a frame.
    void frameRefused(const QString& message);

protected:
    bool acceptNavigationRequest(const QUrl& address, NavigationType type, bool isMainFrame) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int lineNumber,
                                  const QString& sourceID) override;

    // A page may hold the program up with one dialog after each navigate(), not with any number of them.
    void javaScriptAlert(const QUrl& origin, const QString& text) override;
    bool javaScriptConfirm(const QUrl& origin, const QString& text) override;
    bool javaScriptPrompt(const QUrl& origin, const QString& text, const QString& proposal,
                          QString* answer) override;

private:
    class ShownDialog;

    bool mayShowDialog();
    void restrictRights();
    void askForPassword(PasswordQuestion question, const QUrl& address, QAuthenticator& answer);
    void openNewWindow(const QWebEngineNewWindowRequest& request);
    void watchStatusTexts();
    bool watchesFrames() const;
    bool isTakeOver(JavaScriptConsoleMessageLevel level, const QString& message) const;

    FileConfinement m_confinement;
    bool m_lookOnly = false;
    bool m_newWindowsHere = false;
    bool m_unattended = false;
    bool m_hasShownDialog = false;
    bool m_passwordRefused = false;
    QUrl m_goesTo;        ///< What the whole page shows, or is going to show.
    int m_dialogs = 0;    ///< On screen.
    QString m_statusMark; ///< Begins the console messages that carry a status text; not known to any page.
    QString m_frameMark;  ///< Same, for the messages that carry the address of the first frame.
    QString m_paintMark;  ///< The message that the page has been painted.
    QUrl m_watched;
};

} // namespace wendmark
