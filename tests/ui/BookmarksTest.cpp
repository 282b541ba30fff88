#include "model/SiteLists.h"
#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/site/BookmarkModel.h"
#include "ui/site/BookmarkPanel.h"
#include "ui/site/ColorBar.h"
#include "ui/support/SiteEditor.h"
#include "ui/support/Work.h"

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace wendmark {

using test::onNextDialog;
using test::press;
using test::SiteEditor;

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
        if (!test::waitUntil([this] { return open.program.gate.isOpen(); }))
            QTest::qFail("the editor does not close", __FILE__, __LINE__);
        open.write("goodlist.txt", file);
        return test::workOf([this] { open.window.runToolBarCommand("EdBro"); });
    }

    BookmarkPanel& panel() const { return *open.editor().findChild<BookmarkPanel*>(); }
    QTableView& grid() const { return open.grid(); }
    ColorBar& bar() const { return open.control<ColorBar>("picColorBar"); }
    void click(const char* name) const { open.click(name); }

    void select(int first, int last) const {
        grid().clearSelection();
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, placeOf(first));
        if (last != first)
            QTest::mouseClick(grid().viewport(), Qt::LeftButton, Qt::ShiftModifier, placeOf(last));
    }

    QModelIndex cell(int row, int column) const { return grid().model()->index(row, column); }
    QString text(int row, int column) const { return cell(row, column).data().toString(); }
    QColor colour(int row) const { return cell(row, 0).data(Qt::BackgroundRole).value<QColor>(); }
    QRect placeInView(int row) const { return grid().visualRect(cell(row, 1)); }

    QPoint placeOf(int row) const {
        grid().scrollTo(cell(row, 1));
        return placeInView(row).center();
    }

    void clickBar(double place) const {
        QTest::mouseClick(&bar(), Qt::LeftButton, {},
                          QPoint(static_cast<int>(place * bar().width()), bar().height() / 2));
    }

    /// Last letters of the addresses.
    QString order() const {
        QString letters;
        for (int row = 0; row < grid().model()->rowCount(); ++row)
            letters += text(row, 1).right(1);
        return letters;
    }

    /// "first-last" of the selected rows.
    QString selection() const {
        const auto ranges = grid().selectionModel()->selection();
        return ranges.isEmpty() ? QString()
                                : QString("%1-%2").arg(ranges.first().top()).arg(ranges.last().bottom());
    }

    bool changed() const { return open.program.model.tourChanged; }
    int beeps() const { return open.program.beeps; }

    SiteEditor open;
};

/// What the panel tells of the author's changes: each name with the list as it is at that moment.
class Changes final {
public:
    explicit Changes(const BookmarkPanel& panel) {
        QObject::connect(&panel, &BookmarkPanel::changed, &m_context, [this, &panel](const QString& what) {
            QString letters;
            for (const Bookmark& bookmark : panel.list().bookmarks)
                letters += toQString(bookmark.address).right(1);
            told.append(what + ": " + letters);
        });
    }

