#pragma once

#include <cstdint>
#include <string>

namespace wendmark {

/// Direction chosen on the wizard's second and third page.
enum class WizardMove : std::int16_t { none = 0, back = 1, forward = 2 };

/// How the wizard's last page was left.
enum class WizardResult : std::int16_t {
    closed = 0, ///< By its close box or Esc: the wizard ends and changes nothing.
    moved = 1,  ///< "Next" on the first page, "Previous" on the others.
    accepted = 2
};

/// What one page of the wizard leaves for the next.
struct WizardState {
    bool wizardNewTour = true; ///< A new tour is to be made, not one to be opened.
    std::string wizardOldTour; ///< Folder of the tour to be opened; empty: the author is still to choose one.
    WizardMove wizardMove = WizardMove::none;
    WizardResult wizardResult = WizardResult::closed;
    std::string wizardTourName;  ///< Folder name, without blanks at its ends.
    std::string wizardTourTitle; ///< Same for the title.
    std::string wizardTourPath;  ///< Folder that the third page was to make last: made, or refused.
};

} // namespace wendmark
