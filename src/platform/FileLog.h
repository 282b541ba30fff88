#pragma once

#include "base/Log.h"

#include <QFile>

namespace wendmark {

/// Writes each line to the standard error stream and to a file in the user's state folder. The file starts
/// anew, also while the program runs, before it would grow beyond a megabyte. One predecessor is kept, so
/// both together take two megabytes at most.
class FileLog final : public Log {
public:
    /// Bytes of the file.
    static constexpr qint64 longestFile = 1 << 20;

    /// UTF-16 units of a line; what is longer is cut.
    static constexpr qsizetype longestLine = 10'000;

    /// Notes go to the file only. A file that cannot be opened is done without.
    explicit FileLog(const QString& path);

    /// "wendmark.log" in the user's state folder, which is made if it is missing.
    static QString defaultPath();

private:
    void write(Level level, const std::string& line) override;

    void open(QIODevice::OpenMode how);
    void startAnew();

    QFile m_file;
};

} // namespace wendmark
