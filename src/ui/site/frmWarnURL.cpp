#include "ui/site/frmWarnURL.h"

#include "model/Options.h"
#include "ui/dialogs/DialogParts.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

namespace {

/// An address in bold. Long ones have no blanks to wrap at, so they may break anywhere.
QLabel* makeAddressLabel(const char* name, const QString& address, QWidget* parent) {
    constexpr QChar breakPoint(0x200B); // Zero-width space.
    QString text = address;
    for (const char after : {'/', '?', '&', '='})
        text.replace(QLatin1Char(after), QLatin1Char(after) + QString(breakPoint));
    QLabel* const label = makeTextLabel(name, text, parent);
    label->setAccessibleName(address);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

} // namespace

frmWarnURL::frmWarnURL(Options& options, const QString& oldAddress, const QString& newAddress,
                       QWidget* parent)
    : QDialog(parent)
    , m_options(options)
    , m_dontAskAgain(new QCheckBox(tr("&Don't show this warning again."), this)) {
    setObjectName(QStringLiteral("frmWarnURL"));
    setWindowTitle(QStringLiteral("Wendmark - URL Change"));
    m_dontAskAgain->setObjectName(QStringLiteral("Check1"));
    QPushButton* const okButton = makeButton("OKButton", tr("OK"), this);
    okButton->setDefault(true);
    QPushButton* const cancelButton = makeButton("CancelButton", tr("Cancel"), this);

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(okButton);
    buttons->addWidget(cancelButton);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(
        makeTextLabel("Label1", tr("You are about to replace the existing URL for this stop from:"), this));
    layout->addWidget(makeAddressLabel("Label2", oldAddress.trimmed(), this));
    layout->addWidget(makeTextLabel("Label3", tr("to"), this));
    layout->addWidget(makeAddressLabel("Label4", newAddress, this));
    layout->addSpacing(dialogGap);
    layout->addWidget(m_dontAskAgain);
    layout->addStretch();
    layout->addLayout(buttons);
    setMinimumWidth(56 * dialogGap);
    okButton->setFocus();
    connect(okButton, &QPushButton::clicked, this, [this] { answer(true); });
    connect(cancelButton, &QPushButton::clicked, this, [this] { answer(false); });
}

void frmWarnURL::answer(bool agreed) {
    m_dialogAnswer = agreed ? "1" : "0";
    m_options.warnURLChange = !m_dontAskAgain->isChecked();
    done(agreed ? Accepted : Rejected);
}

} // namespace wendmark
