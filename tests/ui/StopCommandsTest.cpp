#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/main/frmMain.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QTest>
#include <QToolButton>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <filesystem>

namespace wendmark {

using test::hasKeys;
using test::onNextDialog;
using test::patience;
using test::press;
using test::selectFolder;
using test::textOf;
using test::UiFixture;

namespace {

namespace fs = std::filesystem;

/// The program with a tour open and its opening page on screen.
struct OpenTour {
    explicit OpenTour(int stopCount) : window(program.parts()) {
        window.load(program.makeTour(QStringLiteral("walk"), stopCount));
        window.show();
        QTRY_VERIFY_WITH_TIMEOUT(browser().locationURL().endsWith("NewTour/framever.htm"), patience);
        waitUntilLoaded();
    }

    QString label() const { return window.findChild<QLabel*>(QStringLiteral("lblStopNum"))->text(); }
    QString status() const { return window.findChild<QLabel*>(QStringLiteral("Status"))->text(); }
    BrowserView& browser() const { return *window.findChild<BrowserView*>(QStringLiteral("broMain")); }

    void waitUntilLoaded() const { QTRY_VERIFY_WITH_TIMEOUT(!browser().isBusy(), patience); }
    void waitForStop(int n) const {
        QTRY_COMPARE_WITH_TIMEOUT(label(), QString::number(n), patience);
        waitUntilLoaded();
    }

    /// Until the opening page has announced itself: with no number.
    void waitForOpeningPage() const {
        QTRY_COMPARE_WITH_TIMEOUT(program.model.currentStop, std::int16_t{0}, patience);
        QTRY_COMPARE_WITH_TIMEOUT(status(), QStringLiteral(">*>*>vosktourstop->"), patience);
        QCOMPARE(label(), QString());
        waitUntilLoaded();
    }

    void goTo(int n) {
        program.model.currentStop = static_cast<std::int16_t>(n);
        window.refresh();
        waitForStop(n);
    }

    void clickTool(const char* key) const {
        QTest::mouseClick(window.findChild<QToolButton*>(QLatin1String(key)), Qt::LeftButton);
    }
    void trigger(const char* menuItem) const {
        window.findChild<QAction*>(QLatin1String(menuItem))->trigger();
    }

    QStringList titles() const {
        QStringList list;
        for (std::int16_t i = 0; i < program.model.stopCount(); ++i)
            list.append(toQString(program.model.stops.at(i + 1).stopTitle));
        return list;
    }

    /// Title in the heading of a stop's page on disk.
    bool pageShows(int n, const QString& title) const {
        const QString page =
            toQString(test::readFile(toUtf8(program.working(QStringLiteral("page%1.htm").arg(n)))));
        return page.contains(QStringLiteral(" %1&#151;%2</font></h5>").arg(n).arg(title));
    }

    UiFixture program;
    frmMain window;
};

/// Runs script in the page and returns once it has run.
void runScript(BrowserView& browser, const QString& script) {
    bool done = false;
    test::engineOf(browser).page()->runJavaScript(script, [&done](const QVariant&) { done = true; });
    QTRY_VERIFY_WITH_TIMEOUT(done, patience);
}

/// Presses a button of the played tour itself.
void pressInNavigator(BrowserView& browser, const QString& step) {
    const QString script = QStringLiteral("document.querySelector('frame[name=nav]').contentDocument"
                                          ".querySelector('[data-go=%1]').click()");
    runScript(browser, script.arg(step));
}

} // namespace

class StopCommandsTest final : public QObject {
    Q_OBJECT

private slots:
    void nextAndPreviousStepThroughEveryStopAndTheLabelFollows() {
        OpenTour tour(3);
        for (int n = 1; n <= 3; ++n) {
            tour.clickTool("Next");
            tour.waitForStop(n);
            QVERIFY(tour.browser().locationURL().endsWith("NewTour/tmpframe.htm"));
        }
        for (int n = 2; n >= 1; --n) {
            tour.clickTool("Prev");
            tour.waitForStop(n);
        }
    }

    void quickStepsAreNotUndoneByPagesThatAnnounceThemselvesLate() {
        OpenTour tour(9);
        for (int round = 0; round < 5; ++round) {
            tour.goTo(1);
            for (int step = 1; step <= 7; ++step) {
                tour.clickTool("Next");
                QTest::qWait(7 * round); // Pages get to different points of their loading.
            }
            QCOMPARE(tour.program.model.currentStop, std::int16_t{8});
            tour.waitForStop(8);
            QCOMPARE(tour.program.model.currentStop, std::int16_t{8});
        }
    }

    void nextOnTheLastStopOnlyBeeps() {
        OpenTour tour(2);
        tour.goTo(2);
        tour.clickTool("Next");
        QCOMPARE(tour.program.beeps, 1);
        QCOMPARE(tour.program.model.currentStop, std::int16_t{2});
    }

