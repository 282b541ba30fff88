#include "ui/dialogs/Wizard.h"

#include "platform/RecentTours.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/WizardState.h"
#include "ui/dialogs/frmWizard1.h"
#include "ui/dialogs/frmWizard2.h"
#include "ui/dialogs/frmWizard3.h"

namespace wendmark {

namespace {

template <typename Page, typename... Arguments>
void show(WizardState& state, Arguments&&... arguments) {
    state.wizardMove = WizardMove::none;
    Page page(state, std::forward<Arguments>(arguments)...);
    runDialog(page);
}

} // namespace

WizardEnd runWizard(bool withFirstPage, const WorkspaceFolders& folders, const RecentTours& lastTours,
                    QtDesktop& desktop, QWidget* parent) {
    WizardState state;
    int page = withFirstPage ? 1 : 2;
    while (page <= 3) {
        if (page == 1)
            show<frmWizard1>(state, lastTours.list(), sampleTourIn(folders), parent);
        else if (page == 2)
            show<frmWizard2>(state, withFirstPage, parent);
        else
            show<frmWizard3>(state, folders, desktop, parent);
        if (state.wizardResult == WizardResult::closed)
            return {std::nullopt, state.wizardTourPath};
        if (page == 1 && !state.wizardNewTour)
            return {WizardAnswers{false, state.wizardOldTour, {}}, state.wizardTourPath};
        page += state.wizardMove == WizardMove::back ? -1 : 1;
    }
    return {WizardAnswers{true, state.wizardTourPath, state.wizardTourTitle}, {}};
}

} // namespace wendmark
