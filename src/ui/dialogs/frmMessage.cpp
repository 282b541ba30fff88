#include "ui/dialogs/frmMessage.h"

#include "ui/dialogs/DialogParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

frmMessage::frmMessage(const QString& caption, const QString& text, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmMessage"));
    setWindowTitle(caption);
    setAccessibleDescription(text); // Read out when the window opens, as a message box's text is.
    QPushButton* const okButton = makeButton("OKButton", tr("OK"), this);
    okButton->setDefault(true);

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(okButton);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->setSpacing(2 * dialogGap);
    layout->addWidget(makeTextLabel("Label1", text, this), 1);
    layout->addLayout(buttons);
    setMinimumWidth(48 * dialogGap);
    okButton->setFocus();
    connect(okButton, &QPushButton::clicked, this, &QDialog::accept);
}

void frmMessage::addReason(const QString& reason) {
    if (reason.isEmpty())
        return;
    auto& whole = *qobject_cast<QVBoxLayout*>(layout());
    whole.insertWidget(1, makeTextLabel("lblReason", reason, this));
    setAccessibleDescription(accessibleDescription() + reason);
}

} // namespace wendmark
