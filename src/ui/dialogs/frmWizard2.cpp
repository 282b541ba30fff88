#include "ui/dialogs/frmWizard2.h"

#include "base/Names.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/WizardState.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendmark {

namespace {

/// The field's text without the blanks at its ends.
std::string trimmedText(const QLineEdit& field) {
    const std::string text = toUtf8(field.text());
    return std::string(trimBlanks(text));
}

} // namespace

frmWizard2::frmWizard2(WizardState& state, bool canGoBack, QWidget* parent)
    : QDialog(parent), m_state(state), m_tourName(new QLineEdit(this)), m_title(new QLineEdit(this)) {
    setObjectName(QStringLiteral("frmWizard2"));
    setWindowTitle(QStringLiteral("Wendmark Wizard"));
    m_state.wizardResult = WizardResult::closed;
    m_tourName->setObjectName(QStringLiteral("txtTourName"));
    m_title->setObjectName(QStringLiteral("txtTitle"));
    m_tourName->setText(toQString(m_state.wizardTourName));
    m_title->setText(toQString(m_state.wizardTourTitle));

    QLabel* const heading = makeTextLabel("lblInstr", tr("Please select a name for this tour:"), this);
    QLabel* const nameLabel =
        makeTextLabel("Label1",
                      tr("A tour is composed of a number of files.  All the tour files will be "
                         "saved inside a folder with the following name:"),
                      this);
    QLabel* const titleLabel = makeTextLabel("Label2", tr("Enter the Title of the Tour:"), this);
    m_tourName->setAccessibleName(tr("Name of the tour's folder"));
    m_title->setAccessibleName(tr("Title of the tour"));

    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(heading);
    layout->addWidget(nameLabel);
    layout->addWidget(m_tourName);
    layout->addSpacing(dialogGap);
    layout->addWidget(titleLabel);
    layout->addWidget(m_title);
    layout->addStretch();
    layout->addLayout(makeButtons(canGoBack));
    setMinimumWidth(56 * dialogGap);
    m_tourName->setFocus();
}

QLayout* frmWizard2::makeButtons(bool canGoBack) {
    QPushButton* const previousButton = makeButton("btnPrevious", tr("&Previous"), this);
    previousButton->setEnabled(canGoBack);
    QPushButton* const nextButton = makeButton("btnNext", tr("&Next"), this);
    nextButton->setDefault(true);
    connect(previousButton, &QPushButton::clicked, this, &frmWizard2::previous);
    connect(nextButton, &QPushButton::clicked, this, &frmWizard2::next);

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(previousButton);
    buttons->addWidget(nextButton);
    return buttons;
}

void frmWizard2::next() {
    const QString missing = QStringLiteral("Wendmark: Tour Name Missing");
    std::string name = trimmedText(*m_tourName);
    if (name.empty()) {
        showMessage(this, tr("Tour Name cannot be blank"), missing, QMessageBox::Warning);
        m_tourName->setFocus();
        return;
    }
    std::string title = trimmedText(*m_title);
    if (title.empty()) {
        showMessage(this, tr("Tour Title cannot be blank"), missing, QMessageBox::Warning);
        m_title->setFocus();
        return;
    }
    m_state.wizardMove = WizardMove::forward;
    m_state.wizardResult = WizardResult::accepted;
    m_state.wizardTourName = std::move(name);
    m_state.wizardTourTitle = std::move(title);
    accept();
}

void frmWizard2::previous() {
    m_state.wizardMove = WizardMove::back;
    m_state.wizardResult = WizardResult::moved;
    accept();
}

} // namespace wendmark
