#include "ui/narration/TagButtons.h"

#include "commands/TourDocument.h"
#include "platform/Gate.h"
#include "platform/QtDesktop.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/controls/FlowLayout.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/FileChooser.h"
#include "ui/dialogs/LastFolder.h"
#include "ui/dialogs/TourFileNames.h"
#include "ui/narration/HtmlField.h"

#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <utility>

namespace wendmark {

namespace {

constexpr int addressWidth = 56 * dialogGap;

QString askForAddress(QWidget& window) {
    QInputDialog box(&window);
    box.setWindowTitle(programTitle());
    box.setLabelText(TagButtons::tr("Please enter the URL of this hyperlink"));
    box.setMinimumWidth(addressWidth);
    runDialog(box);
    return box.result() == QDialog::Accepted ? box.textValue() : QString();
}

} // namespace

TagButtons::TagButtons(ProgramParts parts, HtmlField& field, QWidget* parent)
    : QWidget(parent), m_parts(std::move(parts)), m_field(field), m_row(new FlowLayout(dialogGap)) {
    setLayout(m_row);
    m_row->setContentsMargins({});
    addTag("btnBold", tr("&Bold"), tr("Make the selected words bold"), QKeySequence::Bold, boldTag);
    addTag("btnItalic", tr("&Italic"), tr("Set the selected words in italics"), QKeySequence::Italic,
           italicTag);
    addTag("btnUnderline", tr("&Underline"), tr("Underline the selected words"), QKeySequence::Underline,
           underlineTag);
    addTag("btnBig", tr("Bg. F&ont"), tr("Make the selected words bigger"), {}, bigTag);
    addTag("btnSmall", tr("&Sm. Font"), tr("Make the selected words smaller"), {}, smallTag);
    connect(add("btnBreak", tr("&Ln. Break"), tr("Begin a new line here"), {}), &QPushButton::clicked, this,
            &TagButtons::breakLine);
    connect(add("btnImage", tr("Add Ima&ge"), tr("Insert an image here"), {}), &QPushButton::clicked, this,
            [this] { m_parts.gate.run(*this, [this] { addImage(); }); });
    connect(add("btnHLink", tr("Add &Hyperlink"), tr("Make the selected words a link"), {}),
            &QPushButton::clicked, this, [this] { m_parts.gate.run(*this, [this] { addLink(); }); });
}

QPushButton* TagButtons::add(const char* name, const QString& caption, const QString& toolTip,
                             const QKeySequence& key) {
    QPushButton* const button = makeButton(name, caption, this);
    button->setToolTip(key.isEmpty() ? toolTip
                                     : tr("%1 (%2)").arg(toolTip, key.toString(QKeySequence::NativeText)));
    m_row->addWidget(button);
    return button;
}

void TagButtons::addTag(const char* name, const QString& caption, const QString& toolTip,
                        const QKeySequence& key, const Tag& tag) {
    connect(add(name, caption, toolTip, key), &QPushButton::clicked, this, [this, tag] { wrap(tag); });
    if (!key.isEmpty())
        new QShortcut(key, this, this, [this, tag] { wrapWhereTheFocusIs(tag); });
}

void TagButtons::wrap(const Tag& tag) {
    m_field.unselectPlaceholder();
    takeOver(wrapSelection(m_field.typedText(), m_field.selection(), tag));
}

/// Fields of HTML have the keys themselves.
void TagButtons::wrapWhereTheFocusIs(const Tag& tag) {
    auto* const line = qobject_cast<QLineEdit*>(window()->focusWidget());
    if (line == nullptr) {
        wrap(tag);
        return;
    }
    const QString selected = line->selectedText();
    const int start = selected.isEmpty() ? line->cursorPosition() : line->selectionStart();
    line->insert(toQString(tag.opening) + selected + toQString(tag.closing));
    line->setCursorPosition(start +
                            static_cast<int>(tag.opening.size() + static_cast<std::size_t>(selected.size())));
}

void TagButtons::breakLine() {
    m_field.unselectPlaceholder();
    if (m_field.selection().length == 0)
        takeOver(insertLineBreak(m_field.typedText(), m_field.selection().start));
}

void TagButtons::addLink() {
    m_field.unselectPlaceholder();
    if (m_field.selection().length == 0) {
        showMessage(window(), tr("Please highlight the phrase to be hyperlinked"));
        return;
    }
    takeOver(linkSelection(m_field.typedText(), m_field.selection(), toUtf8(askForAddress(*window()))));
}

void TagButtons::addImage() {
    m_field.unselectPlaceholder();
    if (m_field.selection().length > 0) {
        m_parts.desktop.beep();
        return;
    }
    LastFolder last(m_parts.settings, narrationSettings::picturesFolder, m_parts.document.workspace(),
                    QStandardPaths::PicturesLocation);
    const QString path =
        chooseFile(window(), tr("Add Image"),
                   tr("Images (*.gif *.jpg *.jpeg *.png *.svg *.webp *.bmp);;All (*)"), {}, last.folder());
    if (path.isEmpty())
        return;
    last.remember(path);
    const std::string name = m_parts.fileNames.nameForImage(path, window());
    if (name.empty())
        return;
    copyImage(path, name);
    takeOver(insertImage(m_field.typedText(), m_field.selection().start, name));
}

void TagButtons::copyImage(const QString& path, const std::string& name) {
    m_parts.document.addFile(toUtf8(path), name, "Add Image"); // A failure is in the log.
    const BusyPointer busy(m_parts.desktop);
    window()->setEnabled(false); // A key would change the place that the image goes to.
    m_parts.document.workspace().pause(1.0F);
    window()->setEnabled(true);
}

void TagButtons::takeOver(const EditedText& edited) {
    m_field.takeOver(edited);
    m_field.setFocus();
}

} // namespace wendmark
