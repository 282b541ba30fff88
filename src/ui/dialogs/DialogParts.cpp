#include "ui/dialogs/DialogParts.h"

#include "base/Files.h"
#include "model/ReservedFolders.h"
#include "model/Workspace.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/WindowPlace.h"
#include "ui/controls/WrappedLabel.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace wendmark {

namespace {

/// A layout's own smallest size leaves wrapped text out of account.
void keepWrappedTextVisible(QDialog& dialog) {
    const QLayout* const layout = dialog.layout();
    if (layout == nullptr || !layout->hasHeightForWidth())
        return;
    const int width = std::max(dialog.minimumWidth(), layout->totalMinimumSize().width());
    dialog.setMinimumSize(width, layout->totalMinimumHeightForWidth(width));
}

} // namespace

QVBoxLayout* makeDialogLayout(QDialog& dialog) {
    auto* const layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins(2 * dialogGap, 2 * dialogGap, 2 * dialogGap, 2 * dialogGap);
    layout->setSpacing(dialogGap);
    return layout;
}

QLabel* makeTextLabel(const char* name, const QString& text, QWidget* parent) {
    auto* const label = new WrappedLabel(text, parent);
    label->setObjectName(QLatin1String(name));
    return label;
}

QString shortened(const QString& text, qsizetype longest) {
    return text.size() <= longest ? text : text.left(longest) + QChar(0x2026);
}

std::string wholeText(const QLineEdit& field, const std::string& given) {
    const bool isCut = beginningOf(given, field.maxLength() + 1).size() > field.maxLength();
    return isCut && !field.isModified() ? given : toUtf8(field.text());
}

QPushButton* makeButton(const char* name, const QString& caption, QWidget* parent) {
    auto* const button = new QPushButton(caption, parent);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

QDialogButtonBox* makeOkCancelButtons(QWidget* parent) {
    auto* const buttons = new QDialogButtonBox(parent);
    QPushButton* const ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("OKButton"));
    ok->setText(QObject::tr("OK"));
    ok->setDefault(true);
    QPushButton* const cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    cancel->setText(QObject::tr("Cancel"));
    return buttons;
}

QDialogButtonBox* makeSelectionButtons(QWidget* parent) {
    auto* const buttons = new QDialogButtonBox(parent);
    QPushButton* const ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("btnOK"));
    ok->setText(QObject::tr("OK"));
    ok->setToolTip(QObject::tr("Selection done"));
    ok->setDefault(true);
    QPushButton* const cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName(QStringLiteral("btnCancel"));
    cancel->setText(QObject::tr("Cancel"));
    cancel->setToolTip(QObject::tr("Cancel file selection"));
    return buttons;
}

void runDialog(QDialog& dialog) {
    dialog.setMinimumWidth(std::max(dialog.minimumWidth(), widthForTitle(dialog)));
    keepWrappedTextVisible(dialog);
    dialog.adjustSize(); // To two thirds of the screen at most.
    dialog.resize(dialog.size().expandedTo(dialog.sizeHint()));
    centreOnScreen(dialog);
    keepOnScreen(dialog);
    dialog.exec();
}

void makeRoomForTexts(QDialog& dialog) {
    keepWrappedTextVisible(dialog);
    keepOnScreen(dialog);
}

bool mayOpenTourIn(const QString& path, const WorkspaceFolders& folders, QWidget* parent) {
    const std::string reserved = reservedTourMessage(folders, toUtf8(path));
    if (!reserved.empty())
        showMessage(parent, toQString(reserved), programTitle(), QMessageBox::Warning);
    return reserved.empty();
}

bool holdsTourToOpen(const QString& folder, QWidget* parent) {
    const bool holdsTour = folderHoldsTour(toUtf8(folder));
    if (!holdsTour)
        showMessage(parent, QObject::tr("The selected folder does not contain all necessary tour files"),
                    QStringLiteral("Wendmark: Defective Tour Folder"), QMessageBox::Warning);
    return holdsTour;
}

QString sampleTourIn(const WorkspaceFolders& folders) {
    const std::string sample = folders.myToursPath + "Sample";
    return folderHoldsTour(sample) ? toQString(sample) : QString();
}

bool createTourFolder(const QString& path) {
    return files::makeFolder(toUtf8(path)).ok();
}

} // namespace wendmark
