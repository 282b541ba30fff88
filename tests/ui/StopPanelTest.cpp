#include "base/Files.h"
#include "commands/TourDocument.h"
#include "model/StopAddress.h"
#include "model/StopTexts.h"
#include "platform/BrowserView.h"
#include "platform/Gate.h"
#include "platform/Settings.h"
#include "platform/SpellChecker.h"
#include "platform/Strings.h"
#include "recovery/RecoveryRecord.h"
#include "ui/main/SidePanels.h"
#include "ui/main/frmMain.h"
#include "ui/narration/HtmlField.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/stops/SideDock.h"
#include "ui/support/DialogWatch.h"
#include "ui/support/Dictionaries.h"
#include "ui/support/LoopbackServer.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCompleter>
#include <QDialog>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <filesystem>
#include <memory>
#include <optional>

namespace wendmark {

using test::hasKeys;
using test::patience;
using test::UiFixture;

namespace {

/// The program with a saved tour, its second stop on screen, and the fields of that stop beside it.
class OpenPanel final {
public:
    explicit OpenPanel(int stops = 3) : window(program.parts()) {
        window.load(program.makeTour("walk", stops));
        program.model.autoInstruction = false;
        window.resize(1500, 800);
        window.show();
        goTo(std::min(stops, 2));
    }

    void goTo(int stop) {
        program.document.goToStop(static_cast<std::int16_t>(stop));
        settle();
    }

    /// The fields catch up with the tour once a command has ended.
    static void settle() { QCoreApplication::processEvents(); }

    QLineEdit& title() const { return *window.findChild<QLineEdit*>("txtPanelTitle"); }
    QLineEdit& address() const { return *window.findChild<QLineEdit*>("txtPanelAddress"); }
    HtmlField& words() const { return *window.findChild<HtmlField*>("txtPanelWords"); }
    HtmlField& instruction() const { return *window.findChild<HtmlField*>("txtPanelInstruction"); }
    QPushButton& button(const char* name) const { return *window.findChild<QPushButton*>(name); }
    SideDock& dock() const { return *window.findChild<SideDock*>("stopPanel"); }
    QString target() const {
        settle();
        return window.findChild<QLabel*>("lblPanelStop")->text();
    }
    QString addressHint() const {
        const auto* const hint = window.findChild<QLabel*>("lblPanelAddressHint");
        return hint->isVisible() ? hint->text() : QString();
    }
    frmNarEdit& editor() const { return *window.findChild<frmNarEdit*>("frmNarEdit"); }

    const Stop& stop(int n) const { return program.model.stops.at(n); }

    static void type(QWidget& field, const QString& text) {
        field.setFocus();
        QTest::keyClicks(&field, text);
    }

    void typeAddress(const QString& text) const {
        address().setFocus();
        address().selectAll();
        address().insert(text); // Keys are those of ASCII.
        QTest::keyClick(&address(), Qt::Key_Return);
        settle();
    }

    std::string page(int stop) const {
        return test::readFile(toUtf8(program.working(QString("page%1.htm").arg(stop))));
    }

    /// What the script gives in the preview of the main window. The engine forgets what it is asked while
    /// another page comes.
    QVariant inPreview(const QString& script) const {
        QWebEnginePage& page = *test::engineOf(*window.findChild<BrowserView*>("broMain")).page();
        const auto answer = std::make_shared<std::optional<QVariant>>();
        const auto isAnswered = [&] {
            page.runJavaScript(script, [answer](const QVariant& value) { *answer = value; });
            return QTest::qWaitFor([&] { return answer->has_value(); }, 500);
        };
        return test::waitUntil(isAnswered) ? **answer : QVariant();
    }

    bool previewSays(const QString& words) const {
        return inPreview("frames.nar.document.body.innerText").toString().contains(words);
    }

    UiFixture program;
    frmMain window;
};

/// Milliseconds of a pause that ends a burst of typing.
constexpr int afterBurst = 2'500;

} // namespace

class StopPanelTest final : public QObject {
    Q_OBJECT

private slots:
    // What the fields show

