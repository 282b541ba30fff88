#include "model/SiteLists.h"
#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/site/BookmarkPanel.h"
#include "ui/site/ColorBar.h"
#include "ui/support/SiteEditor.h"
#include "ui/support/Work.h"

#include <QLineEdit>
#include <QTest>

namespace wendmark {

using test::onNextDialog;
using test::press;
using test::SiteEditor;
using test::waitUntil;

namespace {

/// The site editor with these bookmarks: addresses "a", "b" and so on, in this order.
class Bookmarks final {
public:
    explicit Bookmarks(const QString& addresses = {}) {
        QByteArray file;
        for (const QChar address : addresses)
            file += "http://127.0.0.1:1/" + QString(address).toUtf8() + "\r\nnote " +
                    QString(address).toUtf8() + "\r\n16777215\r\n";
        read(file);
    }

    /// Opens the editor anew with this file.
    void read(const QByteArray& file) {
        open.editor().close();
        open.write("goodlist.txt", file);
        open.program.model.tourChanged = false;
        open.program.beeps = 0;
        open.edit();
    }

    /// Same, at once; the list is there when the command is done.
    test::Work workOfReading(const QByteArray& file) {
        open.editor().close();
        open.write("goodlist.txt", file);
        return test::workOf([this] { open.window.runToolBarCommand("EdBro"); });
    }

    BookmarkPanel& panel() const { return *open.editor().findChild<BookmarkPanel*>(); }
    QTableWidget& grid() const { return open.grid(); }
    ColorBar& bar() const { return open.control<ColorBar>("picColorBar"); }
    void click(const char* name) const { open.click(name); }

    void select(int first, int last) const {
        grid().clearSelection();
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, placeOf(first));
        if (last != first)
            QTest::mouseClick(grid().viewport(), Qt::LeftButton, Qt::ShiftModifier, placeOf(last));
    }

    QPoint placeOf(int row) const {
        grid().scrollToItem(grid().item(row, 1));
        return grid().visualItemRect(grid().item(row, 1)).center();
    }

    void clickBar(double place) const {
        QTest::mouseClick(&bar(), Qt::LeftButton, {},
                          QPoint(static_cast<int>(place * bar().width()), bar().height() / 2));
    }

    /// Last letters of the addresses.
    QString order() const {
        QString letters;
        for (int row = 0; row < grid().rowCount(); ++row)
            letters += grid().item(row, 1)->text().right(1);
        return letters;
    }

    /// "first-last" of the selected rows.
    QString selection() const {
        const auto ranges = grid().selectedRanges();
        return ranges.isEmpty()
                   ? QString()
                   : QString("%1-%2").arg(ranges.first().topRow()).arg(ranges.last().bottomRow());
    }

    bool changed() const { return open.program.model.tourChanged; }
    int beeps() const { return open.program.beeps; }

    SiteEditor open;
};

} // namespace

class BookmarksTest final : public QObject {
    Q_OBJECT

private slots:
    void missingFileGivesAnEmptyList() {
        Bookmarks list;
        list.open.editor().close();
        QVERIFY(QFile::remove(list.open.program.working("goodlist.txt")));
        list.open.edit();
        QCOMPARE(list.panel().bookmarkCount(), std::int16_t(0));
    }

    void fileIsShownInTheGrid() {
        Bookmarks list;
        list.read("http://127.0.0.1:1/a\r\nfirst\r\n255\r\nhttp://127.0.0.1:1/b\r\n \r\n16777215\r\n");
        QCOMPARE(list.panel().bookmarkCount(), std::int16_t(2));
        QCOMPARE(list.grid().item(0, 0)->text(), QString());
        QCOMPARE(list.grid().item(0, 0)->background().color(), QColor(255, 0, 0));
        QCOMPARE(list.grid().item(0, 1)->text(), QString("http://127.0.0.1:1/a"));
        QCOMPARE(list.grid().item(0, 2)->text(), QString("first"));
        QCOMPARE(list.grid().item(1, 2)->text(), QString(" "));
        QVERIFY(list.selection().isEmpty());
        QVERIFY(!list.changed());
    }

    void olderFileIsReadInPairsAllWhite() {
        Bookmarks list;
        list.read("http://127.0.0.1:1/a\r\nfirst\r\nhttp://127.0.0.1:1/b\r\n12\r\n");
        QCOMPARE(list.order(), QString("ab"));
        QCOMPARE(list.grid().item(1, 2)->text(), QString("12"));
        QCOMPARE(list.grid().item(1, 0)->background().color(), QColor(Qt::white));
    }

