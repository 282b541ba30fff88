#include "ui/narration/frmNarEdit.h"

#include "base/Files.h"
#include "commands/StopEdit.h"
#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "publish/StopPages.h"
#include "ui/Messages.h"
#include "ui/WindowPlace.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/narration/HtmlField.h"
#include "ui/narration/NarrationPreview.h"
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

constexpr int previewDelay = 300; // Milliseconds without a key before the preview follows.
constexpr int smallestWidth = 48 * dialogGap;
constexpr int smallestPreview = 80;       // Pixels.
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

std::string beginningForPreview(const std::string& text) {
    return toUtf8(beginningOf(text, HtmlField::longestEdited));
}

/// What the page of this stop shows of the tour besides the stop's texts. Those of all other stops may be
/// many megabytes.
TourModel modelForPreview(const TourModel& tour, std::int16_t stop) {
    TourModel model;
    model.stops.setCount(std::max(tour.stopCount(), stop));
    model.autoInstruction = tour.autoInstruction;
    model.stopLabel = beginningForPreview(tour.stopLabel);
    model.homeSiteURL = beginningForPreview(tour.homeSiteURL);
    if (stop <= tour.stops.held())
        model.stops.at(stop).stopURL = beginningForPreview(tour.stops.at(stop).stopURL);
    return model;
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
    , m_panes(new QSplitter(Qt::Vertical, this)) {
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
    layout->addWidget(m_target);
    layout->addLayout(makeBottomRow());
    setupPreview();
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
    m_loaded = texts();
    m_filledWith = stop;
    m_filledStop = model.currentStop;
    tellTarget();
    if (!isVisible()) {
        m_narration->setFocus();
        keepOnScreen(*this);
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    refreshPreview();
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
    return isVisible() ? numberOf(m_parts.document.model(), m_filledWith, m_filledStop, textFields)
                       : std::int16_t{0};
}

UnappliedTexts frmNarEdit::texts() const {
    return {title(), m_narration->typedText(), m_instruction->typedText()};
}

void frmNarEdit::tellTarget() {
    const std::int16_t stop = m_parts.document.model().currentStop;
    m_target->setText(stop < 1 ? tr("The opening page has no texts: Apply stores nothing.")
                               : tr("Apply stores into stop %1.").arg(stop));
    const bool tooLong = m_narration->isTooLong() || m_instruction->isTooLong();
    if (stop >= 1 && tooLong)
        m_target->setText(tr("%1 A text of more than %L2 characters is shown in part and stays as it is.")
                              .arg(m_target->text())
                              .arg(HtmlField::longestEdited));
    m_tags->setEnabled(!m_narration->isTooLong());
    m_previewTimer.start();
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
        connect(field, &QPlainTextEdit::textChanged, &m_previewTimer, qOverload<>(&QTimer::start));
    }
    connect(m_title, &QLineEdit::textChanged, &m_previewTimer, qOverload<>(&QTimer::start));
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
    m_previewButton = makeButton("btnPreview", tr("Show &Preview"), this);
    m_previewButton->setCheckable(true);
    m_previewButton->setToolTip(tr("How the texts will look in the narration frame"));
    QPushButton* const applyButton = makeButton("btnOK", tr("&Apply"), this);
    applyButton->setDefault(true);
    QPushButton* const cancelButton = makeButton("btnCancel", tr("&Cancel"), this);
    auto* const row = new QHBoxLayout;
    row->setSpacing(dialogGap);
    row->addWidget(m_previewButton);
    row->addStretch();
    row->addWidget(applyButton);
    row->addWidget(cancelButton);
    connect(m_previewButton, &QPushButton::toggled, this, &frmNarEdit::showPreview);
    connect(m_previewButton, &QPushButton::clicked, this, &frmNarEdit::rememberPreview);
    connect(applyButton, &QPushButton::clicked, this, &frmNarEdit::apply);
    connect(cancelButton, &QPushButton::clicked, this, &frmNarEdit::reject);
    return row;
}

void frmNarEdit::setupPreview() {
    m_previewTimer.setSingleShot(true);
    m_previewTimer.setInterval(previewDelay);
    connect(&m_previewTimer, &QTimer::timeout, this, &frmNarEdit::refreshPreview);
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
    if (m_parts.document.model().autoInstruction) {
        m_instruction->setEnabled(false);
        m_instruction->setTypedText(toUtf8(tr("Automatic Instruction Mode [selected in Tour Properties]")));
    }
    beginSpelling(m_parts);
    tellTarget();
    const bool previewShown = m_parts.settings.read(narrationSettings::previewShown);
    m_previewButton->setChecked(previewShown);
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

void frmNarEdit::apply() {
    m_parts.gate.run(*this, [this] {
        const std::int16_t stop = m_parts.document.model().currentStop;
        if (!mayStoreInto(stop))
            return;
        const StopTexts texts = {storableTitle(title()), storable(*m_narration, noNarration),
                                 storable(*m_instruction, noInstruction)};
        m_parts.document.setTexts(stop, texts);
        if (stop >= 1)
            showStored(texts);
        hide();
    });
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
    if (!m_parts.document.model().autoInstruction)
        m_instruction->setTypedText(texts.instruction);
}

void frmNarEdit::showPreview(bool shown) {
    m_previewButton->setText(shown ? tr("Hide &Preview") : tr("Show &Preview"));
    if (shown && m_preview == nullptr) {
        const QString folder = toQString(m_parts.document.workspace().folders().newTourPath);
        m_preview = new NarrationPreview(m_parts.browserProfile, folder, m_panes);
        m_preview->setMinimumHeight(smallestPreview);
        m_panes->addWidget(m_preview);
        m_panes->setStretchFactor(m_panes->indexOf(m_preview), 2);
        m_panes->setSizes(shares);
    }
    if (m_preview != nullptr)
        m_preview->setVisible(shown);
    limitSize();
    refreshPreview();
}

void frmNarEdit::rememberPreview(bool shown) {
    m_parts.settings.store(narrationSettings::previewShown, shown);
}

void frmNarEdit::refreshPreview() {
    if (m_preview == nullptr || m_preview->isHidden() || !isVisible())
        return;
    const files::Contents source = files::read(m_parts.document.workspace().templateFile("page.htm"));
    if (!source.outcome.ok())
        return;
    const std::int16_t stop = std::clamp<std::int16_t>(m_parts.document.model().currentStop, 1, tourCapacity);
    TourModel model = modelForPreview(m_parts.document.model(), stop);
    Stop& shown = model.stops.at(stop);
    shown.stopTitle = storableTitle(toUtf8(m_title->text()));
    shown.stopNarration = storableText(toUtf8(m_narration->shownText()), noNarration);
    shown.stopInstruction = storableText(toUtf8(m_instruction->shownText()), noInstruction);
    m_preview->showPage(QByteArray::fromStdString(composeStopPage(source.bytes, std::move(model), stop)));
}

} // namespace wendmark
