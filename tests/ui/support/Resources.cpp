#include "ui/support/Resources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QList>
#include <malloc.h>

namespace wendmark::test {

namespace {

constexpr qint64 kibibyte = 1024;

/// The process and everything that it has started.
QList<qint64> processTree() {
    QList<qint64> tree = {QCoreApplication::applicationPid()};
    for (qsizetype i = 0; i < tree.size(); ++i) {
        const QString tasks = QStringLiteral("/proc/%1/task").arg(tree[i]);
        for (const QString& task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile children(tasks + QLatin1Char('/') + task + QStringLiteral("/children"));
            if (!children.open(QIODevice::ReadOnly))
                continue;
            for (const QByteArray& child : children.readAll().simplified().split(' ')) {
                if (!child.isEmpty())
                    tree.append(child.toLongLong());
            }
        }
    }
    return tree;
}

qint64 memoryOf(qint64 process) {
    QFile rollup(QStringLiteral("/proc/%1/smaps_rollup").arg(process));
    if (!rollup.open(QIODevice::ReadOnly))
        return 0;
    qint64 memory = 0;
    for (const QByteArray& line : rollup.readAll().split('\n')) {
        const qsizetype value = line.indexOf(':') + 1;
        if (line.startsWith("Pss_Anon:") || line.startsWith("Pss_Shmem:") || line.startsWith("SwapPss:"))
            memory += line.mid(value).simplified().split(' ').first().toLongLong() * kibibyte;
    }
    return memory;
}

int entriesOf(const QString& folder) {
    return static_cast<int>(
        QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot).size());
}

} // namespace

Resources Resources::now() {
    Resources resources;
    for (const qint64 process : processTree()) {
        resources.memory += memoryOf(process);
        resources.handles += entriesOf(QStringLiteral("/proc/%1/fd").arg(process));
    }
    resources.ownMemory = memoryOf(QCoreApplication::applicationPid());
    resources.allocated = static_cast<qint64>(mallinfo2().uordblks) + static_cast<qint64>(mallinfo2().hblkhd);
    resources.temporaryFiles = entriesOf(QDir::tempPath());
    return resources;
}

QString Resources::text() const {
    return QStringLiteral(
               "%1 MiB (%2 in this process, %3 KiB of them allocated), %4 handles, %5 temporary files")
        .arg(memory / kibibyte / kibibyte)
        .arg(ownMemory / kibibyte / kibibyte)
        .arg(allocated / kibibyte)
        .arg(handles)
        .arg(temporaryFiles);
}

} // namespace wendmark::test
