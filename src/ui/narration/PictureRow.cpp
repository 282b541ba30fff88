#include "ui/narration/PictureRow.h"

#include "commands/TourDocument.h"
#include "platform/Strings.h"
#include "ui/controls/FlowLayout.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/narration/HtmlField.h"

#include <QAccessible>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTextDocument>
#include <QUrl>

namespace wendmark {

namespace {

constexpr int longestDescription = 1000; // Characters; readers of screens do not stop in the middle of one.

/// Of a picture in the working copy; null when it is not there, is somewhere else, or cannot be read.
QSize sizeOfPicture(const TourDocument& document, const std::string& address) {
    const QUrl url(toQString(address), QUrl::StrictMode);
    const QString name = url.path(QUrl::FullyDecoded);
    if (!url.isRelative() || !url.authority().isEmpty() || name.isEmpty() || name.contains(QLatin1Char('/')))
        return {};
    QImageReader reader(toQString(document.workspace().folders().newTourPath) + name);
    return reader.size();
}

} // namespace

PictureRow::PictureRow(const TourDocument& document, HtmlField& field, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_field(field)
    , m_text(new QLineEdit(this))
    , m_decoration(new QCheckBox(tr("&Mere decoration"), this))
    , m_width(new QSpinBox(this))
    , m_fit(makeButton("btnFitPicture", tr("&Fit"), this)) {
    setupParts();
    connect(&m_field, &QPlainTextEdit::cursorPositionChanged, this, &PictureRow::follow);
    connect(&m_field, &QPlainTextEdit::textChanged, this, &PictureRow::follow);
    hide();
}

void PictureRow::setupParts() {
    m_text->setObjectName(QStringLiteral("txtPictureDescription"));
    m_text->setMaxLength(longestDescription);
    m_text->setPlaceholderText(tr("What visitors who do not see the picture are told"));
    m_text->installEventFilter(this);
    m_decoration->setObjectName(QStringLiteral("chkDecoration"));
    m_decoration->setToolTip(tr("Visitors who do not see the picture are told nothing of it"));
    m_width->setObjectName(QStringLiteral("spnPictureWidth"));
    m_width->setRange(0, largestPictureWidth);
    m_width->setSuffix(tr(" pixels"));
    m_width->setSpecialValueText(tr("its own"));
    m_width->installEventFilter(this);
    auto* const text = new QLabel(tr("&Description of the picture :"), this);
    text->setObjectName(QStringLiteral("lblPictureDescription"));
    text->setBuddy(m_text);
    auto* const width = new QLabel(tr("&Width :"), this);
    width->setObjectName(QStringLiteral("lblPictureWidth"));
    width->setBuddy(m_width);
    auto* const row = new FlowLayout(dialogGap);
    setLayout(row);
    row->setContentsMargins({});
    row->addWidget(makeGroup({text, m_text}));
    row->addWidget(m_decoration);
    row->addWidget(makeGroup({width, m_width, m_fit}));
    connect(m_text, &QLineEdit::textEdited, this, &PictureRow::describe);
    connect(m_decoration, &QCheckBox::clicked, this, &PictureRow::describe);
    connect(m_width, &QSpinBox::valueChanged, this, &PictureRow::resizePicture);
    connect(m_fit, &QPushButton::clicked, this, [this] { m_width->setValue(m_fitting); });
}

/// Parts that stay beside one another where the row is narrow; the first field among them takes the width.
QWidget* PictureRow::makeGroup(const QList<QWidget*>& parts) {
    auto* const group = new QWidget(this);
    auto* const row = new QHBoxLayout(group);
    row->setContentsMargins({});
    row->setSpacing(dialogGap);
    for (QWidget* const part : parts)
        row->addWidget(part, part == m_text ? 1 : 0);
    return group;
}

bool PictureRow::eventFilter(QObject* watched, QEvent* event) {
    const auto* const key = dynamic_cast<const QKeyEvent*>(event);
    const bool isReturn = key != nullptr && event->type() == QEvent::KeyPress &&
                          (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter);
    if (!isReturn || key->modifiers().testFlag(Qt::ControlModifier))
        return QWidget::eventFilter(watched, event);
    m_width->interpretText();
    m_field.setFocus(); // The window's default button would store the words.
    return true;
}

void PictureRow::follow() {
    const std::optional<PictureTag> picture =
        m_field.isTooLong() ? std::nullopt : pictureAt(m_field.typedText(), m_field.textCursor().position());
    if (picture)
        show(*picture);
    m_picture = picture;
    if (isHidden() != picture.has_value())
        return;
    setVisible(picture.has_value());
    emit shownChanged();
    if (picture && !picture->description)
        ask();
}

/// The focus stays in the words: readers of screens say what has come.
void PictureRow::ask() {
    QAccessibleEvent asked(m_text, QAccessible::Alert);
    QAccessible::updateAccessibility(&asked);
}

void PictureRow::show(const PictureTag& picture) {
    if (m_picture == picture)
        return;
    const QString description = toQString(picture.description.value_or(std::string()));
    const bool isDecoration = picture.description.has_value() && description.isEmpty();
    if (m_text->text() != description)
        m_text->setText(description);
    if (!m_text->hasFocus()) { // Else the author is just taking its last letter away.
        m_decoration->setChecked(isDecoration);
        m_text->setEnabled(!isDecoration);
    }
    tellWidth(picture);
}

void PictureRow::tellWidth(const PictureTag& picture) {
    const QSignalBlocker unchanged(m_width);
    if (m_width->value() != picture.width)
        m_width->setValue(picture.width);
    const QSize size = sizeOfPicture(m_document, picture.address);
    m_fitting = size.isEmpty() ? 0 : fittingWidth(size.width(), size.height());
    const int present = picture.width > 0 ? picture.width : size.width();
    m_fit->setEnabled(m_fitting > 0 && present > m_fitting);
    m_width->setToolTip(size.isEmpty() ? tr("How wide the picture is shown")
                                       : tr("How wide the picture is shown; its own size is %1 x %2 pixels")
                                             .arg(size.width())
                                             .arg(size.height()));
    m_fit->setToolTip(
        m_fitting > 0 ? tr("Show the picture %1 pixels wide, which leaves room for the words").arg(m_fitting)
                      : tr("The size of the picture is not known"));
}

void PictureRow::describe() {
    if (!m_picture)
        return;
    const bool isDecoration = m_decoration->isChecked();
    m_text->setEnabled(!isDecoration);
    std::optional<std::string> description;
    if (isDecoration)
        description = std::string();
    else if (!m_text->text().trimmed().isEmpty())
        description = toUtf8(m_text->text());
    replaceTag(describedTag(m_picture->tag, description), *m_text);
}

void PictureRow::resizePicture() {
    if (m_picture)
        replaceTag(sizedTag(m_picture->tag, m_width->value()), *m_width);
}

/// The caret stays in the tag, and so the row. Letter after letter is one step that can be undone.
void PictureRow::replaceTag(const std::string& tag, const QWidget& source) {
    if (tag == m_picture->tag)
        return;
    const QTextDocument& text = *m_field.document();
    const bool goesOn = m_source == &source && m_revision == text.revision();
    m_field.replace(m_picture->place, toQString(tag), goesOn);
    m_source = &source;
    m_revision = text.revision();
}

} // namespace wendmark
