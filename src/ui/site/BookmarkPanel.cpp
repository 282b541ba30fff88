#include "ui/site/BookmarkPanel.h"

#include "base/Files.h"
#include "base/Log.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "platform/Icons.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "ui/Messages.h"
#include "ui/controls/FlowLayout.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/site/ColorBar.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QShowEvent>
#include <QStackedLayout>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace wendmark {

namespace {

constexpr std::string_view fileName = "goodlist.txt";
constexpr int rowsInView = 4;
constexpr int smallestWidth = 48 * dialogGap;
constexpr float columnGap = 90;          // Twips.
constexpr qsizetype longestShown = 1000; // UTF-16 units of an address or a note.

enum Column { colourColumn = 0, addressColumn = 1, noteColumn = 2, columnCount = 3 };

QColor toQColor(Colour colour) {
    return {colour & 255, colour >> 8 & 255, colour >> 16 & 255};
}

Colour fromQColor(const QColor& colour) {
    return colour.red() + 256 * colour.green() + 65536 * colour.blue();
}

QString nameOfColour(Colour colour) {
    for (int k = 1; k <= ColorBar::segmentCount; ++k) {
        if (ColorBar::colourOf(k) == colour)
            return ColorBar::nameOf(k);
    }
    return toQColor(colour).name();
}

/// Shows no more of a text than can be seen of it.
class ShorteningDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale&) const override {
        return shortened(value.toString(), longestShown);
    }
};

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

} // namespace

BookmarkPanel::BookmarkPanel(TourContext& tour, QtDesktop& desktop, QWidget* parent)
    : QWidget(parent)
    , m_tour(tour)
    , m_desktop(desktop)
    , m_grid(new QTableWidget(0, columnCount, this))
    , m_pages(new QStackedLayout) {
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
    connect(rememberButton, &QPushButton::clicked, this, &BookmarkPanel::rememberWanted);
    setupGrid();
    m_pages->addWidget(makeList());
    m_pages->addWidget(makeNotesPanel());
    setTabOrder(rememberButton, m_grid);
}

void BookmarkPanel::addButton(QPushButton& button) {
    m_buttons->addWidget(&button);
}

