#pragma once

#include "ui/site/FrameTest.h"

#include <QObject>
#include <QString>
#include <cstdint>

class QDialog;
class QWidget;

namespace wendmark {

class BrowserView;
struct ProgramParts;

/// The frame test as the site editor's toolbar runs it: with questions while it takes long, and messages.
class SiteTest final : public QObject {
    Q_OBJECT

public:
    /// All must outlive it; messages stand over `window`.
    SiteTest(const ProgramParts& parts, BrowserView& browser, QWidget& window);

    /// Tests the page that is shown. Afterwards the browser is wherever the test left it, or on its way back
    /// to the page when the author gave up.
    FrameTest::Result run();

    /// Same, and says what came of it. A card is for the stop that is current now.
    void report();

    /// The author gives up, as by "No"; `quietly`: the window closes, so nothing needs to be said.
    void abandon(bool quietly);

    /// Also while the window of the test is open.
    bool isRunning() const { return m_running || m_dialog != nullptr; }
    /// Address of the page that is tested, or was last: while a test runs, the browser shows a page of the
    /// test.
    const QString& testedPage() const { return m_testedPage; }

    /// Offers a card for this stop; 0: for none.
    void showFailed(std::int16_t stop);

    /// Runs the test in a window of its own.
    void showDialog();

signals:
    /// A test begins or has ended, or a card is being made.
    void runningChanged(bool running);

    /// The browser is to go back to this page.
    void pageWanted(const QUrl& page);

    /// The test cannot be run, and why; or what becomes of a card.
    void noticeWanted(const QString& text);

private:
    FrameTest frameTest() const;

    enum class Wish { goOn, stop, stopQuietly };

    bool goOn(const QUrl& page);
    void StopTesting(const QUrl& page);
    bool canHaveCard(std::int16_t stop) const;
    void makeCardFor(std::int16_t stop);
    void show(const QString& text, const QString& reason = {});

    const ProgramParts& m_parts;
    BrowserView& m_browser;
    QWidget& m_window;
    float m_start = 0; ///< Seconds since midnight.
    Wish m_wish = Wish::goOn;
    bool m_running = false;
    bool m_makesCard = false;
    QDialog* m_dialog = nullptr; ///< The test's own window, while it is open.
    QString m_testedPage;
    QString m_reason; ///< Why it has failed.
};

} // namespace wendmark
