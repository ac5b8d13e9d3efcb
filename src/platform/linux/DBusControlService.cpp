#include "platform/linux/DBusControlService.h"

#include "core/app/SystemLog.h"

#include <QDBusConnectionInterface>
#include <QDBusError>

namespace deskmark {

const QString DBusControlService::kServiceName = QStringLiteral("io.github.deskmark.Deskmark");
const QString DBusControlService::kObjectPath = QStringLiteral("/io/github/deskmark/Deskmark");
const QString DBusControlService::kInterface =
    QStringLiteral("io.github.deskmark.Deskmark.Control");

DBusControlService::DBusControlService(Handlers handlers, QObject* parent)
    : QObject(parent), handlers_(std::move(handlers)), bus_(QDBusConnection::sessionBus()) {}

DBusControlService::~DBusControlService() {
    if (!published_)
        return;
    bus_.unregisterService(kServiceName);
    bus_.unregisterObject(kObjectPath);
}

bool DBusControlService::publish() {
    // The object first, then the name: a caller that sees the name can already call it.
    published_ = bus_.isConnected() &&
                 bus_.registerObject(kObjectPath, this, QDBusConnection::ExportAllSlots) &&
                 bus_.registerService(kServiceName);
    if (!published_)
        systemLog(QStringLiteral("Deskmark: コマンド用の D-Bus 名 %1 を登録できません: %2")
                      .arg(kServiceName, bus_.lastError().message()));
    return published_;
}

QString DBusControlService::methodFor(HotKeyAction action) {
    switch (action) {
    case HotKeyAction::Name:
        return QStringLiteral("Rename");
    case HotKeyAction::Preset:
        return QStringLiteral("NextPreset");
    case HotKeyAction::Settings:
        return QStringLiteral("OpenSettings");
    case HotKeyAction::Bookmark:
        return QStringLiteral("ShowBookmarks");
    case HotKeyAction::Switcher:
        break;
    }
    return QStringLiteral("ShowSwitcher");
}

void DBusControlService::ShowSwitcher() {
    handlers_.perform(HotKeyAction::Switcher);
}
void DBusControlService::ShowBookmarks() {
    handlers_.perform(HotKeyAction::Bookmark);
}
void DBusControlService::Rename() {
    handlers_.perform(HotKeyAction::Name);
}
void DBusControlService::OpenSettings() {
    handlers_.perform(HotKeyAction::Settings);
}
void DBusControlService::NextPreset() {
    handlers_.perform(HotKeyAction::Preset);
}

bool DBusControlService::Switch(const QString& projectName) {
    return handlers_.switchToProject(projectName);
}

} // namespace deskmark
