#include "ui/narration/frmNarEdit.h"

#include "commands/StopEdit.h"
#include "commands/TourDocument.h"
#include "model/ScriptFile.h"
#include "platform/Gate.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "ui/Messages.h"
#include "ui/WindowPlace.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/narration/EditorPreview.h"
#include "ui/narration/HtmlField.h"
#include "ui/narration/PictureRow.h"
#include "ui/narration/Spelling.h"
#include "ui/narration/TagButtons.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

namespace wendmark {

namespace {

constexpr int smallestWidth = 48 * dialogGap;
const QList<int> shares = {250, 70, 180}; ///< Of the height: narration, instruction, preview.

/// A label for a field, its access key leading there.
QLabel* makeFieldLabel(const char* name, const QString& caption, QWidget& field, QWidget* parent) {
    auto* const label = new QLabel(caption, parent);
    label->setObjectName(QLatin1String(name));
    label->setBuddy(&field);
    return label;
}

/// What a stop gets of a field; a text that is too long to be edited stays as it is.
std::string storable(const HtmlField& field, std::string_view placeholder) {
    return field.isTooLong() ? field.typedText() : storableText(field.typedText(), placeholder);
}

} // namespace

frmNarEdit::frmNarEdit(const ProgramParts& parts, QWidget* parent)
    : QDialog(parent, editorFlags)
    , m_parts(parts)
    , m_title(new QLineEdit(this))
    , m_narration(new HtmlField(parts.spelling, this))
    , m_instruction(new HtmlField(parts.spelling, this))
    , m_tags(new TagButtons(parts, *m_narration, this))
    , m_target(makeTextLabel("lblTarget", QString(), this))
    , m_panes(new QSplitter(Qt::Vertical, this))
    , m_picture(new PictureRow(parts.document, *m_narration, this))
    , m_modeBar(new QWidget(this))
    , m_modeLabel(makeTextLabel("lblInstructionMode", QString(), m_modeBar))
    , m_preview(new EditorPreview(parts, *m_panes, [this] { return shownTexts(); })) {
    setObjectName(QStringLiteral("frmNarEdit"));
    setWindowTitle(QStringLiteral("Wendmark - Narration Editor"));
    setAttribute(Qt::WA_DeleteOnClose);
    setupFields();

    m_panes->setChildrenCollapsible(false);
    m_panes->setHandleWidth(dialogGap);
    m_panes->addWidget(m_narration);
    m_panes->addWidget(makeInstructionPart());
    m_panes->setStretchFactor(0, 3);
    m_panes->setStretchFactor(1, 0);
    m_panes->setSizes(shares);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addLayout(makeTitleRow());
    layout->addWidget(makeFieldLabel("lblStopText", tr("Stop Te&xt :"), *m_narration, this));
    layout->addWidget(m_tags);
    layout->addWidget(m_panes, 1);
    layout->addWidget(m_picture);
    layout->addWidget(m_modeBar);
    layout->addWidget(m_target);
    layout->addLayout(makeBottomRow());
    setupModeBar();
    setupShortcuts();
    load();
}

frmNarEdit::~frmNarEdit() = default;

void frmNarEdit::editCurrentStop() {
    const TourModel& model = m_parts.document.model();
    if (model.currentStop < 1 || model.currentStop > model.stops.held())
        return;
    const Stop& stop = model.stops.at(model.currentStop);
    setTitle(stop.stopTitle);
    m_narration->setTypedText(stop.stopNarration);
    if (!model.autoInstruction)
        m_instruction->setTypedText(stop.stopInstruction);
    remember(model.currentStop);
    tellTarget();
    if (!isVisible()) {
        m_narration->setFocus();
        keepOnScreen(*this);
    }
    m_narration->selectIfOnly(noNarration);
    m_instruction->selectIfOnly(noInstruction);
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    m_preview->refresh();
    emit openChanged(); // Of another stop, maybe.
}

std::optional<UnappliedTexts> frmNarEdit::unappliedTexts() const {
    UnappliedTexts present = texts();
    return isVisible() && present != m_loaded ? std::optional(std::move(present)) : std::nullopt;
}

void frmNarEdit::takeUnappliedTexts(const UnappliedTexts& texts) {
    setTitle(texts.title);
    m_narration->setTypedText(texts.narration);
    if (m_instruction->isEnabled())
        m_instruction->setTypedText(texts.instruction);
    tellTarget();
}

std::int16_t frmNarEdit::filledStop() const {
    if (!isVisible())
        return 0;
    StopFields fields = textFields;
    fields.instruction = m_instruction->isEnabled() && !isOtherMode(); // Else the program writes it, or did.
    return numberOf(m_parts.document.model(), m_filledWith, m_filledStop, fields);
}

/// What the fields hold now is what this stop has.
void frmNarEdit::remember(std::int16_t stop) {
    m_filledWith = m_parts.document.model().stops.at(stop);
    m_filledStop = stop;
    m_loaded = texts();
}

/// A field that is the program's holds a notice.
UnappliedTexts frmNarEdit::texts() const {
    return {title(), m_narration->typedText(),
            m_instruction->isEnabled() ? m_instruction->typedText() : m_filledWith.stopInstruction};
}

void frmNarEdit::tellTarget() {
    const std::int16_t stop = m_parts.document.model().currentStop;
    m_target->setText(stop < 1 ? tr("The opening page has no texts: Apply stores nothing.")
                               : tr("Apply stores into stop %1.").arg(stop));
    const bool tooLong = m_narration->isTooLong() || m_instruction->isTooLong();
    if (stop >= 1 && tooLong)
        m_target->setText(m_target->text() + QLatin1Char(' ') + HtmlField::tooLongNotice());
    m_modeLabel->setText(m_instruction->isEnabled()
                             ? tr("Tour Properties has switched automatic instructions on.")
                             : tr("Tour Properties has switched automatic instructions off."));
    if (m_modeBar->isHidden() == isOtherMode()) {
        m_modeBar->setVisible(isOtherMode());
        limitSize();
    }
    m_tags->setEnabled(!m_narration->isTooLong());
    m_preview->follow();
}

void frmNarEdit::reject() {
    m_parts.gate.run(*this, [this] { hide(); });
}

void frmNarEdit::closeEvent(QCloseEvent* event) {
    // A dialog would hide as Cancel does. While a command is under way, this one may still need the window.
    if (!m_closing)
        m_parts.gate.run(*this, [this] {
            m_closing = true;
            close(); // Does nothing when this is run at once.
        });
    event->setAccepted(m_closing);
}

void frmNarEdit::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous())
        emit openChanged();
}

