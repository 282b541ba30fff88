#include "ui/site/BookmarkPanel.h"

#include "base/Files.h"
#include "base/Log.h"
#include "commands/TourDocument.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "platform/Gate.h"
#include "platform/Icons.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "ui/Messages.h"
#include "ui/controls/FlowLayout.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/site/BookmarkModel.h"
#include "ui/site/ColorBar.h"
#include "ui/site/NotePanel.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QShowEvent>
#include <QStackedLayout>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

namespace wendmark {

namespace {

constexpr int rowsInView = 4;
constexpr int smallestWidth = 48 * dialogGap;
constexpr float columnGap = 90; // Twips.

/// Shows the colours of selected bookmarks, too.
class ColourDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_Selected;
    }
};

/// Whole rows are selected and dragged; keys go to the grid itself.
void setUpRows(QTableView& grid) {
    grid.horizontalHeader()->setStretchLastSection(true);
    grid.horizontalHeader()->setHighlightSections(false);
    grid.horizontalHeader()->setFocusPolicy(Qt::NoFocus);
    grid.verticalHeader()->hide();
    grid.setSelectionBehavior(QAbstractItemView::SelectRows);
    grid.setSelectionMode(QAbstractItemView::ContiguousSelection);
    grid.setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid.setTabKeyNavigation(false);
    grid.setDragDropMode(QAbstractItemView::DragOnly); // Onto the stop list, or into another program.
}

/// Grid and buttons; a stack of pages takes the height that a page would like for its smallest.
class ListPage final : public QWidget {
public:
    using QWidget::QWidget;

    int heightForWidth(int width) const override { return layout()->totalMinimumHeightForWidth(width); }
};

} // namespace

BookmarkPanel::BookmarkPanel(TourDocument& document, Gate& gate, QtDesktop& desktop, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_gate(gate)
    , m_desktop(desktop)
    , m_list(new BookmarkModel(this))
    , m_grid(new QTableView(this))
    , m_pages(new QStackedLayout)
    , m_note(new NotePanel(this)) {
    auto* const title = new QLabel(tr("Bookmarks"), this);
    title->setObjectName(QStringLiteral("Label2"));
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    auto* const top = new QHBoxLayout;
    top->setSpacing(dialogGap);
    top->addWidget(title);
    top->addStretch();
    m_buttons = top;
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(dialogGap);
    layout->addLayout(top);
    layout->addLayout(m_pages, 1);
    auto* const rememberButton = makeButton("btnSave", tr("&Remember"), this);
    rememberButton->setToolTip(tr("Put the page shown into the list"));
    addButton(*rememberButton);
    connect(rememberButton, &QPushButton::clicked, this, [this] { give([this] { emit rememberWanted(); }); });
    setupGrid();
    m_pages->addWidget(makeList());
    m_pages->addWidget(m_note);
    connect(m_note, &NotePanel::returnPressed, this, [this] { m_desktop.beep(); });
    connect(m_note, &NotePanel::backWanted, this, [this] { give([this] { backToBookmarks(); }); });
    setTabOrder(rememberButton, m_grid);
}

void BookmarkPanel::addButton(QPushButton& button) {
    m_buttons->addWidget(&button);
}

void BookmarkPanel::give(std::function<void()> command) {
    m_gate.run(*this, std::move(command), Gate::Kind::look);
}

void BookmarkPanel::setupGrid() {
    m_grid->setObjectName(QStringLiteral("grdResearch"));
    m_grid->setAccessibleName(tr("Bookmarks"));
    m_grid->setModel(m_list);
    setUpRows(*m_grid);
    m_grid->setItemDelegateForColumn(BookmarkModel::colourColumn, new ColourDelegate(m_grid));
    m_grid->setWordWrap(false);
    m_grid->setTextElideMode(Qt::ElideMiddle);
    m_grid->setMinimumHeight(m_grid->horizontalHeader()->sizeHint().height() +
                             m_grid->verticalHeader()->defaultSectionSize());
    connect(m_grid, &QTableView::doubleClicked, this, [this] { give([this] { goTo(); }); });
    for (const int key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(key, m_grid, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
                [this] { give([this] { goTo(); }); });
    connect(new QShortcut(Qt::Key_Delete, m_grid, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, [this] { give([this] { removeBlock(); }); });
}

QWidget* BookmarkPanel::makeList() {
    auto* const list = new ListPage(this);
    auto* const row = new FlowLayout(dialogGap);
    const auto add = [&](const char* name, const QString& caption, const QString& toolTip, auto action) {
        QPushButton* const button = makeButton(name, caption, list);
        button->setToolTip(toolTip);
        row->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, action] { give(action); });
        return button;
    };
    QPushButton* const goToButton =
        add("btnGoto", QString(), tr("Go to the page of the selected bookmark"), [this] { goTo(); });
    goToButton->setIcon(themedIcon(QStringLiteral("siteGoto")));
    goToButton->setAccessibleName(tr("Go to"));
    add("btnEdit", tr("Edit &Notes"), tr("Go to the page and write a note about it"),
        [this] { editNotes(); });
    add("btnDelete", tr("Re&move"), tr("Remove the selected bookmarks"), [this] { removeBlock(); });
    add("btnUp", tr("Move &Up"), tr("Move the selected bookmarks up"), [this] { moveBlock(-1); });
    add("btnDown", tr("Move &Down"), tr("Move the selected bookmarks down"), [this] { moveBlock(1); });
    auto* const bar = new ColorBar(list);
    row->addWidget(bar);
    connect(bar, &ColorBar::chosen, this, [this](int k) { give([this, k] { colourBlock(k); }); });
    auto* const layout = new QVBoxLayout(list);
    layout->setContentsMargins({});
    layout->setSpacing(dialogGap);
    layout->addWidget(m_grid, 1);
    layout->addLayout(row);
    return list;
}

void BookmarkPanel::LoadGoodList() {
    setList(m_document.loadBookmarks());
    if (!list().further.empty())
        m_document.log().warn(
            "goodlist.txt holds more than 255 bookmarks: the others are kept in the file only");
}

void BookmarkPanel::SaveGoodList() {
    storeNote();
    if (list() != m_document.bookmarks())
        m_document.setBookmarks(list(), "Edit Bookmarks");
    m_document.saveBookmarks();
}

const BookmarkList& BookmarkPanel::list() const {
    return m_list->list();
}

void BookmarkPanel::setList(BookmarkList list) {
    m_notedRow = -1;
    m_pages->setCurrentIndex(0);
    m_list->setList(std::move(list));
    layOutColumns();
    SelectCells(-1, 0, -1, 0);
}

void BookmarkPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous() || m_shownBefore)
        return;
    m_shownBefore = true;
    const int width = pixelsFromTwips((twipsFromPixels(m_grid->width()) - columnGap) / 5);
    for (int column = 0; column < BookmarkModel::columnCountOfAll; ++column)
        m_grid->setColumnWidth(column, width);
    layOutColumns();
    showLastRows();
}

