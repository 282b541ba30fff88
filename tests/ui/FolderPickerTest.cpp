#include "ui/dialogs/FolderPicker.h"

#include "model/Workspace.h"
#include "platform/Strings.h"
#include "support/ScratchFolder.h"
#include "ui/dialogs/TourFolderModel.h"
#include "ui/support/Patience.h"

#include <QDir>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>
#include <optional>

namespace wendmark {

using test::patience;

namespace {

constexpr int siblings = 60; // More than the tree shows at once.

QString nameOf(int number) {
    return QStringLiteral("folder%1").arg(number, 2, 10, QLatin1Char('0'));
}

/// A picker on screen, in a folder with many others beside it.
class PickerOnScreen final {
public:
    enum class Shown { atOnce, whenListed };

    /// The selected folder is a tour if it is given a script.
    explicit PickerOnScreen(const std::optional<std::string>& script = std::nullopt,
                            Shown shown = Shown::atOnce)
        : picker(QStringLiteral("&Drive:")), tree(*picker.findChild<QTreeView*>("Dir1")) {
        for (int number = 0; number < siblings; ++number)
            QDir(path()).mkdir(nameOf(number));
        if (script)
            test::writeFile(scratch / (toUtf8(nameOf(siblings - 1)) + "/script.txt"), *script);
        picker.setFolder(path() + QLatin1Char('/') + nameOf(siblings - 1));
        if (shown == Shown::whenListed) {
            tree.model()->fetchMore(tree.currentIndex().parent());
            QTRY_VERIFY_WITH_TIMEOUT(listsInOrder(siblings), patience);
        }
        picker.show();
    }

    QString path() const { return toQString(scratch.path()); }

    /// Whether this many folders stand beside the selected one, in the order of their names.
    bool listsInOrder(int count) const {
        const QModelIndex parent = tree.currentIndex().parent();
        if (tree.model()->rowCount(parent) != count)
            return false;
        for (int row = 0; row < count; ++row) {
            if (tree.model()->index(row, 0, parent).data().toString() != nameOf(row))
                return false;
        }
        return true;
    }

    bool selectedIsInSight() const {
        return tree.viewport()->rect().contains(tree.visualRect(tree.currentIndex()).center());
    }

    test::ScratchFolder scratch;
    FolderPicker picker;
    QTreeView& tree;
};

} // namespace

class FolderPickerTest final : public QObject {
    Q_OBJECT

private slots:
    void selectedFolderIsInSightWhenAllFoldersAreListed() {
        const PickerOnScreen screen;
        QTRY_VERIFY_WITH_TIMEOUT(screen.listsInOrder(siblings), patience);
        QTRY_VERIFY_WITH_TIMEOUT(screen.selectedIsInSight(), patience);
        QCOMPARE(screen.tree.currentIndex().data().toString(), nameOf(siblings - 1));
    }

    void whatTheFolderHoldsIsInSightToo() {
        PickerOnScreen screen;
        QDir(screen.path()).mkdir(nameOf(siblings / 2) + "/inside");
        screen.picker.setFolder(screen.path() + "/" + nameOf(siblings / 2));
        QTRY_VERIFY_WITH_TIMEOUT(screen.listsInOrder(siblings), patience);
        const auto insideIsInSight = [&] {
            const QModelIndex inside = screen.tree.model()->index(0, 0, screen.tree.currentIndex());
            return inside.data().toString() == "inside" &&
                   screen.tree.viewport()->rect().contains(screen.tree.visualRect(inside).center());
        };
        QTRY_VERIFY_WITH_TIMEOUT(insideIsInSight(), patience);
        screen.picker.resize(screen.picker.width(), screen.picker.height() + 100);
        QTRY_VERIFY_WITH_TIMEOUT(insideIsInSight(), patience);
        screen.picker.resize(screen.picker.minimumSizeHint());
        QTRY_VERIFY_WITH_TIMEOUT(insideIsInSight(), patience);
    }

