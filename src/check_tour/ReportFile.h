#pragma once

#include "base/Outcome.h"

#include <QByteArray>
#include <QFileDevice>
#include <memory>
#include <string>

namespace wendmark::cli {

/// A file that replaces the one there as soon as it is complete. What is no file, a pipe for example, is
/// written to.
class ReportFile final {
public:
    explicit ReportFile(std::string path) : m_path(std::move(path)) {}

    /// Fails when it could not be written later.
    Outcome open();

    Outcome write(const QByteArray& bytes);

private:
    Outcome failure() const;

    std::string m_path;
    std::unique_ptr<QFileDevice> m_file;
};

} // namespace wendmark::cli