    void fieldsAreThoseOfTheStopOnScreen() {
        OpenPanel open;
        QCOMPARE(open.target(), QString("Stop 2"));
        QCOMPARE(open.title().text(), QString("Stop 2"));
        QCOMPARE(open.address().text(), QString()); // It still has the page of new stops.
        open.program.document.setAddress(3, "https://example.org/c");
        open.goTo(3);
        QCOMPARE(open.target(), QString("Stop 3"));
        QCOMPARE(open.title().text(), QString("Stop 3"));
        QCOMPARE(open.address().text(), QString("https://example.org/c"));
        QVERIFY(!open.program.model.tourChanged || open.program.document.undoName());
    }

    void openingPageHasNoFields() {
        OpenPanel open;
        open.goTo(0);
        QCOMPARE(open.target(), QString("The opening page has no texts of its own."));
        for (const QWidget* field :
             {static_cast<QWidget*>(&open.title()), static_cast<QWidget*>(&open.address()),
              static_cast<QWidget*>(&open.words()), static_cast<QWidget*>(&open.instruction())})
            QVERIFY(!field->isEnabled());
        QVERIFY(!open.button("btnPanelSite").isEnabled());
        QVERIFY(!open.button("btnPanelFile").isEnabled());
        QCOMPARE(open.title().text(), QString());
    }

    void markersOfEmptyTextsAreNotShown() {
        OpenPanel open;
        open.program.document.setTexts(2, {"T", std::string(noNarration), std::string(noInstruction)});
        OpenPanel::settle();
        QCOMPARE(open.words().shownText(), QString());
        QCOMPARE(open.instruction().shownText(), QString());
        OpenPanel::type(open.words(), "x");
        QTest::keyClick(&open.words(), Qt::Key_Backspace);
        QCOMPARE(open.stop(2).stopNarration, std::string(noNarration));
    }

    void instructionBelongsToTheProgramInAutomaticMode() {
        OpenPanel open;
        QVERIFY(open.instruction().isEnabled());
        open.program.model.autoInstruction = true;
        open.program.document.setTexts(2, {"T", "Words", "AUTO"});
        OpenPanel::settle();
        QVERIFY(!open.instruction().isEnabled());
        QCOMPARE(open.instruction().placeholderText(),
                 QString("Automatic Instruction Mode [selected in Tour Properties]"));
        OpenPanel::type(open.words(), "More ");
        QCOMPARE(open.instruction().shownText(), QString());
        QCOMPARE(toQString(open.stop(2).stopNarration), QString("More Words"));
    }

    void textThatIsTooLongStaysAsItIs() {
        OpenPanel open;
        const std::string text(HtmlField::longestEdited + 10, 'a');
        open.program.document.setTexts(2, {"T", text, "I"});
        QVERIFY(open.target().contains("50,000 characters"));
        QVERIFY(open.words().isReadOnly());
        OpenPanel::type(open.title(), "U");
        QCOMPARE(toQString(open.stop(2).stopTitle), QString("UT"));
        QVERIFY(open.stop(2).stopNarration == text);
    }

    // Typing

    void everythingTypedIsInTheTourAtOnce() {
        OpenPanel open;
        OpenPanel::type(open.title(), "New ");
        QCOMPARE(toQString(open.stop(2).stopTitle), QString("New Stop 2"));
        open.words().insertPlainText(QString::fromUtf8("Caf\u00e9 "));
        OpenPanel::type(open.words(), "<b>here</b> ");
        QVERIFY(open.stop(2).stopNarration.starts_with("Caf\u00e9 <b>here</b> "));
        OpenPanel::type(open.instruction(), "Look. ");
        QVERIFY(open.stop(2).stopInstruction.starts_with("Look. "));
        QVERIFY(open.program.model.tourChanged);
        QVERIFY(open.page(2).find("New Stop 2") != std::string::npos);
        QVERIFY(test::readFile(toUtf8(open.program.working("toc.htm"))).find("New Stop 2") !=
                std::string::npos);
    }

