#include "ui/dialogs/FolderPicker.h"

#include "platform/Strings.h"
#include "support/ScratchFolder.h"
#include "ui/support/Patience.h"

#include <QDir>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

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
    PickerOnScreen() : picker(QStringLiteral("&Drive:")), tree(*picker.findChild<QTreeView*>("Dir1")) {
        for (int number = 0; number < siblings; ++number)
            QDir(path()).mkdir(nameOf(number));
        picker.setFolder(path() + QLatin1Char('/') + nameOf(siblings - 1));
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
