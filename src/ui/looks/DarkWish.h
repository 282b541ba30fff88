#pragma once

#include <QDBusVariant>
#include <QObject>

namespace wendmark {

/// Whether the author wants dark windows, as the desktop tells programs that it brings no theme for: through
/// its settings portal or, without one, by a GTK theme whose name says so.
class DarkWish final : public QObject {
    Q_OBJECT

public:
    /// Asks the portal, whose answer comes as changed() if it is another one than isDark().
    explicit DarkWish(QObject* parent = nullptr);

    bool isDark() const { return m_dark; }

signals:
    void changed();

private:
    Q_SLOT void takeSetting(const QString& group, const QString& key, const QDBusVariant& value);
    void ask();
    void take(const QVariant& value);

    bool m_dark;
};

} // namespace wendmark
