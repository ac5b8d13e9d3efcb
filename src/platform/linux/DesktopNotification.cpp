#include "platform/linux/DesktopNotification.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QVariantMap>

namespace deskmark {

bool DesktopNotification::show(const QString& summary, const QString& body) {
    const QString service = QStringLiteral("org.freedesktop.Notifications");
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface() || !bus.interface()->isServiceRegistered(service))
        return false;
    QDBusMessage notify =
        QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/Notifications"),
                                       service, QStringLiteral("Notify"));
    notify << QStringLiteral("Deskmark") << 0u << QString() << summary << body << QStringList()
           << QVariantMap() << -1;
    // Nothing waits for the id the service answers with.
    return bus.send(notify);
}

} // namespace deskmark
