#include "platform/Strings.h"
#include "ui/find/PlaceModel.h"
#include "ui/find/frmFind.h"
#include "ui/main/Editors.h"
#include "ui/main/frmMain.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

namespace wendmark {

using test::hasKeys;
using test::patience;
using test::UiFixture;

namespace {

/// The program with a saved tour whose instructions are the author's, and the find window.
class OpenFind final {
public:
    explicit OpenFind(int stops = 4) : window(program.parts()) {
        window.load(program.makeTour("walk", stops));
        program.model.autoInstruction = false;
        for (int n = 1; n <= program.model.stops.held(); ++n)
            program.model.stops.at(n) = {toUtf8(QString("Stop %1").arg(n)), "newpage.htm",
                                         toUtf8(QString("The old <b>tem</b>ple %1.\r\n").arg(n)),
                                         "Go on.\r\n"};
        window.show();
        window.editors().findInTour();
    }

    frmFind& find() const { return *window.findChild<frmFind*>(); }
    QLineEdit& words() const { return *find().findChild<QLineEdit*>("txtFind"); }
    QLineEdit& by() const { return *find().findChild<QLineEdit*>("txtReplace"); }
    QTableView& table() const { return *find().findChild<QTableView*>("grdPlaces"); }
    QCheckBox& option(const char* name) const { return *find().findChild<QCheckBox*>(name); }
    const TourModel& model() const { return program.model; }
    const Stop& stop(int n) const { return program.model.stops.at(n); }

    void press(const char* button) const {
        QTest::mouseClick(find().findChild<QPushButton*>(button), Qt::LeftButton);
    }
    void lookFor(const QString& text) const { words().setText(text); }
    void replaceBy(const QString& text) const { by().setText(text); }

    /// The list catches up with fields and tour in a later turn of events.
    int rows() const {
        QCoreApplication::processEvents();
        return table().model()->rowCount();
    }
    QString shown(int row, int column) const {
        QCoreApplication::processEvents();
        return table().model()->index(row, column).data().toString();
    }
    QString counted() const {
        QCoreApplication::processEvents();
        return find().findChild<QLabel*>("lblFound")->text();
    }
    QString notice() const { return find().findChild<QLabel*>("lblNotice")->text(); }
    int currentRow() const { return table().currentIndex().row(); }

    UiFixture program;
    frmMain window;
};

} // namespace

class FindTest final : public QObject {
    Q_OBJECT

private slots:
    // What it finds

    void placesAreListedWithTheirStopAndWhatStandsAround() {
        const OpenFind open;
        open.lookFor("OLD temple");
        QCOMPARE(open.rows(), 4);
        QCOMPARE(open.shown(1, PlaceModel::stopColumn), QString("2"));
        QCOMPARE(open.shown(1, PlaceModel::titleColumn), QString("Stop 2"));
        QCOMPARE(open.shown(1, PlaceModel::partColumn), QString("Words"));
        QCOMPARE(open.shown(1, PlaceModel::textColumn), QString("The old temple 2."));
        QCOMPARE(open.counted(), QString("4 places in 4 stops"));
    }

    void eachTextOfAStopHasItsName() {
        OpenFind open(1);
        open.program.model.stops.at(1) = {"a quarry", "https://quarry.example/", "quarry\r\n", "quarry\r\n"};
        open.option("chkAddresses").setChecked(true);
        open.lookFor("quarry");
        QStringList names;
        for (int row = 0; row < open.rows(); ++row)
            names.append(open.shown(row, PlaceModel::partColumn));
        QCOMPARE(names, QStringList({"Title", "Words", "Instruction", "Address"}));
        QCOMPARE(open.counted(), QString("4 places in 1 stop"));
    }