    void previousOnTheOpeningPageOnlyBeeps() {
        OpenTour tour(2);
        tour.clickTool("Prev");
        QCOMPARE(tour.program.beeps, 1);
        QCOMPARE(tour.program.model.currentStop, std::int16_t{0});
    }

    void previousFromTheFirstStopShowsTheWorkingFrameset() {
        OpenTour tour(2);
        tour.goTo(1);
        tour.clickTool("Prev");
        QCOMPARE(tour.program.model.currentStop, std::int16_t{0});
        QTRY_VERIFY_WITH_TIMEOUT(tour.browser().locationURL().endsWith("NewTour/framever.htm"), patience);
    }

    void statusTextWithATagSetsLabelAndStop() {
        OpenTour tour(2);
        emit tour.browser().statusTextChanged(">*>*>vosktourstop->12",
                                              QUrl::fromLocalFile(tour.program.working("x")));
        QCOMPARE(tour.label(), QString("12"));
        QCOMPARE(tour.program.model.currentStop, std::int16_t{12});
        emit tour.browser().statusTextChanged(">*>*>vosktourstop->",
                                              QUrl::fromLocalFile(tour.program.working("x")));
        QCOMPARE(tour.label(), QString());
        QCOMPARE(tour.program.model.currentStop, std::int16_t{0});
    }

    void tagOfAStopThatCannotBeOnlyShows() {
        OpenTour tour(2);
        tour.goTo(1);
        for (const char* text :
             {">*>*>vosktourstop->-1", ">*>*>vosktourstop->101", ">*>*>vosktourstop->32767"}) {
            emit tour.browser().statusTextChanged(QLatin1String(text),
                                                  QUrl::fromLocalFile(tour.program.working("x")));
            QCOMPARE(tour.status(), QString(text));
            QCOMPARE(tour.label(), QString("1"));
            QCOMPARE(tour.program.model.currentStop, std::int16_t{1});
        }
    }

    void otherStatusTextsOnlyShow() {
        OpenTour tour(2);
        tour.goTo(1);
        for (const char* text : {">*>*>VOSKTOURSTOP->2", " >*>*>vosktourstop->2", "short", ""}) {
            emit tour.browser().statusTextChanged(QLatin1String(text),
                                                  QUrl::fromLocalFile(tour.program.working("x")));
            QCOMPARE(tour.status(), QString(text));
            QCOMPARE(tour.program.model.currentStop, std::int16_t{1});
        }
    }

    void tagOfARemotePageNeverMovesTheStop() {
        OpenTour tour(2);
        tour.goTo(1);
        emit tour.browser().statusTextChanged(">*>*>vosktourstop->2", QUrl("http://host/page.htm"));
        QCOMPARE(tour.program.model.currentStop, std::int16_t{1});
    }

    void statusBarShowsTheRawTag() {
        OpenTour tour(1);
        tour.clickTool("Next");
        tour.waitForStop(1);
        QCOMPARE(tour.status(), QString(">*>*>vosktourstop->1"));
    }

    void clicksInsideThePlayedTourMoveTheStop() {
        OpenTour tour(3);
        tour.goTo(1);
        pressInNavigator(tour.browser(), "next");
        tour.waitForStop(2);
        QCOMPARE(tour.program.model.currentStop, std::int16_t{2});
        pressInNavigator(tour.browser(), "next");
        tour.waitForStop(3);
        pressInNavigator(tour.browser(), "previous");
        tour.waitForStop(2);
    }

    void openingPageAnnouncesItselfWhenThePlayedTourLeadsToIt() {
        OpenTour tour(2);
        tour.goTo(1);
        pressInNavigator(tour.browser(), "previous");
        tour.waitForOpeningPage();
        onNextDialog([](QDialog& message) {
            QCOMPARE(textOf(message), QString("Wendmark|The opening page of the tour cannot be deleted"));
            press(message, "OK");
        });
        tour.clickTool("Delete");
        QCOMPARE(test::dialogsExpected(), 0);
        QCOMPARE(tour.titles(), (QStringList{"Stop 1", "Stop 2"}));
        pressInNavigator(tour.browser(), "next");
        tour.waitForStop(1);
        QCOMPARE(tour.program.model.currentStop, std::int16_t{1});
    }

    void openingPageAnnouncesItselfAfterOpenAndPrevious() {
        OpenTour tour(2);
        tour.goTo(2);
        const QString other = tour.program.makeTour(QStringLiteral("other"), 1);
        onNextDialog([other](QDialog& dialog) {
            selectFolder(dialog, other);
            press(dialog, "btnOK");
        });
        tour.trigger("mnuFileOpen");
        tour.waitForOpeningPage();
        tour.clickTool("Next");
        tour.waitForStop(1);
        tour.clickTool("Prev");
        tour.waitForOpeningPage();
    }

