#pragma once

#include <QDialog>
#include <QList>

class QPushButton;
class QRadioButton;

namespace wendmark {

class RecentTourList;
struct RecentTour;
struct WizardState;

/// First page of the wizard: a new tour, or one that exists? Lists the author's last tours, for one that is
/// to be opened at once.
class frmWizard1 final : public QDialog {
    Q_OBJECT

public:
    /// `sampleTour` is the folder of the sample; empty when it is not there.
    frmWizard1(WizardState& state, const QList<RecentTour>& lastTours, const QString& sampleTour,
               QWidget* parent = nullptr);

private:
    void setupLastTours();
    void setupLayout();
    void next();
    void openTour(const QString& folder);

    WizardState& m_state;
    QRadioButton* m_oldTour; ///< optOldTour
    QRadioButton* m_newTour; ///< optNewTour
    RecentTourList* m_lastTours;
    QPushButton* m_sample;
    QPushButton* m_next;
};

} // namespace wendmark
