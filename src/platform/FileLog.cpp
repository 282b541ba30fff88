#include "platform/FileLog.h"

#include "platform/StateFolder.h"
#include "platform/Strings.h"

#include <QDateTime>
#include <QDir>
#include <QStandardPaths>
#include <iostream>

namespace wendmark {

namespace {

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

} // namespace

FileLog::FileLog(const QString& path) : m_file(path) {
    open(QIODevice::Append);
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
    const QByteArray text = beginningOf(line, longestLine).toUtf8();
    const QByteArray whole = time + ' ' + nameOf(level) + ": " + text + '\n';
    if (m_file.size() + whole.size() > longestFile)
        startAnew();
    m_file.write(whole);
    m_file.flush();
}

void FileLog::open(QIODevice::OpenMode how) {
    if (!m_file.open(QIODevice::WriteOnly | how))
        std::cerr << "wendmark: no log file: " << m_file.errorString().toStdString() << '\n';
}

void FileLog::startAnew() {
    m_file.close();
    const QString predecessor = m_file.fileName() + QStringLiteral(".1");
    QFile::remove(predecessor);
    const bool kept = QFile(m_file.fileName()).rename(predecessor);
    open(kept ? QIODevice::Append : QIODevice::Truncate);
}

} // namespace wendmark