    void keysKeepTheirOrderWhereEachTakesTheProgramLong() {
        OpenPanel open;
        std::int64_t now = 0;
        open.program.stepClock = [&] { return now += 1000; }; // Windows get their turn between all steps.
        OpenPanel::type(open.address(), "https://example.org/a-long-address");
        OpenPanel::type(open.title(), "A long title ");
        QCOMPARE(open.address().text(), QString("https://example.org/a-long-address"));
        QCOMPARE(toQString(open.stop(2).stopURL), QString("https://example.org/a-long-address"));
        QCOMPARE(toQString(open.stop(2).stopTitle), QString("A long title Stop 2"));
    }

    void burstOfTypingIsOneStep() {
        OpenPanel open;
        const Stop before = open.stop(2);
        OpenPanel::type(open.words(), "One two three ");
        QCOMPARE(open.program.document.undoName(), std::optional<std::string>("Edit Words"));
        open.window.undo();
        QVERIFY(open.stop(2) == before);
        OpenPanel::settle();
        QCOMPARE(open.words().shownText(), QString("Words of stop 2.\n"));
        QVERIFY(open.stop(2) == before);
        open.window.redo();
        OpenPanel::settle();
        QVERIFY(open.words().shownText().startsWith("One two three "));
        QCOMPARE(open.words().shownText(), QString("One two three Words of stop 2.\n"));
    }

    void pauseAndAnotherFieldBeginAnotherStep() {
        OpenPanel open;
        const Stop before = open.stop(2);
        OpenPanel::type(open.words(), "One ");
        QTest::qWait(afterBurst);
        OpenPanel::type(open.words(), "two ");
        OpenPanel::type(open.title(), "New ");
        open.window.undo();
        QCOMPARE(open.stop(2).stopTitle, before.stopTitle);
        QVERIFY(open.stop(2).stopNarration.starts_with("One two "));
        open.window.undo();
        QVERIFY(open.stop(2).stopNarration.starts_with("One "));
        QVERIFY(!open.stop(2).stopNarration.starts_with("One two "));
        open.window.undo();
        QVERIFY(open.stop(2) == before);
    }

    void keysOfUndoAreThoseOfTheFieldAndNeverBringAnotherStopsWords() {
        OpenPanel open;
        const std::string before = open.stop(3).stopNarration;
        OpenPanel::type(open.words(), "Of the second ");
        open.goTo(3);
        for (QWidget* const field :
             {static_cast<QWidget*>(&open.words()), static_cast<QWidget*>(&open.title())}) {
            field->setFocus();
            QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
        }
        OpenPanel::settle();
        QCOMPARE(open.stop(3).stopNarration, before);
        QCOMPARE(toQString(open.stop(3).stopTitle), QString("Stop 3"));
    }

