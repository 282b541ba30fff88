#include "commands/TourDocument.h"
#include "platform/Strings.h"
#include "ui/check/CheckModel.h"
#include "ui/check/frmCheck.h"
#include "ui/main/Editors.h"
#include "ui/main/frmMain.h"
#include "ui/support/LoopbackServer.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace wendmark {

using test::LoopbackServer;
using test::patience;
using test::UiFixture;
using test::waitUntil;

namespace {

/// The program with a tour of these pages on screen; those that begin with a slash are a server's.
class OpenCheck final {
public:
    explicit OpenCheck(const QStringList& pages) : window(program.parts()) {
        server.answer("/moved.htm", {301, {{"Location", "/plain.htm"}}, {}});
        window.load(program.makeTour("walk", static_cast<int>(pages.size())));
        int n = 0;
        for (const QString& page : pages)
            program.model.stops.at(++n).stopURL = toUtf8(page.startsWith('/') ? server.address(page) : page);
        window.show();
    }

    void open() { window.findChild<QAction*>("mnuStopsCheck")->trigger(); }
    void openAndWait() {
        open();
        waitForAnswers();
    }
    void waitForAnswers() const {
        QVERIFY(waitUntil([&] { return !program.check.isRunning(); }));
        QTRY_VERIFY_WITH_TIMEOUT(!progressBar().isVisible(), patience);
    }

    frmCheck& check() const { return *window.findChild<frmCheck*>(); }
    QTableView& table() const { return *check().findChild<QTableView*>("grdChecks"); }
    QProgressBar& progressBar() const { return *check().findChild<QProgressBar*>("barProgress"); }
    QPushButton& button(const char* name) const { return *check().findChild<QPushButton*>(name); }
    QString progress() const { return check().findChild<QLabel*>("lblProgress")->text(); }
    QString choice() const { return check().findChild<QPlainTextEdit*>("txtChoice")->toPlainText(); }
    QString shown(int stop, int column) const {
        return table().model()->index(stop - 1, column).data().toString();
    }
    QString verdict(int stop) const { return shown(stop, CheckModel::verdictColumn); }
    void press(const char* name) const { QTest::mouseClick(&button(name), Qt::LeftButton); }
    std::string address(int stop) const { return program.model.stops.at(stop).stopURL; }

    LoopbackServer server;
    UiFixture program;
    frmMain window;
};

} // namespace

class CheckTest final : public QObject {
    Q_OBJECT

private slots:
    void everyStopGetsItsVerdict() {
        OpenCheck open({"/plain.htm", "/deny.htm", "newpage.htm", "missing.htm", "/moved.htm", "/plain.htm"});
        open.openAndWait();
        QCOMPARE(open.table().model()->rowCount(), 6);
        QCOMPARE(open.verdict(1), QString("Plays"));
        QCOMPARE(open.verdict(2), QString("Refuses frames"));
        QCOMPARE(open.verdict(3), QString("No page yet"));
        QCOMPARE(open.verdict(4), QString("File missing"));
        QCOMPARE(open.verdict(5), QString("Moved"));
        QCOMPARE(open.verdict(6), QString("Plays"));
        QCOMPARE(open.shown(6, CheckModel::whyColumn), QString("Same page as stop 1."));
        QCOMPARE(open.progress(), QString("3 stops do not play."));
        QCOMPARE(open.server.requestsFor("/plain.htm"), 4); // Twice for the moved page.
    }

    void toursWithoutStopsAreTold() {
        OpenCheck open({});
        open.openAndWait();
        QCOMPARE(open.progress(), QString("The tour has no stops yet."));
        QVERIFY(!open.button("btnGo").isEnabled());
        open.press("btnCheckAll");
        QVERIFY(!open.program.check.isRunning());
    }

    void chosenStopIsExplained() {
        OpenCheck open({"/plain.htm", "/deny.htm"});
        open.openAndWait();
        open.table().selectRow(1);
        QVERIFY2(open.choice().contains("X-Frame-Options: deny"), qPrintable(open.choice()));
        QVERIFY2(open.choice().contains("/deny.htm"), qPrintable(open.choice()));
        QVERIFY(!open.button("btnNewAddress").isEnabled());
    }