    void nothingIsSaidInWords() {
        OpenFind open;
        QCOMPARE(open.rows(), 0);
        open.lookFor("nowhere");
        QCOMPARE(open.counted(), QString("Nothing was found."));
        const QStringList buttons = {"btnFindNext", "btnReplace", "btnReplaceAll"};
        for (const QString& button : buttons)
            open.press(qPrintable(button));
        QCOMPARE(open.program.beeps, 3);
        QVERIFY(!open.model().tourChanged);
    }

    void tourWithoutStopsHasNoPlaces() {
        const OpenFind open(0);
        open.lookFor("stop");
        QCOMPARE(open.counted(), QString("Nothing was found."));
    }

    void veryManyPlacesAreCountedAndSomeListed() {
        OpenFind open(1);
        open.program.model.stops.at(1).stopNarration = std::string(4500, 'q');
        open.lookFor("q");
        QCOMPARE(open.rows(), 1000);
        QCOMPARE(open.counted(),
                 QString("%L1 places in 1 stop; the first %L2 are listed").arg(4500).arg(1000));
    }

    void optionsCountAtOnceAndAreRemembered() {
        OpenFind open;
        open.lookFor("stop");
        QCOMPARE(open.rows(), 4);
        open.option("chkMatchCase").setChecked(true);
        QCOMPARE(open.rows(), 0);
        open.lookFor("Sto");
        QCOMPARE(open.rows(), 4);
        open.option("chkWholeWords").setChecked(true);
        QCOMPARE(open.rows(), 0);
        open.option("chkAddresses").setChecked(true);
        const frmFind other(open.program.parts(), [] { return std::int16_t{0}; });
        for (const char* const name : {"chkMatchCase", "chkWholeWords", "chkAddresses"})
            QVERIFY(other.findChild<QCheckBox*>(name)->isChecked());
    }

    void listFollowsTheTour() {
        OpenFind open;
        open.lookFor("temple");
        QCOMPARE(open.rows(), 4);
        const QSignalSpy reset(open.table().model(), &QAbstractItemModel::modelReset);
        open.table().selectRow(3);
        open.program.document.setTexts(2, {"Temple", "No such word.\r\n", "Go on.\r\n"});
        QCOMPARE(open.rows(), 4);
        QCOMPARE(open.shown(1, PlaceModel::partColumn), QString("Title"));
        QCOMPARE(open.currentRow(), 3); // Its row has stayed.
        open.window.undo();
        QCOMPARE(open.shown(1, PlaceModel::partColumn), QString("Words"));
        open.program.document.removeStops({1, 2});
        QCOMPARE(open.rows(), 2);
        QCOMPARE(open.shown(0, PlaceModel::stopColumn), QString("1"));
        QCOMPARE(reset.count(), 0);
        open.program.document.beginOpening();
        open.program.document.finishOpening(toUtf8(open.program.makeTour("other", 2)));
        QCOMPARE(open.rows(), 0);
    }

    // Going there

    void enterAndDoubleClickGoToTheStop() {
        OpenFind open;
        open.lookFor("temple");
        QCOMPARE(open.rows(), 4);
        open.table().selectRow(2);
        open.table().setFocus();
        QTest::keyClick(&open.table(), Qt::Key_Return);
        QCOMPARE(open.model().currentStop, std::int16_t{3});
        QCOMPARE(open.currentRow(), 2);
        const QRect cell = open.table().visualRect(open.table().model()->index(1, 1));
        QTest::mouseClick(open.table().viewport(), Qt::LeftButton, {}, cell.center());
        QTest::mouseDClick(open.table().viewport(), Qt::LeftButton, {}, cell.center());
        QCOMPARE(open.model().currentStop, std::int16_t{2});
        QVERIFY(!open.model().tourChanged);
    }