    void previewFollowsWithoutLoadingAnythingAgain() {
        OpenPanel open;
        QTRY_VERIFY_WITH_TIMEOUT(open.previewSays("Stop 2"), patience);
        // What a frame shows before its page has come is replaced by that.
        const auto* const browser = open.window.findChild<BrowserView*>("broMain");
        const QString isThere =
            "frames.mw.location.href.endsWith('newpage.htm') &&"
            "['mw', 'logo', 'nar', 'nav'].every(n => frames[n].location.protocol === 'file:' &&"
            "frames[n].document.readyState === 'complete')";
        QVERIFY(test::waitUntil([&] { return !browser->isBusy() && open.inPreview(isThere).toBool(); }));
        open.inPreview("for (const name of ['mw', 'logo', 'nar', 'nav']) frames[name].stays = true; 1");
        OpenPanel::type(open.title(), "Fresh ");
        OpenPanel::type(open.words(), "Some <b>bold</b> words. ");
        QTRY_VERIFY_WITH_TIMEOUT(open.previewSays("Fresh Stop 2"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(open.previewSays("Some bold words."), patience);
        QCOMPARE(open.inPreview("['mw', 'logo', 'nar', 'nav'].filter(n => frames[n].stays).length").toInt(),
                 4);
    }

    void wordsThatEndThePageEarlyDoNotPileUp() {
        OpenPanel open;
        QTRY_VERIFY_WITH_TIMEOUT(open.previewSays("Stop 2"), patience);
        OpenPanel::type(open.words(), "</main>rest");
        QTRY_VERIFY_WITH_TIMEOUT(open.previewSays("rest"), patience);
        OpenPanel::type(open.words(), "X");
        QTRY_VERIFY_WITH_TIMEOUT(open.previewSays("restX"), patience);
        QCOMPARE(open.inPreview("frames.nar.document.body.innerText.split('rest').length - 1").toInt(), 1);
    }

    void wordsTypedWhileTheTourIsBeingLoadedAreShown() {
        OpenPanel open;
        open.program.document.goToStop(3);
        OpenPanel::settle();
        OpenPanel::type(open.words(), "In a hurry ");
        QTRY_VERIFY_WITH_TIMEOUT(open.previewSays("In a hurry"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(open.previewSays("Stop 3"), patience);
    }

    // Commands that are under way

    void wordsTypedDuringACommandAreStoredAfterItAndStayOnScreen() {
        OpenPanel open;
        const std::string before = open.stop(2).stopNarration;
        open.program.gate.run(open.window, [&] {
            OpenPanel::type(open.words(), "Waiting ");
            OpenPanel::settle();
            OpenPanel::type(open.words(), "words ");
            QCOMPARE(open.stop(2).stopNarration, before);
            open.program.document.setAddress(2, "https://example.org/meanwhile"); // Tells of a change.
            OpenPanel::settle();
            QVERIFY(open.words().shownText().startsWith("Waiting words "));
        });
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        QVERIFY(open.stop(2).stopNarration.starts_with("Waiting words "));
        OpenPanel::settle();
        QVERIFY(open.words().shownText().startsWith("Waiting words "));
        QCOMPARE(open.address().text(), QString("https://example.org/meanwhile"));
    }

    void wordsTypedDuringACommandFindTheirStopThatWasMoved() {
        OpenPanel open;
        open.program.gate.run(open.window, [&] {
            open.window.moveForward();
            OpenPanel::type(open.words(), "Of the second ");
        });
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        QCOMPARE(toQString(open.stop(3).stopTitle), QString("Stop 2"));
        QVERIFY(open.stop(3).stopNarration.starts_with("Of the second "));
        QVERIFY(!open.stop(2).stopNarration.starts_with("Of the second "));
    }

    void wordsTypedIntoAStopThatGoesAreToldOf() {
        OpenPanel open;
        open.program.gate.run(open.window, [&] {
            open.window.deleteStop();
            OpenPanel::type(open.words(), "Of nobody ");
        });
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        QCOMPARE(open.program.model.stopCount(), 2);
        for (int n = 1; n <= 2; ++n)
            QVERIFY(!open.stop(n).stopNarration.starts_with("Of nobody "));
        QCOMPARE(test::noticeOf(open.window),
                 QString("What was typed last is not in the tour: its stop has gone."));
    }

    void keysBehindAnInsertThatWaitsAreTheNewStops() {
        OpenPanel open;
        const Stop before = open.stop(2);
        open.program.gate.run(open.window, [&] {
            open.window.insertStop();
            OpenPanel::type(open.words(), "castle.example");
            QTest::keyClick(&open.words(), Qt::Key_Tab);
            OpenPanel::type(open.words(), "Castle");
            open.window.insertStop();
            open.window.save();
            OpenPanel::type(open.words(), "lake.example");
            QCOMPARE(toQString(open.stop(2).stopNarration), toQString(before.stopNarration));
        });
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        QCOMPARE(open.program.model.stopCount(), 5);
        QVERIFY(open.stop(2) == before);
        QCOMPARE(toQString(open.stop(3).stopURL), QString("https://castle.example"));
        QCOMPARE(toQString(open.stop(3).stopTitle), QString("Castle"));
        QCOMPARE(toQString(open.stop(4).stopURL), QString("https://lake.example"));
        QCOMPARE(open.address().text(), QString("lake.example"));
        OpenPanel::type(open.words(), "Water");
        QCOMPARE(toQString(open.stop(4).stopNarration), QString("Water"));
    }

    void keysBehindAnInsertThatIsRefusedAreLeftOutAndToldOf() {
        OpenPanel open(tourCapacity);
        const Stop before = open.stop(2);
        open.program.gate.run(open.window, [&] {
            open.window.insertStop();
            OpenPanel::type(open.words(), "castle.example");
        });
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        QVERIFY(open.stop(2) == before);
        QCOMPARE(test::noticeOf(open.window),
                 QString("What was typed last is not in the tour: there is no new stop for it."));
        OpenPanel::type(open.words(), "Of the second ");
        QVERIFY(open.stop(2).stopNarration.starts_with("Of the second "));
    }

    void clickBehindAnInsertThatWaitsLeadsTheKeys() {
        OpenPanel open;
        open.program.gate.run(open.window, [&] {
            open.window.insertStop();
            QTest::mouseClick(open.words().viewport(), Qt::LeftButton);
            OpenPanel::type(open.words(), "Of the second ");
        });
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        QVERIFY(toQString(open.stop(2).stopNarration).contains("Of the second "));
        QVERIFY(open.stop(3) == newStop());
    }

    void wordsThatWaitAreKeptForTheNextStart() {
        OpenPanel open;
        auto& sides = open.window.sides();
        QVERIFY(!sides.unappliedTexts());
        open.program.gate.run(open.window, [&] {
            OpenPanel::type(open.words(), "Waiting ");
            QVERIFY(sides.unappliedTexts());
            QVERIFY(sides.unappliedTexts()->narration.starts_with("Waiting "));
        });
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        QVERIFY(!sides.unappliedTexts());
    }

    // The page

    void typedAddresses_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("stored");
        QTest::newRow("whole") << "https://example.org/a?b=1#c"
                               << "https://example.org/a?b=1#c";
        QTest::newRow("blanks around") << "  http://example.org/a "
                                       << "http://example.org/a";
        QTest::newRow("no scheme") << "example.org/page"
                                   << "https://example.org/page";
        QTest::newRow("no scheme, port") << "example.org:8080"
                                         << "https://example.org:8080";
        QTest::newRow("this computer") << "localhost:8080/x"
                                       << "http://localhost:8080/x";
        QTest::newRow("number of this computer") << "127.0.0.1/x"
                                                 << "http://127.0.0.1/x";
        QTest::newRow("other letters") << QString::fromUtf8("https://example.org/\u00fc \u4e16")
                                       << "https://example.org/%C3%BC%20%E4%B8%96";
        QTest::newRow("quotes") << "https://example.org/'\"<"
                                << "https://example.org/%27%22%3C";
        QTest::newRow("file of the tour") << "My Page.htm"
                                          << "my%20page.htm";
        QTest::newRow("file of the tour, encoded") << "my%20page.htm"
                                                   << "my%20page.htm";
        QTest::newRow("nothing") << " "
                                 << "newpage.htm";
    }

    void typedAddresses() {
        QFETCH(QString, typed);
        QFETCH(QString, stored);
        OpenPanel open;
        test::writeFile(toUtf8(open.program.working("my page.htm")), "<p>Mine</p>");
        open.program.document.setAddress(2, "https://example.org/former");
        OpenPanel::settle();
        open.typeAddress(typed);
        QCOMPARE(toQString(open.stop(2).stopURL), stored);
        QCOMPARE(open.addressHint(), QString());
        QCOMPARE(open.address().text(), stored == "newpage.htm" ? QString() : stored);
    }

    void textsThatAreNoAddressAreToldOf_data() {
        QTest::addColumn<QString>("typed");
        QTest::newRow("a word") << "garden";
        QTest::newRow("words") << "example.org and more";
        QTest::newRow("script") << "javascript:alert(1)";
        QTest::newRow("mail") << "mailto:a@example.org";
        QTest::newRow("file elsewhere") << "/etc/passwd";
        QTest::newRow("file elsewhere as address") << "file:///etc/passwd";
        QTest::newRow("out of the tour") << "../script.txt";
        QTest::newRow("file that is not there") << "missing.htm";
        QTest::newRow("page that the program makes") << "page1.htm";
        QTest::newRow("no host") << "https://";
        QTest::newRow("user") << "user@example.org";
        QTest::newRow("too long") << QString("https://example.org/") + QString(9000, 'a');
    }

    void textsThatAreNoAddressAreToldOf() {
        QFETCH(QString, typed);
        OpenPanel open;
        open.program.document.setAddress(2, "https://example.org/former");
        OpenPanel::settle();
        open.address().setFocus();
        open.address().setText(typed); // At once: what it begins with may be an address.
        QTest::keyClick(&open.address(), Qt::Key_Return);
        OpenPanel::settle();
        QCOMPARE(toQString(open.stop(2).stopURL), QString("https://example.org/former"));
        QCOMPARE(open.addressHint(),
                 QString("This is no address of a page. Files come into the tour by Local File."));
        QCOMPARE(open.address().text(), typed);
        open.typeAddress("https://example.org/good");
        QCOMPARE(open.addressHint(), QString());
        QCOMPARE(toQString(open.stop(2).stopURL), QString("https://example.org/good"));
    }

    void typedAddressIsShownWhenItIsComplete() {
        OpenPanel open;
        test::LoopbackServer server;
        QTRY_VERIFY_WITH_TIMEOUT(open.previewSays("Stop 2"), patience);
        open.inPreview("for (const name of ['logo', 'nav']) frames[name].stays = true; 1");
        open.address().setFocus();
        QTest::keyClicks(&open.address(), server.address("/plain.htm"));
        OpenPanel::settle();
        QCOMPARE(toQString(open.stop(2).stopURL), server.address("/plain.htm")); // A save would have it.
        QCOMPARE(server.requestsFor("/plain.htm"), 0);
        QTest::keyClick(&open.address(), Qt::Key_Tab);
        QTRY_VERIFY_WITH_TIMEOUT(server.requestsFor("/plain.htm") > 0, patience);
        QCOMPARE(open.inPreview("['logo', 'nav'].filter(n => frames[n].stays).length").toInt(), 2);
        QCOMPARE(QApplication::focusWidget(), &open.title());
        QVERIFY(open.program.document.isUntested(open.stop(2).stopURL));
        open.window.undo();
        QVERIFY(isNewPage(open.stop(2).stopURL));
        OpenPanel::settle();
        QCOMPARE(open.address().text(), QString());
    }

    void addressesAreCompletedFromTheHistory() {
        OpenPanel open;
        test::writeFile(toUtf8(open.program.working("brhist.txt")),
                        "https://example.org/heron\r\nhttps://example.org/otter\r\n");
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.window), patience);
        open.address().setFocus();
        QTest::keyClicks(&open.address(), "otter");
        QCompleter& completer = *open.address().completer();
        QCOMPARE(completer.completionCount(), 1);
        QCOMPARE(completer.currentCompletion(), QString("https://example.org/otter"));
        QTRY_VERIFY_WITH_TIMEOUT(QApplication::activePopupWidget() != nullptr, patience);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Down);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
        OpenPanel::settle();
        QCOMPARE(toQString(open.stop(2).stopURL), QString("https://example.org/otter"));
    }

