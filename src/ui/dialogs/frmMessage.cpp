#include "ui/dialogs/frmMessage.h"

#include "ui/dialogs/DialogParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

frmMessage::frmMessage(const QString& caption, const QString& text, QWidget* parent)
    : QDialog(parent), m_buttons(new QHBoxLayout) {
    setObjectName(QStringLiteral("frmMessage"));
    setWindowTitle(caption);
    setAccessibleDescription(text); // Read out when the window opens, as a message box's text is.
    QPushButton* const okButton = makeButton("OKButton", tr("OK"), this);
    okButton->setDefault(true);

    m_buttons->addStretch();
    m_buttons->addWidget(okButton);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->setSpacing(2 * dialogGap);
    layout->addWidget(makeTextLabel("Label1", text, this), 1);
    layout->addLayout(m_buttons);
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

void frmMessage::addOffer(const QString& text, const QString& toolTip) {
    QPushButton* const offer = makeButton("btnOffer", text, this);
    offer->setToolTip(toolTip);
    m_buttons->insertWidget(0, offer);
    connect(offer, &QPushButton::clicked, this, [this] {
        m_isOfferTaken = true;
        accept();
    });
}

} // namespace wendmark
