#include "model/StopTransfer.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "ui/main/SidePanels.h"
#include "ui/main/frmMain.h"
#include "ui/site/BookmarkModel.h"
#include "ui/stops/SideDock.h"
#include "ui/stops/StopListModel.h"
#include "ui/stops/StopTable.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QTest>
#include <algorithm>
#include <filesystem>
#include <memory>

namespace wendmark {

using test::hasKeys;
using test::patience;
using test::UiFixture;

namespace {

/// The program with a saved tour, and its stop list on screen.
class OpenList final {
public:
    explicit OpenList(int stops = 4) : window(program.parts()) {
        window.load(program.makeTour("walk", stops));
        window.resize(1300, 700);
        window.show();
    }

    StopTable& table() const { return *window.findChild<StopTable*>("grdStops"); }
    SideDock& dock() const { return *window.findChild<SideDock*>("stopList"); }
    QLineEdit& filter() const { return *window.findChild<QLineEdit*>("txtStopFilter"); }
    const TourModel& model() const { return program.model; }

    /// The list catches up with the document once the command has ended.
    QString shown(int row, int column) const {
        QCoreApplication::processEvents();
        return table().model()->index(row, column).data().toString();
    }
    int rows() const {
        QCoreApplication::processEvents();
        return table().model()->rowCount();
    }