    void lastRowsAreInViewAtFirst() {
        const Bookmarks list("abcdefghijklmnopqrstuvwxyz");
        const QRect view = list.grid().viewport()->rect();
        QVERIFY(view.contains(list.grid().visualItemRect(list.grid().item(25, 1)).center()));
        QVERIFY(!view.intersects(list.grid().visualItemRect(list.grid().item(0, 1))));
    }

    void rememberPutsThePageIntoTheList() {
        const Bookmarks list("ab");
        list.open.visit(list.open.served("/plain.htm"));
        list.click("btnSave");
        QCOMPARE(list.panel().bookmarkCount(), std::int16_t(3));
        QCOMPARE(list.panel().GetRow(2), (Bookmark{toUtf8(list.open.served("/plain.htm")), "", white}));
        QCOMPARE(list.selection(), QString("2-2"));
        QVERIFY(list.changed());
        QCOMPARE(list.beeps(), 0);
    }

    void rememberedPageIsNotAddedAgainButShown() {
        const Bookmarks list("abcdefghijklmnopqrstuvwxyz");
        list.open.visit(list.open.served("/plain.htm"));
        list.click("btnSave");
        list.panel().SelectCells(-1, 0, -1, 0);
        list.grid().scrollToTop();
        list.click("btnSave");
        QCOMPARE(list.panel().bookmarkCount(), std::int16_t(27));
        QCOMPARE(list.selection(), QString("26-26"));
        QCOMPARE(list.beeps(), 1);
        QVERIFY(list.grid().viewport()->rect().contains(
            list.grid().visualItemRect(list.grid().item(26, 1)).center()));
    }

    void addressesThatDifferInCaseAreTwo() {
        Bookmarks list;
        list.open.visit(list.open.served("/plain.htm"));
        list.panel().remember(list.open.served("/Plain.htm"));
        list.panel().remember(list.open.served("/plain.htm"));
        QCOMPARE(list.panel().bookmarkCount(), std::int16_t(2));
    }

    void entry256IsRefused() {
        Bookmarks list;
        for (int n = 1; n <= bookmarkCapacity; ++n)
            list.panel().remember("http://127.0.0.1:1/" + QString::number(n));
        QCOMPARE(list.panel().bookmarkCount(), bookmarkCapacity);
        QCOMPARE(list.beeps(), 0);
        onNextDialog([](QDialog& message) {
            QVERIFY(test::textOf(message).endsWith("The list is full - delete some entries to add more"));
            QCOMPARE(message.findChildren<QPushButton*>().size(), 1);
            press(message, "OK");
        });
        list.click("btnSave");
        QCOMPARE(test::dialogsExpected(), 0);
        QCOMPARE(list.panel().bookmarkCount(), bookmarkCapacity);
        QCOMPARE(list.beeps(), 1);
        // A page that is in the full list is found.
        list.panel().remember("http://127.0.0.1:1/1");
        QCOMPARE(list.selection(), QString("0-0"));
    }

    void entriesBeyondTheCapacityStayInTheFile() {
        Bookmarks list;
        QByteArray file;
        for (int n = 1; n <= bookmarkCapacity + 2; ++n)
            file += "http://127.0.0.1:1/" + QByteArray::number(n) + "\r\n \r\n16777215\r\n";
        list.read(file);
        QCOMPARE(list.panel().bookmarkCount(), bookmarkCapacity);
        list.open.editor().close();
        QCOMPARE(list.open.linesOf("goodlist.txt").join("\r\n") + "\r\n", QString(file));
    }

    void everyOperationNeedsASelection_data() {
        QTest::addColumn<QString>("button");
        for (const char* button : {"btnGoto", "btnEdit", "btnDelete", "btnUp", "btnDown"})
            QTest::newRow(button) << button;
        QTest::newRow("colour bar") << "";
    }
    void everyOperationNeedsASelection() {
        QFETCH(QString, button);
        for (const char* addresses : {"", "abc"}) {
            const Bookmarks list(addresses);
            const QString before = list.open.browser().locationURL();
            if (button.isEmpty())
                list.clickBar(0.1);
            else
                list.click(qPrintable(button));
            QCOMPARE(list.beeps(), 1);
            QCOMPARE(list.order(), QString(addresses));
            QCOMPARE(list.open.browser().locationURL(), before);
            QVERIFY(list.open.control<QWidget>("picNote").isHidden());
        }
    }