void frmNarEdit::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    if (!event->spontaneous())
        storeSize();
    if (!event->spontaneous())
        emit openChanged();
}

void frmNarEdit::storeSize() {
    if (isMinimized() || isMaximized())
        return;
    m_parts.settings.store(narrationSettings::width, twipsFromPixels(width()));
    m_parts.settings.store(narrationSettings::height, twipsFromPixels(height()));
}

void frmNarEdit::setTitle(const std::string& title) {
    m_givenTitle = title;
    const QString shown = beginningOf(title, m_title->maxLength());
    if (shown == m_title->text())
        return;
    if (m_title->text().isEmpty() && !m_title->isUndoAvailable()) {
        m_title->setText(shown); // The first of all: there is nothing to go back to.
        m_title->setCursorPosition(0);
        return;
    }
    // Unlike setText() this can be undone.
    m_title->selectAll();
    m_title->insert(shown);
    m_title->setCursorPosition(0);
    m_title->setModified(false);
}

std::string frmNarEdit::title() const {
    return wholeText(*m_title, m_givenTitle);
}

void frmNarEdit::setupFields() {
    m_title->setObjectName(QStringLiteral("txtStopTitle"));
    m_narration->setObjectName(QStringLiteral("txtText"));
    m_instruction->setObjectName(QStringLiteral("txtMoreText"));
    // Assistive tools do not look for a label beyond the splitter.
    m_narration->setAccessibleName(tr("Stop Text"));
    for (HtmlField* const field : {m_narration, m_instruction}) {
        field->setMinimumHeight(field->fontMetrics().lineSpacing() * 3);
        connect(field, &HtmlField::languageChosen, this,
                [this](const QString& language) { chooseSpelling(m_parts, language); });
        connect(field, &QPlainTextEdit::textChanged, this, &frmNarEdit::tellTarget);
    }
    connect(m_picture, &PictureRow::shownChanged, this, &frmNarEdit::limitSize);
    connect(m_title, &QLineEdit::textChanged, m_preview, &EditorPreview::follow);
    connect(m_preview, &EditorPreview::made, this, [this] { m_panes->setSizes(shares); });
    connect(m_preview, &EditorPreview::folded, this, &frmNarEdit::limitSize);
}