    void longAddressMakesTheWindowNoWider() {
        OpenCheck open({"newpage.htm", "file://" + QString(2000, 'a')});
        open.openAndWait();
        const QSize before = open.check().size();
        open.table().selectRow(1);
        QCoreApplication::processEvents();
        QCOMPARE(open.check().size(), before);
        QVERIFY(open.check().minimumSizeHint().width() < before.width());
        QCOMPARE(open.verdict(2), QString("Fails"));
    }

    void whoPlaysTheTourChangesTheVerdict() {
        OpenCheck open({"/anybody.htm"});
        open.openAndWait();
        QCOMPARE(open.verdict(1), QString("Plays"));
        auto& posting = *open.check().findChild<QComboBox*>("cboPosting");
        posting.setCurrentIndex(posting.findText("disk", Qt::MatchStartsWith));
        QTRY_COMPARE_WITH_TIMEOUT(open.verdict(1), QString("Refuses frames"), patience);
        QCOMPARE(open.program.check.posting(), Posting::disk);
        QVERIFY(!open.program.check.isRunning()); // Nothing is asked anew.
    }

    void newAddressesAreTakenInOneStepThatCanBeUndone() {
        OpenCheck open({"/moved.htm", "/plain.htm", "/moved.htm"});
        open.openAndWait();
        const std::string old = open.address(1);
        open.table().selectAll();
        QVERIFY(open.button("btnNewAddress").isEnabled());
        open.press("btnNewAddress");
        QCOMPARE(open.address(1), toUtf8(open.server.address("/plain.htm")));
        QCOMPARE(open.address(3), open.address(1));
        QVERIFY(open.program.model.tourChanged);
        QVERIFY(test::readFile(toUtf8(open.program.working("page3.htm"))).find("plain.htm") !=
                std::string::npos);
        open.waitForAnswers();
        QTRY_COMPARE_WITH_TIMEOUT(open.verdict(3), QString("Plays"), patience);
        QCOMPARE(QString::fromStdString(open.program.document.undoName().value_or("")),
                 QString("Use New Address"));
        open.window.undo();
        QCOMPARE(open.address(1), old);
        QCOMPARE(open.address(3), old);
        QTRY_COMPARE_WITH_TIMEOUT(open.verdict(1), QString("Moved"), patience); // It is known already.
        open.window.redo();
        QTRY_COMPARE_WITH_TIMEOUT(open.verdict(1), QString("Plays"), patience);
    }

    void marksStayInTheStopListUntilTheStopChanges() {
        OpenCheck open({"/deny.htm", "/plain.htm"});
        open.openAndWait();
        auto& list = *open.window.findChild<QTableView*>("grdStops")->model();
        const auto remark = [&] { return list.index(1, 3).data().toString(); };
        QTRY_VERIFY_WITH_TIMEOUT(remark().contains("refuses frames"), patience);
        QVERIFY(list.index(1, 3).data(Qt::ToolTipRole).toString().contains("X-Frame-Options"));
        QVERIFY(!list.index(2, 3).data().toString().contains("plays"));
        open.check().reject();
        QVERIFY(remark().contains("refuses frames"));
        open.program.document.setAddress(1, toUtf8(open.server.address("/plain.htm")));
        QTRY_VERIFY_WITH_TIMEOUT(!remark().contains("refuses frames"), patience);
    }

    void whatIsLeftIsToldNoMore() {
        OpenCheck open({"/deny.htm", "/plain.htm", "newpage.htm", "/deny.htm"});
        auto& list = *open.window.findChild<QTableView*>("grdStops")->model();
        const auto remark = [&] { return list.index(1, 3).data().toString(); };
        open.openAndWait();
        QTRY_VERIFY_WITH_TIMEOUT(remark().contains("refuses frames"), patience);
        open.table().selectAll();
        QVERIFY(!open.button("btnLeave").isChecked());
        open.press("btnLeave");
        QCOMPARE(open.verdict(1), QString("Refuses frames, left"));
        QCOMPARE(open.verdict(4), QString("Refuses frames, left"));
        QCOMPARE(open.verdict(2), QString("Plays"));
        QCOMPARE(open.verdict(3), QString("No page yet")); // That is the author's own work.
        QCOMPARE(open.progress(), QString("1 stop does not play."));
        QTRY_VERIFY_WITH_TIMEOUT(!remark().contains("refuses frames"), patience);
        QVERIFY(!open.program.model.tourChanged);
        open.program.document.removeStops({3});
        QTRY_COMPARE_WITH_TIMEOUT(open.progress(), QString("2 stops are left as they are, all others play."),
                                  patience);
        open.table().selectRow(0);
        QVERIFY(open.button("btnLeave").isChecked());
        QVERIFY2(open.choice().contains("You leave it as it is."), qPrintable(open.choice()));
        open.table().selectRow(1);
        QVERIFY(!open.button("btnLeave").isEnabled());
        open.table().selectRow(0);
        open.press("btnLeave");
        QCOMPARE(open.verdict(1), QString("Refuses frames"));
        QTRY_VERIFY_WITH_TIMEOUT(remark().contains("refuses frames"), patience);
    }

