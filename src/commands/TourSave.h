#pragma once

namespace wendmark {

struct TourContext;

/// Puts the editing navigator into the working copy. Reports when it cannot.
void useEditingNavigator(TourContext& context);

/// Puts the final navigator into the working copy and, when the tour has a folder, into that too. Reports
/// when it cannot, and returns false.
bool useFinalNavigator(TourContext& context);

/// Writes "link.txt": which frameset belongs to which launching point. Reports when it cannot.
void writeLaunchList(TourContext& context);

/// Brings the working copy into the form in which it is saved: what saving does before it copies. False when
/// something of it could not be made; what, is in the log.
bool makeFinalForm(TourContext& context);

/// Saves the working copy, in its final form, into the tour's folder, which must be set, and switches it back
/// to its editing form. The launch list is written after that, so the tour's folder gets it with the next
/// save. False when something of the tour could not be saved; what, is in the log.
bool saveTour(TourContext& context);

/// Same, for a tour that gets another folder; leaves the launch list as it is.
bool saveTourAs(TourContext& context);

} // namespace wendmark
