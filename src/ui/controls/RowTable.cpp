#include "ui/controls/RowTable.h"

#include <QHeaderView>
#include <QShortcut>

namespace wendmark {

RowTable::RowTable(QWidget* parent) : QTableView(parent) {
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void RowTable::giveRows() {
    connect(this, &QTableView::doubleClicked, this, &RowTable::rowGiven);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* const enter = new QShortcut(key, this);
        enter->setContext(Qt::WidgetShortcut);
        connect(enter, &QShortcut::activated, this, &RowTable::rowGiven);
    }
}

} // namespace wendmark
