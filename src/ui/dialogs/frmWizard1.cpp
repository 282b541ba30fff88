#include "ui/dialogs/frmWizard1.h"

#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/WizardState.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace wendmark {

frmWizard1::frmWizard1(WizardState& state, QWidget* parent)
    : QDialog(parent), m_state(state), m_newTour(new QRadioButton(tr("&Create a new tour"), this)) {
    setObjectName(QStringLiteral("frmWizard1"));
    setWindowTitle(QStringLiteral("Wendmark Wizard"));
    m_state.wizardResult = WizardResult::closed;

    auto* const oldTour = new QRadioButton(tr("&Edit an existing tour"), this);
    oldTour->setObjectName(QStringLiteral("optOldTour"));
    m_newTour->setObjectName(QStringLiteral("optNewTour"));
    m_newTour->setChecked(true);
    auto* const nextButton = makeButton("btnNext", tr("&Next"), this);
    nextButton->setDefault(true);

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(nextButton);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(makeTextLabel("lblInstruction1", tr("Do you want to:"), this));
    layout->addWidget(oldTour);
    layout->addWidget(m_newTour);
    layout->addStretch();
    layout->addLayout(buttons);
    setMinimumWidth(40 * dialogGap);
    m_newTour->setFocus();
    connect(nextButton, &QPushButton::clicked, this, &frmWizard1::next);
}

void frmWizard1::next() {
    m_state.wizardResult = WizardResult::moved;
    m_state.wizardNewTour = m_newTour->isChecked();
    accept();
}

} // namespace wendmark
