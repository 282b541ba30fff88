#include "ui/find/frmFind.h"

#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "ui/WindowPlace.h"
#include "ui/controls/RowTable.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/find/PlaceDelegate.h"
#include "ui/find/PlaceModel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

namespace wendmark {

namespace {

constexpr std::size_t mostListed = 1000; ///< Places; more of them are only counted.

// Pixels.
constexpr int titleWidth = 150;
constexpr QSize usualSize(90 * dialogGap, 60 * dialogGap);
constexpr QSize smallestSize(50 * dialogGap, 40 * dialogGap);

QString placesIn(std::size_t places, std::size_t stops) {
    return frmFind::tr("%1 in %2")
        .arg(places == 1 ? frmFind::tr("1 place") : frmFind::tr("%L1 places").arg(places),
             stops == 1 ? frmFind::tr("1 stop") : frmFind::tr("%L1 stops").arg(stops));
}

} // namespace

frmFind::frmFind(ProgramParts parts, OpenStop openStop, QWidget* parent)
    : QDialog(parent)
    , m_parts(std::move(parts))
    , m_openStop(std::move(openStop))
    , m_places(new PlaceModel(this))
    , m_words(new QLineEdit(this))
    , m_by(new QLineEdit(this))
    , m_case(new QCheckBox(tr("Match &case"), this))
    , m_whole(new QCheckBox(tr("&Whole words"), this))
    , m_address(new QCheckBox(tr("Also in &addresses"), this))
    , m_table(new RowTable(this))
    , m_count(makeTextLabel("lblFound", QString(), this))
    , m_notice(makeTextLabel("lblNotice", QString(), this)) {
    setObjectName(QStringLiteral("frmFind"));
    setWindowTitle(QStringLiteral("Wendmark - Find in Tour"));
    m_changes.setSingleShot(true);
    m_changes.callOnTimeout(this, &frmFind::showPlaces);
    setupFields();
    setupTable();
    setupShortcuts();
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addLayout(makeFieldRows());
    layout->addLayout(makeOptionRow());
    layout->addWidget(m_count);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_notice);
    layout->addLayout(makeButtonRow());
    setMinimumSize(smallestSize);
    resize(usualSize);
    centreOverParent(*this);
    m_parts.document.addListener(*this);
}

frmFind::~frmFind() {
    m_parts.document.removeListener(*this);
}

void frmFind::ask() {
    showPlaces();
    if (isHidden())
        keepOnScreen(*this);
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    m_words->setFocus();
    m_words->selectAll();
}

void frmFind::findNext() {
    m_parts.gate.run(
        *this,
        [this] {
            m_notice->clear();
            if (m_words->text().isEmpty()) {
                ask();
                return;
            }
            showPlaces();
            if (refuseWithoutPlaces())
                return;
            const int row = nextRow();
            goTo(row % m_places->rowCount());
            if (row >= m_places->rowCount())
                m_notice->setText(tr("From the beginning of the tour again."));
        },
        Gate::Kind::look);
}

void frmFind::setupFields() {
    m_words->setObjectName(QStringLiteral("txtFind"));
    m_by->setObjectName(QStringLiteral("txtReplace"));
    connect(m_words, &QLineEdit::textChanged, &m_changes, qOverload<>(&QTimer::start));
    setupOption(*m_case, "chkMatchCase", findSettings::matchCase);
    setupOption(*m_whole, "chkWholeWords", findSettings::wholeWords);
    setupOption(*m_address, "chkAddresses", findSettings::addresses);
}

void frmFind::setupOption(QCheckBox& box, const char* name, const Setting<bool>& setting) {
    box.setObjectName(QLatin1String(name));
    box.setChecked(m_parts.settings.read(setting));
    connect(&box, &QCheckBox::toggled, this, [this, &setting](bool checked) {
        m_parts.settings.store(setting, checked);
        m_changes.start();
    });
}

void frmFind::setupTable() {
    m_table->setObjectName(QStringLiteral("grdPlaces"));
    m_table->setAccessibleName(tr("Places"));
    m_table->setModel(m_places);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    QHeaderView& header = *m_table->horizontalHeader();
    header.setSectionResizeMode(PlaceModel::stopColumn, QHeaderView::ResizeToContents);
    header.setSectionResizeMode(PlaceModel::partColumn, QHeaderView::ResizeToContents);
    header.setSectionResizeMode(PlaceModel::textColumn, QHeaderView::Stretch);
    header.resizeSection(PlaceModel::titleColumn, titleWidth);
    m_table->setItemDelegateForColumn(PlaceModel::textColumn, new PlaceDelegate(m_table));
    m_table->giveRows();
    connect(m_table, &RowTable::rowGiven, this, &frmFind::go);
}

void frmFind::setupShortcuts() {
    // The keys of the main window.
    new QShortcut(Qt::CTRL | Qt::Key_F, this, this, &frmFind::ask);
    new QShortcut(Qt::CTRL | Qt::Key_G, this, this, &frmFind::findNext);
}

QLayout* frmFind::makeFieldRows() {
    auto* const rows = new QGridLayout;
    rows->setSpacing(dialogGap);
    const auto add = [&](int row, const char* name, const QString& caption, QLineEdit& field) {
        auto* const label = new QLabel(caption, this);
        label->setObjectName(QLatin1String(name));
        label->setBuddy(&field);
        rows->addWidget(label, row, 0);
        rows->addWidget(&field, row, 1);
    };
    add(0, "lblFind", tr("F&ind:"), *m_words);
    add(1, "lblReplace", tr("Re&place with:"), *m_by);
    return rows;
}

