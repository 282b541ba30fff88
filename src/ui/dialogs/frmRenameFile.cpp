#include "ui/dialogs/frmRenameFile.h"

#include "ui/HandOver.h"
#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

frmRenameFile::frmRenameFile(HandOver& handOver, QWidget* parent)
    : QDialog(parent), m_handOver(handOver), m_name(new QLineEdit(this)) {
    setObjectName(QStringLiteral("frmRenameFile"));
    setWindowTitle(QStringLiteral("Wendmark - Rename Local File"));
    const QString takenName = toQString(m_handOver.dialogAnswer);
    m_handOver.dialogAnswer.clear();
    m_name->setObjectName(QStringLiteral("txtFile"));
    m_name->setAccessibleName(tr("New name of the file"));
    m_name->setText(takenName);
    m_name->selectAll();

    QLabel* const nameLabel = makeTextLabel("lblFile", takenName, this);
    QFont bold = nameLabel->font();
    bold.setBold(true);
    nameLabel->setFont(bold);
    QLabel* const reasonLabel = makeTextLabel("Label2", toQString(m_handOver.renameReason), this);
    reasonLabel->setVisible(!reasonLabel->text().isEmpty());
    QPushButton* const okButton = makeButton("OKButton", tr("OK"), this);
    okButton->setDefault(true);
    QPushButton* const cancelButton = makeButton("CancelButton", tr("Cancel"), this);

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(okButton);
    buttons->addWidget(cancelButton);
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
    layout->addLayout(buttons);
    setMinimumWidth(56 * dialogGap);
    m_name->setFocus();
    connect(okButton, &QPushButton::clicked, this, &frmRenameFile::answer);
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

void frmRenameFile::answer() {
    m_handOver.dialogAnswer = toUtf8(m_name->text());
    accept();
}

} // namespace wendmark
