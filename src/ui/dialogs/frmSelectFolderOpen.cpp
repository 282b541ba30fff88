#include "ui/dialogs/frmSelectFolderOpen.h"

#include "model/Workspace.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/FolderPicker.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

frmSelectFolderOpen::frmSelectFolderOpen(const WorkspaceFolders& folders, std::string tourPath,
                                         QWidget* parent)
    : QDialog(parent)
    , m_folders(folders)
    , m_tourPath(std::move(tourPath))
    , m_picker(new FolderPicker(tr("&Drive :"), this)) {
    setObjectName(QStringLiteral("frmSelectFolderOpen"));
    setWindowTitle(QStringLiteral("Select Tour-Folder"));
    m_picker->startIn(m_folders);

    QDialogButtonBox* const buttons = makeSelectionButtons(this);
    addSample(*buttons);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(makeTextLabel(
        "Label1", tr("Select the folder containing all the tour files and then click \"OK\""), this));
    layout->addWidget(m_picker, 1);
    layout->addWidget(buttons);
    setMinimumWidth(56 * dialogGap);
    m_picker->focusFolders();
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { choose(m_picker->folder()); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void frmSelectFolderOpen::addSample(QDialogButtonBox& buttons) {
    const QString sample = sampleTourIn(m_folders);
    if (sample.isEmpty())
        return;
    QPushButton* const button = makeButton("btnSample", tr("Open the &Sample Tour"), this);
    button->setAutoDefault(false);
    buttons.addButton(button, QDialogButtonBox::ResetRole); // Apart from the others.
    connect(button, &QPushButton::clicked, this, [this, sample] { choose(sample); });
}

void frmSelectFolderOpen::choose(const QString& folder) {
    // What is tested is the folder of the tour that was open until now, not the one selected here.
    const std::string reserved = reservedFolderMessage(m_folders, m_tourPath);
    if (!reserved.empty()) {
        showMessage(this, toQString(reserved), programTitle(), QMessageBox::Warning);
        return;
    }
    if (!holdsTourToOpen(folder, this))
        return;
    m_folder = folder;
    m_folderChosen = true;
    accept();
}

} // namespace wendmark
