#include "platform/linux/StatusNotifierItem.h"

#include "core/app/SystemLog.h"
#include "platform/linux/DBusMenuExporter.h"
#include "platform/linux/PanelIcon.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDir>
#include <QGuiApplication>
#include <QMenu>
#include <QPalette>
#include <QStandardPaths>

namespace deskmark {

namespace {
const QString kWatcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kItemPath = QStringLiteral("/StatusNotifierItem");
const QString kMenuPath = QStringLiteral("/MenuBar");
const QString kIconName = QStringLiteral("io.github.deskmark.Deskmark-symbolic");
// The sizes panels ask for, from a small panel to a tall one at double scale.
constexpr int kIconSizes[] = {16, 22, 24, 32, 48, 64};

bool iconInstalled() {
    for (const char* folder : {"symbolic", "scalable"}) {
        const QString file =
            QStringLiteral("icons/hicolor/%1/apps/%2.svg").arg(QLatin1String(folder), kIconName);
        if (!QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty())
            return true;
    }
    return false;
}

// A theme folder holding `images` under kIconName, made in the runtime folder: both in
// the hicolor layout and as an unthemed icon at its top, the two ways hosts search an
// item's theme path. Empty when it cannot be written.
QString writeIconTheme(const QList<QImage>& images) {
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (runtime.isEmpty() || images.isEmpty())
        return {};
    const QString root = runtime + QStringLiteral("/deskmark-icons");
    bool written = true;
    for (const QImage& image : images) {
        const QString folder = QStringLiteral("%1/hicolor/%2x%2/apps").arg(root).arg(image.width());
        written = written && QDir().mkpath(folder) &&
                  image.save(folder + QLatin1Char('/') + kIconName + QStringLiteral(".png"));
    }
    written =
        written && images.last().save(root + QLatin1Char('/') + kIconName + QStringLiteral(".png"));
    if (!written) {
        systemLog(
            QStringLiteral("Deskmark: could not write the status item's icon to %1").arg(root));
        return {};
    }
    return root;
}
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
    Q_EMIT XAyatanaNewLabel(title_, title_);
}

void StatusNotifierItem::setToolTip(const QString& text) {
    if (text == toolTip_)
        return;
    toolTip_ = text;
    Q_EMIT NewToolTip();
}

// Set once at start in practice; the theme folder is written only when no installed
// theme has the icon.
void StatusNotifierItem::setIcon(const QIcon& icon) {
    icon_ = icon;
    const QColor color = QGuiApplication::palette().color(QPalette::WindowText);
    QList<QImage> images;
    for (const int size : kIconSizes) {
        const QImage image = PanelIcon::tinted(icon, QSize(size, size), color);
        if (!image.isNull())
            images << image;
    }
    iconImages_.clear();
    for (const QImage& image : std::as_const(images))
        iconImages_ << dbusImage(image);
    iconThemePath_ = images.isEmpty() || iconInstalled() ? QString() : writeIconTheme(images);
    Q_EMIT NewIcon();
    Q_EMIT NewToolTip();
}

QString StatusNotifierItem::iconName() const {
    return icon_.isNull() ? QString() : kIconName;
}

void StatusNotifierItem::setMenu(QMenu* menu) {
    menu_ = menu;
    menuExporter_->setMenu(menu);
}

DBusToolTip StatusNotifierItem::toolTip() const {
    return DBusToolTip{iconName(), {}, applicationTitle(), toolTip_};
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
