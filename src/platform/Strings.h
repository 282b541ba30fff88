#pragma once

#include <QString>
#include <string>
#include <string_view>

/// The core's texts are UTF-8, the windows' are UTF-16.
namespace wendmark {

inline QString toQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// The beginning of a text, at most `longest` UTF-16 units: what a window shows of texts of any size.
inline QString beginningOf(std::string_view utf8, qsizetype longest) {
    constexpr qsizetype mostBytes = 3; // Of a unit; characters of four bytes are two units.
    return toQString(utf8.substr(0, static_cast<std::size_t>((longest + 1) * mostBytes))).left(longest);
}

inline std::string toUtf8(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    return std::string(utf8.constData(), static_cast<std::size_t>(utf8.size()));
}

/// The text on one line: what would break or steer it, or turn the direction of writing, is shown as one sign
/// for "no character".
inline QString onOneLine(QString text) {
    constexpr QChar noCharacter(0xFFFD);
    for (QChar& character : text) {
        const QChar::Category category = character.category();
        const bool turns = character.unicode() >= 0x202A && character.unicode() <= 0x202E;
        const bool isolates = character.unicode() >= 0x2066 && character.unicode() <= 0x2069;
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph || turns || isolates)
            character = noCharacter;
    }
    return text;
}

/// A text shown as plain text where Qt would take it for mark-up.
inline QString plain(const QString& text) {
    return text.toHtmlEscaped();
}

} // namespace wendmark
