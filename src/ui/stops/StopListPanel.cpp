#include "ui/stops/StopListPanel.h"

#include "commands/StopCommands.h"
#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "ui/check/StopCheck.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/stops/FoundStops.h"
#include "ui/stops/StopListModel.h"
#include "ui/stops/StopTable.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QShortcut>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace wendmark {

namespace {

// Pixels, until the author makes the columns wider.
constexpr int pageWidth = 80;
constexpr int remarkWidth = 90;

StopListResult nothingToDo() {
    return {StopListResult::Answer::unchanged, 0, {}};
}

} // namespace

StopListPanel::StopListPanel(const ProgramParts& parts, QWidget* parent)
    : QWidget(parent)
    , m_parts(parts)
    , m_model(new StopListModel(parts.document, parts.check, this))
    , m_shown(new QSortFilterProxyModel(this))
    , m_filter(new QLineEdit(this))
    , m_table(new StopTable(this)) {
    m_filter->setObjectName(QStringLiteral("txtStopFilter"));
    m_filter->setAccessibleName(tr("Show only stops with these words"));
    m_filter->setPlaceholderText(tr("Filter"));
    m_filter->setClearButtonEnabled(true);
    m_shown->setSourceModel(m_model);
    m_shown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_shown->setFilterKeyColumn(-1);
    connect(m_filter, &QLineEdit::textChanged, m_shown, &QSortFilterProxyModel::setFilterFixedString);
    setupTable();
    setupCommands();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(dialogGap / 2, dialogGap / 2, dialogGap / 2, dialogGap / 2);
    layout->setSpacing(dialogGap / 2);
    layout->addWidget(m_filter);
    layout->addWidget(m_table, 1);
    m_changes.setSingleShot(true);
    m_changes.callOnTimeout(this, &StopListPanel::showChanges);
    m_dropEnd.setSingleShot(true);
    m_dropEnd.callOnTimeout(this, [this] { std::exchange(m_drop, {})(); });
    connect(&m_parts.check, &StopCheck::changed, &m_changes, [this] { m_changes.start(0); });
    m_parts.document.addListener(*this);
    followDocument();
}

StopListPanel::~StopListPanel() {
    m_parts.document.removeListener(*this);
}

void StopListPanel::focusList() {
    showChanges();
    m_table->setFocus();
}

void StopListPanel::setupTable() {
    m_table->setModel(m_shown);
    QHeaderView& header = *m_table->horizontalHeader();
    header.setSectionResizeMode(StopListModel::numberColumn, QHeaderView::ResizeToContents);
    header.setSectionResizeMode(StopListModel::titleColumn, QHeaderView::Stretch);
    header.resizeSection(StopListModel::pageColumn, pageWidth);
    header.resizeSection(StopListModel::remarkColumn, remarkWidth);
    connect(m_table, &StopTable::rowChosen, this, &StopListPanel::go);
    connect(m_model, &StopListModel::dropped, this, &StopListPanel::takeDropped);
}

void StopListPanel::setupCommands() {
    addCommand("listGo", tr("&Go to Stop"), {Qt::Key_Return, Qt::Key_Enter}, &StopListPanel::go);
    addCommand("listInsert", tr("&Insert Here"), {Qt::Key_Insert}, &StopListPanel::insertHere);
    addCommand("listDuplicate", tr("D&uplicate"), {Qt::CTRL | Qt::Key_D}, &StopListPanel::duplicate);
    addCommand("listCut", tr("Cu&t"), {QKeySequence::Cut}, &StopListPanel::cut);
    addCommand("listCopy", tr("&Copy"), {QKeySequence::Copy}, &StopListPanel::copy);
    addCommand("listPaste", tr("&Paste"), {QKeySequence::Paste}, &StopListPanel::paste);
    addCommand("listUp", tr("Move U&p"), {Qt::ALT | Qt::Key_Up}, &StopListPanel::moveUp);
    addCommand("listDown", tr("Move &Down"), {Qt::ALT | Qt::Key_Down}, &StopListPanel::moveDown);
    addCommand("listDelete", tr("De&lete"), {QKeySequence::Delete}, &StopListPanel::remove);
    auto* const leave = new QShortcut(Qt::Key_Escape, this);
    leave->setContext(Qt::WidgetWithChildrenShortcut);
    connect(leave, &QShortcut::activated, this, &StopListPanel::left);
    auto* const down = new QShortcut(Qt::Key_Down, m_filter);
    down->setContext(Qt::WidgetShortcut);
    connect(down, &QShortcut::activated, m_table, [this] { m_table->setFocus(); });
}

void StopListPanel::addCommand(const char* name, const QString& text, const QList<QKeySequence>& keys,
                               void (StopListPanel::*command)()) {
    auto* const action = new QAction(text, m_table);
    action->setObjectName(QLatin1String(name));
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    m_table->addAction(action);
    connect(action, &QAction::triggered, this, command);
}

StopNumbers StopListPanel::selectedStops() const {
    return stopsOf(m_shown->mapSelectionToSource(m_table->selectionModel()->selection()).indexes());
}

/// 0 is the opening page; -1: nothing is there.
int StopListPanel::currentRow() const {
    return m_shown->mapToSource(m_table->currentIndex()).row();
}

