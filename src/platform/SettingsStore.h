#pragma once

#include <QSettings>
#include <QString>
#include <QStringList>

namespace wendmark {

/// One value of the settings store: its key and what it is when it is absent or cannot be understood.
template <typename Value>
struct Setting {
    const char* key;
    Value whenAbsent;
};

/// The author's own settings, texts by key, in the section "Settings" of the application "Wendmark".
class SettingsStore final {
public:
    /// The store of the user who runs the program.
    SettingsStore();

    /// A store in a file of its own.
    explicit SettingsStore(const QString& path);

    QString read(const Setting<QString>& setting) const;
    float read(const Setting<float>& setting) const;
    bool read(const Setting<bool>& setting) const;
    QStringList read(const Setting<QStringList>& setting) const;

    void store(const Setting<QString>& setting, const QString& value);
    void store(const Setting<float>& setting, float value);
    void store(const Setting<bool>& setting, bool value);
    void store(const Setting<QStringList>& setting, const QStringList& value);

    /// Takes in what other programs of the user have stored meanwhile.
    void refresh() { m_settings.sync(); }

private:
    QString text(const char* key, const QString& whenAbsent) const;
    void setText(const char* key, const QString& value);

    QSettings m_settings;
};

/// Understands a truth value in any usual spelling ("True", "yes", "-1", "off"); `otherwise` for any other
/// text.
bool booleanFromText(const QString& text, bool otherwise);

} // namespace wendmark