    void whatIsLeftIsForgottenWhenTheAnswerChanges() {
        OpenCheck open({"/deny.htm"});
        open.openAndWait();
        open.table().selectRow(0);
        open.press("btnLeave");
        open.press("btnCheckAgain");
        open.waitForAnswers();
        QTRY_COMPARE_WITH_TIMEOUT(open.verdict(1), QString("Refuses frames, left"), patience); // As before.
        const std::string address = open.address(1);
        QVERIFY(LeftPages(open.program.settings).holds(Posting::https, Verdict::refuses, address));
        const auto denial = LoopbackServer::Answer{200, {{"X-Frame-Options", "deny"}}, "no"};
        open.server.page("/deny.htm", "<title>Open</title>");
        open.press("btnCheckAgain");
        open.waitForAnswers();
        QTRY_VERIFY_WITH_TIMEOUT(!open.verdict(1).contains("left"), patience);
        open.server.answer("/deny.htm", denial);
        open.press("btnCheckAgain");
        open.waitForAnswers();
        QTRY_COMPARE_WITH_TIMEOUT(open.verdict(1), QString("Refuses frames"), patience);
        QVERIFY(!LeftPages(open.program.settings).holds(Posting::https, Verdict::refuses, address));
    }

    void onlySoMuchIsLeft() {
        UiFixture program;
        const std::string strange = "http://\u00e4.example/a, b%20c \"d\"\n";
        LeftPages left(program.settings);
        left.add(Posting::disk, Verdict::slow, strange);
        left.add(Posting::http, Verdict::slow, "http://a.example/ b");
        left.keepOnly(Posting::http, Verdict::plays, "b"); // Another page than "http://a.example/ b".
        QVERIFY(LeftPages(program.settings).holds(Posting::disk, Verdict::slow, strange));
        QVERIFY(!LeftPages(program.settings).holds(Posting::https, Verdict::slow, strange));
        QVERIFY(LeftPages(program.settings).holds(Posting::http, Verdict::slow, "http://a.example/ b"));
        for (qsizetype n = 2; n < LeftPages::most; ++n)
            left.add(Posting::https, Verdict::gone, std::to_string(n));
        QVERIFY(left.holds(Posting::disk, Verdict::slow, strange));
        left.add(Posting::https, Verdict::gone, "one more");
        QVERIFY(!left.holds(Posting::disk, Verdict::slow, strange));
        QVERIFY(left.holds(Posting::https, Verdict::gone, "one more"));
        left.remove(Posting::https, Verdict::gone, "one more");
        QVERIFY(!LeftPages(program.settings).holds(Posting::https, Verdict::gone, "one more"));
    }

