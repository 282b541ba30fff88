#pragma once

#include <QString>

namespace wendmark::test {

/// What this process, and the engine's processes that it has started, hold at one moment.
struct Resources {
    /// Bytes, in memory and swapped out, each shared page counted in part. Without files that are mapped,
    /// such as the libraries: their part depends on who else on the machine uses them.
    qint64 memory = 0;
    qint64 ownMemory = 0;   ///< That of this process alone.
    qint64 allocated = 0;   ///< Bytes of it that the program's own code and Qt have allocated and not freed.
    int handles = 0;        ///< Open files, sockets and pipes.
    int temporaryFiles = 0; ///< In the folder for temporary files, which should be this process's own.

    static Resources now();

    QString text() const;
};

} // namespace wendmark::test
