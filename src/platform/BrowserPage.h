#pragma once

#include "platform/FileConfinement.h"

#include <QWebEnginePage>

namespace wendmark {

/// The engine's page with what the windows need added and what tours must not do taken away.
class BrowserPage final : public QWebEnginePage {
    Q_OBJECT

public:
    BrowserPage(QWebEngineProfile& profile, QObject* parent);

    FileConfinement& confinement() { return m_confinement; }

    /// Neither runs scripts nor follows links from now on.
    void setLookOnly();

signals:
    void statusTextSet(const QString& text, const QUrl& source);

protected:
    bool acceptNavigationRequest(const QUrl& address, NavigationType type, bool isMainFrame) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int lineNumber,
                                  const QString& sourceID) override;

private:
    void restrictRights();
    void watchStatusTexts();

    FileConfinement m_confinement;
    bool m_lookOnly = false;
    QString m_statusMark; ///< Begins the console messages that carry a status text; not known to any page.
};

} // namespace wendmark