    void localFileComesIntoTheTour() {
        OpenPanel open;
        const QString file = open.program.path("Garden.htm");
        test::writeFile(toUtf8(file), "<title>My garden</title>");
        test::onNextDialog([&](QDialog& dialog) {
            auto& files = *qobject_cast<QFileDialog*>(&dialog);
            files.selectFile(file);
            QMetaObject::invokeMethod(&files, "accept");
        });
        open.button("btnPanelFile").click();
        QTRY_COMPARE_WITH_TIMEOUT(open.stop(2).stopURL, std::string("garden.htm"), patience);
        QVERIFY(QFile::exists(open.program.working("garden.htm")));
        QCOMPARE(open.address().text(), QString("garden.htm"));
    }

    void siteEditorOpensForTheStop() {
        OpenPanel open;
        open.button("btnPanelSite").click();
        const auto isOpen = [&] {
            const auto* const editor = open.window.findChild<QWidget*>("frmBrowser");
            return editor != nullptr && editor->isVisible();
        };
        QTRY_VERIFY_WITH_TIMEOUT(isOpen(), patience);
    }

    // The page's own title

    void newStopOffersThePagesOwnTitle() {
        OpenPanel open;
        test::LoopbackServer server;
        server.page("/own.htm", "<title>Gulls &amp; <\nterns</title>");
        open.window.insertStop();
        OpenPanel::settle();
        QVERIFY(!open.button("btnPanelTitle").isVisible());
        open.typeAddress(server.address("/own.htm"));
        QTRY_VERIFY_WITH_TIMEOUT(open.button("btnPanelTitle").isVisible(), patience);
        QCOMPARE(open.button("btnPanelTitle").text(), QString("&Use \"Gulls && < terns\""));
        open.button("btnPanelTitle").click();
        QCOMPARE(toQString(open.stop(3).stopTitle), QString("Gulls &amp; &lt; terns"));
        QVERIFY(!open.button("btnPanelTitle").isVisible());
        QVERIFY(open.words().hasFocus());
        open.window.undo();
        QCOMPARE(toQString(open.stop(3).stopTitle), QString("Title"));
        QCOMPARE(toQString(open.stop(3).stopURL), server.address("/own.htm"));
    }