    void toursAreMarkedAndShowTheirTitles() {
        const PickerOnScreen screen("<B>D\xFCne</B> &amp; Sand\x01\r\n");
        const QModelIndex tour = screen.tree.currentIndex();
        QTRY_COMPARE_WITH_TIMEOUT(tour.data(TourFolderModel::titleRole).toString(),
                                  QString("D\u00fcne & Sand"), patience);
        QCOMPARE(tour.data(Qt::AccessibleTextRole).toString(),
                 nameOf(siblings - 1) + ", the tour \"D\u00fcne & Sand\"");
        QVERIFY(tour.data(Qt::ToolTipRole).toString().contains("D\u00fcne &amp; Sand"));
        QCOMPARE(tour.data().toString(), nameOf(siblings - 1)); // By which letters find it.
        QTRY_VERIFY_WITH_TIMEOUT(screen.listsInOrder(siblings), patience);
        const QModelIndex other = tour.siblingAtRow(siblings - 2);
        QVERIFY(!other.data(TourFolderModel::titleRole).isValid());
        QVERIFY(!other.data(Qt::ToolTipRole).isValid());
        QVERIFY(!other.data(Qt::AccessibleTextRole).toString().contains("tour"));
        const QImage marked = tour.data(Qt::DecorationRole).value<QIcon>().pixmap(24).toImage();
        QVERIFY(marked != other.data(Qt::DecorationRole).value<QIcon>().pixmap(24).toImage());
    }

    void tourWithoutATitleIsMarkedAllTheSame() {
        const PickerOnScreen screen("");
        const QModelIndex tour = screen.tree.currentIndex();
        QTRY_VERIFY_WITH_TIMEOUT(tour.data(TourFolderModel::titleRole).isValid(), patience);
        QCOMPARE(tour.data(Qt::AccessibleTextRole).toString(), nameOf(siblings - 1) + ", a tour");
    }

    void foldersOfTheProgramAreNoTours() {
        const test::ScratchFolder scratch;
        const WorkspaceFolders folders = WorkspaceFolders::inside(scratch.path());
        const QStringList own = {toQString(folders.templatePath), toQString(folders.newTourPath)};
        for (const QString& folder : own)
            test::writeFile(toUtf8(folder) + "script.txt", "Of the program\r\n");
        QDir(toQString(scratch.path())).mkdir("MyTours");
        FolderPicker picker(QStringLiteral("&Drive:"));
        const auto& tree = *picker.findChild<QTreeView*>("Dir1");
        const auto titleOf = [&](const QString& folder) {
            picker.setFolder(folder);
            return tree.currentIndex().data(TourFolderModel::titleRole);
        };
        for (const QString& folder : own)
            QTRY_VERIFY_WITH_TIMEOUT(titleOf(folder).isValid(), patience);
        picker.startIn(folders);
        QCOMPARE(picker.folder(), toQString(scratch / "MyTours"));
        for (const QString& folder : own)
            QVERIFY(!titleOf(folder).isValid());
    }

    /// However many folders there are.
    void onlyFoldersOnScreenAreLookedAt() {
        const PickerOnScreen screen(std::nullopt, PickerOnScreen::Shown::whenListed);
        QTRY_VERIFY_WITH_TIMEOUT(screen.selectedIsInSight(), patience);
        const int middle = siblings / 2; // Neither at the beginning nor at the end.
        const QModelIndex folder = screen.tree.currentIndex().siblingAtRow(middle);
        test::writeFile(screen.scratch / (toUtf8(nameOf(middle)) + "/script.txt"), "Made meanwhile\r\n");
        screen.tree.scrollTo(folder);
        QTRY_COMPARE_WITH_TIMEOUT(folder.data(TourFolderModel::titleRole).toString(),
                                  QString("Made meanwhile"), patience);
    }

    void authorWhoScrollsAwayIsNotTakenBack() {
        const PickerOnScreen screen;
        QTRY_VERIFY_WITH_TIMEOUT(screen.listsInOrder(siblings), patience);
        QTRY_VERIFY_WITH_TIMEOUT(screen.selectedIsInSight(), patience);
        screen.tree.verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMinimum);
        QDir(screen.path()).mkdir(nameOf(siblings));
        QTRY_VERIFY_WITH_TIMEOUT(screen.listsInOrder(siblings + 1), patience);
        QCOMPARE(screen.tree.verticalScrollBar()->value(), screen.tree.verticalScrollBar()->minimum());
    }

    void authorWhoClicksIsNotTakenBack() {
        const PickerOnScreen screen;
        QTRY_VERIFY_WITH_TIMEOUT(screen.listsInOrder(siblings), patience);
        QTRY_VERIFY_WITH_TIMEOUT(screen.selectedIsInSight(), patience);
        QTest::mousePress(screen.tree.viewport(), Qt::RightButton, {}, QPoint(4, 4));
        screen.tree.verticalScrollBar()->setValue(0);
        QDir(screen.path()).mkdir(nameOf(siblings));
        QTRY_VERIFY_WITH_TIMEOUT(screen.listsInOrder(siblings + 1), patience);
        QCOMPARE(screen.tree.verticalScrollBar()->value(), 0);
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::FolderPickerTest)
#include "FolderPickerTest.moc"