    void findNextGoesOnFromTheStopOnScreenAndBeginsAgain() {
        OpenFind open;
        open.program.document.goToStop(3);
        open.lookFor("temple");
        QTest::keyClick(&open.words(), Qt::Key_Return); // The default button.
        QCOMPARE(open.model().currentStop, std::int16_t{3});
        open.press("btnFindNext");
        QCOMPARE(open.model().currentStop, std::int16_t{4});
        QCOMPARE(open.notice(), QString());
        open.press("btnFindNext");
        QCOMPARE(open.model().currentStop, std::int16_t{1});
        QCOMPARE(open.notice(), QString("From the beginning of the tour again."));
        open.program.document.goToStop(3);
        open.press("btnFindNext");
        QCOMPARE(open.model().currentStop, std::int16_t{3});
        QCOMPARE(open.notice(), QString());
    }

    void findNextWithoutWordsAsksForThem() {
        OpenFind open;
        open.find().close();
        open.window.editors().findNext();
        QVERIFY(open.find().isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(open.words().hasFocus(), patience);
    }

    void findNextSaysThatNothingWasFoundAlsoFromTheMainWindow() {
        OpenFind open;
        open.lookFor("nowhere");
        open.find().close();
        open.window.editors().findNext();
        QVERIFY(open.find().isVisible());
        QCOMPARE(open.counted(), QString("Nothing was found."));
        QCOMPARE(open.program.beeps, 1);
    }

    // Replacing

    void replaceAllIsOneStepAndSaysWhatItDid() {
        OpenFind open;
        open.lookFor("temple");
        open.replaceBy("shrine & more");
        open.press("btnReplaceAll");
        QCOMPARE(open.notice(), QString("Replaced: 4 places in 4 stops."));
        QCOMPARE(open.stop(3).stopNarration, std::string("The old <b>shrine &amp; more</b> 3.\r\n"));
        QVERIFY(open.model().tourChanged);
        QCOMPARE(open.counted(), QString("Nothing was found."));
        QCOMPARE(open.program.document.undoName(), std::optional<std::string>("Replace"));
        open.window.undo();
        QCOMPARE(open.rows(), 4);
        QCOMPARE(open.stop(3).stopNarration, std::string("The old <b>tem</b>ple 3.\r\n"));
    }

    void replaceGoesFromPlaceToPlace() {
        OpenFind open;
        open.lookFor("old");
        open.replaceBy("new");
        open.press("btnReplace"); // Shows the first place.
        QCOMPARE(open.currentRow(), 0);
        QVERIFY(!open.model().tourChanged);
        open.press("btnReplace");
        QCOMPARE(open.stop(1).stopNarration, std::string("The new <b>tem</b>ple 1.\r\n"));
        QCOMPARE(open.notice(), QString("Replaced: 1 place in 1 stop."));
        QCOMPARE(open.model().currentStop, std::int16_t{2});
        open.press("btnFindNext"); // This one stays.
        open.press("btnReplace");
        QCOMPARE(open.stop(2).stopNarration, std::string("The old <b>tem</b>ple 2.\r\n"));
        QCOMPARE(open.stop(3).stopNarration, std::string("The new <b>tem</b>ple 3.\r\n"));
        open.window.undo();
        QCOMPARE(open.stop(3).stopNarration, std::string("The old <b>tem</b>ple 3.\r\n"));
        QCOMPARE(open.stop(1).stopNarration, std::string("The new <b>tem</b>ple 1.\r\n"));
    }

    void wordsThatHoldWhatIsLookedForAreNotReplacedAgain() {
        OpenFind open(1);
        open.program.model.stops.at(1).stopNarration = "a, a and a.\r\n";
        open.option("chkWholeWords").setChecked(true);
        open.lookFor("a");
        open.replaceBy("a a");
        for (int press = 0; press < 4; ++press)
            open.press("btnReplace");
        QCOMPARE(open.stop(1).stopNarration, std::string("a a, a a and a a.\r\n"));
        QCOMPARE(open.currentRow(), -1); // There is none behind the last.
    }

    void replacedAddressesAreNotChecked() {
        OpenFind open;
        open.program.document.setAddress(2, "https://old.example/page");
        open.lookFor("old.example");
        QCOMPARE(open.rows(), 0);
        open.option("chkAddresses").setChecked(true);
        open.replaceBy("new.example");
        open.press("btnReplaceAll");
        QCOMPARE(open.stop(2).stopURL, std::string("https://new.example/page"));
        QVERIFY(open.program.document.isUntested("https://new.example/page"));
    }

    void stopThatIsOpenInTheNarrationEditorStays() {
        OpenFind open;
        open.program.document.goToStop(2);
        open.window.editNarrationFrame();
        open.program.document.goToStop(4);
        open.lookFor("old");
        open.replaceBy("new");
        open.press("btnReplaceAll");
        QCOMPARE(open.stop(2).stopNarration, std::string("The old <b>tem</b>ple 2.\r\n"));
        QCOMPARE(open.stop(4).stopNarration, std::string("The new <b>tem</b>ple 4.\r\n"));
        QCOMPARE(open.notice(),
                 QString("Replaced: 3 places in 3 stops. Stop 2 stays as it is: its words are open in the "
                         "narration editor."));
        QCOMPARE(open.program.beeps, 1);
        open.program.document.removeStops({1}); // The words are known wherever the stop is.
        open.press("btnReplaceAll");
        QCOMPARE(open.notice(),
                 QString("Stop 1 stays as it is: its words are open in the narration editor."));
        open.table().selectRow(0);
        open.press("btnReplace");
        QCOMPARE(open.stop(1).stopNarration, std::string("The old <b>tem</b>ple 2.\r\n"));
        open.window.findChild<frmNarEdit*>()->close();
        open.press("btnReplaceAll");
        QCOMPARE(open.stop(1).stopNarration, std::string("The new <b>tem</b>ple 2.\r\n"));
    }

    void fullTourIsReplacedAsAWhole() {
        OpenFind open(100);
        open.lookFor("temple");
        open.replaceBy("shrine");
        open.press("btnReplaceAll");
        QCOMPARE(open.notice(), QString("Replaced: 100 places in 100 stops."));
    }

    // The window

    void escapeClosesItAndItComesBackWithItsWords() {
        OpenFind open;
        open.lookFor("temple");
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.find()), patience);
        QTest::keyClick(open.find().windowHandle(), Qt::Key_Escape);
        QVERIFY(!open.find().isVisible());
        open.program.document.removeStops({1});
        open.window.editors().findInTour();
        QCOMPARE(open.words().selectedText(), QString("temple"));
        QCOMPARE(open.rows(), 3);
    }

