#include "ui/dialogs/frmEarlierSaves.h"

#include "base/Files.h"
#include "model/ScriptFile.h"
#include "model/TourModel.h"
#include "platform/Strings.h"
#include "recovery/SavedScripts.h"
#include "ui/dialogs/DialogParts.h"

#include <QCheckBox>
#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <utility>

namespace wendmark {

namespace {

enum Column { timeColumn, titleColumn, stopsColumn, folderColumn };

constexpr int pathRole = Qt::UserRole;
constexpr qsizetype longestTitle = 200; // UTF-16 units.

/// Null for a script that holds no tour.
QTreeWidgetItem* makeRow(const SavedScript& script) {
    TourModel tour;
    const files::Contents file = files::read(script.path);
    if (!parseScript(file.bytes, tour, [](int, std::string_view) {}).hasTitle)
        return nullptr;
    const QDateTime time = QDateTime::fromSecsSinceEpoch(script.time);
    auto* const row = new QTreeWidgetItem;
    row->setText(timeColumn, QLocale().toString(time, QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    row->setText(titleColumn, shortened(beginningOf(tour.tourTitle, longestTitle + 1), longestTitle));
    row->setText(stopsColumn, QString::number(tour.stopCount()));
    row->setText(folderColumn, toQString(script.tourPath));
    row->setToolTip(folderColumn, toQString(script.tourPath));
    row->setData(timeColumn, pathRole, toQString(script.path));
    return row;
}

} // namespace

frmEarlierSaves::frmEarlierSaves(std::string savedScripts, std::string tourPath, QWidget* parent)
    : QDialog(parent)
    , m_savedScripts(std::move(savedScripts))
    , m_tourPath(std::move(tourPath))
    , m_list(new QTreeWidget(this))
    , m_empty(makeTextLabel("lblEmpty", {}, this))
    , m_allTours(new QCheckBox(tr("Show the saves of &all tours"), this))
    , m_open(makeButton("btnOpen", tr("&Open"), this)) {
    setObjectName(QStringLiteral("frmEarlierSaves"));
    setWindowTitle(QStringLiteral("Wendmark - Earlier Saves"));
    setupList();
    setupLayout();
    m_allTours->setObjectName(QStringLiteral("chkAllTours"));
    connect(m_allTours, &QCheckBox::toggled, this, &frmEarlierSaves::fill);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, &frmEarlierSaves::choose);
    connect(m_open, &QPushButton::clicked, this, &frmEarlierSaves::choose);
    fill();
    if (m_open->isEnabled())
        m_list->setFocus();
    else
        m_allTours->setFocus();
}

QSize frmEarlierSaves::sizeHint() const {
    return {80 * dialogGap, 50 * dialogGap};
}

void frmEarlierSaves::setupList() {
    m_list->setObjectName(QStringLiteral("lstSaves"));
    m_list->setAccessibleName(tr("Earlier saves"));
    m_list->setHeaderLabels({tr("Saved"), tr("Title"), tr("Stops"), tr("Folder")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setTabKeyNavigation(false);
    m_list->header()->setStretchLastSection(true);
}

void frmEarlierSaves::setupLayout() {
    m_open->setDefault(true);
    QPushButton* const cancel = makeButton("btnCancel", tr("Cancel"), this);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_open);
    buttons->addWidget(cancel);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(makeTextLabel("lblHint",
                                    tr("The stops, texts and properties of the save that you open take the "
                                       "place of those on screen. Its folder and the tour’s own files stay "
                                       "as they are, and Undo brings back what was there."),
                                    this));
    layout->addWidget(m_list, 1);
    layout->addWidget(m_empty, 1);
    layout->addWidget(m_allTours);
    layout->addLayout(buttons);
    setMinimumSize(50 * dialogGap, 35 * dialogGap);
}

void frmEarlierSaves::fill() {
    const bool all = m_allTours->isChecked();
    m_list->clear();
    for (const SavedScript& script :
         all ? savedScriptsOfAllTours(m_savedScripts) : savedScriptsOf(m_savedScripts, m_tourPath)) {
        if (QTreeWidgetItem* const row = makeRow(script))
            m_list->addTopLevelItem(row);
    }
    m_list->setColumnHidden(folderColumn, !all);
    for (const int column : {timeColumn, titleColumn, stopsColumn})
        m_list->resizeColumnToContents(column);
    const bool isEmpty = m_list->topLevelItemCount() == 0;
    m_list->setCurrentItem(m_list->topLevelItem(0));
    m_list->setVisible(!isEmpty);
    m_empty->setVisible(isEmpty);
    m_empty->setText(all ? tr("No tour was saved so far.") : tr("No saves of this tour are kept so far."));
    m_open->setEnabled(!isEmpty);
}

void frmEarlierSaves::choose() {
    const QTreeWidgetItem* const row = m_list->currentItem();
    if (row == nullptr)
        return;
    m_chosen = row->data(timeColumn, pathRole).toString();
    m_chosenTour = row->text(folderColumn);
    accept();
}

} // namespace wendmark
