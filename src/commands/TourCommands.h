#pragma once

#include "model/ScriptFile.h"

#include <string>
#include <string_view>

namespace wendmark {

struct Options;
struct TourContext;

/// What the program's commands do to the tour once the windows have collected the author's choices.

/// Start of the program: makes the working copy's folder if it is missing and sets what a program starts
/// with.
void startProgram(TourContext& context, Options& options);

/// Fills the working copy and the model from the templates, as a program that has just started shows them.
ScriptReading loadTemplateTour(TourContext& context);

/// Opens the tour in the workspace's tourPath, after initTourDefaults(). What of it cannot be read, no save
/// replaces, see Workspace::isIncomplete().
ScriptReading openTour(TourContext& context);

/// Generates the pages of a tour that is in the model and whose other files are in the working copy, as an
/// unsaved one, and shows its current stop.
void generateRecoveredTour(TourContext& context);

/// Makes what a script says the tour, with all of its pages, on the opening page; the files of the author's
/// stay. The script must hold a title.
void generateScriptedTour(TourContext& context, std::string_view script);

/// Makes a new tour with this title of the working copy, which was just reset.
void generateNewTour(TourContext& context, const std::string& title);

/// Same, and saves it into the workspace's tourPath, an existing folder. False when something of it could not
/// be saved.
bool finishNewTour(TourContext& context, const std::string& title);

} // namespace wendmark
