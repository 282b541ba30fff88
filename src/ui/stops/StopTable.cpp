#include "ui/stops/StopTable.h"

#include "ui/stops/StopListModel.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QMouseEvent>

namespace wendmark {

StopTable::StopTable(QWidget* parent) : QTableView(parent) {
    setObjectName(QStringLiteral("grdStops"));
    setAccessibleName(tr("Stops"));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragDropOverwriteMode(false);
    setDefaultDropAction(Qt::MoveAction);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void StopTable::dropEvent(QDropEvent* event) {
    m_takesItsOwn = event->source() == this && event->dropAction() == Qt::MoveAction;
    QTableView::dropEvent(event);
    m_takesItsOwn = false;
}

void StopTable::mouseReleaseEvent(QMouseEvent* event) {
    const bool drags = state() == DraggingState;
    QTableView::mouseReleaseEvent(event);
    if (!drags && event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier &&
        indexAt(event->position().toPoint()).isValid())
        emit rowChosen();
}

} // namespace wendmark
