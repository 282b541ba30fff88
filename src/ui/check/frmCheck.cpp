#include "ui/check/frmCheck.h"

#include "base/Log.h"
#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/WindowPlace.h"
#include "ui/cards/CardMaker.h"
#include "ui/check/CheckModel.h"
#include "ui/check/Remedies.h"
#include "ui/controls/FlowLayout.h"
#include "ui/controls/RowTable.h"
#include "ui/dialogs/DialogParts.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
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
    , m_remedies(new Remedies(
          m_parts,
          [this] {
              showRows(); // The tour may be another by now.
              return chosenRows();
          },
          *this)) {
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
    connect(m_remedies, &Remedies::changed, this, &frmCheck::showRows);
    connect(m_remedies, &Remedies::checkWanted, this, &frmCheck::check);
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
    QList<QWidget*> order = {m_posting,    findChild<QPushButton*>(QStringLiteral("btnCheckAll")),
                             m_checkAgain, m_cancel,
                             m_table,      m_choice};
    order += m_remedies->buttons();
    order += {m_go, findChild<QPushButton*>(QStringLiteral("btnClose"))};
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
    m_remedies->addButtonsTo(*buttons);
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

std::vector<StopCheck::Row> frmCheck::chosenRows() const {
    std::vector<StopCheck::Row> rows;
    for (const std::int16_t stop : selectedStops())
        rows.push_back(m_rows->rows().at(static_cast<std::size_t>(stop - 1)));
    return rows;
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
    const bool makesCards = m_remedies->cards().isRunning();
    m_cancel->setEnabled(check.isRunning() || makesCards);
    m_progress->setVisible(check.isRunning() || makesCards);
    m_progress->setRange(0, makesCards ? static_cast<int>(m_remedies->cards().wanted())
                                       : std::max(check.asked(), 1));
    m_progress->setValue(makesCards ? static_cast<int>(m_remedies->cards().done()) : check.answered());
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
    if (m_remedies->cards().isRunning())
        return tr("%1 of %2 cards made").arg(m_remedies->cards().done()).arg(m_remedies->cards().wanted());
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
    const std::vector<StopCheck::Row> rows = chosenRows();
    m_remedies->showFor(rows);
    m_checkAgain->setEnabled(
        std::ranges::any_of(rows, [](const StopCheck::Row& row) { return !row.stop.webPage().empty(); }));
    m_go->setEnabled(!rows.empty());
    if (rows.empty())
        m_choice->clear();
    else if (rows.size() == 1)
        tellChoice(describe(rows.front()));
    else
        tellChoice(tr("%1 stops are chosen.").arg(rows.size()));
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
    m_remedies->cancel();
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

void frmCheck::tourChangedNow() {
    if (isVisible() && !m_changes.isActive())
        m_changes.start();
}

} // namespace wendmark