    void keysOfTheMainWindowWorkInIt() {
        OpenFind open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.find()), patience);
        open.lookFor("temple");
        open.table().setFocus();
        QTest::keySequence(&open.find(), QKeySequence("Ctrl+G"));
        QCOMPARE(open.model().currentStop, std::int16_t{1});
        QTest::keySequence(&open.find(), QKeySequence("Ctrl+F"));
        QVERIFY(open.words().hasFocus());
    }

    void everythingGoesByKeyboard() {
        OpenFind open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.find()), patience);
        QTest::keyClicks(QApplication::focusWidget(), "old");
        QTest::keyClick(open.find().windowHandle(), Qt::Key_P, Qt::AltModifier);
        QTest::keyClicks(QApplication::focusWidget(), "new");
        QCOMPARE(open.by().text(), QString("new"));
        QTest::keyClick(open.find().windowHandle(), Qt::Key_C, Qt::AltModifier);
        QTRY_VERIFY_WITH_TIMEOUT(open.option("chkMatchCase").isChecked(), patience);
        QTest::keyClick(open.find().windowHandle(), Qt::Key_L, Qt::AltModifier);
        QTRY_COMPARE_WITH_TIMEOUT(open.notice(), QString("Replaced: 4 places in 4 stops."), patience);
        QTest::keyClick(open.find().windowHandle(), Qt::Key_E, Qt::AltModifier);
        QTRY_VERIFY_WITH_TIMEOUT(!open.find().isVisible(), patience);
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::FindTest)
#include "FindTest.moc"
