#include "platform/FileLog.h"

#include "platform/StateFolder.h"

#include <QDateTime>
#include <QDir>
#include <QStandardPaths>
#include <iostream>

namespace wendmark {

namespace {

constexpr qint64 longestFile = 1 << 20;

const char* nameOf(Log::Level level) {
    switch (level) {
    case Log::Level::note:
        return "note";
    case Log::Level::warning:
        return "warning";
    case Log::Level::failure:
        break;
    }
    return "failure";
}

void startAnewWhenLong(const QString& path) {
    if (QFile(path).size() <= longestFile)
        return;
    const QString predecessor = path + QStringLiteral(".1");
    QFile::remove(predecessor);
    QFile::rename(path, predecessor);
}

} // namespace

FileLog::FileLog(const QString& path) : m_file(path) {
    startAnewWhenLong(path);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
        std::cerr << "wendmark: no log file: " << m_file.errorString().toStdString() << '\n';
}

QString FileLog::defaultPath() {
    return stateFolder() + QStringLiteral("/wendmark.log");
}

void FileLog::write(Level level, const std::string& line) {
    if (level != Level::note)
        std::cerr << "wendmark: " << nameOf(level) << ": " << line << '\n';
    if (!m_file.isOpen())
        return;
    const QByteArray time = QDateTime::currentDateTime().toString(Qt::ISODateWithMs).toUtf8();
    m_file.write(time + ' ' + nameOf(level) + ": " + QByteArray::fromStdString(line) + '\n');
    m_file.flush();
}

} // namespace wendmark
