#include "ui/check/frmCheck.h"

#include "base/Log.h"
#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/WindowPlace.h"
#include "ui/check/CardMaker.h"
#include "ui/check/CheckModel.h"
#include "ui/controls/FlowLayout.h"
#include "ui/controls/RowTable.h"
#include "ui/dialogs/DialogParts.h"

#include <QComboBox>
#include <QDate>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <map>
#include <utility>

namespace wendmark {

namespace {

constexpr int changesDelay = 50; // Milliseconds that collect changes.

// Pixels.
constexpr int titleWidth = 170;
constexpr QSize usualSize(100 * dialogGap, 60 * dialogGap);
constexpr int leastTableHeight = 12 * dialogGap;

} // namespace

frmCheck::frmCheck(ProgramParts parts, QWidget* parent)
    : QDialog(parent)
    , m_parts(std::move(parts))
    , m_rows(new CheckModel(this))
    , m_posting(new QComboBox(this))
    , m_table(new RowTable(this))
    , m_progressText(makeTextLabel("lblProgress", QString(), this))
    , m_progress(new QProgressBar(this))
    , m_choice(new QPlainTextEdit(this))
    , m_cards(new CardMaker({}, this)) {
    setObjectName(QStringLiteral("frmCheck"));
    setWindowTitle(QStringLiteral("Wendmark - Check All Stops"));
    m_changes.setSingleShot(true);
    m_changes.setInterval(changesDelay);
    m_changes.callOnTimeout(this, &frmCheck::showRows);
    setupPosting();
    setupTable();
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addLayout(makePostingRow());
    layout->addLayout(makeProgressRow());
    layout->addLayout(makeCheckButtons());
    layout->addWidget(m_table, 1);
    setupChoice();
    layout->addWidget(m_choice);
    layout->addLayout(makeButtonRow());
    setupTabOrder();
    m_table->setMinimumHeight(leastTableHeight);
    // With large letters it would grow when it is shown, beyond the end of the screen.
    ensurePolished();
    layout->activate();
    resize(usualSize.expandedTo({0, layout->totalMinimumHeightForWidth(usualSize.width())}));
    const int narrowest = layout->totalMinimumSize().width();
    setMinimumSize(QSize(narrowest, layout->totalMinimumHeightForWidth(narrowest)).boundedTo(size()));
    centreOverParent(*this);
    connect(&m_parts.check, &StopCheck::changed, this, &frmCheck::tourChangedNow);
    connect(&m_parts.check, &StopCheck::failed, this, &frmCheck::tellFailure);
    connect(m_cards, &CardMaker::changed, this, [this] {
        showProgress();
        showChoice();
    });
    connect(m_cards, &CardMaker::ended, this, &frmCheck::useCards);
    m_parts.document.addListener(*this);
    showRows();
}

frmCheck::~frmCheck() {
    m_parts.document.removeListener(*this);
}

void frmCheck::ask() {
    showRows();
    if (isHidden())
        keepOnScreen(*this);
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    m_table->setFocus();
    if (!m_table->currentIndex().isValid())
        m_table->selectRow(0);
    checkUnknown();
}

void frmCheck::reject() {
    cancel();
    QDialog::reject();
}

void frmCheck::setupPosting() {
    m_posting->setObjectName(QStringLiteral("cboPosting"));
    m_posting->addItem(tr("a web server, with https"), int(Posting::https));
    m_posting->addItem(tr("a web server, with http"), int(Posting::http));
    m_posting->addItem(tr("disk, a USB stick or a CD"), int(Posting::disk));
    m_posting->setCurrentIndex(m_posting->findData(int(m_parts.check.posting())));
    connect(m_posting, &QComboBox::currentIndexChanged, this,
            [this] { m_parts.check.setPosting(static_cast<Posting>(m_posting->currentData().toInt())); });
}

void frmCheck::setupTable() {
    m_table->setObjectName(QStringLiteral("grdChecks"));
    m_table->setAccessibleName(tr("Stops"));
    m_table->setModel(m_rows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    QHeaderView& header = *m_table->horizontalHeader();
    header.setSectionResizeMode(CheckModel::stopColumn, QHeaderView::ResizeToContents);
    header.setSectionResizeMode(CheckModel::verdictColumn, QHeaderView::ResizeToContents);
    header.setSectionResizeMode(CheckModel::whyColumn, QHeaderView::Stretch);
    header.resizeSection(CheckModel::titleColumn, titleWidth);
    m_table->giveRows();
    connect(m_table, &RowTable::rowGiven, this, &frmCheck::go);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmCheck::showChoice);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this, &frmCheck::showChoice);
}