void StopListPanel::select(int first, int count) {
    QItemSelectionModel& selection = *m_table->selectionModel();
    const QModelIndex current = m_shown->mapFromSource(m_model->index(first, StopListModel::titleColumn));
    selection.setCurrentIndex(current, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    for (int row = first + 1; row < first + count; ++row)
        selection.select(m_shown->mapFromSource(m_model->index(row, StopListModel::titleColumn)),
                         QItemSelectionModel::Select | QItemSelectionModel::Rows);
    m_table->scrollTo(current);
}

/// What the author has selected stays until another stop is on screen.
void StopListPanel::followDocument() {
    const int stop = m_parts.document.model().currentStop;
    if (std::exchange(m_followed, stop) != stop && currentRow() != stop)
        select(stop, 1);
}

/// Brings the list up to date now; what has happened since the last time comes in one update.
void StopListPanel::showChanges() {
    m_changes.stop();
    m_model->refresh();
    followDocument();
}

void StopListPanel::go() {
    m_parts.gate.run(
        *this,
        [this] {
            showChanges();
            const int row = currentRow();
            if (row < 0 || row > m_parts.document.model().stops.held())
                return;
            m_parts.document.goToStop(static_cast<std::int16_t>(row));
            m_followed = row; // Where the author goes on to in the list is not taken back.
        },
        Gate::Kind::look);
}

/// Runs a command that may change the tour. What it works on is read when its turn has come.
void StopListPanel::change(std::function<StopListResult()> command) {
    m_parts.gate.run(*this, [this, command = std::move(command)] {
        showChanges();
        emit noticeShown({});
        const int before = m_parts.document.model().stopCount();
        end(command(), before);
    });
}

void StopListPanel::end(const StopListResult& result, int stopsBefore) {
    if (result.done()) {
        m_parts.document.markChanged();
        showChanges();
        if (const int more = m_parts.document.model().stopCount() - stopsBefore; more != 0)
            select(m_parts.document.model().currentStop, std::max(1, more));
    } else if (const std::string refusal = refusalOf(result); !refusal.empty()) {
        m_parts.desktop.beep();
        emit noticeShown(toQString(refusal));
    }
}

void StopListPanel::insertHere() {
    change([this] {
        const int row = std::max(currentRow(), 0);
        StopListResult result = m_parts.document.insertStops(static_cast<std::int16_t>(row), {newStop()});
        emit insertEnded(result.done());
        return result;
    });
    emit insertGiven();
}

void StopListPanel::duplicate() {
    change([this] { return m_parts.document.duplicateStops(selectedStops()); });
}

void StopListPanel::remove() {
    change([this] { return m_parts.document.removeStops(selectedStops()); });
}

void StopListPanel::copy() {
    m_parts.gate.run(*this, [this] {
        showChanges();
        if (const StopNumbers stops = selectedStops(); !stops.empty())
            QApplication::clipboard()->setMimeData(m_model->dataOf(stops));
    });
}

void StopListPanel::cut() {
    copy();
    remove();
}

void StopListPanel::paste() {
    change([this] {
        const QMimeData* const held = QApplication::clipboard()->mimeData();
        if (held == nullptr)
            return nothingToDo();
        return take(findStops(*held), std::max(currentRow(), 0));
    });
}

/// The drop ends before anything is done: a question in its middle would hold up where it comes from.
void StopListPanel::takeDropped(const QMimeData& brought, int position) {
    if (m_table->takesItsOwn())
        m_drop = [this, position] { change([this, position] { return move(selectedStops(), position); }); };
    else
        m_drop = [this, position, found = findStops(brought)] {
            change([this, position, found] { return take(found, position); });
        };
    m_dropEnd.start(0);
}

StopListResult StopListPanel::take(const FoundStops& found, int position) {
    QString notice;
    StopListResult result = takeStops(m_parts, found, position, *this, notice);
    emit noticeShown(notice);
    return result;
}

void StopListPanel::moveUp() {
    change([this] {
        const StopNumbers stops = selectedStops();
        return stops.empty() ? nothingToDo() : move(stops, std::max(stops.front() - 2, 0));
    });
}

void StopListPanel::moveDown() {
    change([this] {
        const StopNumbers stops = selectedStops();
        const int last = m_parts.document.model().stops.held();
        return stops.empty() ? nothingToDo() : move(stops, std::min(stops.back() + 1, last));
    });
}

/// Brings the stops behind stop `position`, and keeps them selected.
StopListResult StopListPanel::move(const StopNumbers& stops, int position) {
    const auto before = static_cast<std::int16_t>(position + 1);
    const auto ahead = std::count_if(stops.begin(), stops.end(), [&](auto stop) { return stop < before; });
    StopListResult result = m_parts.document.moveStops(stops, before);
    if (result.done()) {
        m_model->refresh();
        select(before - static_cast<int>(ahead), static_cast<int>(stops.size()));
    }
    return result;
}

void StopListPanel::tourChangedNow() {
    m_changes.start(0);
}

void StopListPanel::currentStopChanged() {
    m_changes.start(0);
}

void StopListPanel::filesChanged() {
    m_changes.start(0);
}

} // namespace wendmark
