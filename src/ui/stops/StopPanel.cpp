#include "ui/stops/StopPanel.h"

#include "base/Log.h"
#include "commands/StopCommands.h"
#include "commands/TourDocument.h"
#include "model/FoundLinks.h"
#include "model/HtmlText.h"
#include "model/StopAddress.h"
#include "model/StopTexts.h"
#include "platform/Gate.h"
#include "platform/Strings.h"
#include "ui/controls/FlowLayout.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/TypedAddress.h"
#include "ui/narration/HtmlField.h"
#include "ui/narration/Spelling.h"
#include "ui/stops/AddressField.h"
#include "ui/stops/TitleOffer.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

namespace wendmark {

namespace {

constexpr int burstPause = 2000; // Milliseconds without a key that end a burst of typing.
constexpr int whileClosed = 50;  // Milliseconds until the tour is looked at again.

constexpr StopFields allFields{.title = true, .address = true, .narration = true, .instruction = true};

/// What stands for no text is not shown.
std::string shownText(const std::string& text, std::string_view placeholder) {
    return text == placeholder ? std::string() : text;
}

std::string storable(const HtmlField& field, std::string_view placeholder) {
    return field.isTooLong() ? field.typedText() : storableText(field.typedText(), placeholder);
}

QString shownAddress(const std::string& address) {
    return isNewPage(address) ? QString() : toQString(address);
}

void copyFields(const Stop& from, Stop& to, const StopFields& fields) {
    if (fields.title)
        to.stopTitle = from.stopTitle;
    if (fields.address)
        to.stopURL = from.stopURL;
    if (fields.narration)
        to.stopNarration = from.stopNarration;
    if (fields.instruction)
        to.stopInstruction = from.stopInstruction;
}

bool isUntitled(const Stop& stop) {
    return stop.stopTitle.empty() || stop.stopTitle == newStop().stopTitle;
}

/// Fields take Ctrl+Ins for "Copy", but without a selection there is nothing to copy, and it inserts a stop.
bool isForStops(const QKeyEvent& key, const QObject& field) {
    const auto* const line = qobject_cast<const QLineEdit*>(&field);
    const auto* const text = qobject_cast<const QPlainTextEdit*>(&field);
    const bool selected =
        line != nullptr ? line->hasSelectedText() : text != nullptr && text->textCursor().hasSelection();
    return key.key() == Qt::Key_Insert && key.modifiers() == Qt::ControlModifier && !selected;
}

/// Where stop `stop`, as it was then, is now; also when one of its fields was changed meanwhile. 0: nowhere.
std::int16_t placeOf(const TourModel& model, const Stop& stop, std::int16_t number) {
    for (const StopFields& fields :
         {allFields, StopFields{.title = true, .address = true}, StopFields{.title = true, .narration = true},
          StopFields{.address = true, .narration = true}}) {
        if (const std::int16_t place = numberOf(model, stop, number, fields); place > 0)
            return place;
    }
    return 0;
}

} // namespace

StopPanel::StopPanel(const ProgramParts& parts, QWidget* parent)
    : QWidget(parent)
    , m_parts(parts)
    , m_target(makeTextLabel("lblPanelStop", QString(), this))
    , m_address(new AddressField(parts.document, this))
    , m_addressHint(makeTextLabel("lblPanelAddressHint", QString(), this))
    , m_title(new QLineEdit(this))
    , m_titleOffer(new TitleOffer(parts.browserProfile,
                                  toQString(parts.document.workspace().folders().newTourPath), this))
    , m_words(new HtmlField(parts.spelling, this))
    , m_instruction(new HtmlField(parts.spelling, this))
    , m_siteButton(makeButton("btnPanelSite", tr("&Site Editor"), this))
    , m_fileButton(makeButton("btnPanelFile", tr("&Local File..."), this)) {
    setFocusPolicy(Qt::ClickFocus); // Where no field can have the focus.
    setupFields();
    setupLayout();
    m_pause.setSingleShot(true);
    m_pause.setInterval(burstPause);
    m_pause.callOnTimeout(this, [this] { ++m_burst; });
    m_changes.setSingleShot(true);
    m_changes.callOnTimeout(this, &StopPanel::fill);
    m_parts.document.addListener(*this);
}

StopPanel::~StopPanel() {
    m_parts.document.removeListener(*this);
}

void StopPanel::setupFields() {
    m_title->setObjectName(QStringLiteral("txtPanelTitle"));
    m_address->setObjectName(QStringLiteral("txtPanelAddress"));
    m_words->setObjectName(QStringLiteral("txtPanelWords"));
    m_instruction->setObjectName(QStringLiteral("txtPanelInstruction"));
    for (HtmlField* const field : {m_words, m_instruction}) {
        field->setMinimumHeight(field->fontMetrics().lineSpacing() * 3);
        connect(field, &HtmlField::languageChosen, this,
                [this](const QString& language) { chooseSpelling(m_parts, language); });
    }
    connect(m_title, &QLineEdit::textChanged, this, [this] { type({.title = true}); });
    connect(m_address, &QLineEdit::textChanged, this, [this] { type({.address = true}); });
    connect(m_words, &QPlainTextEdit::textChanged, this, [this] { type({.narration = true}); });
    connect(m_instruction, &QPlainTextEdit::textChanged, this, [this] { type({.instruction = true}); });
    connect(m_address, &QLineEdit::editingFinished, this, &StopPanel::leaveAddress);
    connect(m_titleOffer, &TitleOffer::taken, this, &StopPanel::takeTitle);
    connect(m_siteButton, &QPushButton::clicked, this, &StopPanel::siteEditorWanted);
    connect(m_fileButton, &QPushButton::clicked, this, &StopPanel::localFileWanted);
    for (QWidget* const field : QList<QWidget*>{m_title, m_address, m_words, m_instruction})
        field->installEventFilter(this);
    auto* const leave = new QShortcut(Qt::Key_Escape, this);
    leave->setContext(Qt::WidgetWithChildrenShortcut);
    connect(leave, &QShortcut::activated, this, &StopPanel::left);
}

void StopPanel::setupLayout() {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(dialogGap / 2, dialogGap / 2, dialogGap / 2, dialogGap / 2);
    layout->setSpacing(dialogGap / 2);
    const auto add = [&](const QString& caption, QWidget* field, int stretch) {
        auto* const label = new QLabel(caption, this);
        label->setBuddy(field);
        layout->addWidget(label);
        layout->addWidget(field, stretch);
    };
    layout->addWidget(m_target);
    add(tr("&Page :"), m_address, 0);
    layout->addWidget(m_addressHint);
    add(tr("Stop &Title :"), m_title, 0);
    layout->addWidget(m_titleOffer);
    add(tr("Stop Te&xt :"), m_words, 3);
    add(tr("I&nstruction Text :"), m_instruction, 1);
    auto* const buttons = new FlowLayout(dialogGap);
    buttons->addWidget(m_siteButton);
    buttons->addWidget(m_fileButton);
    layout->addLayout(buttons);
    QWidget* before = m_address;
    for (QWidget* const next :
         QList<QWidget*>{m_title, m_titleOffer, m_words, m_instruction, m_siteButton, m_fileButton})
        setTabOrder(std::exchange(before, next), next);
    m_addressHint->hide();
}

void StopPanel::focusAddress() {
    fill();
    if (!m_address->isEnabled()) {
        setFocus();
        return;
    }
    m_address->setFocus();
    m_address->selectAll();
}

void StopPanel::takePage(const std::string& address) {
    fill();
    ++m_burst;
    m_address->setText(toQString(address));
    ++m_burst;
    leaveAddress();
}

std::optional<StopTexts> StopPanel::unstoredTexts() const {
    if (!m_typed)
        return std::nullopt;
    return StopTexts{m_typed->after.stopTitle, m_typed->after.stopNarration, m_typed->after.stopInstruction};
}

int StopPanel::heightForWidth(int width) const {
    return layout()->totalMinimumHeightForWidth(width);
}

/// The stop as the fields have it; what is no address leaves the one that it has.
Stop StopPanel::present() const {
    std::string address = addressFromTyping(m_address->text(), m_parts.document.workspace());
    if (address.empty())
        address = m_seen.stopURL;
    return {storableTitle(wholeText(*m_title, m_seen.stopTitle)), std::move(address),
            storable(*m_words, noNarration),
            m_automatic ? m_seen.stopInstruction : storable(*m_instruction, noInstruction)};
}

void StopPanel::type(const StopFields& fields) {
    if (m_filling || !holdsStop())
        return;
    m_pause.start();
    if (fields.address)
        m_addressHint->hide();
    if (fields.title)
        m_titleOffer->withdraw();
    const bool waits = m_typed != nullptr;
    if (!waits)
        m_typed = std::make_shared<Typed>(Typed{m_stop, m_seen, {}, {}});
    m_typed->after = present();
    StopFields& all = m_typed->fields;
    all = {all.title || fields.title, all.address || fields.address, all.narration || fields.narration,
           all.instruction || fields.instruction};
    if (!waits)
        m_parts.gate.run(*this, [this, typed = m_typed] { store(typed); });
}

void StopPanel::storeTyped() {
    if (const std::shared_ptr<Typed> typed = m_typed)
        store(typed);
}

void StopPanel::store(const std::shared_ptr<Typed>& typed) {
    if (m_typed == typed)
        m_typed.reset();
    if (std::exchange(typed->stored, true))
        return;
    const std::int16_t stop = placeOf(m_parts.document.model(), typed->before, typed->stop);
    if (stop < 1) {
        m_parts.document.log().warn("what was typed into stop " + std::to_string(typed->stop) +
                                    " is left out: the stop has gone");
        emit noticeShown(tr("What was typed last is not in the tour: its stop has gone."));
        return;
    }
    Stop wanted = m_parts.document.model().stops.at(stop);
    copyFields(typed->after, wanted, typed->fields);
    if (m_stop == stop && typed->stop == stop)
        copyFields(typed->after, m_seen, typed->fields); // The fields have it.
    m_parts.document.setStop(stop, wanted, m_burst);
}

/// An address is complete when the author leaves it, or presses Return.
void StopPanel::leaveAddress() {
    if (m_filling || !holdsStop())
        return;
    const std::string address = addressFromTyping(m_address->text(), m_parts.document.workspace());
    if (address.empty()) {
        m_addressHint->setText(tr("This is no address of a page. Files come into the tour by Local File."));
        m_addressHint->show();
        return;
    }
    m_parts.gate.run(*this, [this, stop = m_stop] {
        if (stop != m_stop || m_seen.stopURL == m_shownPage)
            return;
        const QScopedValueRollback filling(m_filling, true);
        m_address->setText(shownAddress(m_seen.stopURL));
        m_shownPage = m_seen.stopURL;
        ++m_burst;
        emit pageChanged();
        offerTitle();
    });
}

/// A stop that has no title of its own yet may have that of its page.
void StopPanel::offerTitle() {
    m_titleOffer->withdraw();
    if (!holdsStop() || !isUntitled(m_seen) || isElsewhere() || isNewPage(m_seen.stopURL))
        return;
    const std::string file = m_parts.document.workspace().workingFile(localFileName(m_seen.stopURL));
    m_titleOffer->ask(isWebAddress(m_seen.stopURL) ? QUrl(toQString(m_seen.stopURL))
                                                   : QUrl::fromLocalFile(toQString(file)));
}

void StopPanel::takeTitle(const QString& title) {
    ++m_burst;
    m_title->setText(toQString(htmlShowing(toUtf8(title))));
    ++m_burst;
    m_words->setFocus();
}

bool StopPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn)
        ++m_burst; // Another field, or the same one again.
    const auto* const key = dynamic_cast<const QKeyEvent*>(event);
    if (key != nullptr && event->type() == QEvent::ShortcutOverride && isForStops(*key, *watched)) {
        event->ignore();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void StopPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    beginSpelling(m_parts);
    refresh();
}