/// As they are seen.
void frmCheck::setupTabOrder() {
    const QList<QWidget*> order = {m_posting,    findChild<QPushButton*>(QStringLiteral("btnCheckAll")),
                                   m_checkAgain, m_cancel,
                                   m_table,      m_choice,
                                   m_newAddress, m_leave,
                                   m_go,         findChild<QPushButton*>(QStringLiteral("btnClose"))};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}

/// Addresses may be of any length, so it scrolls.
void frmCheck::setupChoice() {
    constexpr int lines = 4;
    m_choice->setObjectName(QStringLiteral("txtChoice"));
    m_choice->setAccessibleName(tr("About the chosen stop"));
    m_choice->setReadOnly(true);
    m_choice->setTabChangesFocus(true);
    m_choice->setFixedHeight(lines * fontMetrics().lineSpacing() + 2 * dialogGap);
}

QLayout* frmCheck::makePostingRow() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(dialogGap);
    auto* const label = new QLabel(tr("Visitors play the tour &from:"), this);
    label->setObjectName(QStringLiteral("lblPosting"));
    label->setBuddy(m_posting);
    row->addWidget(label);
    row->addWidget(m_posting);
    row->addStretch();
    return row;
}

QLayout* frmCheck::makeProgressRow() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(dialogGap);
    m_progress->setObjectName(QStringLiteral("barProgress"));
    m_progress->setAccessibleName(tr("Pages checked"));
    m_progress->setTextVisible(false);
    row->addWidget(m_progressText, 1);
    row->addWidget(m_progress, 1);
    return row;
}

QLayout* frmCheck::makeCheckButtons() {
    auto* const buttons = new FlowLayout(dialogGap);
    addButton(*buttons, "btnCheckAll", tr("Check &All"), &frmCheck::checkAll)->setDefault(true);
    m_checkAgain = addButton(*buttons, "btnCheckAgain", tr("Chec&k Again"), &frmCheck::checkAgain);
    m_cancel = addButton(*buttons, "btnStop", tr("St&op"), &frmCheck::cancel);
    return buttons;
}

QLayout* frmCheck::makeButtonRow() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(dialogGap);
    auto* const buttons = new FlowLayout(dialogGap);
    row->addLayout(buttons, 1);
    m_newAddress = addButton(*buttons, "btnNewAddress", tr("Use &New Address"), &frmCheck::useNewAddress);
    m_card = addButton(*buttons, "btnCard", tr("Make a Ca&rd"), &frmCheck::makeCards);
    m_card->setToolTip(
        tr("A page of the tour's own that shows what the page is and opens it in a tab of its own"));
    m_original = addButton(*buttons, "btnOriginal", tr("Use Page &Itself"), &frmCheck::useOriginal);
    m_original->setToolTip(tr("In place of the card that stands for it"));
    m_leave = addButton(*buttons, "btnLeave", tr("&Leave It"), &frmCheck::leave);
    m_leave->setCheckable(true);
    m_leave->setToolTip(tr("Counts the chosen stops as settled, until their servers answer otherwise"));
    m_go = addButton(*buttons, "btnGo", tr("&Go to Stop"), &frmCheck::go);
    QPushButton* const close = makeButton("btnClose", tr("Clos&e"), this);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    row->addWidget(close, 0, Qt::AlignBottom);
    return row;
}

QPushButton* frmCheck::addButton(QLayout& row, const char* name, const QString& caption,
                                 void (frmCheck::*command)()) {
    QPushButton* const button = makeButton(name, caption, this);
    connect(button, &QPushButton::clicked, this, command);
    row.addWidget(button);
    return button;
}

StopNumbers frmCheck::selectedStops() const {
    StopNumbers stops;
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows())
        stops.push_back(static_cast<std::int16_t>(index.row() + 1));
    std::ranges::sort(stops);
    return stops;
}

/// Between the tours there is nothing to look at.
void frmCheck::showRows() {
    m_changes.stop();
    if (m_parts.document.filesAreThere())
        m_rows->show(m_parts.check.rows());
    showProgress();
    showChoice();
}

