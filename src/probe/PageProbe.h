#pragma once

#include "check/PageVerdict.h"
#include "probe/HeaderRequest.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QUrl>

class QWebEngineProfile;

namespace wendmark {

class BrowserPage;
class FramePages;

/// Finds out about one page of the web: shows it in a frame, in no window, and asks its server meanwhile. The
/// page gets no files, asks nobody anything, and is gone at the end.
class PageProbe final : public QObject {
    Q_OBJECT

public:
    /// What is waited for, in milliseconds.
    struct Patience {
        int page = 30'000; ///< For the page to come, and for a sign of the server.
        int rest = 5'000;  ///< Further, for what belongs to it.
        int late = 500;    ///< Further: scripts that leave the frame may begin late.
    };

    /// Begins at once. `framing` is the page of `pages` that frames the address, and is taken back at the
    /// end. Profile and pages must outlive the probe.
    PageProbe(QWebEngineProfile& profile, FramePages& pages, const std::string& address, QUrl framing,
              Patience patience, QObject* parent = nullptr);
    ~PageProbe() override;

    /// Complete after done().
    const PageFindings& findings() const { return m_findings; }

signals:
    /// Once.
    void done();

private:
    void connectPage();
    void noteFrame(const QUrl& shown);
    void noteEnd();
    void settle();
    void finish();

    FramePages& m_pages;
    Patience m_patience;
    QUrl m_framing;
    BrowserPage* m_page;
    HeaderRequest m_request;
    PageFindings m_findings;
    QElapsedTimer m_clock;
    QTimer m_limit; ///< Runs out when nothing further is waited for.
    QTimer m_late;
    bool m_isFrameDone = false;
    bool m_isFinished = false;
};

} // namespace wendmark