    void select(int first, int last) const {
        QCoreApplication::processEvents();
        QItemSelectionModel& selection = *table().selectionModel();
        selection.setCurrentIndex(table().model()->index(first, 1),
                                  QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        for (int row = first + 1; row <= last; ++row)
            selection.select(table().model()->index(row, 1),
                             QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    QList<int> selectedRows() const {
        QCoreApplication::processEvents();
        QList<int> rows;
        for (const QModelIndex& index : table().selectionModel()->selectedRows())
            rows.append(index.row());
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QCoreApplication::processEvents();
        table().setFocus();
        QTest::keyClick(&table(), key, modifiers);
    }

    void clickRow(int row) const {
        QCoreApplication::processEvents();
        const QRect cell = table().visualRect(table().model()->index(row, 1));
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, cell.center());
    }

    /// Drops what comes from elsewhere onto a row.
    void drop(const QMimeData& data, int row) const {
        QCoreApplication::processEvents();
        const QPoint place = table().visualRect(table().model()->index(row, 1)).center();
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(table().viewport(), &enter);
        QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(table().viewport(), &move);
        QDropEvent end(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(table().viewport(), &end);
        QCoreApplication::processEvents();
    }

    /// The titles of the stops, one after the other.
    QString titles() const {
        QStringList titles;
        for (int n = 1; n <= program.model.stops.held(); ++n)
            titles.append(toQString(program.model.stops.at(n).stopTitle).remove("Stop "));
        return titles.join(' ');
    }
    QString address(int stop) const { return toQString(program.model.stops.at(stop).stopURL); }

    QString notice() const { return test::noticeOf(window); }

    UiFixture program;
    frmMain window;
};

void putOnClipboard(const QString& text) {
    QApplication::clipboard()->setText(text);
}

QString lines(int count) {
    QString text;
    for (int n = 1; n <= count; ++n)
        text += QString("https://example.org/%1\n").arg(n);
    return text;
}

} // namespace

class StopListTest final : public QObject {
    Q_OBJECT

private slots:
    // What it shows

    void rowsAreTheOpeningPageAndTheStops() {
        OpenList open(3);
        QCOMPARE(open.rows(), 4);
        QCOMPARE(open.shown(0, StopListModel::titleColumn), QString("Opening page: Test tour"));
        QCOMPARE(open.shown(0, StopListModel::numberColumn), QString());
        QCOMPARE(open.shown(2, StopListModel::numberColumn), QString("2"));
        QCOMPARE(open.shown(2, StopListModel::titleColumn), QString("Stop 2"));
    }

    void tourWithoutStopsHasTheOpeningPageAlone() {
        const OpenList open(0);
        QCOMPARE(open.rows(), 1);
        open.press(Qt::Key_Delete);
        open.press(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(open.rows(), 1);
        QVERIFY(!open.program.model.tourChanged);
    }

    void titlesAreWhatVisitorsRead() {
        OpenList open(2);
        open.program.document.setTexts(1, {"<I>&Uuml;ber</I> Stock &amp; Stein \u2603", "Words", {}});
        QCOMPARE(open.shown(1, StopListModel::titleColumn), QString("\u00dcber Stock & Stein \u2603"));
    }

    void whatIsMissingIsSaidInWordsAndWithASign() {
        OpenList open(3);
        open.program.document.setAddress(1, "https://www.example.org/a/b.html");
        open.program.document.setAddress(2, "gone.htm");
        open.program.document.setTexts(1, {"One", "", {}});
        QCOMPARE(open.shown(1, StopListModel::pageColumn), QString("www.example.org"));
        QCOMPARE(open.shown(1, StopListModel::remarkColumn), QString("no words"));
        QCOMPARE(open.shown(2, StopListModel::remarkColumn), QString("file missing"));
        QCOMPARE(open.shown(3, StopListModel::remarkColumn), QString("no page yet"));
        const QAbstractItemModel& model = *open.table().model();
        QVERIFY(!qvariant_cast<QIcon>(model.index(3, StopListModel::remarkColumn).data(Qt::DecorationRole))
                     .pixmap(16, 16)
                     .isNull());
    }

    void fileThatComesIsNoLongerMissing() {
        OpenList open(1);
        open.program.document.setAddress(1, "late.htm");
        QVERIFY(open.shown(1, StopListModel::remarkColumn).contains("file missing"));
        const std::string source = open.program.scratch / "late.htm";
        test::writeFile(source, "<p>Late");
        QVERIFY(open.program.document.addFile(source, "late.htm", "Select Local File"));
        QVERIFY(!open.shown(1, StopListModel::remarkColumn).contains("file missing"));
    }

    void everyChangeIsOneUpdate() {
        OpenList open(4);
        open.select(1, 1);
        const QSignalSpy inserted(open.table().model(), &QAbstractItemModel::rowsInserted);
        const QSignalSpy removed(open.table().model(), &QAbstractItemModel::rowsRemoved);
        const QSignalSpy reset(open.table().model(), &QAbstractItemModel::modelReset);
        putOnClipboard(lines(50));
        open.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(open.rows(), 55);
        QCOMPARE(inserted.count(), 1);
        open.window.undo();
        QCOMPARE(open.rows(), 5);
        QCOMPARE(removed.count(), 1);
        QCOMPARE(reset.count(), 0);
    }

    void anotherTourIsShownAtOnce() {
        OpenList open(4);
        open.program.document.beginOpening();
        open.program.document.finishOpening(toUtf8(open.program.makeTour("other", 2)));
        QCOMPARE(open.rows(), 3);
        QCOMPARE(open.selectedRows(), QList<int>{0});
    }

    void filterShowsWhatHasTheWords() {
        OpenList open(4);
        open.program.document.setAddress(3, "https://www.example.org/");
        open.rows();
        QTest::keyClicks(&open.filter(), "EXAMPLE");
        QCOMPARE(open.rows(), 1);
        QCOMPARE(open.shown(0, StopListModel::numberColumn), QString("3"));
        open.clickRow(0);
        QCOMPARE(open.model().currentStop, std::int16_t{3});
        open.filter().clear();
        QCOMPARE(open.rows(), 5);
    }

    // The place in the tour

    void clickAndEnterGoThere() {
        OpenList open;
        open.clickRow(3);
        QCOMPARE(open.model().currentStop, std::int16_t{3});
        open.press(Qt::Key_Up);
        QCOMPARE(open.model().currentStop, std::int16_t{3});
        open.press(Qt::Key_Return);
        QCOMPARE(open.model().currentStop, std::int16_t{2});
        open.clickRow(0);
        QCOMPARE(open.model().currentStop, std::int16_t{0});
        QVERIFY(!open.program.model.tourChanged);
    }

    void listFollowsThePreview() {
        OpenList open;
        open.window.next();
        open.window.next();
        QCOMPARE(open.selectedRows(), QList<int>{2});
        open.window.previous();
        QCOMPARE(open.selectedRows(), QList<int>{1});
    }

    void typedLettersLeadToATitle() {
        OpenList open;
        open.program.document.setTexts(3, {"Quarry", "Words", {}});
        open.rows();
        open.press(Qt::Key_Q);
        QCOMPARE(open.selectedRows(), QList<int>{3});
        open.press(Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(open.model().currentStop, std::int16_t{3});
    }

    // Commands, each one step of the history

    void rowsMoveTogetherByKeys() {
        OpenList open;
        open.select(2, 3);
        open.press(Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(open.titles(), QString("1 4 2 3"));
        QCOMPARE(open.selectedRows(), (QList<int>{3, 4}));
        open.press(Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(open.titles(), QString("1 4 2 3"));
        for (int step = 0; step < 3; ++step)
            open.press(Qt::Key_Up, Qt::AltModifier);
        QCOMPARE(open.titles(), QString("2 3 1 4"));
        QCOMPARE(open.selectedRows(), (QList<int>{1, 2}));
        QVERIFY(open.program.model.tourChanged);
        open.window.undo();
        QCOMPARE(open.titles(), QString("1 2 3 4"));
    }

    void duplicatesStandBehindTheLastOfThem() {
        OpenList open;
        open.select(2, 3);
        open.press(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(open.titles(), QString("1 2 3 2 3 4"));
        QCOMPARE(open.selectedRows(), (QList<int>{4, 5}));
        QCOMPARE(open.model().currentStop, std::int16_t{4});
        open.window.undo();
        QCOMPARE(open.titles(), QString("1 2 3 4"));
    }

    void deletedStopsComeBackByOneUndo() {
        OpenList open;
        open.select(1, 3);
        open.press(Qt::Key_Delete);
        QCOMPARE(open.titles(), QString("4"));
        QCOMPARE(open.selectedRows(), QList<int>{open.model().currentStop});
        open.window.undo();
        QCOMPARE(open.titles(), QString("1 2 3 4"));
    }

    void openingPageCannotBeDeletedOrCopied() {
        OpenList open;
        putOnClipboard("untouched");
        open.select(0, 0);
        open.press(Qt::Key_Delete);
        open.press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(open.titles(), QString("1 2 3 4"));
        QCOMPARE(QApplication::clipboard()->text(), QString("untouched"));
    }

    void insertPutsANewStopBehindTheRow() {
        OpenList open;
        open.select(2, 2);
        open.press(Qt::Key_Insert);
        QCOMPARE(open.titles(), QString("1 2 Title 3 4"));
        QCOMPARE(open.address(3), QString("newpage.htm"));
        QCOMPARE(open.model().currentStop, std::int16_t{3});
        QCOMPARE(open.selectedRows(), QList<int>{3});
    }

    void cutStopsArePastedElsewhere() {
        OpenList open;
        open.select(1, 2);
        open.press(Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(open.titles(), QString("3 4"));
        open.select(2, 2);
        open.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(open.titles(), QString("3 4 1 2"));
        QCOMPARE(open.selectedRows(), (QList<int>{3, 4}));
        open.window.undo();
        QCOMPARE(open.titles(), QString("3 4"));
        open.window.undo();
        QCOMPARE(open.titles(), QString("1 2 3 4"));
    }

    void copiesGoToAnotherProgramInThreeForms() {
        OpenList open;
        open.program.document.setAddress(2, "https://example.org/page");
        open.select(2, 2);
        open.press(Qt::Key_C, Qt::ControlModifier);
        const QMimeData& held = *QApplication::clipboard()->mimeData();
        QCOMPARE(held.text(), QString("Stop 2\thttps://example.org/page\n"));
        QVERIFY(held.html().contains("<a href=\"https://example.org/page\">Stop 2</a>"));
        const auto stops = decodeStops(held.data(toQString(stopsMimeType)).toStdString());
        QVERIFY(stops.has_value());
        QCOMPARE(stops->size(), std::size_t{1});
        QVERIFY(stops->front() == open.model().stops.at(2));
    }

    void stopsComeFromAnotherProgramWhole() {
        OpenList open;
        open.program.model.autoInstruction = false; // Otherwise the program writes them.
        const std::vector<Stop> stops = {
            {"<B>Eels</B>", "https://example.org/eels", "Born\r\nfar away\r\n", "Go on.\r\n"}};
        auto* const data = new QMimeData;
        data->setData(toQString(stopsMimeType), QByteArray::fromStdString(encodeStops(stops)));
        data->setText("https://example.org/not-this-one");
        QApplication::clipboard()->setMimeData(data);
        open.select(0, 0);
        open.press(Qt::Key_V, Qt::ControlModifier);
        const Stop& stop = open.model().stops.at(1);
        QCOMPARE(stop.stopTitle, stops.front().stopTitle);
        QCOMPARE(stop.stopURL, stops.front().stopURL);
        QCOMPARE(stop.stopNarration, stops.front().stopNarration);
        QCOMPARE(stop.stopInstruction, stops.front().stopInstruction);
        QCOMPARE(open.model().stops.held(), std::int16_t{5});
    }

    // Links and files from elsewhere

    void pastedAddressesBecomeStops() {
        OpenList open(1);
        putOnClipboard("https://example.org/first\n\nReefs\thttps://example.org/reefs\nno address\n");
        open.select(1, 1);
        open.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(open.model().stops.held(), std::int16_t{3});
        QCOMPARE(open.address(2), QString("https://example.org/first"));
        QCOMPARE(open.address(3), QString("https://example.org/reefs"));
        QCOMPARE(toQString(open.model().stops.at(3).stopTitle), QString("Reefs"));
        QCOMPARE(open.notice(), QString("Left out: 1"));
    }

    void rowsThatAreOlderThanTheTourCanBeTaken() {
        OpenList open(3);
        QVERIFY(open.rows() == 4);
        StopListModel model(open.program.document, open.program.check);
        QCOMPARE(open.program.document.removeStops({2, 3}).done(), true);
        const std::unique_ptr<QMimeData> data(model.dataOf({1, 3}));
        QCOMPARE(data->text().count('\n'), qsizetype{1});
    }

    void pastedLinksBringTheirTextsAsTitles() {
        OpenList open(1);
        auto* const data = new QMimeData;
        data->setHtml("<p>See <a href='https://example.org/kelp'>Kelp &amp; co</a>, "
                      "<a href='https://example.org/eels'>Eels</a>");
        data->setText("See Kelp & co, Eels");
        QApplication::clipboard()->setMimeData(data);
        open.select(1, 1);
        open.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(open.titles(), QString("1 Kelp &amp; co Eels"));
        QCOMPARE(open.address(2), QString("https://example.org/kelp"));
        open.window.undo();
        QCOMPARE(open.titles(), QString("1"));
    }

    void textWithoutAnAddressIsToldOf() {
        OpenList open;
        putOnClipboard("nothing of the kind");
        open.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(open.notice(), QString("There is no address of a page in it."));
        QVERIFY(!open.program.model.tourChanged);
    }

    void hundredAndFirstStopIsRefusedInWords() {
        OpenList open(99);
        open.select(1, 2);
        open.press(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(open.notice(), QString("The tour has room for 1 more stop."));
        QCOMPARE(open.program.beeps, 1);
        open.press(Qt::Key_Insert);
        QCOMPARE(open.model().stopCount(), std::int16_t{100});
        QCOMPARE(open.rows(), 101);
        open.press(Qt::Key_Insert);
        QCOMPARE(open.notice(), QString("The tour has no room for more stops."));
        putOnClipboard(lines(1));
        open.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(open.notice(), QString("The tour has no room for more stops."));
        QCOMPARE(open.model().stopCount(), std::int16_t{100});
    }

    void fiftyDroppedLinksAreOneStep() {
        OpenList open;
        const TourModel before = open.model();
        QString html;
        for (int n = 1; n <= 50; ++n)
            html += QString("<p><a href='https://example.org/%1'>Link %1</a></p>").arg(n);
        QMimeData data;
        data.setHtml(html);
        open.drop(data, 2);
        QCOMPARE(open.model().stopCount(), 54);
        QCOMPARE(open.rows(), 55);
        for (int n = 1; n <= 50; ++n) {
            QCOMPARE(open.address(n + 2), QString("https://example.org/%1").arg(n));
            QCOMPARE(toQString(open.model().stops.at(n + 2).stopTitle), QString("Link %1").arg(n));
        }
        open.window.undo();
        QVERIFY(open.model().stops == before.stops);
        open.window.redo();
        QCOMPARE(open.model().stopCount(), 54);
    }

    void droppedAddressesStandBehindTheRow() {
        OpenList open;
        QMimeData data;
        data.setUrls({QUrl("https://example.org/a"), QUrl("https://example.org/b")});
        open.drop(data, 2);
        QCOMPARE(open.model().stops.held(), std::int16_t{6});
        QCOMPARE(open.address(3), QString("https://example.org/a"));
        QCOMPARE(open.address(4), QString("https://example.org/b"));
        QCOMPARE(open.selectedRows(), (QList<int>{3, 4}));
        open.window.undo();
        QCOMPARE(open.titles(), QString("1 2 3 4"));
    }

    void droppedFilesComeIntoTheTour() {
        OpenList open(1);
        const std::string page = open.program.scratch / "Field Notes.htm";
        const std::string picture = open.program.scratch / "eel.png";
        const std::string archive = open.program.scratch / "notes.zip";
        test::writeFile(page, "<title>Notes</title>");
        test::writeFile(picture, "\x89PNG\r\n");
        test::writeFile(archive, "PK");
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(toQString(page)), QUrl::fromLocalFile(toQString(archive)),
                      QUrl::fromLocalFile(toQString(picture))});
        open.drop(data, 0);
        QCOMPARE(open.model().stops.held(), std::int16_t{3});
        QCOMPARE(open.address(1), QString("field%20notes.htm"));
        QCOMPARE(open.address(2), QString("eel.png"));
        QVERIFY(QFile::exists(open.program.working("field notes.htm")));
        QVERIFY(QFile::exists(open.program.working("eel.png")));
        QCOMPARE(open.notice(), QString("Left out: 1"));
        QCOMPARE(toQString(open.program.log.warnings.back()),
                 toQString(archive) + " is left out: it is neither a page nor a picture");
        QCOMPARE(open.shown(1, StopListModel::remarkColumn), QString("no words"));
        open.window.undo();
        QCOMPARE(open.titles(), QString("1"));
        QVERIFY(!QFile::exists(open.program.working("eel.png")));
    }

    void droppedPagesBringTheirFilesAndStayInTheirOrder() {
        OpenList open(1);
        QMimeData data;
        QList<QUrl> pages;
        for (const char* name : {"a", "b"}) {
            const std::string folder = open.program.scratch / name;
            QDir().mkpath(toQString(folder) + "/img");
            test::writeFile(folder + "/img/eel.png", std::string("eel of ") + name);
            test::writeFile(folder + "/" + name + ".htm", "<img src=img/eel.png>");
            pages.append(QUrl::fromLocalFile(toQString(folder + "/" + name + ".htm")));
            test::onNextDialog([](QDialog& files) {
                QCOMPARE(files.objectName(), QString("frmPageFiles"));
                test::press(files, "btnTogether");
            });
        }
        data.setUrls(pages);
        open.drop(data, 0);
        QTRY_COMPARE_WITH_TIMEOUT(open.model().stops.held(), std::int16_t{3}, patience);
        QCOMPARE(open.address(1), QString("a.htm"));
        QCOMPARE(open.address(2), QString("b.htm"));
        QCOMPARE(test::readFile(toUtf8(open.program.working("a.htm"))), std::string("<img src=eel.png>"));
        QCOMPARE(test::readFile(toUtf8(open.program.working("eel.png"))), std::string("eel of a"));
        QCOMPARE(test::readFile(toUtf8(open.program.working("b.htm"))), std::string("<img src=eel-2.png>"));
        QCOMPARE(test::readFile(toUtf8(open.program.working("eel-2.png"))), std::string("eel of b"));
    }

    void fileOfATakenNameIsAskedAbout() {
        OpenList open(1);
        test::writeFile(toUtf8(open.program.working("eel.htm")), "The author's own");
        const std::string page = open.program.scratch / "eel.htm";
        test::writeFile(page, "Another one");
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(toQString(page))});
        test::onNextDialog([](QDialog& question) { test::press(question, "No"); });
        test::onNextDialog([](QDialog& rename) {
            QCOMPARE(rename.objectName(), QString("frmRenameFile"));
            rename.findChild<QLineEdit*>("txtFile")->setText("eel2.htm");
            test::press(rename, "OKButton");
        });
        open.drop(data, 1);
        QTRY_COMPARE_WITH_TIMEOUT(open.model().stops.held(), std::int16_t{2}, patience);
        QCOMPARE(open.address(2), QString("eel2.htm"));
        QCOMPARE(test::readFile(toUtf8(open.program.working("eel.htm"))), std::string("The author's own"));
        QCOMPARE(test::readFile(toUtf8(open.program.working("eel2.htm"))), std::string("Another one"));
    }

    void bookmarksBecomeStopsWithTheirNotesAsTitles() {
        OpenList open(1);
        BookmarkModel bookmarks;
        bookmarks.SetRow(0, {"https://example.org/eels?a=1&b=2", "Eels & <more>", {}});
        bookmarks.SetRow(1, {"https://example.org/kelp", "", {}});
        const std::unique_ptr<QMimeData> data(
            bookmarks.mimeData({bookmarks.index(0, 0), bookmarks.index(0, 1), bookmarks.index(1, 1)}));
        open.drop(*data, 1);
        QCOMPARE(open.model().stops.held(), std::int16_t{3});
        QCOMPARE(open.address(2), QString("https://example.org/eels?a=1&b=2"));
        QCOMPARE(open.shown(2, StopListModel::titleColumn), QString("Eels & <more>"));
        QCOMPARE(open.address(3), QString("https://example.org/kelp"));
    }

    void addressThatNobodyHasTestedIsMarkedUntilTheTestHasPassed() {
        OpenList open(1);
        putOnClipboard("https://example.org/a\n");
        open.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(open.shown(1, StopListModel::remarkColumn), QString("not checked, no words"));
        open.window.undo();
        open.window.redo();
        QCOMPARE(open.shown(1, StopListModel::remarkColumn), QString("not checked, no words"));
        open.program.document.setAddress(1, "https://example.org/a");
        QCOMPARE(open.shown(1, StopListModel::remarkColumn), QString("no words"));
    }

    void stopsOfAnotherProgramBringTheirFiles() {
        OpenList open(1);
        const std::string folder = open.program.scratch / "Other/NewTour";
        std::filesystem::create_directories(folder);
        test::writeFile(folder + "/same.htm", "The same");
        test::writeFile(toUtf8(open.program.working("same.htm")), "The same");
        test::writeFile(folder + "/eel.htm", "Of the other tour");
        test::writeFile(folder + "/../secret.htm", "Not of the tour");
        QMimeData data;
        data.setData(toQString(stopsMimeType),
                     QByteArray::fromStdString(encodeStops({{"Same", "same.htm", "Words", {}},
                                                            {"Eel", "eel.htm", "Words", {}},
                                                            {"Eel again", "eel.htm", "Words", {}},
                                                            {"Secret", "../secret.htm", "Words", {}}})));
        data.setData(stopsFolderType, QByteArray::fromStdString(folder + "/"));
        open.drop(data, 1);
        QCOMPARE(open.titles(), QString("1 Same Eel Eel again Secret"));
        QCOMPARE(test::readFile(toUtf8(open.program.working("eel.htm"))), std::string("Of the other tour"));
        QCOMPARE(open.address(4), QString("eel.htm"));
        QVERIFY(!QFile::exists(open.program.working("secret.htm")));
    }

    // The dock

    void listIsThereWhenTheWindowHasRoomUntilTheAuthorChooses() {
        const auto folder = std::make_shared<test::ScratchFolder>();
        {
            UiFixture program(folder, UiFixture::Time::passesAtOnce);
            frmMain window(program.parts());
            window.load(program.makeTour("walk", 2));
            window.show();
            auto& dock = *window.findChild<SideDock*>("stopList");
            QVERIFY(!dock.isVisible());
            window.resize(1300, 700);
            QVERIFY(dock.isVisible());
            QTRY_COMPARE_WITH_TIMEOUT(dock.width(), pixelsFromTwips(5100), patience);
            window.resize(700, 700);
            QVERIFY(!dock.isVisible());
            window.sides().toggleList();
            QVERIFY(dock.isVisible());
            window.resize(1300, 700);
            window.resize(700, 700);
            QVERIFY(dock.isVisible());
            window.resize(1300, 700);
            QCoreApplication::processEvents(); // It takes its own width once it is there.
            window.resizeDocks({&dock}, {400}, Qt::Horizontal);
            QTRY_COMPARE_WITH_TIMEOUT(dock.width(), 400, patience);
            window.sides().toggleList();
            window.sides().toggleList();
            QTRY_COMPARE_WITH_TIMEOUT(dock.width(), 400, patience);
            dock.store();
        }
        UiFixture program(folder, UiFixture::Time::passesAtOnce);
        frmMain window(program.parts());
        window.load(program.path("MyTours/walk"));
        window.resize(1300, 700);
        window.show();
        auto& dock = *window.findChild<SideDock*>("stopList");
        QVERIFY(dock.isVisible());
        QTRY_COMPARE_WITH_TIMEOUT(dock.width(), 400, patience);
        dock.close();
        window.resize(1300, 700);
        QVERIFY(!dock.isVisible());
    }

    void keyLeadsIntoTheListAndEscOutOfIt() {
        OpenList open;
        QTRY_VERIFY_WITH_TIMEOUT(hasKeys(open.window), patience);
        QVERIFY(!open.table().hasFocus());
        open.window.sides().toggleList();
        QVERIFY(open.dock().isVisible());
        QVERIFY(open.table().hasFocus());
        QTest::keyClick(&open.table(), Qt::Key_Escape);
        QVERIFY(!open.table().hasFocus());
        QVERIFY(open.dock().isVisible());
        open.window.sides().toggleList();
        QVERIFY(open.table().hasFocus());
        open.window.sides().toggleList();
        QVERIFY(!open.dock().isVisible());
        QVERIFY(!open.table().hasFocus());
        open.window.sides().toggleList();
        QVERIFY(open.table().hasFocus());
    }

    void commandsOfAQueueMeanTheStopsThatAreSelectedThen() {
        OpenList open;
        open.program.document.goToStop(2);
        open.program.gate.run(open.window, [&] {
            open.window.findChild<QAction*>("listInsert")->trigger();
            open.window.findChild<QAction*>("listDelete")->trigger();
            QCOMPARE(open.titles(), QString("1 2 3 4"));
        });
        QTRY_VERIFY_WITH_TIMEOUT(open.program.gate.isOpen(), patience);
        QCOMPARE(open.titles(), QString("1 2 3 4"));
        open.window.undo();
        QCOMPARE(open.titles(), QString("1 2 Title 3 4"));
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::StopListTest)
#include "StopListTest.moc"