    void cardsTakeThePlaceOfPagesThatDoNotPlay() {
        OpenCheck open({"/deny.htm", "/plain.htm", "/deny.htm"});
        open.server.answer("/deny.htm",
                           {200,
                            {{"X-Frame-Options", "deny"}},
                            "<title>Rivers &amp; lakes</title><meta property='og:site_name' content='Waters'>"
                            "<meta name='description' content='What flows.'><body style='background: red'>"});
        test::writeFile(toUtf8(open.program.working("card1.jpg")), "the author's own");
        open.openAndWait();
        const std::string denied = open.address(1);
        open.table().selectRow(0);
        open.press("btnCard");
        QTRY_COMPARE_WITH_TIMEOUT(open.address(1), std::string("card2.htm"), patience);
        QCOMPARE(test::readFile(toUtf8(open.program.working("card1.jpg"))), std::string("the author's own"));
        const std::string card = test::readFile(toUtf8(open.program.working("card2.htm")));
        for (const char* const part :
             {"Rivers &amp; lakes", "Waters, 127.0.0.1", "What flows.", "card2.jpg 1x, card2-2x.jpg 2x"})
            QVERIFY2(card.find(part) != std::string::npos, card.c_str());
        const QImage small(open.program.working("card2.jpg"));
        const QImage large(open.program.working("card2-2x.jpg"));
        QCOMPARE(small.size(), QSize(640, 400));
        QCOMPARE(large.size(), QSize(1280, 800));
        QVERIFY(small.pixelColor(320, 200).red() > 200 && small.pixelColor(320, 200).green() < 60);
        QTRY_COMPARE_WITH_TIMEOUT(open.verdict(1), QString("Plays"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(open.shown(1, CheckModel::whyColumn).contains("refuses frames"), patience);
        QCOMPARE(open.address(3), denied);
        QCOMPARE(QString::fromStdString(open.program.document.undoName().value_or("")),
                 QString("Make a Card"));
        open.window.undo();
        QCOMPARE(open.address(1), denied);
        QVERIFY(!QFileInfo::exists(open.program.working("card2.htm")));
        open.window.redo();
        QCOMPARE(test::readFile(toUtf8(open.program.working("card2.htm"))), card);
    }

    void cardIsMadeAnewAndGivenUp() {
        OpenCheck open({"/deny.htm", "/deny.htm"});
        open.openAndWait();
        const std::string denied = open.address(1);
        open.table().selectAll();
        open.press("btnCard");
        QTRY_COMPARE_WITH_TIMEOUT(open.address(2), std::string("card2.htm"), patience);
        QCOMPARE(open.address(1), std::string("card1.htm"));
        open.server.page("/deny.htm", "<title>Open to all</title>");
        open.table().selectRow(0);
        open.press("btnCheckAgain");
        open.waitForAnswers();
        QTRY_VERIFY_WITH_TIMEOUT(open.shown(1, CheckModel::whyColumn).contains("would play"), patience);
        open.press("btnCard");
        const auto page = [&] { return test::readFile(toUtf8(open.program.working("card1.htm"))); };
        QTRY_VERIFY_WITH_TIMEOUT(page().find("Open to all") != std::string::npos, patience);
        QCOMPARE(open.address(1), std::string("card1.htm"));
        QVERIFY(open.button("btnOriginal").isEnabled());
        open.press("btnOriginal");
        QCOMPARE(open.address(1), denied);
        QCOMPARE(open.address(2), std::string("card2.htm"));
        open.waitForAnswers();
        QTRY_COMPARE_WITH_TIMEOUT(open.verdict(1), QString("Plays"), patience);
        open.window.undo();
        QCOMPARE(open.address(1), std::string("card1.htm"));
    }

    void stopThatIsAnotherByThenKeepsItsPage() {
        OpenCheck open({"/deny.htm", "/deny.htm"});
        open.openAndWait();
        open.table().selectAll();
        open.press("btnCard");
        QVERIFY(!open.button("btnCard").isEnabled());
        QCOMPARE(open.progress(), QString("0 of 2 cards made"));
        open.program.document.setAddress(1, "newpage.htm");
        QTRY_COMPARE_WITH_TIMEOUT(open.address(2), std::string("card1.htm"), patience);
        QCOMPARE(open.address(1), std::string("newpage.htm"));
    }

    void cardsAreNotMadeWithoutTheirTemplateAndCanBeCancelled() {
        OpenCheck open({"/deny.htm"});
        open.openAndWait();
        const std::string denied = open.address(1);
        const auto before = open.program.document.undoName();
        open.table().selectRow(0);
        open.press("btnCard");
        open.press("btnStop");
        QVERIFY(open.button("btnCard").isEnabled());
        QVERIFY(QFile::remove(toQString(open.program.document.workspace().templateFile("tourcard.htm"))));
        QString told;
        test::onNextDialog([&](QDialog& message) {
            told = test::textOf(message);
            message.reject();
        });
        open.press("btnCard");
        QTRY_VERIFY_WITH_TIMEOUT(told.contains("No card can be made: "), patience);
        QCOMPARE(open.address(1), denied);
        QVERIFY(open.program.document.undoName() == before);
    }

    void pageThatDoesNotComeGetsACardWithoutPicture() {
        OpenCheck open({"/download"});
        open.server.answer("/download", {200, {{"Content-Disposition", "attachment"}}, "bytes"});
        open.openAndWait();
        QCOMPARE(open.verdict(1), QString("Download"));
        open.table().selectRow(0);
        open.press("btnCard");
        QTRY_COMPARE_WITH_TIMEOUT(open.address(1), std::string("card1.htm"), patience);
        QVERIFY(!QFileInfo::exists(open.program.working("card1.jpg")));
        QVERIFY(test::readFile(toUtf8(open.program.working("card1.htm"))).find("<img") == std::string::npos);
    }

    void pageThatIsGoneGetsNoCard() {
        OpenCheck open({"/nowhere.htm", "newpage.htm", "missing.htm"});
        open.server.answer("/nowhere.htm", {404, {}, "no"});
        open.openAndWait();
        open.table().selectAll();
        QVERIFY(!open.button("btnCard").isEnabled());
        QVERIFY(!open.button("btnOriginal").isEnabled());
    }

    void authorGoesOnWhilePagesAreAsked() {
        OpenCheck open({"/silent.htm", "/plain.htm"});
        open.open();
        QTRY_COMPARE_WITH_TIMEOUT(open.verdict(2), QString("Plays"), patience);
        QCOMPARE(open.verdict(1), QString("Checking..."));
        QCOMPARE(open.progress(), QString("1 of 2 pages checked"));
        open.window.insertStop();
        QCOMPARE(open.program.model.stopCount(), std::int16_t{3});
        QTRY_COMPARE_WITH_TIMEOUT(open.table().model()->rowCount(), 3, patience);
        open.press("btnStop");
        QTRY_VERIFY_WITH_TIMEOUT(!open.button("btnStop").isEnabled(), patience);
        QVERIFY(!open.program.check.isRunning());
        QTRY_VERIFY_WITH_TIMEOUT(!open.progress().contains("of 2"), patience);
    }

    void escapeLeavesAndAsksNoFurther() {
        OpenCheck open({"/silent.htm"});
        open.open();
        QVERIFY(open.program.check.isRunning());
        QTest::keyClick(&open.check(), Qt::Key_Escape);
        QVERIFY(!open.check().isVisible());
        QVERIFY(!open.program.check.isRunning());
    }

    void returnGoesToTheStop() {
        OpenCheck open({"/plain.htm", "newpage.htm"});
        open.openAndWait();
        open.table().setFocus();
        open.table().selectRow(1);
        QTest::keyClick(&open.table(), Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(open.program.model.currentStop, std::int16_t{2}, patience);
        QVERIFY(!open.program.check.isRunning());
    }

    void anotherTourComesWhilePagesAreAsked() {
        OpenCheck open({"/silent.htm", "/plain.htm"});
        open.open();
        QTRY_COMPARE_WITH_TIMEOUT(open.verdict(2), QString("Plays"), patience);
        open.program.document.beginOpening();
        open.program.document.finishOpening(toUtf8(open.program.makeTour("other", 1)));
        QTRY_COMPARE_WITH_TIMEOUT(open.table().model()->rowCount(), 1, patience);
        QCOMPARE(open.verdict(1), QString("No page yet"));
        open.press("btnStop");
    }

    void missingRoomOnTheDiskIsTold() {
        OpenCheck open({"/plain.htm"});
        const QByteArray temporary = qgetenv("TMPDIR");
        qputenv("TMPDIR", "/proc"); // Nobody writes there.
        QString told;
        test::onNextDialog([&](QDialog& message) {
            told = test::textOf(message);
            message.reject();
        });
        open.open();
        if (temporary.isNull())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", temporary);
        QVERIFY2(told.contains("No page can be checked: "), qPrintable(told));
        QVERIFY(!open.program.check.isRunning());
        QCOMPARE(open.verdict(1), QString("Not checked"));
        open.press("btnCheckAll");
        open.waitForAnswers();
        QTRY_COMPARE_WITH_TIMEOUT(open.verdict(1), QString("Plays"), patience);
    }

    void programEndsWhilePagesAreAsked() {
        OpenCheck open({"/silent.htm", "/slow.htm"});
        open.open();
        QVERIFY(open.window.close());
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::CheckTest)

#include "CheckTest.moc"