    void noTitleIsOfferedInPlaceOfTheAuthorsOwnOrWhereThePageHasNone() {
        OpenPanel open;
        test::LoopbackServer server;
        server.page("/own.htm", "<title>Own</title>");
        server.page("/none.htm", "<p>Nothing</p>");
        open.typeAddress(server.address("/own.htm")); // Its title is "Stop 2".
        open.window.insertStop();
        OpenPanel::settle();
        open.typeAddress(server.address("/none.htm"));
        open.typeAddress("http://127.0.0.1:1/nobody");
        QTest::qWait(500);
        QVERIFY(!open.button("btnPanelTitle").isVisible());
        open.typeAddress(server.address("/own.htm"));
        QTRY_VERIFY_WITH_TIMEOUT(open.button("btnPanelTitle").isVisible(), patience);
        OpenPanel::type(open.title(), "M");
        QVERIFY(!open.button("btnPanelTitle").isVisible());
    }

    // The narration editor

    void textsAreReadOnlyWhileTheNarrationEditorHasThem() {
        OpenPanel open;
        open.window.editNarrationFrame();
        QCOMPARE(open.target(),
                 QString("Stop 2. Its texts are in the narration editor, and are changed there."));
        QVERIFY(open.title().isReadOnly() && open.words().isReadOnly() && open.instruction().isReadOnly());
        QVERIFY(open.address().isEnabled() && !open.address().isReadOnly());
        open.goTo(3);
        QCOMPARE(open.target(), QString("Stop 3"));
        QVERIFY(!open.title().isReadOnly() && !open.words().isReadOnly());
        open.goTo(2);
        QVERIFY(open.words().isReadOnly());
        open.editor().findChild<HtmlField*>("txtText")->setPlainText("Applied");
        QTest::mouseClick(open.editor().findChild<QPushButton*>("btnOK"), Qt::LeftButton);
        QCOMPARE(open.target(), QString("Stop 2"));
        QCOMPARE(open.words().shownText(), QString("Applied"));
        QVERIFY(!open.words().isReadOnly());
    }

