#pragma once

#include <QDialog>

class QLayout;
class QLineEdit;

namespace wendmark {

struct WizardState;

/// Second page of the wizard: folder name and title of the new tour.
class frmWizard2 final : public QDialog {
    Q_OBJECT

public:
    /// `canGoBack`: whether there is a first page to go back to.
    frmWizard2(WizardState& state, bool canGoBack, QWidget* parent = nullptr);

private:
    QLayout* makeButtons(bool canGoBack);
    void next();
    void previous();

    WizardState& m_state;
    QLineEdit* m_tourName;
    QLineEdit* m_title;
};

} // namespace wendmark