/// The rows of buttons need more height the narrower the panel is.
QSize BookmarkPanel::minimumSizeHint() const {
    const int narrowest = std::max(smallestWidth, QWidget::minimumSizeHint().width());
    return {narrowest, layout()->totalMinimumHeightForWidth(std::max(width(), narrowest))};
}

/// The smallest height: the list takes what there is, and nothing scrolls that has room.
int BookmarkPanel::heightForWidth(int width) const {
    return layout()->totalMinimumHeightForWidth(width);
}

void BookmarkPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (event->oldSize().width() != width())
        updateGeometry();
}

void BookmarkPanel::showLastRows() {
    m_grid->verticalScrollBar()->setValue(bookmarkCount() < rowsInView + 1 ? 0
                                                                           : bookmarkCount() - rowsInView);
    if (bookmarkCount() > 0)
        m_grid->scrollTo(m_list->index(bookmarkCount() - 1, 0)); // Where there is no room for so many.
}

std::int16_t BookmarkPanel::bookmarkCount() const {
    return m_list->bookmarkCount();
}

const Bookmark& BookmarkPanel::GetRow(int row) const {
    return m_list->GetRow(row);
}

void BookmarkPanel::SetRow(int row, const Bookmark& bookmark) {
    m_list->SetRow(row, bookmark);
    layOutColumns();
}

/// Once, so that what the author makes of the columns stays.
void BookmarkPanel::layOutColumns() {
    if (m_columnsLaidOut || !m_shownBefore || bookmarkCount() == 0)
        return;
    m_columnsLaidOut = true;
    const int colourWidth = m_grid->horizontalHeader()->sectionSizeHint(BookmarkModel::colourColumn);
    m_grid->setColumnWidth(BookmarkModel::colourColumn, colourWidth);
    m_grid->setColumnWidth(BookmarkModel::addressColumn, (m_grid->viewport()->width() - colourWidth) / 2);
}

void BookmarkPanel::SelectCells(int firstRow, int firstColumn, int lastRow, int lastColumn) {
    QItemSelectionModel& selection = *m_grid->selectionModel();
    selection.clearSelection();
    if (firstRow < 0) {
        m_grid->setCurrentIndex({}); // By the view: else it takes the first cell when it gets the focus.
        return;
    }
    const QModelIndex first = m_list->index(firstRow, firstColumn);
    selection.setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    selection.select({first, m_list->index(lastRow, lastColumn)}, QItemSelectionModel::Select);
}

