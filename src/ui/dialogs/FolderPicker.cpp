#include "ui/dialogs/FolderPicker.h"

#include "model/Workspace.h"
#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/TourFolderModel.h"

#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QStorageInfo>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVBoxLayout>

namespace wendmark {

namespace {

constexpr int grid = 8;

/// Volumes of the system itself, in which nobody keeps tours.
bool isForPeople(const QStorageInfo& volume) {
    if (!volume.isValid() || !volume.isReady())
        return false;
    const QString root = volume.rootPath();
    return root == QLatin1String("/") || root.startsWith(QLatin1String("/media/")) ||
           root.startsWith(QLatin1String("/run/media/")) || root.startsWith(QLatin1String("/mnt/")) ||
           root.startsWith(QLatin1String("/home"));
}

bool liesIn(const QString& path, const QString& folder) {
    return path == folder ||
           path.startsWith(folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/'));
}

/// Shows the title of a tour behind the name of its folder.
class FolderDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->text = onOneLine(option->text);
        const QString title = index.data(TourFolderModel::titleRole).toString();
        if (!title.isEmpty())
            option->text = FolderPicker::tr("%1 – %2").arg(option->text, title);
    }
};

} // namespace

FolderPicker::FolderPicker(const QString& driveCaption, QWidget* parent)
    : QWidget(parent)
    , m_drives(new QComboBox(this))
    , m_tree(new QTreeView(this))
    , m_path(makeTextLabel("lblTourPath", QString(), this))
    , m_model(new TourFolderModel(this)) {
    nameControls();
    m_model->setRootPath(QDir::rootPath());
    m_tree->setModel(m_model);
    m_tree->setItemDelegate(new FolderDelegate(m_tree));
    m_tree->setUniformRowHeights(true); // Else rows out of sight are looked at, too.
    m_tree->setHeaderHidden(true);
    for (int column = 1; column < m_model->columnCount(); ++column)
        m_tree->hideColumn(column);
    m_tree->setMinimumHeight(20 * grid);

    auto* const driveRow = new QFormLayout;
    auto* const driveLabel = new QLabel(driveCaption, this);
    driveLabel->setObjectName(QStringLiteral("lblDrive"));
    driveLabel->setBuddy(m_drives);
    driveRow->addRow(driveLabel, m_drives);
    driveRow->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(grid);
    layout->addLayout(driveRow);
    layout->addWidget(m_tree, 1);
    layout->addWidget(m_path);

    fillDrives();
    // A folder's names come first and are put in order some time later: both move the selected one.
    connect(m_model, &QFileSystemModel::directoryLoaded, this, &FolderPicker::keepInSight);
    connect(m_model, &QFileSystemModel::layoutChanged, this, &FolderPicker::keepInSight);
    connect(this, &FolderPicker::treeResized, this, &FolderPicker::keepInSight, Qt::QueuedConnection);
    connect(m_tree->verticalScrollBar(), &QScrollBar::actionTriggered, this,
            [this] { m_keepsInSight = false; });
    m_tree->viewport()->installEventFilter(this);
    connect(m_drives, &QComboBox::activated, this, &FolderPicker::goToDrive);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &FolderPicker::showSelection);
}

void FolderPicker::nameControls() {
    m_drives->setObjectName(QStringLiteral("Drive1"));
    m_drives->setAccessibleName(tr("Drive"));
    m_tree->setObjectName(QStringLiteral("Dir1"));
    m_tree->setAccessibleName(tr("Folders"));
    m_path->setAccessibleName(tr("Selected folder"));
    m_path->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

void FolderPicker::startIn(const WorkspaceFolders& folders) {
    m_model->leaveUnmarked({toQString(folders.templatePath), toQString(folders.newTourPath)});
    setFolder(toQString(folders.myToursPath));
}

void FolderPicker::setFolder(const QString& path) {
    const QString clean = QDir::cleanPath(path);
    const QModelIndex index = m_model->index(clean);
    if (!index.isValid())
        return;
    m_keepsInSight = true;
    m_drives->setCurrentIndex(driveHolding(clean));
    m_tree->setRootIndex(m_model->index(m_drives->currentData().toString()));
    m_tree->setCurrentIndex(index);
    m_tree->expand(index);
    m_shown = index;
    keepInSight();
    m_path->setText(QDir::toNativeSeparators(clean));
}

void FolderPicker::focusFolders() {
    m_tree->setFocus();
}

bool FolderPicker::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress)
        m_keepsInSight = false;
    if (event->type() == QEvent::Resize)
        emit treeResized();
    return QWidget::eventFilter(watched, event);
}

QString FolderPicker::folder() const {
    return m_path->text();
}

void FolderPicker::refresh() {
    const QString selected = folder();
    m_model->setRootPath(QString());
    m_model->setRootPath(QDir::rootPath());
    setFolder(selected);
}

void FolderPicker::fillDrives() {
    m_drives->addItem(tr("Home"), QDir::homePath());
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        if (isForPeople(volume) && m_drives->findData(volume.rootPath()) < 0)
            m_drives->addItem(volume.displayName(), volume.rootPath());
    }
    if (m_drives->findData(QDir::rootPath()) < 0)
        m_drives->addItem(QDir::rootPath(), QDir::rootPath());
}

void FolderPicker::goToDrive(int index) {
    setFolder(m_drives->itemData(index).toString());
}

void FolderPicker::showSelection() {
    const QModelIndex selected = m_tree->currentIndex();
    if (!selected.isValid())
        return;
    m_path->setText(QDir::toNativeSeparators(m_model->filePath(selected)));
    emit folderChanged(folder());
}

/// Of the folder that was set, what is in it comes in sight, too.
void FolderPicker::keepInSight() {
    if (!m_keepsInSight)
        return;
    const QModelIndex current = m_tree->currentIndex();
    m_tree->scrollTo(current, m_shown == current ? QTreeView::PositionAtTop : QTreeView::EnsureVisible);
}

int FolderPicker::driveHolding(const QString& path) const {
    int best = m_drives->findData(QDir::rootPath());
    for (int i = 0; i < m_drives->count(); ++i) {
        const QString root = m_drives->itemData(i).toString();
        if (liesIn(path, root) && root.size() > m_drives->itemData(best).toString().size())
            best = i;
    }
    return best;
}

} // namespace wendmark