    void blockIsNoSingleEntry_data() {
        QTest::addColumn<QString>("button");
        for (const char* button : {"btnGoto", "btnEdit"})
            QTest::newRow(button) << button;
    }
    void blockIsNoSingleEntry() {
        QFETCH(QString, button);
        const Bookmarks list("abc");
        list.select(0, 1);
        list.click(qPrintable(button));
        QCOMPARE(list.beeps(), 1);
        QVERIFY(!list.changed());
    }

    void goToShowsThePage_data() {
        QTest::addColumn<QString>("how");
        for (const char* how : {"button", "double click", "Return"})
            QTest::newRow(how) << how;
    }
    void goToShowsThePage() {
        QFETCH(QString, how);
        const Bookmarks list("ab");
        list.open.visit(list.open.served("/plain.htm"));
        list.click("btnSave");
        list.open.visit(list.open.served("/anybody.htm"));
        list.select(2, 2);
        if (how == "button")
            list.click("btnGoto");
        else if (how == "Return")
            QTest::keyClick(&list.grid(), Qt::Key_Return);
        else
            QTest::mouseDClick(list.grid().viewport(), Qt::LeftButton, {}, list.placeOf(2));
        QVERIFY(list.open.shows("/plain.htm"));
        QCOMPARE(list.selection(), QString("2-2"));
    }

    void editNotesShowsThePageAndItsNote() {
        Bookmarks list("ab");
        list.open.visit(list.open.served("/plain.htm"));
        list.click("btnSave");
        list.open.visit(list.open.served("/anybody.htm"));
        list.open.program.model.tourChanged = false;
        list.select(2, 2);
        list.click("btnEdit");
        QVERIFY(list.changed());
        QVERIFY(list.open.shows("/plain.htm"));
        QVERIFY(list.open.control<QWidget>("picNote").isVisible());
        QVERIFY(!list.grid().isVisible());
        QCOMPARE(list.open.control<QLabel>("Label1").text(),
                 "Research Notes for:  " + list.open.served("/plain.htm"));
        QCOMPARE(list.open.control<QLineEdit>("Text1").text(), QString());
        QCOMPARE(list.open.editor().focusWidget(), &list.open.control<QLineEdit>("Text1"));
    }

    void backToBookmarksStoresTheNote() {
        const Bookmarks list("ab");
        list.select(1, 1);
        list.clickBar(0.1);
        list.click("btnEdit");
        auto& note = list.open.control<QLineEdit>("Text1");
        QCOMPARE(note.text(), QString("note b"));
        note.setText(QString::fromUtf8("→ gut"));
        list.click("btnOK");
        QVERIFY(list.open.control<QWidget>("picNote").isHidden());
        QVERIFY(list.grid().isVisible());
        QCOMPARE(list.panel().GetRow(1),
                 (Bookmark{"http://127.0.0.1:1/b", "\xE2\x86\x92 gut", ColorBar::colourOf(1)}));
        QCOMPARE(list.selection(), QString("1-1"));
    }

    void noteThatIsTooLongForItsFieldStaysWholeUntilItIsChanged() {
        Bookmarks list("a");
        auto& note = list.open.control<QLineEdit>("Text1");
        const QByteArray tooLong(note.maxLength() + 1, 'n');
        list.read("http://127.0.0.1:1/a\r\n" + tooLong + "\r\n16777215\r\n");
        list.select(0, 0);
        list.click("btnEdit");
        list.click("btnOK");
        QVERIFY(list.panel().GetRow(0).note == tooLong.toStdString());
        list.click("btnEdit");
        QTest::keyClick(&list.open.control<QLineEdit>("Text1"), Qt::Key_Backspace);
        list.click("btnOK");
        QCOMPARE(list.panel().GetRow(0).note.size(), static_cast<std::size_t>(tooLong.size() - 2));
    }

    void returnInTheNoteOnlyBeeps() {
        const Bookmarks list("ab");
        list.select(1, 1);
        list.click("btnEdit");
        auto& note = list.open.control<QLineEdit>("Text1");
        const int before = list.beeps();
        QTest::keyClick(&note, Qt::Key_Return);
        QCOMPARE(list.beeps(), before + 1);
        QCOMPARE(note.text(), QString("note b"));
        QVERIFY(list.open.control<QWidget>("picNote").isVisible());
    }

