#include "ui/stops/StopTable.h"

#include "ui/stops/StopListModel.h"

#include <QDropEvent>
#include <QMouseEvent>

namespace wendmark {

StopTable::StopTable(QWidget* parent) : RowTable(parent) {
    setObjectName(QStringLiteral("grdStops"));
    setAccessibleName(tr("Stops"));
    setSelectionMode(ExtendedSelection);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragDropOverwriteMode(false);
    setDefaultDropAction(Qt::MoveAction);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void StopTable::dropEvent(QDropEvent* event) {
    m_takesItsOwn = event->source() == this && event->dropAction() == Qt::MoveAction;
    RowTable::dropEvent(event);
    m_takesItsOwn = false;
}

void StopTable::mouseReleaseEvent(QMouseEvent* event) {
    const bool drags = state() == DraggingState;
    RowTable::mouseReleaseEvent(event);
    if (!drags && event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier &&
        indexAt(event->position().toPoint()).isValid())
        emit rowChosen();
}

} // namespace wendmark
