#pragma once

#include "base/Log.h"

#include <QFile>

namespace wendmark {

/// Writes each line to the standard error stream and to a file in the user's state folder. The file starts
/// anew, with one predecessor kept, when it has grown beyond a megabyte.
class FileLog final : public Log {
public:
    /// Notes go to the file only. A file that cannot be opened is done without.
    explicit FileLog(const QString& path);

    /// "wendmark.log" in the user's state folder, which is made if it is missing.
    static QString defaultPath();

private:
    void write(Level level, const std::string& line) override;

    QFile m_file;
};

} // namespace wendmark