    void noteIsNotLostWhenTheWindowClosesOrThePageIsRemembered() {
        const Bookmarks list("ab");
        list.select(1, 1);
        list.click("btnEdit");
        list.open.control<QLineEdit>("Text1").setText("first");
        list.panel().remember("http://127.0.0.1:1/c");
        QCOMPARE(list.grid().item(1, 2)->text(), QString("first"));
        list.open.control<QLineEdit>("Text1").setText("second");
        list.open.editor().close();
        QCOMPARE(list.open.linesOf("goodlist.txt").at(4), QString("second"));
    }

    void removeTakesTheBlockOut_data() {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::addColumn<QString>("order");
        QTest::newRow("first") << 0 << 0 << "bcde";
        QTest::newRow("block") << 1 << 3 << "ae";
        QTest::newRow("block, from below") << 3 << 1 << "ae";
        QTest::newRow("last") << 4 << 4 << "abcd";
        QTest::newRow("all") << 0 << 4 << "";
    }
    void removeTakesTheBlockOut() {
        QFETCH(int, first);
        QFETCH(int, last);
        QFETCH(QString, order);
        const Bookmarks list("abcde");
        list.select(first, last);
        list.click("btnDelete");
        QCOMPARE(list.order(), order);
        QCOMPARE(list.panel().bookmarkCount(), static_cast<std::int16_t>(order.size()));
        QVERIFY(list.selection().isEmpty());
        QVERIFY(list.changed());
        QCOMPARE(list.beeps(), 0);
    }

    void deleteKeyRemoves() {
        const Bookmarks list("abc");
        list.select(1, 1);
        QTest::keyClick(&list.grid(), Qt::Key_Delete);
        QCOMPARE(list.order(), QString("ac"));
    }

