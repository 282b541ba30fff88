#pragma once

namespace wendmark {

class SingleProgram;

/// Whether the program may work in its folder: it has locked it, or the author goes on without the lock that
/// could not be had. When another program works there and has come to the front, nothing is said.
bool enterFolder(SingleProgram& program);

} // namespace wendmark
