#include "check_tour/ReportFile.h"

#include "platform/Strings.h"

#include <QFileInfo>
#include <QSaveFile>

namespace wendmark::cli {

Outcome ReportFile::open() {
    const QString path = QFile::decodeName(m_path.c_str());
    const QFileInfo there(path);
    if (there.exists() && !there.isFile() && !there.isDir())
        m_file = std::make_unique<QFile>(path);
    else
        m_file = std::make_unique<QSaveFile>(path);
    return m_file->open(QIODevice::WriteOnly) ? Outcome::success() : failure();
}

Outcome ReportFile::write(const QByteArray& bytes) {
    bool done = m_file->write(bytes) == bytes.size() && m_file->flush();
    if (auto* const file = qobject_cast<QSaveFile*>(m_file.get()); file != nullptr)
        done = file->commit() && done;
    return done ? Outcome::success() : failure();
}

Outcome ReportFile::failure() const {
    return Outcome::failure("cannot write " + m_path + ": " + toUtf8(m_file->errorString()));
}

} // namespace wendmark::cli
