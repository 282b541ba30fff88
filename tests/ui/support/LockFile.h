#pragma once

#include "platform/Strings.h"
#include "support/ScratchFolder.h"

#include <QByteArray>
#include <QList>
#include <QLockFile>
#include <string>

namespace wendmark::test {

/// The lock of the program that works in an application folder.
inline std::string lockIn(const std::string& folder) {
    return folder + "/.wendmark.lock";
}

/// What a lock file of this process holds: process, program, machine, its id, and the id of its last start.
struct LockFile {
    LockFile() {
        const ScratchFolder scratch;
        QLockFile lock(toQString(scratch / "lock"));
        if (lock.tryLock(0))
            lines = QByteArray::fromStdString(readFile(scratch / "lock")).split('\n');
    }

    QByteArray text() const { return lines.join('\n'); }

    QList<QByteArray> lines;
};

/// As a program on another machine has left it, or holds it.
inline void leaveForeignLock(const std::string& folder) {
    LockFile lock;
    lock.lines[2] = "attic";
    lock.lines[3] = "00000000000000000000000000000001";
    writeFile(lockIn(folder), lock.text().toStdString());
}

} // namespace wendmark::test
