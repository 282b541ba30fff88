#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "publish/StopPages.h"
#include "ui/main/frmMain.h"
#include "ui/support/Resources.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QWebEngineProfile>
#include <QWebEngineView>
#include <random>

namespace wendmark {

using test::UiFixture;

namespace {

constexpr int usualSteps = 400;
constexpr int samples = 4; // Of the resources; the first is taken when the program is warm.
constexpr double mebibyte = 1024 * 1024;
constexpr double mostGrowth = 1.15; // Of the memory, from then on: the engine caches what it has shown.
constexpr double mostSlack = 24 * mebibyte;    // What the memory goes up and down by itself.
constexpr double mostOwnGrowth = 4 * mebibyte; // Beside what the engine keeps.
constexpr int mostHandles = 16;      // More than when the program was warm: the engine opens and closes.
constexpr int bareLoads = 300;       // Of each of two rounds; the first warms the engine up.
constexpr qint64 bareInterval = 100; // Milliseconds; the engine holds up pages that navigate faster for long.
constexpr int mostStops = 24;        // Keeps the check of every page at every step affordable.

/// What a plain list says the tour must be.
struct PlainList {
    QStringList titles;
    int current = 0;
};

} // namespace

class RandomWalkTest final : public QObject {
    Q_OBJECT

private slots:
    /// 2,000 commands, or as many as WENDMARK_STEPS says, as the author gives them by menu; after each, the
    /// stop list, the pages on disk and the stop on screen must be what a plain list says. Memory, handles
    /// and temporary files do not grow.
    void stopListPagesAndLabelAgreeAtEveryStep() {
        const unsigned seed = qEnvironmentVariableIntValue("WENDMARK_SEED") != 0
                                  ? static_cast<unsigned>(qEnvironmentVariableIntValue("WENDMARK_SEED"))
                                  : 20261120U;
        const int wanted = qEnvironmentVariableIntValue("WENDMARK_STEPS");
        const int steps = wanted > 0 ? wanted : usualSteps;
        qInfo("seed %u, %d commands", seed, steps);
        std::mt19937 random(seed);
        UiFixture program;
        frmMain window(program.parts());
        window.load(program.makeTour("walk", 3));
        window.show();
        PlainList list{{"Stop 1", "Stop 2", "Stop 3"}, 0};
        checkStopOnScreen(list, program, window, next(list, window));
        const double keptForEach = keptByBareView(program.working(QStringLiteral("tmpframe.htm")));
        qInfo("the engine keeps %.0f bytes for each page", keptForEach);
        QVERIFY(keptForEach >= 0);
        checkStopOnScreen(list, program, window, previous(list, window));
        QList<test::Resources> used;
        int loads = 0;
        connect(&program.desktop, &QtDesktop::mainBrowserNavigationRequested, this,
                [&] { loads += used.isEmpty() ? 0 : 1; });
        for (int step = 0; step < steps; ++step) {
            if (step > 0 && step % (steps / (samples + 1)) == 0) {
                used.append(test::Resources::now());
                qInfo("after %d commands: %s", step, qPrintable(used.last().text()));
            }
            const QString command = take(random, list, program, window, step);
            const QString where = QString("step %1, %2").arg(step).arg(command);
            checkStopOnScreen(list, program, window, where);
            checkModel(list, program, where);
            checkPages(list, program, where);
            if (QTest::currentTestFailed())
                return;
        }
        QCOMPARE(program.log.failures, std::vector<std::string>());
        used.append(test::Resources::now());
        qInfo("in the end: %s", qPrintable(used.last().text()));
        const test::Resources& warm = used.first();
        const test::Resources& end = used.last();
        const double kept = keptForEach * loads;
        const auto grown = static_cast<double>(end.allocated - warm.allocated);
        qInfo("%d pages loaded since it was warm: %.1f MiB more are allocated; a view of the engine without "
              "anything of ours would have kept %.1f",
              loads, grown / mebibyte, kept / mebibyte);
        QVERIFY(warm.memory > 0);
        QVERIFY(grown < kept + mostOwnGrowth);
        QVERIFY(static_cast<double>(end.memory) - kept - mostSlack <
                static_cast<double>(warm.memory) * mostGrowth);
        QVERIFY(end.handles <= warm.handles + mostHandles);
        QVERIFY(end.temporaryFiles <= warm.temporaryFiles);
    }

private:
    /// Bytes that the engine allocates and does not give back for each time that it loads this page into a
    /// view of its own; negative when it does not load it. Qt WebEngine 6.4 keeps an object for each frame
    /// that was ever shown, which no program can free.
    static double keptByBareView(const QString& page) {
        QWebEngineProfile profile;
        QWebEngineView view;
        view.setPage(new QWebEnginePage(&profile, &view));
        int loads = 0;
        connect(&view, &QWebEngineView::loadFinished, &view, [&] { ++loads; });
        view.show();
        const auto loadOnce = [&] {
            const int before = loads;
            QElapsedTimer passed;
            passed.start();
            view.load(QUrl::fromLocalFile(page));
            return test::waitUntil([&] { return loads > before && passed.elapsed() >= bareInterval; });
        };
        qint64 before = 0;
        for (int load = 0; load < 2 * bareLoads; ++load) {
            if (load == bareLoads)
                before = test::Resources::now().allocated;
            if (!loadOnce())
                return -1;
        }
        return static_cast<double>(test::Resources::now().allocated - before) / bareLoads;
    }

