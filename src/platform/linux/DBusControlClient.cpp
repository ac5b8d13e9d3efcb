#include "platform/linux/DBusControlClient.h"

#include "platform/linux/DBusControlService.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>

namespace deskmark {

namespace {
// The agent answers at once (a switch is started, not awaited), so a long wait means
// it is stuck.
constexpr int kCallTimeoutMs = 10000;
} // namespace

CommandLine::Reply DBusControlClient::send(const CommandLine& command, QString* detail) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return CommandLine::Reply::NotRunning;
    const bool switching = command.mode() == CommandLine::Mode::Switch;
    QDBusMessage call = QDBusMessage::createMethodCall(
        DBusControlService::kServiceName, DBusControlService::kObjectPath,
        DBusControlService::kInterface,
        switching
            ? QStringLiteral("Switch")
            : DBusControlService::methodFor(command.action().value_or(HotKeyAction::Switcher)));
    if (switching)
        call << command.projectName();
    // No activation: without a running agent the command only says so.
    call.setAutoStartService(false);
    const QDBusMessage reply = bus.call(call, QDBus::Block, kCallTimeoutMs);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        if (reply.errorName() == QDBusError::errorString(QDBusError::ServiceUnknown) ||
            reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner"))
            return CommandLine::Reply::NotRunning;
        *detail = reply.errorMessage();
        return CommandLine::Reply::Failed;
    }
    if (switching && !reply.arguments().value(0).toBool())
        return CommandLine::Reply::NoMatch;
    return CommandLine::Reply::Done;
}

} // namespace deskmark
