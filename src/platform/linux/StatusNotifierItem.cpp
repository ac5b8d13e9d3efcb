#include "platform/linux/StatusNotifierItem.h"

#include "core/app/SystemLog.h"
#include "platform/linux/DBusMenuExporter.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QMenu>

namespace deskmark {

namespace {
const QString kWatcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kItemPath = QStringLiteral("/StatusNotifierItem");
const QString kMenuPath = QStringLiteral("/MenuBar");
} // namespace

StatusNotifierItem::StatusNotifierItem(QObject* parent)
    : StatusItem(parent), bus_(QDBusConnection::sessionBus()),
      serviceName_(QStringLiteral("org.kde.StatusNotifierItem-%1-1")
                       .arg(QCoreApplication::applicationPid())),
      menuExporter_(new DBusMenuExporter(bus_, kMenuPath, this)),
      watcherWatcher_(new QDBusServiceWatcher(kWatcherService, bus_,
                                              QDBusServiceWatcher::WatchForRegistration, this)) {
    registerStatusNotifierTypes();
    // The objects first, then the name: whoever sees the name can already read them.
    const bool published =
        bus_.registerObject(kItemPath, this,
                            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                                QDBusConnection::ExportAllProperties) &&
        bus_.registerService(serviceName_);
    if (!published)
        systemLog(QStringLiteral("Deskmark: could not publish the status item as %1: %2")
                      .arg(serviceName_, bus_.lastError().message()));
    connect(watcherWatcher_, &QDBusServiceWatcher::serviceRegistered, this,
            &StatusNotifierItem::registerWithWatcher);
    registerWithWatcher();
}

StatusNotifierItem::~StatusNotifierItem() {
    bus_.unregisterService(serviceName_);
    bus_.unregisterObject(kItemPath);
}

bool StatusNotifierItem::watcherAvailable() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() && bus.interface() &&
           bus.interface()->isServiceRegistered(kWatcherService).value();
}

void StatusNotifierItem::setTitle(const QString& title) {
    if (title == title_)
        return;
    title_ = title;
    Q_EMIT NewTitle();
    Q_EMIT NewToolTip();
    Q_EMIT XAyatanaNewLabel(title_, title_);
}

void StatusNotifierItem::setIcon(const QIcon& icon) {
    icon_ = icon;
    iconImages_ = dbusImages(icon);
    Q_EMIT NewIcon();
}

void StatusNotifierItem::setMenu(QMenu* menu) {
    menu_ = menu;
    menuExporter_->setMenu(menu);
}

DBusToolTip StatusNotifierItem::toolTip() const {
    return DBusToolTip{QString(), {}, applicationTitle(), title_};
}

QDBusObjectPath StatusNotifierItem::menuPath() const {
    return QDBusObjectPath(kMenuPath);
}

// ItemIsMenu tells the panel to open the published menu itself; panels that call
// Activate or ContextMenu anyway get the same menu as a popup at the pointer.
void StatusNotifierItem::Activate(int x, int y) {
    Q_UNUSED(x);
    Q_UNUSED(y);
    popUpMenu();
}

void StatusNotifierItem::ContextMenu(int x, int y) {
    Q_UNUSED(x);
    Q_UNUSED(y);
    popUpMenu();
}

// A middle click and the wheel mean nothing to Deskmark; the methods exist because
// panels call them.
void StatusNotifierItem::SecondaryActivate(int x, int y) {
    Q_UNUSED(x);
    Q_UNUSED(y);
}

void StatusNotifierItem::Scroll(int delta, const QString& orientation) {
    Q_UNUSED(delta);
    Q_UNUSED(orientation);
}

void StatusNotifierItem::registerWithWatcher() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        kWatcherService, QStringLiteral("/StatusNotifierWatcher"), kWatcherService,
        QStringLiteral("RegisterStatusNotifierItem"));
    call << serviceName_;
    auto* pending = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [](QDBusPendingCallWatcher* reply) {
        if (reply->isError())
            systemLog(QStringLiteral("Deskmark: the panel did not take the status item: %1")
                          .arg(reply->error().message()));
        reply->deleteLater();
    });
}

void StatusNotifierItem::popUpMenu() {
    if (menu_)
        menu_->popup(QCursor::pos());
}

} // namespace deskmark
