#include "ui/looks/DarkWish.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace wendmark {

namespace {

constexpr uint dark = 1; // As the portal tells it; 0: the author has no wish, 2: light.

QString service() {
    return QStringLiteral("org.freedesktop.portal.Desktop");
}

QString path() {
    return QStringLiteral("/org/freedesktop/portal/desktop");
}

QString settings() {
    return QStringLiteral("org.freedesktop.portal.Settings");
}

QString appearance() {
    return QStringLiteral("org.freedesktop.appearance");
}

QString colourScheme() {
    return QStringLiteral("color-scheme");
}

bool isDarkThemeName(const QString& name) {
    return name.endsWith(QLatin1String("-dark"), Qt::CaseInsensitive) ||
           name.endsWith(QLatin1String(":dark"), Qt::CaseInsensitive);
}

/// Some portals wrap the value twice.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

DarkWish::DarkWish(QObject* parent)
    : QObject(parent), m_dark(isDarkThemeName(qEnvironmentVariable("GTK_THEME"))) {
    // A theme that was chosen for this program alone goes first. To ask for a bus that is not there would
    // start one.
    if (!qEnvironmentVariableIsSet("GTK_THEME") && qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
        ask();
}

void DarkWish::ask() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(service(), path(), settings(), QStringLiteral("SettingChanged"), this,
                SLOT(takeSetting(QString, QString, QDBusVariant)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(service(), path(), settings(), QStringLiteral("Read"));
    question << appearance() << colourScheme();
    auto* const answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid()) // Else there is no portal.
            take(reply.value().variant());
    });
}

void DarkWish::takeSetting(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == appearance() && key == colourScheme())
        take(value.variant());
}

void DarkWish::take(const QVariant& value) {
    const bool wished = unwrapped(value).toUInt() == dark;
    if (std::exchange(m_dark, wished) != wished)
        emit changed();
}

} // namespace wendmark