void frmCheck::showProgress() {
    const StopCheck& check = m_parts.check;
    const bool makesCards = m_cards->isRunning();
    m_cancel->setEnabled(check.isRunning() || makesCards);
    m_progress->setVisible(check.isRunning() || makesCards);
    m_progress->setRange(0, makesCards ? static_cast<int>(m_cards->wanted()) : std::max(check.asked(), 1));
    m_progress->setValue(makesCards ? static_cast<int>(m_cards->done()) : check.answered());
    m_progressText->setText(stateOfAll());
}

/// A sentence.
QString frmCheck::stateOfAll() const {
    const StopCheck& check = m_parts.check;
    const auto count = [this](auto matches) { return std::ranges::count_if(m_rows->rows(), matches); };
    const auto isKnown = [](const StopCheck::Row& row) { return row.state == StopCheck::State::known; };
    const auto problems = count([&](const StopCheck::Row& row) {
        return isKnown(row) && !row.isLeft && !isShown(row.verdict.verdict);
    });
    const auto unknown = count([&](const StopCheck::Row& row) { return !isKnown(row); });
    const auto left = count([](const StopCheck::Row& row) { return row.isLeft; });
    if (m_rows->rows().empty())
        return tr("The tour has no stops yet.");
    if (m_cards->isRunning())
        return tr("%1 of %2 cards made").arg(m_cards->done()).arg(m_cards->wanted());
    if (check.isRunning())
        return tr("%1 of %2 pages checked").arg(check.answered()).arg(check.asked());
    if (problems > 0)
        return problems == 1 ? tr("1 stop does not play.") : tr("%1 stops do not play.").arg(problems);
    if (unknown > 0)
        return unknown == 1 ? tr("1 stop is not checked.") : tr("%1 stops are not checked.").arg(unknown);
    if (left > 0)
        return left == 1 ? tr("1 stop is left as it is, all others play.")
                         : tr("%1 stops are left as they are, all others play.").arg(left);
    return tr("Every stop plays.");
}

void frmCheck::showChoice() {
    const StopNumbers stops = selectedStops();
    const auto rowOf = [&](std::int16_t stop) -> const StopCheck::Row& {
        return m_rows->rows().at(static_cast<std::size_t>(stop - 1));
    };
    m_newAddress->setEnabled(std::ranges::any_of(
        stops, [&](std::int16_t stop) { return !rowOf(stop).verdict.newAddress.empty(); }));
    m_checkAgain->setEnabled(
        std::ranges::any_of(stops, [&](std::int16_t stop) { return !rowOf(stop).stop.webPage().empty(); }));
    m_card->setEnabled(!m_cards->isRunning() && std::ranges::any_of(stops, [&](std::int16_t stop) {
        return rowOf(stop).canBeCard();
    }));
    m_original->setEnabled(
        std::ranges::any_of(stops, [&](std::int16_t stop) { return !rowOf(stop).stop.original.empty(); }));
    const auto canBeLeft = [&](std::int16_t stop) { return rowOf(stop).canBeLeft(); };
    m_leave->setEnabled(std::ranges::any_of(stops, canBeLeft));
    m_leave->setChecked(m_leave->isEnabled() && std::ranges::all_of(stops, [&](std::int16_t stop) {
                            return !canBeLeft(stop) || rowOf(stop).isLeft;
                        }));
    m_go->setEnabled(!stops.empty());
    if (stops.empty())
        m_choice->clear();
    else if (stops.size() == 1)
        tellChoice(describe(rowOf(stops.front())));
    else
        tellChoice(tr("%1 stops are chosen.").arg(stops.size()));
}

/// What the author has marked in the text stays as long as the text does.
void frmCheck::tellChoice(const QString& text) {
    if (m_choice->toPlainText() != text)
        m_choice->setPlainText(text);
}

void frmCheck::checkUnknown() {
    StopNumbers stops;
    for (const StopCheck::Row& row : m_rows->rows()) {
        if (row.isUnasked())
            stops.push_back(row.stop.stop);
    }
    check(stops);
}

void frmCheck::checkAll() {
    StopNumbers stops;
    for (const StopCheck::Row& row : m_rows->rows())
        stops.push_back(row.stop.stop);
    check(stops);
}

void frmCheck::checkAgain() {
    check(selectedStops());
}