QLayout* frmFind::makeOptionRow() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(dialogGap);
    for (QCheckBox* const box : {m_case, m_whole, m_address})
        row->addWidget(box);
    row->addStretch();
    return row;
}

QLayout* frmFind::makeButtonRow() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(dialogGap);
    row->addStretch();
    const auto add = [&](const char* name, const QString& caption, auto action) {
        QPushButton* const button = makeButton(name, caption, this);
        connect(button, &QPushButton::clicked, this, action);
        row->addWidget(button);
        return button;
    };
    add("btnFindNext", tr("&Find Next"), &frmFind::findNext)->setDefault(true);
    add("btnReplace", tr("&Replace"), &frmFind::replace);
    add("btnReplaceAll", tr("Replace A&ll"), &frmFind::replaceAll);
    add("btnClose", tr("Clos&e"), &QDialog::reject);
    return row;
}

TourQuery frmFind::query() const {
    return {toUtf8(m_words->text()), {m_case->isChecked(), m_whole->isChecked()}, m_address->isChecked()};
}

/// Brings the list up to date now. The row that is chosen stays so as long as it is there.
void frmFind::showPlaces() {
    m_changes.stop();
    const TourQuery wanted = query();
    if (std::exchange(m_shown, wanted) != wanted) {
        m_places->clear();
        m_notice->clear();
    }
    const FoundPlaces found = findInTour(m_parts.document.model(), wanted, mostListed);
    m_places->show(m_parts.document.model(), found.listed);
    showCount(found);
}

void frmFind::showCount(const FoundPlaces& found) {
    const QString all = placesIn(found.count, static_cast<std::size_t>(found.stops));
    if (m_words->text().isEmpty())
        m_count->setText(tr("Find looks through titles, words and instructions of all stops."));
    else if (found.count == 0)
        m_count->setText(tr("Nothing was found."));
    else if (found.count > found.listed.size())
        m_count->setText(tr("%1; the first %L2 are listed").arg(all).arg(found.listed.size()));
    else
        m_count->setText(all);
}

int frmFind::currentRow() const {
    return m_table->currentIndex().row();
}

/// The row behind the chosen one, as long as its stop is on screen; else the first from that stop on. It may
/// be one behind the last.
int frmFind::nextRow() const {
    const std::int16_t stop = m_parts.document.model().currentStop;
    const int row = currentRow();
    if (row >= 0 && m_places->placeAt(row).stop == stop)
        return row + 1;
    return m_places->rowFrom(stop, StopPart::title, 0);
}

void frmFind::goTo(int row) {
    m_table->selectRow(row);
    m_table->scrollTo(m_table->currentIndex());
    m_parts.document.goToStop(m_places->placeAt(row).stop);
}

void frmFind::go() {
    m_parts.gate.run(
        *this,
        [this] {
            showPlaces();
            if (currentRow() >= 0)
                goTo(currentRow());
        },
        Gate::Kind::look);
}

bool frmFind::refuseWithoutPlaces() {
    if (m_places->rowCount() > 0)
        return false;
    m_parts.desktop.beep();
    if (!isVisible())
        ask(); // There it stands in words.
    return true;
}

/// Without a chosen place, the next one is chosen first, so that the author sees what is replaced.
void frmFind::replace() {
    m_parts.gate.run(*this, [this] {
        m_notice->clear();
        showPlaces();
        if (refuseWithoutPlaces())
            return;
        if (currentRow() >= 0)
            replaceAt(currentRow());
        else
            goTo(nextRow() % m_places->rowCount());
    });
}

void frmFind::replaceAt(int row) {
    const FoundPlace place = m_places->placeAt(row);
    const auto sizeNow = [&] {
        return textOf(m_parts.document.model().stops.at(place.stop), place.part).size();
    };
    const std::int16_t spared = m_openStop();
    const std::size_t before = sizeNow();
    const WordReplacementResult result =
        m_parts.document.replaceWords({m_shown, toUtf8(m_by->text()), {spared}, place});
    showPlaces();
    sayReplaced(result, place.stop == spared ? spared : std::int16_t{0});
    // What was put there may hold the words again; the next place stands behind it.
    const int next = m_places->rowFrom(place.stop, place.part, place.stored.end + sizeNow() - before);
    if (next < m_places->rowCount())
        goTo(next);
    else
        m_table->setCurrentIndex({});
}

void frmFind::replaceAll() {
    m_parts.gate.run(*this, [this] {
        m_notice->clear();
        showPlaces();
        if (refuseWithoutPlaces())
            return;
        const std::string by = toUtf8(m_by->text());
        const std::int16_t open = m_openStop();
        const bool spares = open > 0 && replaceInStop(m_parts.document.model(), open, m_shown, by).places > 0;
        const WordReplacementResult result =
            m_parts.document.replaceWords({m_shown, by, {open}, std::nullopt});
        showPlaces();
        m_table->setCurrentIndex({});
        sayReplaced(result, spares ? open : std::int16_t{0});
    });
}

void frmFind::sayReplaced(const WordReplacementResult& result, std::int16_t spared) {
    QStringList sentences;
    if (result.places > 0)
        sentences.append(tr("Replaced: %1.").arg(placesIn(result.places, result.stops.size())));
    if (spared > 0) {
        m_parts.desktop.beep();
        sentences.append(
            tr("Stop %1 stays as it is: its words are open in the narration editor.").arg(spared));
    }
    m_notice->setText(sentences.join(QLatin1Char(' ')));
}

void frmFind::tourChangedNow() {
    if (isVisible())
        m_changes.start(0);
}

} // namespace wendmark