    QStringList told;

private:
    QObject m_context;
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
        QCOMPARE(list.text(0, 0), QString());
        QCOMPARE(list.colour(0), QColor(255, 0, 0));
        QCOMPARE(list.text(0, 1), QString("http://127.0.0.1:1/a"));
        QCOMPARE(list.text(0, 2), QString("first"));
        QCOMPARE(list.text(1, 2), QString(" "));
        QVERIFY(list.selection().isEmpty());
        QVERIFY(!list.changed());
    }

    void olderFileIsReadInPairsAllWhite() {
        Bookmarks list;
        list.read("http://127.0.0.1:1/a\r\nfirst\r\nhttp://127.0.0.1:1/b\r\n12\r\n");
        QCOMPARE(list.order(), QString("ab"));
        QCOMPARE(list.text(1, 2), QString("12"));
        QCOMPARE(list.colour(1), QColor(Qt::white));
    }

    void lastRowsAreInViewAtFirst() {
        const Bookmarks list("abcdefghijklmnopqrstuvwxyz");
        const QRect view = list.grid().viewport()->rect();
        QVERIFY(view.contains(list.placeInView(25).center()));
        QVERIFY(!view.intersects(list.placeInView(0)));
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
        QVERIFY(list.grid().viewport()->rect().contains(list.placeInView(26).center()));
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
        QVERIFY(test::waitUntil([&] { return list.open.program.gate.isOpen(); }));
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
        QCOMPARE(list.text(1, 2), QString("first"));
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
            QCOMPARE(list.text(row, 2), QString("note ") + order.at(row));
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
        QCOMPARE(list.text(0, 2), QString(" "));
    }

    // What is told of a change

    void eachActionIsToldOnceAndAfterIt_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("order");
        QTest::newRow("remove") << "btnDelete"
                                << "Remove Bookmark"
                                << "ad";
        QTest::newRow("up") << "btnUp"
                            << "Move Bookmark Up"
                            << "bcad";
        QTest::newRow("down") << "btnDown"
                              << "Move Bookmark Down"
                              << "adbc";
        QTest::newRow("colour") << ""
                                << "Colour Bookmark"
                                << "abcd";
    }
    void eachActionIsToldOnceAndAfterIt() {
        QFETCH(QString, button);
        QFETCH(QString, name);
        QFETCH(QString, order);
        const Bookmarks list("abcd");
        const Changes changes(list.panel());
        list.select(1, 2);
        if (button.isEmpty())
            list.clickBar(0.1);
        else
            list.click(qPrintable(button));
        QCOMPARE(changes.told, QStringList{name + ": " + order});
        if (button.isEmpty())
            QCOMPARE(list.panel().GetRow(2).colour, ColorBar::colourOf(1));
    }

    void actionsGivenInTheWaitOfASaveAreDoneAfterIt() {
        Bookmarks list("abcd");
        list.open.program.clockStep = 0.1F; // The save waits a while.
        list.select(1, 2);
        bool waited = false;
        QTimer::singleShot(0, &list.open.window, [&] {
            waited = list.open.program.gate.isClosed();
            list.click("btnUp");
            list.clickBar(0.1);
            list.click("btnDelete");
            QCOMPARE(list.order(), QString("abcd"));
        });
        const Changes changes(list.panel());
        list.open.window.save();
        QVERIFY(waited);
        QVERIFY(test::waitUntil([&] { return list.open.program.gate.isOpen(); }));
        QCOMPARE(changes.told,
                 (QStringList{"Move Bookmark Up: bcad", "Colour Bookmark: bcad", "Remove Bookmark: ad"}));
        QVERIFY(list.changed());
    }

    void rememberedPageIsToldOnceAndARepeatedOneNot() {
        const Bookmarks list("a");
        const Changes changes(list.panel());
        list.panel().remember("http://127.0.0.1:1/b");
        list.panel().remember("http://127.0.0.1:1/b");
        QCOMPARE(changes.told, QStringList{"Remember Page: ab"});
    }

    void noteIsToldOnceHoweverItIsStored() {
        const Bookmarks list("ab");
        const Changes changes(list.panel());
        list.select(1, 1);
        list.click("btnEdit");
        list.click("btnOK");
        QCOMPARE(changes.told, QStringList()); // It is the one that was there.
        list.click("btnEdit");
        list.open.control<QLineEdit>("Text1").setText("another");
        list.panel().SaveGoodList();
        list.panel().SaveGoodList();
        list.click("btnOK");
        QCOMPARE(changes.told, QStringList{"Edit Note: ab"});
    }

    void whatOnlyBeepsOrChangesNothingIsNotTold() {
        const Bookmarks list("ab");
        const Changes changes(list.panel());
        for (const char* button : {"btnGoto", "btnEdit", "btnDelete", "btnUp", "btnDown"})
            list.click(button);
        list.clickBar(0.1);
        list.select(0, 1);
        list.click("btnUp");
        list.click("btnDown");
        list.clickBar(0.999); // White, as they are.
        QCOMPARE(changes.told, QStringList());
    }

    void listIsTakenAndGivenBackWhole() {
        const Bookmarks list("abc");
        const BookmarkList before = list.panel().list();
        QCOMPARE(before.bookmarks.size(), std::size_t(3));
        const Changes changes(list.panel());
        list.select(0, 1);
        list.click("btnDelete");
        list.select(0, 0);
        list.click("btnEdit");
        list.open.control<QLineEdit>("Text1").setText("given up");
        list.panel().setList(before);
        QVERIFY(list.panel().list().bookmarks == before.bookmarks);
        QCOMPARE(list.order(), QString("abc"));
        QVERIFY(list.selection().isEmpty());
        QVERIFY(list.open.control<QWidget>("picNote").isHidden());
        QCOMPARE(changes.told.size(), 1); // The author has removed; the program has put back.
        list.open.editor().close();
        QCOMPARE(list.open.linesOf("goodlist.txt").size(), 9);
    }

    void everyOperationOfTheModelIsOneSignal() {
        BookmarkModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QSignalSpy moved(&model, &QAbstractItemModel::rowsMoved);
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        const auto signalsSoFar = [&] {
            return QList<qsizetype>{inserted.count(), changed.count(), moved.count(), removed.count()};
        };
        const auto addresses = [&] {
            std::string all;
            for (const Bookmark& bookmark : model.list().bookmarks)
                all += bookmark.address;
            return all;
        };
        model.SetRow(3, {"d", "", white});
        QCOMPARE(signalsSoFar(), (QList<qsizetype>{1, 0, 0, 0}));
        QCOMPARE(model.GetRow(2), Bookmark());
        for (const int row : {0, 1, 2})
            model.SetRow(row, {std::string(1, static_cast<char>('a' + row)), "", white});
        QCOMPARE(signalsSoFar(), (QList<qsizetype>{1, 3, 0, 0}));
        model.moveBlock(1, 2, -1);
        QCOMPARE(addresses(), std::string("bcad"));
        model.moveBlock(0, 1, 1);
        QCOMPARE(addresses(), std::string("abcd"));
        model.moveBlock(1, 2, 1);
        QCOMPARE(addresses(), std::string("adbc"));
        QCOMPARE(signalsSoFar(), (QList<qsizetype>{1, 3, 3, 0}));
        model.setColour(0, 2, 255);
        QVERIFY(model.removeRows(1, 2));
        QCOMPARE(addresses(), std::string("ac"));
        QCOMPARE(signalsSoFar(), (QList<qsizetype>{1, 4, 3, 1}));
        QVERIFY(!model.removeRows(1, 2));
        QCOMPARE(model.rowOf("c"), 1);
        QCOMPARE(model.rowOf("C"), -1);
    }

    void modelTakesNoMoreThanItsCapacity() {
        BookmarkModel model;
        model.SetRow(bookmarkCapacity, {"beyond", "", white});
        model.SetRow(-1, {"before", "", white});
        QCOMPARE(model.bookmarkCount(), std::int16_t(0));
        model.SetRow(bookmarkCapacity - 1, {"last", "", white});
        QCOMPARE(model.bookmarkCount(), bookmarkCapacity);
    }

    void viewsSeeNoMoreOfATextThanFits() {
        BookmarkModel model;
        const std::string huge(5'000'000, 'h');
        model.SetRow(0, {huge, huge, white});
        QCOMPARE(model.index(0, 1).data().toString().size(), BookmarkModel::longestShown + 1);
        QCOMPARE(model.index(0, 2).data(Qt::ToolTipRole).toString().size(), BookmarkModel::longestShown + 1);
        QVERIFY(model.GetRow(0).address == huge);
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
