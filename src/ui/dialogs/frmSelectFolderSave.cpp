#include "ui/dialogs/frmSelectFolderSave.h"

#include "base/Names.h"
#include "model/Workspace.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/FolderPicker.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace wendmark {

frmSelectFolderSave::frmSelectFolderSave(const WorkspaceFolders& folders, QWidget* parent)
    : QDialog(parent)
    , m_folders(folders)
    , m_picker(new FolderPicker(tr("&Drive :"), this))
    , m_tourName(new QLineEdit(this)) {
    setObjectName(QStringLiteral("frmSelectFolderSave"));
    setWindowTitle(QStringLiteral("Select Tour-Folder"));
    m_picker->startIn(m_folders);
    m_tourName->setObjectName(QStringLiteral("txtTourName"));

    auto* const nameLabel = new QLabel(tr("Tour &Name :"), this);
    nameLabel->setObjectName(QStringLiteral("lblTourName"));
    nameLabel->setBuddy(m_tourName);
    auto* const nameRow = new QFormLayout;
    nameRow->addRow(nameLabel, m_tourName);
    QDialogButtonBox* const buttons = makeSelectionButtons(this);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(
        makeTextLabel("Label1",
                      tr("Select the folder where you want to create the new Tour folder, type in a "
                         "unique name for this folder in the \"Tour Name\" text-box, and then click "
                         "\"OK\""),
                      this));
    layout->addWidget(m_picker, 1);
    layout->addLayout(nameRow);
    layout->addWidget(buttons);
    setMinimumWidth(56 * dialogGap);
    m_tourName->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &frmSelectFolderSave::choose);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void frmSelectFolderSave::choose() {
    const std::string name = toUtf8(m_tourName->text());
    if (trimBlanks(name).empty()) {
        showMessage(this, tr("Tour Name cannot be blank"), QStringLiteral("Wendmark: Tour Name Missing"),
                    QMessageBox::Warning);
        m_tourName->setFocus();
        return;
    }
    const std::string folder = toUtf8(m_picker->folder()) + pathSeparator + name;
    m_folder = toQString(folder);
    const std::string reserved = reservedNewFolderMessage(m_folders, folder);
    if (!reserved.empty()) {
        showMessage(this, toQString(reserved), programTitle(), QMessageBox::Warning);
        return;
    }
    if (!createTourFolder(m_folder)) {
        showMessage(this, tr("Tour Folder already exists - Select a different path or name"),
                    QStringLiteral("Wendmark: Tour Name in use"), QMessageBox::Warning);
        return;
    }
    m_folderChosen = true;
    accept();
}

} // namespace wendmark
