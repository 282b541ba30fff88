#pragma once

#include <QDialog>

class QRadioButton;

namespace wendmark {

struct HandOver;

/// First page of the wizard: a new tour, or one that exists?
class frmWizard1 final : public QDialog {
    Q_OBJECT

public:
    explicit frmWizard1(HandOver& handOver, QWidget* parent = nullptr);

private:
    void next();

    HandOver& m_handOver;
    QRadioButton* m_newTour;
};

} // namespace wendmark