std::optional<BookmarkPanel::Block> BookmarkPanel::selectedBlock() const {
    const QItemSelection ranges = m_grid->selectionModel()->selection();
    if (ranges.isEmpty())
        return {};
    Block block{ranges.first().top(), ranges.first().bottom()};
    for (const QItemSelectionRange& range : ranges) {
        block.first = std::min(block.first, range.top());
        block.last = std::max(block.last, range.bottom());
    }
    return block;
}

std::optional<int> BookmarkPanel::selectedRow() const {
    const auto block = selectedBlock();
    return block && block->first == block->last ? std::optional(block->first) : std::nullopt;
}

std::optional<BookmarkPanel::Block> BookmarkPanel::blockOrBeep() {
    const auto block = selectedBlock();
    if (!block)
        m_desktop.beep();
    return block;
}

std::optional<int> BookmarkPanel::rowOrBeep() {
    const auto row = selectedRow();
    if (!row)
        m_desktop.beep();
    return row;
}

void BookmarkPanel::selectRows(int first, int last) {
    SelectCells(first, BookmarkModel::addressColumn, last, BookmarkModel::noteColumn);
}

void BookmarkPanel::showRow(int row) {
    selectRows(row, row);
    const QModelIndex address = m_list->index(row, BookmarkModel::addressColumn);
    if (!m_grid->viewport()->rect().contains(m_grid->visualRect(address).center()))
        m_grid->scrollTo(address, QAbstractItemView::PositionAtTop);
}

void BookmarkPanel::noteChange() {
    m_document.markChanged();
}

void BookmarkPanel::tellChange(const QString& what) {
    m_document.setBookmarks(list(), toUtf8(what));
    emit changed(what);
}

void BookmarkPanel::remember(const QString& address) {
    noteChange();
    storeNote();
    if (const int row = m_list->rowOf(toUtf8(address)); row >= 0) {
        showRow(row);
        m_desktop.beep();
        return;
    }
    if (bookmarkCount() >= bookmarkCapacity) {
        m_desktop.beep();
        showMessage(this, tr("The list is full - delete some entries to add more"));
        return;
    }
    SetRow(bookmarkCount(), {toUtf8(address), {}, white});
    showRow(bookmarkCount() - 1);
    tellChange(tr("Remember Page"));
}

void BookmarkPanel::goTo() {
    const auto row = rowOrBeep();
    if (!row)
        return;
    emit pageWanted(toQString(GetRow(*row).address));
    showRow(*row);
}

void BookmarkPanel::editNotes() {
    const auto row = rowOrBeep();
    if (!row)
        return;
    noteChange();
    const Bookmark bookmark = GetRow(*row);
    emit pageWanted(toQString(bookmark.address));
    m_note->showNote(bookmark);
    showRow(*row);
    m_notedRow = *row;
    m_pages->setCurrentIndex(1);
    m_note->focusNote();
}

void BookmarkPanel::storeNote() {
    if (m_notedRow < 0)
        return;
    Bookmark bookmark = GetRow(m_notedRow);
    bookmark.note = m_note->note(bookmark.note);
    if (bookmark == GetRow(m_notedRow))
        return;
    SetRow(m_notedRow, bookmark);
    tellChange(tr("Edit Note"));
}

void BookmarkPanel::backToBookmarks() {
    storeNote();
    showRow(std::exchange(m_notedRow, -1));
    m_pages->setCurrentIndex(0);
    m_grid->setFocus();
}

void BookmarkPanel::removeBlock() {
    const auto block = blockOrBeep();
    if (!block)
        return;
    noteChange();
    m_list->removeRows(block->first, block->last - block->first + 1);
    SelectCells(-1, 0, -1, 0);
    tellChange(tr("Remove Bookmark"));
}

void BookmarkPanel::moveBlock(int by) {
    const auto block = blockOrBeep();
    if (!block)
        return;
    noteChange();
    const int neighbour = by < 0 ? block->first - 1 : block->last + 1;
    if (neighbour < 0 || neighbour >= bookmarkCount()) {
        m_desktop.beep();
        return;
    }
    m_list->moveBlock(block->first, block->last, by);
    selectRows(block->first + by, block->last + by);
    m_grid->scrollTo(m_list->index((by < 0 ? block->first : block->last) + by, BookmarkModel::addressColumn));
    tellChange(by < 0 ? tr("Move Bookmark Up") : tr("Move Bookmark Down"));
}

void BookmarkPanel::colourBlock(int k) {
    noteChange();
    const auto block = blockOrBeep();
    if (!block)
        return;
    const std::vector<Bookmark> before = list().bookmarks;
    m_list->setColour(block->first, block->last, ColorBar::colourOf(k));
    selectRows(block->first, block->last);
    if (list().bookmarks != before)
        tellChange(tr("Colour Bookmark"));
}

} // namespace wendmark