    void openingPageAnnouncesItselfInATourOfAnOlderVersion() {
        OpenTour tour(1);
        tour.goTo(1);
        const QString old = tour.program.path(QStringLiteral("MyTours/old"));
        fs::copy(WENDMARK_TESTS "/ui/older-tour", toUtf8(old), fs::copy_options::recursive);
        onNextDialog([old](QDialog& dialog) {
            selectFolder(dialog, old);
            press(dialog, "btnOK");
        });
        tour.trigger("mnuFileOpen");
        tour.waitForOpeningPage();
        QCOMPARE(tour.program.model.stopCount(), std::int16_t{2});
        pressInNavigator(tour.browser(), "next");
        tour.waitForStop(1);
        pressInNavigator(tour.browser(), "next");
        tour.waitForStop(2);
        pressInNavigator(tour.browser(), "previous");
        tour.waitForStop(1);
        pressInNavigator(tour.browser(), "previous");
        tour.waitForOpeningPage();

        tour.clickTool("Save");
        const std::string saved = toUtf8(old);
        QVERIFY(test::readFile(saved + "/openhelp.htm").find("vosktourstop->'") != std::string::npos);
        QCOMPARE(test::readFile(saved + "/tour.js"), test::readFile(WENDMARK_TESTS "/ui/older-tour/tour.js"));
    }

    void refreshLoadsTheStopAnewAfterAnEdit() {
        OpenTour tour(2);
        tour.goTo(2);
        tour.window.findChild<QLabel*>("lblStopNum")->setText("gone");
        tour.trigger("mnuViewRefresh");
        tour.waitForStop(2);
    }

    void insertOnTheOpeningPageOfAnEmptyTourMakesTheFirstStop() {
        OpenTour tour(0);
        tour.clickTool("Insert");
        tour.waitForStop(1);
        QCOMPARE(tour.program.model.stopCount(), std::int16_t{1});
        QCOMPARE(tour.program.model.currentStop, std::int16_t{1});
        QCOMPARE(tour.program.model.stops.at(1).stopTitle, std::string("Title"));
        QCOMPARE(tour.program.model.stops.at(1).stopURL, std::string("newpage.htm"));
        QCOMPARE(tour.program.model.stops.at(1).stopNarration, std::string("<!--narration-->"));
        QVERIFY(tour.pageShows(1, "Title"));
    }

    void insertAfterTheThirdOfFiveShiftsTheOthers() {
        OpenTour tour(5);
        tour.goTo(3);
        tour.clickTool("Insert");
        tour.waitForStop(4);
        QCOMPARE(tour.titles(), (QStringList{"Stop 1", "Stop 2", "Stop 3", "Title", "Stop 4", "Stop 5"}));
        for (int n = 1; n <= 6; ++n)
            QVERIFY(tour.pageShows(n, tour.titles().at(n - 1)));
        const QString contents = toQString(test::readFile(toUtf8(tour.program.working("toc.htm"))));
        QVERIFY(contents.contains("<a href=\"page6.htm\">Stop 6&#151;Stop 5</a><BR>"));
    }

    void insertOnAFullTourBeepsAndLosesNothing() {
        OpenTour tour(100);
        tour.goTo(50);
        const QStringList before = tour.titles();
        tour.clickTool("Insert");
        QCOMPARE(tour.program.beeps, 1);
        QCOMPARE(tour.titles(), before);
        QCOMPARE(tour.program.model.currentStop, std::int16_t{50});
    }

    void deleteOfTheLastStopShowsTheNewLastAndKeepsItsPageFile() {
        OpenTour tour(2);
        tour.goTo(2);
        tour.clickTool("Delete");
        tour.waitForStop(1);
        QCOMPARE(tour.program.model.stopCount(), std::int16_t{1});
        QVERIFY(test::exists(toUtf8(tour.program.working("page2.htm"))));
        QVERIFY(tour.pageShows(1, "Stop 1"));
    }

    void deleteOfTheOnlyStopShowsTheOpeningPage() {
        OpenTour tour(1);
        tour.goTo(1);
        tour.clickTool("Delete");
        QCOMPARE(tour.program.model.stopCount(), std::int16_t{0});
        QCOMPARE(tour.program.model.currentStop, std::int16_t{0});
        QTRY_VERIFY_WITH_TIMEOUT(tour.browser().locationURL().endsWith("NewTour/framever.htm"), patience);
    }

