#include "PanelsBench.h"

#include "Comparison.h"
#include "commands/TourDocument.h"
#include "platform/BrowserView.h"
#include "ui/main/frmMain.h"
#include "ui/narration/HtmlField.h"
#include "ui/stops/StopTable.h"
#include "ui/support/UiFixture.h"

#include <QElapsedTimer>
#include <QTest>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <stdexcept>
#include <vector>

namespace wendmark::bench {

namespace {

constexpr int stops = 100;
constexpr QSize windowSize(1600, 2700); // All rows of the list are to be seen.

double millisecondsOf(const QElapsedTimer& timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// The main window with 100 stops, the list and the fields of the stop on screen.
class Panels final {
public:
    Panels() : m_window(m_program.parts()) {
        m_window.load(m_program.makeTour(QStringLiteral("bench"), stops));
        m_window.resize(windowSize);
        m_window.show();
        m_program.document.goToStop(1);
        if (!test::waitUntil([this] { return !preview().isBusy() && isShown(QStringLiteral("Stop 1")); }))
            throw std::runtime_error("the first stop does not come");
    }

    /// Moves the last stop to the front, or the first one to the end: every row changes. Milliseconds until
    /// all is painted.
    double moveAndPaint(bool toFront) {
        const StopNumbers moved = {static_cast<std::int16_t>(toFront ? stops : 1)};
        const int target = toFront ? 1 : stops + 1;
        if (!m_program.document.moveStops(moved, static_cast<std::int16_t>(target)).done())
            throw std::runtime_error("the stops do not move");
        QWidget& rows = *table().viewport();
        QElapsedTimer timer;
        timer.start();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(); // The list follows.
        rows.repaint();
        return millisecondsOf(timer);
    }

    /// Milliseconds until the tour has the key.
    double type(QChar key) {
        words().setFocus();
        QElapsedTimer timer;
        timer.start();
        QTest::keyClick(&words(), key.toLatin1());
        return millisecondsOf(timer);
    }

    /// Milliseconds until the preview shows the word, from its last key.
    double typeAndShow(const QString& word) {
        words().setFocus();
        QTest::keyClicks(&words(), word);
        QElapsedTimer timer;
        timer.start();
        while (!isShown(word)) {
            if (timer.elapsed() > test::patience)
                throw std::runtime_error("the preview does not show what is typed");
        }
        return millisecondsOf(timer);
    }

private:
    HtmlField& words() const { return *m_window.findChild<HtmlField*>(QStringLiteral("txtPanelWords")); }
    StopTable& table() const { return *m_window.findChild<StopTable*>(QStringLiteral("grdStops")); }
    BrowserView& preview() const { return *m_window.findChild<BrowserView*>(QStringLiteral("broMain")); }

    bool isShown(const QString& word) const {
        QString text;
        bool answered = false;
        test::engineOf(preview()).page()->runJavaScript(
            QStringLiteral("frames.nar ? frames.nar.document.body.innerText : ''"),
            [&](const QVariant& value) {
                text = value.toString();
                answered = true;
            });
        test::waitUntil([&] { return answered; });
        return text.contains(word);
    }

    test::UiFixture m_program;
    frmMain m_window;
};

} // namespace

void runPanelsBench(int runs) {
    Panels panels;
    std::vector<double> painted;
    std::vector<double> stored;
    std::vector<double> shown;
    for (int run = 0; run < runs; ++run) {
        painted.push_back(panels.moveAndPaint(run % 2 == 0));
        stored.push_back(panels.type(QLatin1Char('a')));
        shown.push_back(panels.typeAndShow(QStringLiteral(" word%1 ").arg(run)));
    }
    printFigures("100 rows of the list follow a change and are painted", painted, "ms");
    printFigures("a key in the stop panel is in a tour of 100 stops", stored, "ms");
    printFigures("what is typed is in the preview", shown, "ms");
}

} // namespace wendmark::bench
