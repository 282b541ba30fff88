#pragma once

#include <QString>
#include <string>
#include <string_view>

/// The core's texts are UTF-8, the windows' are UTF-16.
namespace wendmark {

inline QString toQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline std::string toUtf8(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    return std::string(utf8.constData(), static_cast<std::size_t>(utf8.size()));
}

/// A text shown as plain text where Qt would take it for mark-up.
inline QString plain(const QString& text) {
    return text.toHtmlEscaped();
}

} // namespace wendmark
