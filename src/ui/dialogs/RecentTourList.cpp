#include "ui/dialogs/RecentTourList.h"

#include "platform/Strings.h"

#include <QDir>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>

namespace wendmark {

namespace {

enum Column { titleColumn, folderColumn, timeColumn };

constexpr int folderRole = Qt::UserRole;
constexpr int rowsShown = 5;

// Of title and folder together, in widths of a letter, so that large text finds room, too.
constexpr int fewestLetters = 36;
constexpr int usualLetters = 68;

QString folderOf(const QTreeWidgetItem& row) {
    return row.data(titleColumn, folderRole).toString();
}

} // namespace

RecentTourList::RecentTourList(const QList<RecentTour>& tours, QWidget* parent) : QTreeWidget(parent) {
    setHeaderLabels({tr("Title"), tr("Folder"), tr("Last used")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setTabKeyNavigation(false);
    setTextElideMode(Qt::ElideMiddle);
    connect(&m_looks, &FolderLooks::looked, this, &RecentTourList::showLook);
    for (const RecentTour& tour : tours)
        addTour(tour);
    header()->setStretchLastSection(false);
    for (const int column : {titleColumn, folderColumn})
        header()->setSectionResizeMode(column, QHeaderView::Stretch);
    header()->setSectionResizeMode(timeColumn, QHeaderView::ResizeToContents);
    setMinimumWidth(widthFor(fewestLetters));
}

QString RecentTourList::selectedFolder() const {
    const QList<QTreeWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? QString() : folderOf(*selected.first());
}

QSize RecentTourList::sizeHint() const {
    const int rows = std::min(topLevelItemCount(), rowsShown);
    return {widthFor(usualLetters),
            header()->sizeHint().height() + rows * sizeHintForRow(0) + 2 * frameWidth()};
}

int RecentTourList::widthFor(int letters) const {
    return letters * fontMetrics().averageCharWidth() + header()->sectionSize(timeColumn) + 2 * frameWidth();
}

/// Without a selection the first row has the focus, and a key that goes down would pass it by.
void RecentTourList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down && selectedItems().isEmpty() && currentItem() != nullptr)
        currentItem()->setSelected(true);
    else
        QTreeWidget::keyPressEvent(event);
}

void RecentTourList::addTour(const RecentTour& tour) {
    const QString title = onOneLine(tour.title);
    const QString folder = onOneLine(QDir::toNativeSeparators(tour.folder));
    const QString time = QLocale().toString(tour.time, QLocale::ShortFormat);
    auto* const row = new QTreeWidgetItem(this, {title, folder, time});
    row->setData(titleColumn, folderRole, tour.folder);
    row->setData(titleColumn, Qt::AccessibleTextRole, tr("%1, in %2, %3").arg(title, folder, time));
    for (const int column : {titleColumn, folderColumn})
        row->setToolTip(column, QStringLiteral("<p>%1</p>").arg(plain(row->text(column))));
    m_looks.at(tour.folder);
}

void RecentTourList::showLook(const QString& folder) {
    if (m_looks.at(folder).value_or(TourLook{true, {}}).isTour)
        return;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        QTreeWidgetItem& row = *topLevelItem(i);
        if (folderOf(row) != folder || row.isDisabled())
            continue;
        row.setDisabled(true);
        row.setSelected(false);
        row.setText(folderColumn, tr("%1 (not there)").arg(row.text(folderColumn)));
    }
}

} // namespace wendmark
