#include "ui/dialogs/frmWizard3.h"

#include "base/Files.h"
#include "base/Names.h"
#include "model/Workspace.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/FolderPicker.h"
#include "ui/dialogs/WizardState.h"

#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

frmWizard3::frmWizard3(WizardState& state, const WorkspaceFolders& folders, QtDesktop& desktop,
                       QWidget* parent)
    : QDialog(parent)
    , m_state(state)
    , m_folders(folders)
    , m_desktop(desktop)
    , m_picker(new FolderPicker(tr("&Drive:"), this)) {
    setObjectName(QStringLiteral("frmWizard3"));
    setWindowTitle(QStringLiteral("Wendmark Wizard"));
    m_state.wizardResult = WizardResult::closed;
    m_picker->startIn(m_folders);

    QLabel* const heading = makeTextLabel(
        "lblInst",
        tr("Select a folder where you want to store the Tour folder and its associated files:") +
            QStringLiteral("    [%1]").arg(toQString(m_state.wizardTourName)),
        this);
    QPushButton* const createButton = makeButton("btnCreate", tr("&Create New Folder"), this);
    QPushButton* const previousButton = makeButton("btnPrevious", tr("&Previous"), this);
    QPushButton* const finishButton = makeButton("btnNext", tr("&Finish"), this);
    finishButton->setDefault(true);

    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(createButton);
    buttons->addStretch();
    buttons->addWidget(previousButton);
    buttons->addWidget(finishButton);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(heading);
    layout->addWidget(m_picker, 1);
    layout->addLayout(buttons);
    setMinimumWidth(56 * dialogGap);
    m_picker->focusFolders();
    connect(createButton, &QPushButton::clicked, this, &frmWizard3::createNewFolder);
    connect(previousButton, &QPushButton::clicked, this, &frmWizard3::previous);
    connect(finishButton, &QPushButton::clicked, this, &frmWizard3::finish);
}

void frmWizard3::createNewFolder() {
    QInputDialog box(this);
    box.setWindowTitle(QStringLiteral("Wendmark - New Folder"));
    box.setLabelText(tr("Please type in the folder name"));
    runDialog(box);
    if (box.result() != QDialog::Accepted)
        return;
    const std::string typed = toUtf8(box.textValue());
    const std::string_view name = trimBlanks(typed);
    if (name.empty())
        return;
    if (!files::makeFolder(files::join(toUtf8(m_picker->folder()), name)).ok())
        m_desktop.beep();
    m_picker->refresh();
}

void frmWizard3::finish() {
    m_state.wizardTourPath = toUtf8(m_picker->folder()) + pathSeparator + m_state.wizardTourName;
    const std::string reserved = reservedNewFolderMessage(m_folders, m_state.wizardTourPath);
    if (!reserved.empty()) {
        showMessage(this, toQString(reserved), programTitle(), QMessageBox::Warning);
        return;
    }
    if (!createTourFolder(toQString(m_state.wizardTourPath))) {
        showMessage(this, tr("Tour Folder already exists - please select a different path or name"),
                    QStringLiteral("Wendmark: Tour Name in use"), QMessageBox::Warning);
        return;
    }
    m_state.wizardMove = WizardMove::forward;
    m_state.wizardResult = WizardResult::accepted;
    accept();
}

void frmWizard3::previous() {
    m_state.wizardMove = WizardMove::back;
    m_state.wizardResult = WizardResult::moved;
    accept();
}

} // namespace wendmark
