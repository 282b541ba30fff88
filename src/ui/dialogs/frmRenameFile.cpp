#include "ui/dialogs/frmRenameFile.h"

#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

frmRenameFile::frmRenameFile(const std::string& takenName, const std::string& renameReason, QWidget* parent)
    : QDialog(parent), m_name(new QLineEdit(this)) {
    setObjectName(QStringLiteral("frmRenameFile"));
    setWindowTitle(QStringLiteral("Wendmark - Rename Local File"));
    const QString shownName = toQString(takenName);
    m_name->setObjectName(QStringLiteral("txtFile"));
    m_name->setAccessibleName(tr("New name of the file"));
    m_name->setText(shownName);
    m_name->selectAll();

    QLabel* const nameLabel = makeTextLabel("lblFile", shownName, this);
    QFont bold = nameLabel->font();
    bold.setBold(true);
    nameLabel->setFont(bold);
    QLabel* const reasonLabel = makeTextLabel("Label2", toQString(renameReason), this);
    reasonLabel->setVisible(!reasonLabel->text().isEmpty());
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(makeTextLabel("Label1",
                                    tr("Wendmark tried to copy the file you selected into the tour folder, "
                                       "but there is already a file in that folder called:"),
                                    this));
    layout->addWidget(nameLabel);
    layout->addWidget(reasonLabel);
    layout->addSpacing(dialogGap);
    layout->addWidget(makeTextLabel("Label3",
                                    tr("Please type in a new name for the file, so that selected file can "
                                       "be saved under this new name."),
                                    this));
    layout->addWidget(m_name);
    layout->addStretch();
    layout->addSpacing(dialogGap);
    layout->addLayout(makeButtons());
    setMinimumWidth(56 * dialogGap);
    m_name->setFocus();
}

QLayout* frmRenameFile::makeButtons() {
    QPushButton* const okButton = makeButton("OKButton", tr("OK"), this);
    okButton->setDefault(true);
    QPushButton* const cancelButton = makeButton("CancelButton", tr("Cancel"), this);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(okButton);
    buttons->addWidget(cancelButton);
    connect(okButton, &QPushButton::clicked, this, &frmRenameFile::answer);
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    return buttons;
}

void frmRenameFile::answer() {
    m_dialogAnswer = toUtf8(m_name->text());
    accept();
}

} // namespace wendmark