void frmNarEdit::setupModeBar() {
    QPushButton* const reload = makeButton("btnReload", tr("&Reload the Instruction"), m_modeBar);
    auto* const row = new QHBoxLayout(m_modeBar);
    row->setContentsMargins({});
    row->setSpacing(dialogGap);
    row->addWidget(m_modeLabel, 1);
    row->addWidget(reload);
    connect(reload, &QPushButton::clicked, this,
            [this] { m_parts.gate.run(*this, [this] { reloadInstruction(); }); });
    m_modeBar->hide();
}

QLayout* frmNarEdit::makeTitleRow() {
    auto* const row = new QHBoxLayout;
    row->addWidget(makeFieldLabel("lblStopTitle", tr("Stop &Title :"), *m_title, this));
    row->addWidget(m_title, 1);
    return row;
}

QWidget* frmNarEdit::makeInstructionPart() {
    auto* const part = new QWidget(m_panes);
    auto* const layout = new QVBoxLayout(part);
    layout->setContentsMargins({});
    layout->setSpacing(dialogGap);
    layout->addWidget(makeFieldLabel("Label1", tr("I&nstruction Text :"), *m_instruction, part));
    layout->addWidget(m_instruction, 1);
    return part;
}

QLayout* frmNarEdit::makeBottomRow() {
    QPushButton* const applyButton = makeButton("btnOK", tr("&Apply"), this);
    applyButton->setDefault(true);
    QPushButton* const cancelButton = makeButton("btnCancel", tr("&Cancel"), this);
    auto* const row = new QHBoxLayout;
    row->setSpacing(dialogGap);
    row->addWidget(&m_preview->button());
    row->addStretch();
    row->addWidget(applyButton);
    row->addWidget(cancelButton);
    connect(applyButton, &QPushButton::clicked, this, &frmNarEdit::apply);
    connect(cancelButton, &QPushButton::clicked, this, &frmNarEdit::reject);
    return row;
}

void frmNarEdit::setupShortcuts() {
    // A page that has the focus would keep the key to itself.
    new QShortcut(QKeySequence(QKeySequence::Cancel), this, this, &frmNarEdit::reject);
    new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this, this, &frmNarEdit::apply);
}

void frmNarEdit::load() {
    limitSize();
    resize(pixelsFromTwips(m_parts.settings.read(narrationSettings::width)),
           pixelsFromTwips(m_parts.settings.read(narrationSettings::height)));
    centreOnScreen(*this);
    fillInstruction({});
    beginSpelling(m_parts);
    tellTarget();
    m_preview->restore();
}

void frmNarEdit::limitSize() {
    // The rows of buttons make the window higher the narrower it is, which its layout does not take into
    // account.
    m_panes->refresh();
    layout()->invalidate();
    setMinimumSize(smallestWidth, std::max(layout()->totalMinimumHeightForWidth(smallestWidth), 0));
    if (isVisible())
        keepOnScreen(*this);
}

