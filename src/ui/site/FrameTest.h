#pragma once

#include <QUrl>
#include <functional>

namespace wendmark {

class BrowserView;
class Gate;
class HeaderRequest;
class Workspace;
class Log;

/// Finds out whether a page can be shown in a tour, that is in a frame. The page is loaded into a frame of
/// the test page "ft.htm" in the working copy. It passes when the browser still shows the test page after
/// that.
///
/// Browsers keep a page in its frame that tries to leave it, and show nothing of a page whose server refuses
/// frames. Both count as leaving: the test sends the browser to such a page.
///
/// The test page comes from disk, tours are on web servers. What the browser shows and says on its console
/// decides; what servers answer to a request of the program's own, which they may treat unlike a browser,
/// only where it agrees with that: it tells pages that are for tours from disk alone.
class FrameTest final {
public:
    enum class Result {
        passed,
        failed,
        abandoned,
        notRun ///< The test page cannot be written.
    };

    static constexpr int usualLowerFrame = 50; ///< Pixels.

    /// All references must outlive the test. `userAgent` is the browser's name for itself.
    FrameTest(BrowserView& browser, const Workspace& workspace, Gate& gate, Log& log, QString userAgent);

    /// Writes the test page for this address; its lower frame is `lowerFrame` pixels high. False, and a line
    /// in the log, when that fails.
    bool CreateFTFile(const QString& address, int lowerFrame = usualLowerFrame) const;

    /// Tests the page at this location and returns when it is settled; window events are handled meanwhile.
    /// `goOn` is called again and again and abandons the test by returning false. Afterwards the browser is
    /// somewhere else than before, wherever the test left it.
    Result run(const QUrl& location, const std::function<bool()>& goOn, int lowerFrame = usualLowerFrame);

    /// Why the page has failed last, a sentence; empty when it has not.
    const QString& reason() const { return m_reason; }

private:
    Result judge(const HeaderRequest& request);
    bool showsTestPage() const;
    QString whyError(const HeaderRequest& request) const;
    bool waitWhile(const std::function<bool()>& condition, const std::function<bool()>& goOn);

    BrowserView& m_browser;
    const Workspace& m_workspace;
    Gate& m_gate;
    Log& m_log;
    QString m_userAgent;
    QString m_reason;
};

/// The page that the test page at this address has in its frame; the address itself when it is no test page.
QUrl testedPageOf(const QUrl& location);

} // namespace wendmark