void BookmarkPanel::setupGrid() {
    m_grid->setObjectName(QStringLiteral("grdResearch"));
    m_grid->setAccessibleName(tr("Bookmarks"));
    m_grid->setHorizontalHeaderLabels({tr("Colour"), tr("Address"), tr("Note")});
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->horizontalHeader()->setHighlightSections(false);
    m_grid->horizontalHeader()->setFocusPolicy(Qt::NoFocus);
    m_grid->verticalHeader()->hide();
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::ContiguousSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setTabKeyNavigation(false);
    m_grid->setItemDelegate(new ShorteningDelegate(m_grid));
    m_grid->setItemDelegateForColumn(colourColumn, new ColourDelegate(m_grid));
    m_grid->setWordWrap(false);
    m_grid->setTextElideMode(Qt::ElideMiddle);
    m_grid->setMinimumHeight(m_grid->horizontalHeader()->sizeHint().height() +
                             m_grid->verticalHeader()->defaultSectionSize());
    connect(m_grid, &QTableWidget::cellDoubleClicked, this, &BookmarkPanel::goTo);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(key, m_grid, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
                &BookmarkPanel::goTo);
    connect(new QShortcut(Qt::Key_Delete, m_grid, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, &BookmarkPanel::removeBlock);
}

QWidget* BookmarkPanel::makeList() {
    auto* const list = new QWidget(this);
    auto* const row = new FlowLayout(dialogGap);
    const auto add = [&](const char* name, const QString& caption, const QString& toolTip, auto action) {
        QPushButton* const button = makeButton(name, caption, list);
        button->setToolTip(toolTip);
        row->addWidget(button);
        connect(button, &QPushButton::clicked, this, action);
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
    connect(bar, &ColorBar::chosen, this, &BookmarkPanel::colourBlock);
    auto* const layout = new QVBoxLayout(list);
    layout->setContentsMargins({});
    layout->setSpacing(dialogGap);
    layout->addWidget(m_grid, 1);
    layout->addLayout(row);
    return list;
}

QWidget* BookmarkPanel::makeNotesPanel() {
    auto* const panel = new QWidget(this);
    panel->setObjectName(QStringLiteral("picNote"));
    m_noteTitle = makeTextLabel("Label1", QString(), panel);
    m_note = new QLineEdit(panel);
    m_note->setObjectName(QStringLiteral("Text1"));
    m_note->setAccessibleName(tr("Research notes"));
    m_noteTitle->setBuddy(m_note);
    QPushButton* const back = makeButton("btnOK", tr("&Back to Bookmarks"), panel);
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(back);
    auto* const layout = new QVBoxLayout(panel);
    layout->setContentsMargins({});
    layout->setSpacing(dialogGap);
    layout->addWidget(m_noteTitle);
    layout->addWidget(m_note);
    layout->addLayout(row);
    layout->addStretch();
    connect(m_note, &QLineEdit::returnPressed, this, [this] { m_desktop.beep(); });
    connect(back, &QPushButton::clicked, this, &BookmarkPanel::backToBookmarks);
    return panel;
}

void BookmarkPanel::LoadGoodList() {
    m_grid->setRowCount(0);
    const files::Contents file = files::read(m_tour.workspace.workingFile(fileName));
    m_tour.log.skipAsNote(file.outcome);
    BookmarkList list = readBookmarks(file.bytes);
    m_further = std::move(list.further);
    if (!m_further.empty())
        m_tour.log.warn("goodlist.txt holds more than 255 bookmarks: the others are kept in the file only");
    for (std::size_t n = 0; n < list.bookmarks.size(); ++n)
        SetRow(static_cast<int>(n), list.bookmarks[n]);
    SelectCells(-1, 0, -1, 0);
}

void BookmarkPanel::SaveGoodList() {
    storeNote();
    BookmarkList list{{}, m_further};
    for (int row = 0; row < bookmarkCount(); ++row)
        list.bookmarks.push_back(GetRow(row));
    m_tour.log.skip(m_tour.workspace.writeWorkingFile(fileName, bookmarksFile(list)));
}

void BookmarkPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous() || m_shownBefore)
        return;
    m_shownBefore = true;
    const int width = pixelsFromTwips((twipsFromPixels(m_grid->width()) - columnGap) / 5);
    for (int column = 0; column < columnCount; ++column)
        m_grid->setColumnWidth(column, width);
    if (bookmarkCount() > 0)
        layOutColumns();
    showLastRows();
}

/// The rows of buttons need more height the narrower the panel is.
QSize BookmarkPanel::minimumSizeHint() const {
    const int narrowest = std::max(smallestWidth, QWidget::minimumSizeHint().width());
    return {narrowest, layout()->totalMinimumHeightForWidth(std::max(width(), narrowest))};
}

void BookmarkPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (event->oldSize().width() != width())
        updateGeometry();
}

void BookmarkPanel::showLastRows() {
    m_grid->verticalScrollBar()->setValue(bookmarkCount() < rowsInView + 1 ? 0
                                                                           : bookmarkCount() - rowsInView);
}

std::int16_t BookmarkPanel::bookmarkCount() const {
    return static_cast<std::int16_t>(m_grid->rowCount());
}

Bookmark BookmarkPanel::GetRow(int row) const {
    return {toUtf8(m_grid->item(row, addressColumn)->text()), toUtf8(m_grid->item(row, noteColumn)->text()),
            fromQColor(m_grid->item(row, colourColumn)->background().color())};
}

void BookmarkPanel::SetRow(int row, const Bookmark& bookmark) {
    while (row >= m_grid->rowCount()) {
        const int added = m_grid->rowCount();
        m_grid->insertRow(added);
        for (int column = 0; column < columnCount; ++column)
            m_grid->setItem(added, column, new QTableWidgetItem);
    }
    QTableWidgetItem* const address = m_grid->item(row, addressColumn);
    address->setText(toQString(bookmark.address));
    address->setToolTip(plain(shortened(address->text(), longestShown)));
    QTableWidgetItem* const note = m_grid->item(row, noteColumn);
    note->setText(toQString(bookmark.note));
    note->setToolTip(plain(shortened(note->text(), longestShown)));
    setColour(row, bookmark.colour);
    layOutColumns();
}

void BookmarkPanel::setColour(int row, Colour colour) {
    QTableWidgetItem* const item = m_grid->item(row, colourColumn);
    item->setBackground(toQColor(colour));
    item->setData(Qt::AccessibleTextRole, nameOfColour(colour));
}