    static void trigger(frmMain& window, const char* menuItem) {
        window.findChild<QAction*>(QLatin1String(menuItem))->trigger();
    }

    /// Gives one command to the window and to the list; returns its name.
    static QString take(std::mt19937& random, PlainList& list, UiFixture& program, frmMain& window,
                        int step) {
        const int last = static_cast<int>(list.titles.size());
        switch (random() % 10) {
        case 0:
        case 1:
            if (last >= mostStops)
                return previous(list, window);
            return insert(list, program, window, step);
        case 2:
            if (list.current < 1)
                return next(list, window); // The opening page would ask.
            trigger(window, "mnuStopsDelete");
            list.titles.removeAt(list.current - 1);
            list.current = std::min(list.current, last - 1);
            return "delete";
        case 3:
            trigger(window, "mnuStopsBack");
            if (list.current > 1) {
                list.titles.swapItemsAt(list.current - 1, list.current - 2);
                --list.current;
            }
            return "back";
        case 4:
            trigger(window, "mnuStopsForward");
            if (list.current >= 1 && list.current < last) {
                list.titles.swapItemsAt(list.current - 1, list.current);
                ++list.current;
            }
            return "forward";
        case 5:
            return previous(list, window);
        case 6:
            trigger(window, "mnuViewRefresh");
            return "refresh";
        case 7:
            if (step % 20 == 0) {
                trigger(window, "mnuFileSave");
                return "save";
            }
            if (step % 21 == 0)
                return reopen(list, program, window);
            [[fallthrough]];
        default:
            return next(list, window);
        }
    }

    static QString reopen(PlainList& list, UiFixture& program, frmMain& window) {
        trigger(window, "mnuFileSave");
        test::onNextDialog([&](QDialog& dialog) {
            test::selectFolder(dialog, toQString(program.workspace.tourPath()));
            test::press(dialog, "btnOK");
        });
        trigger(window, "mnuFileOpen");
        list.current = 0;
        return "save and open";
    }

    static QString insert(PlainList& list, UiFixture& program, frmMain& window, int step) {
        trigger(window, "mnuStopsInsert");
        const QString title = QString("New %1").arg(step);
        list.titles.insert(list.current, title);
        ++list.current;
        // Gives the new stop a name of its own, as the author would next.
        const std::int16_t stop = program.model.currentStop;
        program.model.stops.at(stop).stopTitle = toUtf8(title);
        makeStopPages(program.tour, stop, stop);
        return "insert";
    }

    static QString next(PlainList& list, frmMain& window) {
        trigger(window, "mnuNavigateNext");
        list.current = std::min<int>(list.current + 1, static_cast<int>(list.titles.size()));
        return "next";
    }

    static QString previous(PlainList& list, frmMain& window) {
        trigger(window, "mnuNavigatePrev");
        list.current = std::max(list.current - 1, 0);
        return "previous";
    }

    /// The label follows the page that has really loaded; the opening page announces no stop.
    static void checkStopOnScreen(const PlainList& list, UiFixture& program, frmMain& window,
                                  const QString& where) {
        const auto& browser = *window.findChild<BrowserView*>("broMain");
        const auto& label = *window.findChild<QLabel*>("lblStopNum");
        const auto arrived = [&] {
            return list.current == 0 ? !browser.isBusy() && !browser.locationURL().endsWith("tmpframe.htm")
                                     : label.text() == QString::number(list.current);
        };
        QVERIFY2(test::waitUntil(arrived), qPrintable(where));
        QVERIFY2(program.model.currentStop == list.current, qPrintable(where));
    }

    static void checkModel(const PlainList& list, const UiFixture& program, const QString& where) {
        QStringList titles;
        for (std::size_t i = 0; i < static_cast<std::size_t>(program.model.stopCount()); ++i)
            titles.append(toQString(program.model.stops.at(i + 1).stopTitle));
        QVERIFY2(titles == list.titles, qPrintable(where));
    }

    static void checkPages(const PlainList& list, const UiFixture& program, const QString& where) {
        for (int n = 1; n <= list.titles.size(); ++n) {
            const std::string page = test::readFile(toUtf8(program.working(QString("page%1.htm").arg(n))));
            const QString heading = QString(" %1&#151;%2</font></h5>\r\n").arg(n).arg(list.titles.at(n - 1));
            QVERIFY2(page.find(toUtf8(heading)) != std::string::npos, qPrintable(where));
        }
    }
};

} // namespace wendmark

/// Its temporary folder is its own: what other programs leave in theirs does not count.
int main(int argc, char* argv[]) {
    const QTemporaryDir temporary;
    if (!temporary.isValid() || !qputenv("TMPDIR", temporary.path().toUtf8()))
        return 1;
    QApplication application(argc, argv);
    wendmark::RandomWalkTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "RandomWalkTest.moc"