    void narrationEditorsStopIsKnownAfterMoves() {
        OpenPanel open;
        open.window.editNarrationFrame();
        open.window.moveForward();
        QCOMPARE(open.target(),
                 QString("Stop 3. Its texts are in the narration editor, and are changed there."));
        QCOMPARE(open.editor().filledStop(), std::int16_t{3});
    }

    void applyAsksBeforeItStoresIntoAnotherStop() {
        OpenPanel open;
        const StopList before = open.program.model.stops;
        open.window.editNarrationFrame();
        open.editor().findChild<HtmlField*>("txtText")->setPlainText("For the second");
        open.goTo(3);
        QString question;
        test::onNextDialog([&](QDialog& dialog) {
            question = test::textOf(dialog);
            test::press(dialog, "No");
        });
        open.editor().findChild<QPushButton*>("btnOK")->click();
        QCOMPARE(question,
                 QString("Wendmark|These words were written for stop 2. Do you want to store them into "
                         "stop 3, in place of its own?"));
        QVERIFY(open.program.model.stops == before);
        QVERIFY(open.editor().isVisible());
        test::onNextDialog([](QDialog& dialog) { test::press(dialog, "Yes"); });
        open.editor().findChild<QPushButton*>("btnOK")->click();
        QCOMPARE(toQString(open.stop(3).stopNarration), QString("For the second"));
        QVERIFY(open.stop(2) == before.at(2));
    }