bool StopPanel::holdsStop() const {
    return m_stop >= 1 && m_stop <= m_parts.document.model().stops.held();
}

bool StopPanel::isElsewhere() const {
    return m_textsElsewhere && m_stop >= 1 && m_textsElsewhere() == m_stop;
}

/// Makes the fields what the stop on screen is, but for what was typed and waits.
void StopPanel::fill() {
    m_changes.stop();
    if (!isVisible())
        return;
    if (m_parts.gate.isClosed()) {
        m_changes.start(whileClosed); // The tour may be half done.
        return;
    }
    const TourModel& model = m_parts.document.model();
    const bool other = std::exchange(m_stop, model.currentStop) != model.currentStop;
    const bool otherMode = std::exchange(m_automatic, model.autoInstruction) != model.autoInstruction;
    const Stop stop = holdsStop() ? model.stops.at(m_stop) : Stop();
    const StopFields fields = other ? allFields : changedFields(stop, otherMode);
    m_seen = stop;
    const QScopedValueRollback filling(m_filling, true);
    if (other)
        forgetFormerStop();
    fillFields(stop, fields);
    enableFields();
    tellTarget();
    if (fields.title || fields.address)
        m_addressHint->hide();
    if (fields.title)
        m_titleOffer->withdraw();
    if (fields.address)
        m_shownPage = stop.stopURL;
    if (fields.address && !other)
        offerTitle();
}

