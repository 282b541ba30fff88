#include "ui/dialogs/frmWizard1.h"

#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/RecentTourList.h"
#include "ui/dialogs/WizardState.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace wendmark {

frmWizard1::frmWizard1(WizardState& state, const QList<RecentTour>& lastTours, const QString& sampleTour,
                       QWidget* parent)
    : QDialog(parent)
    , m_state(state)
    , m_oldTour(new QRadioButton(tr("&Edit an existing tour"), this))
    , m_newTour(new QRadioButton(tr("&Create a new tour"), this))
    , m_lastTours(new RecentTourList(lastTours, this))
    , m_sample(makeButton("btnSample", tr("Open the &Sample Tour"), this))
    , m_next(makeButton("btnNext", tr("&Next"), this)) {
    setObjectName(QStringLiteral("frmWizard1"));
    setWindowTitle(QStringLiteral("Wendmark Wizard"));
    m_state.wizardResult = WizardResult::closed;
    m_oldTour->setObjectName(QStringLiteral("optOldTour"));
    m_newTour->setObjectName(QStringLiteral("optNewTour"));
    m_newTour->setChecked(true);
    m_next->setDefault(true);
    m_sample->setAutoDefault(false);
    m_sample->setHidden(sampleTour.isEmpty());
    setupLastTours();
    setupLayout();
    m_newTour->setFocus();
    connect(m_sample, &QPushButton::clicked, this, [this, sampleTour] { openTour(sampleTour); });
    connect(m_next, &QPushButton::clicked, this, &frmWizard1::next);
}

/// A tour that is selected in the list is one that exists; whoever chooses either answer anew has none in
/// mind.
void frmWizard1::setupLastTours() {
    m_lastTours->setObjectName(QStringLiteral("lstLastTours"));
    m_lastTours->setAccessibleName(tr("Last tours"));
    connect(m_lastTours, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (!m_lastTours->selectedFolder().isEmpty())
            m_oldTour->setChecked(true);
    });
    connect(m_lastTours, &QTreeWidget::itemDoubleClicked, this, &frmWizard1::next);
    connect(m_oldTour, &QRadioButton::clicked, m_lastTours, &QTreeWidget::clearSelection);
    connect(m_newTour, &QRadioButton::toggled, m_lastTours, [this](bool checked) {
        if (checked)
            m_lastTours->clearSelection();
    });
}

void frmWizard1::setupLayout() {
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(m_sample);
    buttons->addStretch();
    buttons->addWidget(m_next);
    QLabel* const caption = makeTextLabel("lblLastTours", tr("&Last tours:"), this);
    caption->setBuddy(m_lastTours);
    const bool hasTours = m_lastTours->topLevelItemCount() > 0;
    caption->setVisible(hasTours);
    m_lastTours->setVisible(hasTours);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(makeTextLabel("lblInstruction1", tr("Do you want to:"), this));
    layout->addWidget(m_oldTour);
    layout->addWidget(m_newTour);
    layout->addWidget(caption);
    layout->addWidget(m_lastTours, 1);
    if (!hasTours)
        layout->addStretch();
    layout->addLayout(buttons);
    setMinimumWidth(40 * dialogGap);
}

void frmWizard1::next() {
    const QString folder = m_lastTours->selectedFolder();
    if (!folder.isEmpty()) {
        openTour(folder);
        return;
    }
    m_state.wizardResult = WizardResult::moved;
    m_state.wizardNewTour = m_newTour->isChecked();
    accept();
}

void frmWizard1::openTour(const QString& folder) {
    if (!holdsTourToOpen(folder, this))
        return;
    m_state.wizardResult = WizardResult::moved;
    m_state.wizardNewTour = false;
    m_state.wizardOldTour = toUtf8(folder);
    accept();
}

} // namespace wendmark
