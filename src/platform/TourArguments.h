#pragma once

#include <QStringList>

namespace wendmark {

/// The tours that a command line names, as absolute paths without a separator at their ends, in their order:
/// folders, files in them (their script), or either as a "file:" address of this computer. Whether they are
/// tours, or there at all, is not looked at; addresses of other computers stay as they are. Paths may be
/// relative to the current folder.
QStringList toursFrom(const QStringList& arguments);

} // namespace wendmark
