#include "platform/SettingsStore.h"

namespace wendmark {

namespace {

QString keyInSection(const char* key) {
    return QStringLiteral("Settings/") + QLatin1String(key);
}

} // namespace

SettingsStore::SettingsStore() : m_settings(QStringLiteral("Wendmark"), QStringLiteral("Wendmark")) {}

SettingsStore::SettingsStore(const QString& path) : m_settings(path, QSettings::IniFormat) {}

QString SettingsStore::read(const Setting<QString>& setting) const {
    return text(setting.key, setting.whenAbsent);
}

float SettingsStore::read(const Setting<float>& setting) const {
    bool isNumber = false;
    const float value = text(setting.key, QString()).toFloat(&isNumber);
    return isNumber ? value : setting.whenAbsent;
}

bool SettingsStore::read(const Setting<bool>& setting) const {
    return booleanFromText(text(setting.key, QString()), setting.whenAbsent);
}

QStringList SettingsStore::read(const Setting<QStringList>& setting) const {
    return m_settings.value(keyInSection(setting.key), setting.whenAbsent).toStringList();
}

void SettingsStore::store(const Setting<QString>& setting, const QString& value) {
    setText(setting.key, value);
}

void SettingsStore::store(const Setting<float>& setting, float value) {
    setText(setting.key, QString::number(static_cast<double>(value)));
}

void SettingsStore::store(const Setting<bool>& setting, bool value) {
    setText(setting.key, value ? QStringLiteral("True") : QStringLiteral("False"));
}

void SettingsStore::store(const Setting<QStringList>& setting, const QStringList& value) {
    m_settings.setValue(keyInSection(setting.key), value);
    m_settings.sync();
}

QString SettingsStore::text(const char* key, const QString& whenAbsent) const {
    return m_settings.value(keyInSection(key), whenAbsent).toString();
}

void SettingsStore::setText(const char* key, const QString& value) {
    m_settings.setValue(keyInSection(key), value);
    m_settings.sync(); // The program ends at once after its last setting.
}

bool booleanFromText(const QString& text, bool otherwise) {
    static const QStringList yes = {QStringLiteral("true"), QStringLiteral("yes"), QStringLiteral("on"),
                                    QStringLiteral("#true#")};
    static const QStringList no = {QStringLiteral("false"), QStringLiteral("no"), QStringLiteral("off"),
                                   QStringLiteral("#false#")};
    const QString spelling = text.trimmed().toLower();
    if (yes.contains(spelling))
        return true;
    if (no.contains(spelling))
        return false;
    bool isNumber = false;
    const double number = spelling.toDouble(&isNumber);
    return isNumber ? number != 0 : otherwise;
}

} // namespace wendmark
