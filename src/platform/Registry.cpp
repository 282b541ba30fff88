#include "platform/Registry.h"

#include <QSettings>
#include <memory>

namespace wendmark {

namespace {

constexpr qsizetype longestValue = 1024;

std::unique_ptr<QSettings> openMachine(const QString& path) {
    if (!path.isEmpty())
        return std::make_unique<QSettings>(path, QSettings::IniFormat);
#ifdef Q_OS_WIN
    return std::make_unique<QSettings>(QStringLiteral("HKEY_LOCAL_MACHINE"), QSettings::NativeFormat);
#else
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::SystemScope,
                                       QStringLiteral("Wendmark"), QStringLiteral("Wendmark"));
#endif
}

QString hexadecimal(quint32 number) {
    return QStringLiteral("&h") + QStringLiteral("%1").arg(number, 8, 16, QLatin1Char('0'));
}

} // namespace

std::optional<QString> Registry::GetKeyValue(RegistryRoot, const QString& keyName,
                                             const QString& valueName) const {
    const std::unique_ptr<QSettings> machine = openMachine(m_path);
    machine->setFallbacksEnabled(false);
    QString key = keyName + QLatin1Char('/') + valueName;
    key.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!machine->contains(key))
        return std::nullopt;
    const QVariant value = machine->value(key);
    if (value.typeId() == QMetaType::Int || value.typeId() == QMetaType::UInt)
        return hexadecimal(value.toUInt());
    QString text = value.toString();
    const QString numberMark = QStringLiteral("dword:");
    if (text.startsWith(numberMark))
        return hexadecimal(text.mid(numberMark.size()).toUInt(nullptr, 16));
    if (const qsizetype zero = text.indexOf(QChar(u'\0')); zero >= 0)
        text.truncate(zero);
    if (text.size() > longestValue)
        return std::nullopt;
    return text;
}

} // namespace wendmark
