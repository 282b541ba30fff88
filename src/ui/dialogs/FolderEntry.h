#pragma once

#include <QStringList>

namespace wendmark {

class SingleProgram;

/// Whether the program may work in its folder: it has locked it, or the author goes on without the lock that
/// could not be had. When another program works there, has come to the front and taken `tours`, nothing is
/// said.
bool enterFolder(SingleProgram& program, const QStringList& tours = {});

} // namespace wendmark