    void openingPageCannotBeDeletedNorEdited() {
        OpenTour tour(2);
        const QStringList before = tour.titles();
        int expectedBeeps = 0;
        for (const char* command : {"mnuStopsDelete", "mnuEditSite", "mnuEditNarration"}) {
            const QString what = QLatin1String(command) == QLatin1String("mnuStopsDelete")
                                     ? QStringLiteral("cannot be deleted")
                                     : QStringLiteral("is not editable");
            onNextDialog([what](QDialog& message) {
                QCOMPARE(textOf(message), QStringLiteral("Wendmark|The opening page of the tour ") + what);
                press(message, "OK");
            });
            tour.trigger(command);
            QCOMPARE(tour.program.beeps, ++expectedBeeps);
        }
        QCOMPARE(tour.titles(), before);
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void movesSwapTheStopsAndStayOnTheMovedOne() {
        OpenTour tour(3);
        tour.goTo(1);
        tour.clickTool("Forward");
        tour.waitForStop(2);
        QCOMPARE(tour.titles(), (QStringList{"Stop 2", "Stop 1", "Stop 3"}));
        QVERIFY(tour.pageShows(1, "Stop 2") && tour.pageShows(2, "Stop 1"));
        tour.clickTool("Back");
        tour.waitForStop(1);
        QCOMPARE(tour.titles(), (QStringList{"Stop 1", "Stop 2", "Stop 3"}));
    }

    void movesAtTheEndsOnlyBeep() {
        OpenTour tour(2);
        tour.clickTool("Forward"); // The opening page moves nowhere.
        tour.goTo(1);
        tour.clickTool("Back");
        tour.goTo(2);
        tour.clickTool("Forward");
        QCOMPARE(tour.program.beeps, 3);
        QCOMPARE(tour.titles(), (QStringList{"Stop 1", "Stop 2"}));
        QCOMPARE(tour.program.model.currentStop, std::int16_t{2});
    }

    void menuLeavesTheTourUnchangedTheToolBarDoesNot_data() {
        QTest::addColumn<QString>("menuItem");
        QTest::addColumn<QString>("key");
        QTest::newRow("insert") << "mnuStopsInsert"
                                << "Insert";
        QTest::newRow("delete") << "mnuStopsDelete"
                                << "Delete";
        QTest::newRow("forward") << "mnuStopsForward"
                                 << "Forward";
        QTest::newRow("back") << "mnuStopsBack"
                              << "Back";
    }

    void menuLeavesTheTourUnchangedTheToolBarDoesNot() {
        QFETCH(QString, menuItem);
        QFETCH(QString, key);
        OpenTour tour(4);
        tour.goTo(2);
        tour.trigger(menuItem.toLatin1());
        QVERIFY(!tour.program.model.tourChanged);
        tour.clickTool(key.toLatin1());
        QVERIFY(tour.program.model.tourChanged);
    }

    void keysMarkTheTourAsTheToolBarDoes_data() {
        QTest::addColumn<QString>("keys");
        for (const char* keys : {"Ctrl+Ins", "Ctrl+Del", "Ctrl+Shift+PgDown", "Ctrl+Shift+PgUp"})
            QTest::newRow(keys) << QString(keys);
    }

    void keysMarkTheTourAsTheToolBarDoes() {
        QFETCH(QString, keys);
        OpenTour tour(4);
        tour.goTo(2);
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(tour.window), patience);
        const QStringList before = tour.titles();
        QTest::keySequence(&tour.window, QKeySequence(keys));
        QVERIFY(tour.titles() != before);
        QVERIFY(tour.program.model.tourChanged);
    }

    void editMenuNamesWhatItUndoesAndSavedPanelFollows() {
        OpenTour tour(2);
        const auto& undo = *tour.window.findChild<QAction*>("mnuEditUndo");
        const auto& redo = *tour.window.findChild<QAction*>("mnuEditRedo");
        const auto& saved = *tour.window.findChild<QLabel*>("Saved");
        QCOMPARE(saved.text(), QString());
        QVERIFY(!redo.isEnabled());
        QCOMPARE(redo.text(), QString("&Redo"));
        tour.trigger("mnuStopsInsert");
        QCOMPARE(undo.text(), QString("&Undo Insert Stop"));
        QCOMPARE(saved.text(), QString("Unsaved changes"));
        tour.window.undo();
        QCOMPARE(redo.text(), QString("&Redo Insert Stop"));
        QCOMPARE(saved.text(), QString());
        QCOMPARE(tour.titles(), (QStringList{"Stop 1", "Stop 2"}));
        tour.window.redo();
        QVERIFY(!redo.isEnabled());
        QCOMPARE(tour.titles().size(), 3);
        tour.window.save();
        QVERIFY2(saved.text().startsWith("Saved "), qPrintable(saved.text()));
    }

    void editMenuOffersNothingBeforeTheFirstTour() {
        UiFixture program;
        const frmMain window(program.parts());
        for (const char* name : {"mnuEditUndo", "mnuEditRedo"})
            QVERIFY(!window.findChild<QAction*>(name)->isEnabled());
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::StopCommandsTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "StopCommandsTest.moc"
