#pragma once

#include <QDialog>

class QLineEdit;

namespace wendmark {

struct HandOver;

/// Second page of the wizard: folder name and title of the new tour.
class frmWizard2 final : public QDialog {
    Q_OBJECT

public:
    /// `canGoBack`: whether there is a first page to go back to.
    frmWizard2(HandOver& handOver, bool canGoBack, QWidget* parent = nullptr);

private:
    void next();
    void previous();

    HandOver& m_handOver;
    QLineEdit* m_tourName;
    QLineEdit* m_title;
};

} // namespace wendmark
