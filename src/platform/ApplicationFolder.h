#pragma once

#include "base/Outcome.h"

#include <QString>

namespace wendmark {

/// Where the program keeps its Template, Help, MyTours and NewTour.
struct ApplicationFolder {
    Outcome outcome; ///< Failure: what could not be copied for the user. The path is set all the same.
    QString path;    ///< Without a separator at its end.
};

/// The folder that holds the program, if it can be written. Else, for a program that the system installed,
/// the folder "Wendmark" in the user's data folder, see fillUserFolder().
ApplicationFolder findApplicationFolder(const QString& programFolder, const QString& userDataFolder);

/// The second of these, filled. Everything in it can be written, however the installed files are protected.
/// Templates and tours are copied once; the help again whenever the installed one is another.
ApplicationFolder fillUserFolder(const QString& programFolder, const QString& userDataFolder);

} // namespace wendmark
