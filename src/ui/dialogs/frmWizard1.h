#pragma once

#include <QDialog>

class QRadioButton;

namespace wendmark {

struct WizardState;

/// First page of the wizard: a new tour, or one that exists?
class frmWizard1 final : public QDialog {
    Q_OBJECT

public:
    explicit frmWizard1(WizardState& state, QWidget* parent = nullptr);

private:
    void next();

    WizardState& m_state;
    QRadioButton* m_newTour;
};

} // namespace wendmark
