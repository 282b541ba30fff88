#pragma once

#include <QString>

namespace wendmark {

/// The folder in which the program keeps for the user what is neither a document nor a setting: its log,
/// tours to recover, saved scripts. Made if it is missing; without a separator at its end.
QString stateFolder();

} // namespace wendmark
