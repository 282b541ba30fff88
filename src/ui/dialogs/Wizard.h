#pragma once

#include <optional>
#include <string>

class QWidget;

namespace wendmark {

class QtDesktop;
class RecentTours;
struct WorkspaceFolders;

/// What the author has answered to the wizard.
struct WizardAnswers {
    bool newTour = true;   ///< False: a tour that exists is to be opened.
    std::string tourPath;  ///< Folder of the new tour, made by the wizard, or of the tour to be opened; the
                           ///< latter is empty while the author is still to choose one.
    std::string tourTitle; ///< Title of the new tour.
};

/// How the wizard has ended.
struct WizardEnd {
    std::optional<WizardAnswers> answers; ///< None: the author has closed it.
    std::string refusedFolder;            ///< Folder that could not be had last; empty when none was refused.
};

/// Asks what to begin with, page after page. `withFirstPage`: whether a tour that exists may be chosen, for
/// one of the author's last tours.
WizardEnd runWizard(bool withFirstPage, const WorkspaceFolders& folders, const RecentTours& lastTours,
                    QtDesktop& desktop, QWidget* parent);

} // namespace wendmark