void frmCheck::check(const StopNumbers& stops) {
    if (const Outcome outcome = m_parts.check.check(stops); !outcome.ok())
        tellFailure(toQString(outcome.message()));
}

void frmCheck::tellFailure(const QString& reason) {
    m_parts.document.log().warn(toUtf8(reason));
    showMessage(this, tr("No page can be checked: %1").arg(reason));
}

void frmCheck::cancel() {
    if (m_parts.check.isRunning())
        m_parts.check.cancel();
    if (m_cards->isRunning())
        m_cards->cancel();
}

void frmCheck::go() {
    m_parts.gate.run(
        *this,
        [this] {
            if (m_table->currentIndex().isValid())
                m_parts.document.goToStop(static_cast<std::int16_t>(m_table->currentIndex().row() + 1));
        },
        Gate::Kind::look);
}

void frmCheck::useNewAddress() {
    m_parts.gate.run(*this, [this] {
        showRows(); // The tour may be another by now.
        std::map<std::int16_t, std::string> addresses;
        for (const std::int16_t stop : selectedStops()) {
            const StopCheck::Row& row = m_rows->rows().at(static_cast<std::size_t>(stop - 1));
            if (!row.verdict.newAddress.empty())
                addresses[stop] = row.verdict.newAddress;
        }
        changeAddresses(addresses, "Use New Address");
    });
}

/// As one step of the history. The new pages are then asked for.
bool frmCheck::changeAddresses(const std::map<std::int16_t, std::string>& addresses,
                               const std::string& stepName, const std::vector<AddedFile>& files) {
    const StopListResult result = m_parts.document.changeAddresses(addresses, stepName, files);
    if (!result.done())
        return false;
    StopNumbers changed;
    for (const auto& [stop, address] : addresses)
        changed.push_back(stop);
    check(changed);
    return result.notCopied.empty();
}

void frmCheck::makeCards() {
    std::vector<CardMaker::Request> requests;
    for (const std::int16_t stop : selectedStops()) {
        const StopCheck::Row& row = m_rows->rows().at(static_cast<std::size_t>(stop - 1));
        if (row.canBeCard())
            requests.push_back({stop, row.stop.address, row.stop.webPage(), row.stop.title});
    }
    m_cards->start(std::move(requests));
}

/// The author went on working meanwhile: a stop that shows another page by now keeps that.
void frmCheck::useCards() {
    m_parts.gate.run(*this, [this] {
        showRows();
        CardFiles files(m_parts.document.workspace(), toUtf8(QDate::currentDate().toString(Qt::ISODate)));
        std::map<std::int16_t, std::string> addresses;
        Outcome outcome = Outcome::success();
        for (const auto& [request, content] : m_cards->results()) {
            const auto row = static_cast<std::size_t>(request.stop - 1);
            if (row >= m_rows->rows().size() || m_rows->rows().at(row).stop.address != request.address)
                continue;
            const bool isCard = request.address != request.original;
            outcome = files.add(content, isCard ? request.address : std::string(), addresses[request.stop]);
            if (!outcome.ok())
                break;
        }
        if (!outcome.ok() ||
            (!addresses.empty() && !changeAddresses(addresses, "Make a Card", files.files())))
            tellNoCards(outcome);
    });
}

/// What is known of single files is in the log.
void frmCheck::tellNoCards(const Outcome& outcome) {
    m_parts.document.log().skip(outcome);
    showMessage(this, outcome.ok() ? tr("Not every card could be written. The log says why.")
                                   : tr("No card can be made: %1").arg(toQString(outcome.message())));
}

void frmCheck::useOriginal() {
    m_parts.gate.run(*this, [this] {
        showRows();
        std::map<std::int16_t, std::string> addresses;
        for (const std::int16_t stop : selectedStops()) {
            const StopCheck::Row& row = m_rows->rows().at(static_cast<std::size_t>(stop - 1));
            if (!row.stop.original.empty())
                addresses[stop] = row.stop.original;
        }
        changeAddresses(addresses, "Use Page Itself");
    });
}

/// Nothing of the tour changes, so it is no step of the history: the button takes it back.
void frmCheck::leave() {
    m_parts.check.setLeft(selectedStops(), m_leave->isChecked());
    showRows();
}

void frmCheck::tourChangedNow() {
    if (isVisible() && !m_changes.isActive())
        m_changes.start();
}

} // namespace wendmark
