#include "platform/linux/SwitchingStatusItem.h"

#include "core/app/SystemLog.h"
#include "platform/linux/StatusNotifierItem.h"
#include "platform/linux/TrayIconStatusItem.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QMenu>

using namespace std::chrono_literals;

namespace deskmark {

namespace {
const QString kWatcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
constexpr auto kFallbackDelay = 3s;
} // namespace

SwitchingStatusItem::SwitchingStatusItem(QObject* parent, bool trayIconPossible)
    : StatusItem(parent),
      trayIconPossible_(trayIconPossible),
      watcher_(new QDBusServiceWatcher(kWatcherService, QDBusConnection::sessionBus(),
                                       QDBusServiceWatcher::WatchForRegistration |
                                           QDBusServiceWatcher::WatchForUnregistration,
                                       this)) {
    fallback_.setSingleShot(true);
    fallback_.setInterval(kFallbackDelay);
    connect(&fallback_, &QTimer::timeout, this, [this] {
        useStatusNotifierItem(false, QStringLiteral("the StatusNotifierWatcher went away"));
    });
    connect(watcher_, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        fallback_.stop();
        useStatusNotifierItem(true, QStringLiteral("a StatusNotifierWatcher appeared"));
    });
    connect(watcher_, &QDBusServiceWatcher::serviceUnregistered, &fallback_,
            qOverload<>(&QTimer::start));
    if (StatusNotifierItem::watcherAvailable())
        useStatusNotifierItem(true, QStringLiteral("the panel has a StatusNotifierWatcher"));
    else
        useStatusNotifierItem(false, QStringLiteral("no StatusNotifierWatcher on the session bus"));
}

SwitchingStatusItem::~SwitchingStatusItem() = default;

void SwitchingStatusItem::setTitle(const QString& title) {
    title_ = title;
    item_->setTitle(title);
}

void SwitchingStatusItem::setToolTip(const QString& text) {
    toolTip_ = text;
    item_->setToolTip(text);
}

void SwitchingStatusItem::setIcon(const QIcon& icon) {
    icon_ = icon;
    item_->setIcon(icon);
}

void SwitchingStatusItem::setMenu(QMenu* menu) {
    menu_ = menu;
    item_->setMenu(menu);
}

void SwitchingStatusItem::useStatusNotifierItem(bool use, const QString& reason) {
    use = use || !trayIconPossible_;
    if (item_ && bool(qobject_cast<StatusNotifierItem*>(item_.get())) == use)
        return;
    systemLog(
        QStringLiteral("Deskmark: status item: %1 (%2)")
            .arg(use ? QStringLiteral("StatusNotifierItem") : QStringLiteral("tray icon"), reason));
    // The old item goes first: it lets go of the menu and of its place in the panel.
    item_.reset();
    if (use)
        item_ = std::make_unique<StatusNotifierItem>();
    else
        item_ = std::make_unique<TrayIconStatusItem>();
    connect(item_.get(), &StatusItem::placementChanged, this, &StatusItem::placementChanged);
    item_->setIcon(icon_);
    item_->setToolTip(toolTip_);
    item_->setTitle(title_);
    item_->setMenu(menu_);
    Q_EMIT placementChanged();
}

} // namespace deskmark