/// Once, so that what the author makes of the columns stays.
void BookmarkPanel::layOutColumns() {
    if (m_columnsLaidOut || !m_shownBefore)
        return;
    m_columnsLaidOut = true;
    const int colourWidth = m_grid->horizontalHeader()->sectionSizeHint(colourColumn);
    m_grid->setColumnWidth(colourColumn, colourWidth);
    m_grid->setColumnWidth(addressColumn, (m_grid->viewport()->width() - colourWidth) / 2);
}

void BookmarkPanel::SelectCells(int firstRow, int firstColumn, int lastRow, int lastColumn) {
    m_grid->clearSelection();
    if (firstRow < 0) {
        m_grid->setCurrentItem(nullptr);
        return;
    }
    m_grid->setCurrentCell(firstRow, firstColumn, QItemSelectionModel::NoUpdate);
    m_grid->setRangeSelected({firstRow, firstColumn, lastRow, lastColumn}, true);
}

std::optional<BookmarkPanel::Block> BookmarkPanel::selectedBlock() const {
    const QList<QTableWidgetSelectionRange> ranges = m_grid->selectedRanges();
    if (ranges.isEmpty())
        return {};
    Block block{ranges.first().topRow(), ranges.first().bottomRow()};
    for (const QTableWidgetSelectionRange& range : ranges) {
        block.first = std::min(block.first, range.topRow());
        block.last = std::max(block.last, range.bottomRow());
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

void BookmarkPanel::showRow(int row) {
    SelectCells(row, addressColumn, row, noteColumn);
    const QRect place = m_grid->visualItemRect(m_grid->item(row, addressColumn));
    if (!m_grid->viewport()->rect().contains(place.center()))
        m_grid->scrollToItem(m_grid->item(row, addressColumn), QAbstractItemView::PositionAtTop);
}

void BookmarkPanel::noteChange() {
    m_tour.model.tourChanged = true;
}

void BookmarkPanel::remember(const QString& address) {
    noteChange();
    storeNote();
    for (int row = 0; row < bookmarkCount(); ++row) {
        if (m_grid->item(row, addressColumn)->text() == address) {
            showRow(row);
            m_desktop.beep();
            return;
        }
    }
    if (bookmarkCount() >= bookmarkCapacity) {
        m_desktop.beep();
        showMessage(this, tr("The list is full - delete some entries to add more"));
        return;
    }
    SetRow(bookmarkCount(), {toUtf8(address), {}, white});
    showRow(bookmarkCount() - 1);
}

void BookmarkPanel::goTo() {
    const auto row = rowOrBeep();
    if (!row)
        return;
    emit pageWanted(m_grid->item(*row, addressColumn)->text());
    showRow(*row);
}

void BookmarkPanel::editNotes() {
    const auto row = rowOrBeep();
    if (!row)
        return;
    noteChange();
    const QString address = m_grid->item(*row, addressColumn)->text();
    emit pageWanted(address);
    m_noteTitle->setText(tr("Research Notes for:  ") + shortened(address, longestShown));
    m_note->setText(m_grid->item(*row, noteColumn)->text());
    showRow(*row);
    m_notedRow = *row;
    m_pages->setCurrentIndex(1);
    m_note->setFocus();
}

void BookmarkPanel::storeNote() {
    if (m_notedRow < 0)
        return;
    Bookmark bookmark = GetRow(m_notedRow);
    bookmark.note = wholeText(*m_note, bookmark.note);
    SetRow(m_notedRow, bookmark);
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
    m_grid->model()->removeRows(block->first, block->last - block->first + 1);
    SelectCells(-1, 0, -1, 0);
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
    const Bookmark passed = GetRow(neighbour);
    const int near = by < 0 ? block->first : block->last;
    const int far = by < 0 ? block->last : block->first;
    for (int row = near; row != far - by; row -= by)
        SetRow(row + by, GetRow(row));
    SetRow(far, passed);
    SelectCells(block->first + by, addressColumn, block->last + by, noteColumn);
    m_grid->scrollToItem(m_grid->item(near + by, addressColumn));
}

void BookmarkPanel::colourBlock(int k) {
    noteChange();
    const auto block = blockOrBeep();
    if (!block)
        return;
    for (int row = block->first; row <= block->last; ++row)
        setColour(row, ColorBar::colourOf(k));
    SelectCells(block->first, addressColumn, block->last, noteColumn);
}

} // namespace wendmark