/// Enabled where the author writes it: from here until the window is destroyed, or the author reloads it.
void frmNarEdit::fillInstruction(const Stop& stop) {
    const bool automatic = m_parts.document.model().autoInstruction;
    m_instruction->setEnabled(!automatic);
    m_instruction->setTypedText(automatic
                                    ? toUtf8(tr("Automatic Instruction Mode [selected in Tour Properties]"))
                                    : stop.stopInstruction);
}

bool frmNarEdit::isOtherMode() const {
    return m_instruction->isEnabled() == m_parts.document.model().autoInstruction;
}

void frmNarEdit::reloadInstruction() {
    if (const std::int16_t stop = filledStop(); stop >= 1)
        m_filledWith.stopInstruction = m_parts.document.model().stops.at(stop).stopInstruction;
    fillInstruction(m_filledWith);
    m_loaded.instruction = texts().instruction;
    tellTarget();
    (m_instruction->isEnabled() ? m_instruction : m_narration)->setFocus();
}

void frmNarEdit::apply() {
    m_parts.gate.run(*this, [this] {
        if (storeTexts())
            hide();
    });
}

void frmNarEdit::store() {
    m_parts.gate.run(*this, [this] {
        const std::int16_t stop = m_parts.document.model().currentStop;
        if (isVisible() && unappliedTexts() && storeTexts() && stop >= 1)
            remember(stop);
    });
}

/// False: the author wants to keep the texts of the stop that is current.
bool frmNarEdit::storeTexts() {
    const std::int16_t stop = m_parts.document.model().currentStop;
    if (!mayStoreInto(stop))
        return false;
    const StopTexts texts = {storableTitle(title()), storable(*m_narration, noNarration),
                             instructionFor(stop)};
    m_parts.document.setTexts(stop, texts);
    if (stop >= 1)
        showStored(texts);
    return true;
}

/// The notice that stands in the field in automatic mode is none.
std::string frmNarEdit::instructionFor(std::int16_t stop) const {
    if (!m_instruction->isEnabled() && stop >= 1)
        return m_parts.document.model().stops.at(stop).stopInstruction;
    return storable(*m_instruction, noInstruction);
}

/// Words that were written for one stop do not silently become those of another.
bool frmNarEdit::mayStoreInto(std::int16_t stop) {
    const std::int16_t filled = filledStop();
    if (stop < 1 || filled == stop)
        return true;
    const QString question =
        filled < 1 ? tr("The stop that these words were written for is no longer in the tour. Do you want to "
                        "store them into stop %1, in place of its own?")
                         .arg(stop)
                   : tr("These words were written for stop %1. Do you want to store them into stop %2, in "
                        "place of its own?")
                         .arg(filled)
                         .arg(stop);
    return askYesNo(this, question);
}

/// What the fields hold is stored: they show it as the stop has it.
void frmNarEdit::showStored(const StopTexts& texts) {
    m_narration->setTypedText(texts.narration);
    setTitle(texts.title);
    if (!isOtherMode() && m_instruction->isEnabled())
        m_instruction->setTypedText(texts.instruction);
    m_narration->selectIfOnly(noNarration);
    m_instruction->selectIfOnly(noInstruction);
}

/// As they would be stored. Of a text that is too long, what is on screen.
Stop frmNarEdit::shownTexts() const {
    Stop stop;
    stop.stopTitle = storableTitle(toUtf8(m_title->text()));
    stop.stopNarration = storableText(toUtf8(m_narration->shownText()), noNarration);
    stop.stopInstruction = storableText(toUtf8(m_instruction->shownText()), noInstruction);
    for (std::string* const text : {&stop.stopNarration, &stop.stopInstruction})
        markParagraphs(*text); // As the next save does.
    return stop;
}

} // namespace wendmark
