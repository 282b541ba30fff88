#pragma once

#include <QString>
#include <optional>

namespace wendmark {

enum class RegistryRoot { localMachine };

/// Reads a value that holds for the whole machine. Where the system has no registry, a system-wide settings
/// file takes its place, with the same keys.
class Registry final {
public:
    /// The machine's own registry, or the file that stands for it.
    Registry() = default;

    /// Reads the settings file at `path` instead.
    explicit Registry(QString path) : m_path(std::move(path)) {}

    /// The value as text: a string up to its first zero, a 32-bit number (a "dword:" value of the file) as
    /// "&h" and its hexadecimal digits. Nothing when the key or the value is missing, or longer than 1024
    /// characters.
    std::optional<QString> GetKeyValue(RegistryRoot root, const QString& keyName,
                                       const QString& valueName) const;

private:
    QString m_path;
};

} // namespace wendmark