    void blocksMoveWithTheirSelection_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::addColumn<QString>("order");
        QTest::addColumn<QString>("selection");
        QTest::addColumn<int>("beeps");
        QTest::newRow("up") << "btnUp" << 2 << 2 << "acbde"
                            << "1-1" << 0;
        QTest::newRow("block up") << "btnUp" << 1 << 3 << "bcdae"
                                  << "0-2" << 0;
        QTest::newRow("up at the top") << "btnUp" << 0 << 1 << "abcde"
                                       << "0-1" << 1;
        QTest::newRow("down") << "btnDown" << 2 << 2 << "abdce"
                              << "3-3" << 0;
        QTest::newRow("block down") << "btnDown" << 0 << 2 << "dabce"
                                    << "1-3" << 0;
        QTest::newRow("down at the bottom") << "btnDown" << 3 << 4 << "abcde"
                                            << "3-4" << 1;
    }
    void blocksMoveWithTheirSelection() {
        QFETCH(QString, button);
        QFETCH(int, first);
        QFETCH(int, last);
        QFETCH(QString, order);
        QFETCH(QString, selection);
        QFETCH(int, beeps);
        const Bookmarks list("abcde");
        list.select(first, last);
        list.click(qPrintable(button));
        QCOMPARE(list.order(), order);
        QCOMPARE(list.selection(), selection);
        QCOMPARE(list.beeps(), beeps);
        QVERIFY(list.changed());
        for (int row = 0; row < 5; ++row)
            QCOMPARE(list.grid().item(row, 2)->text(), QString("note ") + order.at(row));
    }

    void colourBarHasSixColours() {
        const Bookmarks list;
        const QImage picture = list.bar().grab().toImage();
        const QColor colours[] = {QColor(0, 255, 0),   QColor(0, 255, 255), QColor(255, 0, 0),
                                  QColor(255, 0, 255), QColor(255, 255, 0), QColor(255, 255, 255)};
        const double scale = picture.devicePixelRatio();
        for (int k = 0; k < 6; ++k) {
            const double x = (k + 0.5) * list.bar().width() / 6 * scale;
            QCOMPARE(picture.pixelColor(static_cast<int>(x), picture.height() / 2), colours[k]);
        }
        int black = 0;
        for (int x = 1; x < picture.width() - 1; ++x)
            black += picture.pixelColor(x, picture.height() / 2) == QColor(Qt::black) ? 1 : 0;
        QVERIFY(black >= 5);
    }

    void clickOnTheBarColoursTheSelectedEntries_data() {
        QTest::addColumn<double>("place");
        QTest::addColumn<int>("colour");
        QTest::newRow("left end") << 0.0 << 65280;
        QTest::newRow("second") << 0.25 << 16776960;
        QTest::newRow("third") << 0.45 << 255;
        QTest::newRow("fourth") << 0.6 << 16711935;
        QTest::newRow("fifth") << 0.75 << 65535;
        QTest::newRow("sixth") << 0.9 << white;
        QTest::newRow("right end") << 0.999 << white;
    }
    void clickOnTheBarColoursTheSelectedEntries() {
        QFETCH(double, place);
        QFETCH(int, colour);
        Bookmarks list;
        list.read(
            "http://127.0.0.1:1/a\r\n \r\n1\r\nhttp://127.0.0.1:1/b\r\n \r\n1\r\nhttp://127.0.0.1:1/c\r\n "
            "\r\n1\r\n");
        list.select(1, 2);
        list.clickBar(place);
        QCOMPARE(list.panel().GetRow(0).colour, 1);
        QCOMPARE(list.panel().GetRow(1).colour, colour);
        QCOMPARE(list.panel().GetRow(2).colour, colour);
        QCOMPARE(list.selection(), QString("1-2"));
        QVERIFY(list.changed());
    }

    void colourBarMarksTheTourEvenWithoutASelection() {
        const Bookmarks list("a");
        list.clickBar(0.5);
        QVERIFY(list.changed());
        QCOMPARE(list.beeps(), 1);
    }

    void colourBarWorksByKeyboard() {
        const Bookmarks list("a");
        list.select(0, 0);
        list.bar().setFocus();
        QTest::keyClick(&list.bar(), Qt::Key_Right);
        QTest::keyClick(&list.bar(), Qt::Key_Space);
        QCOMPARE(list.panel().GetRow(0).colour, ColorBar::colourOf(2));
        QTest::keyClick(&list.bar(), Qt::Key_Left);
        QTest::keyClick(&list.bar(), Qt::Key_Left);
        QTest::keyClick(&list.bar(), Qt::Key_Space);
        QCOMPARE(list.panel().GetRow(0).colour, ColorBar::colourOf(1));
        QTest::keyClick(&list.bar(), Qt::Key_5);
        QCOMPARE(list.panel().GetRow(0).colour, ColorBar::colourOf(5));
    }

    void editsAreWrittenWhenTheWindowClosesAndNotBefore() {
        const Bookmarks list("ab");
        list.select(0, 0);
        list.click("btnDelete");
        QVERIFY(list.open.linesOf("goodlist.txt").first().endsWith("/a"));
        list.open.editor().close();
        QCOMPARE(list.open.linesOf("goodlist.txt"),
                 QStringList({"http://127.0.0.1:1/b", "note b", "16777215"}));
    }

    void emptyNoteComesBackAsABlank() {
        Bookmarks list;
        list.panel().remember("http://127.0.0.1:1/a");
        list.open.editor().close();
        QCOMPARE(list.open.linesOf("goodlist.txt").at(1), QString(" "));
        list.open.edit();
        QCOMPARE(list.grid().item(0, 2)->text(), QString(" "));
    }

    void binaryNoiseAndBigFilesAreWorkInProportionOnly_data() {
        QTest::addColumn<QByteArray>("file");
        QByteArray noise;
        for (unsigned i = 0; i < 10'000'000; ++i)
            noise += static_cast<char>(i * 2654435761U >> 13);
        QTest::newRow("noise") << noise;
        QTest::newRow("one line") << QByteArray(10'000'000, 'a');
        QTest::newRow("line ends") << QByteArray(10'000'000, '\n');
    }
    void binaryNoiseAndBigFilesAreWorkInProportionOnly() {
        QFETCH(QByteArray, file);
        Bookmarks list;
        const test::Work small = list.workOfReading(file.left(file.size() / 10));
        const test::Work large = list.workOfReading(file);
        test::verifyInProportion("reading", small, large, 10);
        QVERIFY(list.panel().bookmarkCount() <= bookmarkCapacity);
        QVERIFY(list.grid().isVisible());
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::BookmarksTest)
#include "BookmarksTest.moc"