/// Those that differ from what was seen last, but for what was typed and waits.
StopFields StopPanel::changedFields(const Stop& stop, bool otherMode) const {
    const StopFields typed = m_typed ? m_typed->fields : StopFields();
    return {stop.stopTitle != m_seen.stopTitle && !typed.title,
            stop.stopURL != m_seen.stopURL && !typed.address,
            stop.stopNarration != m_seen.stopNarration && !typed.narration,
            (otherMode || stop.stopInstruction != m_seen.stopInstruction) && !typed.instruction};
}

void StopPanel::forgetFormerStop() {
    ++m_burst;
    m_typed.reset(); // It finds its stop.
    for (HtmlField* const field : {m_words, m_instruction})
        field->beginWith({}); // Nothing leads back to the texts of another stop.
}

void StopPanel::fillFields(const Stop& stop, const StopFields& fields) {
    if (fields.title) {
        m_title->setText(beginningOf(stop.stopTitle, m_title->maxLength()));
        m_title->setCursorPosition(0);
    }
    if (fields.address) {
        m_address->setText(shownAddress(stop.stopURL));
        m_address->setCursorPosition(0);
    }
    if (fields.narration)
        m_words->setTypedText(shownText(stop.stopNarration, noNarration));
    if (fields.instruction)
        m_instruction->setTypedText(m_automatic ? std::string()
                                                : shownText(stop.stopInstruction, noInstruction));
}

void StopPanel::enableFields() {
    const bool held = holdsStop();
    const bool elsewhere = isElsewhere();
    for (QWidget* const widget : QList<QWidget*>{m_address, m_title, m_words, m_siteButton, m_fileButton})
        widget->setEnabled(held);
    m_instruction->setEnabled(held && !m_automatic);
    m_instruction->setPlaceholderText(
        m_automatic ? tr("Automatic Instruction Mode [selected in Tour Properties]") : QString());
    m_title->setReadOnly(elsewhere);
    for (HtmlField* const field : {m_words, m_instruction})
        field->setLocked(elsewhere);
}

void StopPanel::tellTarget() {
    if (m_stop < 1)
        m_target->setText(tr("The opening page has no texts of its own."));
    else if (isElsewhere())
        m_target->setText(
            tr("Stop %1. Its texts are in the narration editor, and are changed there.").arg(m_stop));
    else if (m_words->isTooLong() || m_instruction->isTooLong())
        m_target->setText(tr("Stop %1").arg(m_stop) + QStringLiteral(". ") + HtmlField::tooLongNotice());
    else
        m_target->setText(tr("Stop %1").arg(m_stop));
}

} // namespace wendmark