    // The dock

    void insertPutsTheFocusIntoTheAddress() {
        OpenPanel open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.window), patience);
        open.window.insertStop();
        QVERIFY(open.address().hasFocus());
        QCOMPARE(open.target(), QString("Stop 3"));
        QCOMPARE(open.address().text(), QString());
        open.dock().close();
        open.window.insertStop();
        QVERIFY(!open.dock().isVisible());
    }

    void insertThatIsRefusedLeavesTheFocusWhereItIs() {
        OpenPanel open(tourCapacity);
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.window), patience);
        open.words().setFocus();
        open.window.insertStop();
        QVERIFY(open.words().hasFocus());
        auto& list = *open.window.findChild<QWidget*>("grdStops");
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Insert);
        QVERIFY(!open.address().hasFocus());
    }

    void keysOfStopsWorkInTheFields() {
        OpenPanel open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.window), patience);
        OpenPanel::type(open.words(), "Words ");
        QTest::keyClick(&open.words(), Qt::Key_Insert, Qt::ControlModifier);
        QCOMPARE(open.program.model.stopCount(), 4);
        QVERIFY(open.address().hasFocus());
        QTest::keyClick(&open.address(), Qt::Key_PageUp, Qt::ControlModifier);
        QCOMPARE(open.target(), QString("Stop 2"));
        open.words().setFocus();
        open.words().selectAll();
        QTest::keyClick(&open.words(), Qt::Key_Insert, Qt::ControlModifier);
        QCOMPARE(open.program.model.stopCount(), 4);
        QVERIFY(QApplication::clipboard()->text().startsWith("Words "));
    }

    void tabWalksFromThePageToTheWords() {
        OpenPanel open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.window), patience);
        open.address().setFocus();
        QTest::keyClick(&open.address(), Qt::Key_Tab);
        QVERIFY(open.title().hasFocus());
        QTest::keyClick(&open.title(), Qt::Key_Tab);
        QVERIFY(open.words().hasFocus());
        QTest::keyClick(&open.words(), Qt::Key_Tab);
        QVERIFY(open.instruction().hasFocus());
        QTest::keyClick(&open.instruction(), Qt::Key_Escape);
        QVERIFY(!open.dock().isAncestorOf(QApplication::focusWidget()));
        QVERIFY(open.dock().isVisible());
    }

    void keyOfThePanelShowsItAndHidesIt() {
        OpenPanel open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.window), patience);
        open.window.findChild<QAction*>("mnuViewStopPanel")->trigger();
        QVERIFY(open.address().hasFocus());
        open.window.findChild<QAction*>("mnuViewStopPanel")->trigger();
        QVERIFY(!open.dock().isVisible());
        open.window.resize(700, 600);
        open.window.findChild<QAction*>("mnuViewStopPanel")->trigger();
        QVERIFY(open.dock().isVisible());
        QVERIFY(open.address().hasFocus());
        open.dock().close();
        open.goTo(0);
        open.window.findChild<QAction*>("mnuViewStopPanel")->trigger();
        QVERIFY(open.dock().isVisible());
        QVERIFY(open.dock().isAncestorOf(QApplication::focusWidget()));
        open.window.findChild<QAction*>("mnuViewStopPanel")->trigger();
        QVERIFY(!open.dock().isVisible());
    }

    void wordsAreCheckedInTheLanguageOfAllWindows() {
        const test::Dictionaries dictionaries;
        OpenPanel open;
        OpenPanel::settle();
        QCOMPARE(open.program.spelling.language(), QString("en_US"));
        emit open.words().languageChosen("de_DE");
        QCOMPARE(open.program.spelling.language(), QString("de_DE"));
        QCOMPARE(open.program.settings.read(narrationSettings::spellingLanguage), QString("de_DE"));
        open.window.editNarrationFrame();
        QCOMPARE(open.program.spelling.language(), QString("de_DE"));
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::StopPanelTest)
#include "StopPanelTest.moc"
