#pragma once

#include "commands/DocumentListener.h"

#include <QFrame>
#include <QTimer>
#include <QUrl>
#include <cstdint>

class QWebEngineProfile;

namespace wendmark {

class BrowserView;
class Gate;
class PreviewVeil;
class QtDesktop;
class StopNumber;
class TourDocument;

/// Shows the tour as visitors will see it, and learns from the pages which stop is on screen: "picBrowser"
/// with "broMain" in it.
class TourPreview final : public QFrame, private DocumentListener {
    Q_OBJECT

public:
    /// All must outlive the preview. `stopNumber` shows the stop on screen.
    TourPreview(TourDocument& document, Gate& gate, QtDesktop& desktop, QWebEngineProfile& profile,
                StopNumber& stopNumber, QWidget* parent);
    ~TourPreview() override;

    void showOpeningPage();

    /// Shows the page that the current stop has now, without loading the whole tour again.
    void showPage();
    void stop();

    /// Whether the tour, or the page of a stop inside it, is being loaded.
    bool isBusy() const;

    /// Takes over what a page has announced while a command was not to be disturbed. Call often.
    void runTick();

    /// The room beside and above the browser inside the panel, in pixels.
    void setInnerMargins(int beside);

signals:
    /// A page has set its status text, or the pointer is over a link; for the status bar.
    void statusShown(const QString& text);

private:
    void goTo(const QString& address);
    void takeOverStatusText(const QString& text, const QUrl& source);
    void takeOverStopNumber(const QString& text);
    bool isLateAnnouncement(std::int16_t stop);
    void showLinkOrStatus(const QString& address);
    void reportDeadRenderer(bool comesBack);
    void showTypedText();

    void awaitPage();
    void showPageCome();

    void stopContentChanged(std::int16_t stop) override;
    void tourChangedNow() override;

    TourDocument& m_document;
    Gate& m_gate;
    StopNumber& m_stopNumber;      ///< picStopNum
    BrowserView* m_browser;        ///< broMain
    PreviewVeil* m_veil;           ///< Over the browser while the next page is on its way.
    QTimer m_slowPage;             ///< Runs while a page that has announced itself gets its site.
    QString m_lastStatus;          ///< Shown again when the pointer leaves a link.
    QString m_waitingStopNumber;   ///< Announced while a command waited; null: none was.
    QTimer m_typing;               ///< Runs while something typed is not shown.
    bool m_typedMeanwhile = false; ///< Something was typed since the tour was loaded.
    bool m_siteComing = false;     ///< The tour waits for the page of its stop.
    bool m_previewComing = false;  ///< The browser was sent to a stop that has not announced itself yet.
};

} // namespace wendmark
