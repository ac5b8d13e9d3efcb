#include "platform/linux/DBusInputSourceSwitcher.h"

#include "core/app/SystemLog.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QSysInfo>
#include <QVariantMap>

#include <cstddef>
#include <cstring>
#include <optional>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace deskmark {

namespace {

// Long enough for a busy framework to answer, short enough that nobody notices a wait
// when one has stopped answering.
constexpr int kCallTimeoutMs = 300;

const QString kFcitxService = QStringLiteral("org.fcitx.Fcitx5");
const QString kFcitxPath = QStringLiteral("/controller");
const QString kFcitxInterface = QStringLiteral("org.fcitx.Fcitx.Controller1");
constexpr int kFcitxInputMethodActive = 2;

const QString kIBusService = QStringLiteral("org.freedesktop.IBus");
const QString kIBusPath = QStringLiteral("/org/freedesktop/IBus");
const QString kIBusInterface = QStringLiteral("org.freedesktop.IBus");
const QString kIBusConnectionName = QStringLiteral("deskmark-ibus");
const QString kIBusLayoutPrefix = QStringLiteral("xkb:");

QDBusMessage call(const QDBusConnection& bus, const QString& service, const QString& path,
                  const QString& interface, const QString& method,
                  const QVariantList& arguments = {}) {
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    // A framework that is not running stays that way: opening a panel must not start one.
    message.setAutoStartService(false);
    return bus.call(message, QDBus::Block, kCallTimeoutMs);
}

QDBusMessage callFcitx(const QString& method) {
    return call(QDBusConnection::sessionBus(), kFcitxService, kFcitxPath, kFcitxInterface, method);
}

QDBusMessage callIBus(const QDBusConnection& bus, const QString& method,
                      const QVariantList& arguments = {}) {
    return call(bus, kIBusService, kIBusPath, kIBusInterface, method, arguments);
}

// The daemon's state is read through properties: the methods that also give it are
// deprecated and make the daemon log a warning on every call.
QDBusMessage ibusProperty(const QDBusConnection& bus, const QString& name) {
    return call(bus, kIBusService, kIBusPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                QStringLiteral("Get"), {kIBusInterface, name});
}

bool succeeded(const QDBusMessage& reply) {
    return reply.type() == QDBusMessage::ReplyMessage;
}

// What the switcher needs of an IBusEngineDesc.
struct IBusEngine {
    QString name;
    QString layout; // the keyboard layout it types on; "default" for the system's
};

// An IBusEngineDesc as it arrives over D-Bus: the struct, in as many variants as it comes
// in. Nothing when the value is something else.
std::optional<IBusEngine> ibusEngine(const QVariant& desc) {
    if (desc.userType() == qMetaTypeId<QDBusVariant>())
        return ibusEngine(qvariant_cast<QDBusVariant>(desc).variant());
    if (desc.userType() != qMetaTypeId<QDBusArgument>())
        return std::nullopt;
    // (type name, attachments, name, long name, description, language, license, author,
    // icon, layout, …)
    const auto fields = qvariant_cast<QDBusArgument>(desc);
    if (!fields.currentSignature().startsWith(QLatin1String("(sa{sv}ssssssss")))
        return std::nullopt;
    QString skipped;
    QVariantMap attachments;
    IBusEngine engine;
    fields.beginStructure();
    fields >> skipped >> attachments >> engine.name;
    for (int field = 0; field < 6; ++field)
        fields >> skipped;
    fields >> engine.layout;
    fields.endStructure();
    return engine;
}

// The names in an array of IBusEngineDesc variants ("av"), itself in a variant or not.
QStringList ibusEngineNames(const QVariant& list) {
    if (list.userType() == qMetaTypeId<QDBusVariant>())
        return ibusEngineNames(qvariant_cast<QDBusVariant>(list).variant());
    QStringList names;
    if (list.userType() != qMetaTypeId<QDBusArgument>())
        return names;
    const auto array = qvariant_cast<QDBusArgument>(list);
    if (array.currentSignature() != QLatin1String("av"))
        return names;
    array.beginArray();
    while (!array.atEnd()) {
        QDBusVariant item;
        array >> item;
        if (const auto engine = ibusEngine(item.variant()))
            names << engine->name;
    }
    array.endArray();
    return names;
}

// The layout engine to type plain letters with on `layout`: the one of `engines` for that
// layout without a variant ("xkb:jp::jpn" for "jp"), else the US layout.
QString ibusASCIIEngine(const QString& layout, const QStringList& engines) {
    const QString name = kIBusLayoutPrefix + layout + QStringLiteral("::");
    for (const QString& engine : engines)
        if (engine.startsWith(name))
            return engine;
    return QStringLiteral("xkb:us::eng");
}

// The value of the IBUS_ADDRESS= line of an address file; empty when there is none.
QString ibusAddressFromFile(const QByteArray& contents) {
    const QByteArray key = "IBUS_ADDRESS=";
    for (const QByteArray& line : contents.split('\n')) {
        const QByteArray trimmed = line.trimmed();
        if (trimmed.startsWith(key))
            return QString::fromUtf8(trimmed.mid(key.size()));
    }
    return {};
}

// Where this session's IBus daemon listens, found the way IBus clients find it; empty
// when nothing says.
QString currentIBusAddress() {
    const QString fromEnvironment = qEnvironmentVariable("IBUS_ADDRESS");
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    QString path = qEnvironmentVariable("IBUS_ADDRESS_FILE");
    if (path.isEmpty()) {
        const QString id = QString::fromLatin1(QSysInfo::machineUniqueId());
        if (id.isEmpty())
            return {};
        QString configHome = qEnvironmentVariable("XDG_CONFIG_HOME");
        if (configHome.isEmpty())
            configHome = QDir::homePath() + QStringLiteral("/.config");
        path = DBusInputSourceSwitcher::ibusAddressFile(configHome, id,
                                                        qEnvironmentVariable("DISPLAY"));
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return ibusAddressFromFile(file.readAll());
}

// Whether a bus daemon listens at a unix-socket D-Bus address and starts the
// authentication within the call timeout. Connecting through QtDBus waits for the daemon's
// greeting without a limit of its own, so a daemon that hangs is found out here first.
// Addresses of other kinds are left to QtDBus.
bool busAnswersPromptly(const QString& address) {
    const QString first = address.section(u';', 0, 0);
    if (!first.startsWith(QLatin1String("unix:")))
        return true;
    QByteArray path;
    bool abstract = false;
    for (const QString& pair : first.mid(5).split(u',')) {
        const QString key = pair.section(u'=', 0, 0);
        if (key == QLatin1String("path") || key == QLatin1String("abstract")) {
            path = QByteArray::fromPercentEncoding(pair.section(u'=', 1).toUtf8());
            abstract = key == QLatin1String("abstract");
        }
    }
    sockaddr_un peer{};
    peer.sun_family = AF_UNIX;
    const qsizetype offset = abstract ? 1 : 0; // an abstract name starts with a NUL byte
    if (path.isEmpty() || offset + path.size() >= qsizetype(sizeof(peer.sun_path)))
        return true;
    std::memcpy(peer.sun_path + offset, path.constData(), size_t(path.size()));
    const auto length = socklen_t(offsetof(sockaddr_un, sun_path) + offset + path.size());

    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (fd < 0)
        return false;
    const QByteArray auth =
        QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(::getuid()).toHex() + "\r\n";
    pollfd reply{fd, POLLIN, 0};
    const bool answered =
        ::connect(fd, reinterpret_cast<const sockaddr*>(&peer), length) == 0 &&
        ::send(fd, auth.constData(), size_t(auth.size()), MSG_NOSIGNAL) == auth.size() &&
        ::poll(&reply, 1, kCallTimeoutMs) == 1;
    ::close(fd);
    return answered;
}

} // namespace

DBusInputSourceSwitcher::~DBusInputSourceSwitcher() {
    // Quitting while a panel is open must not leave the user typing plain letters.
    restorePreviousInput();
}

void DBusInputSourceSwitcher::switchToASCIIInput() {
    switchFcitx();
    switchIBus();
}

void DBusInputSourceSwitcher::restorePreviousInput() {
    restoreFcitx();
    restoreIBus();
}

void DBusInputSourceSwitcher::switchFcitx() {
    if (!QDBusConnection::sessionBus().isConnected())
        return;
    const QDBusMessage state = callFcitx(QStringLiteral("State"));
    if (!succeeded(state) || state.arguments().value(0).toInt() != kFcitxInputMethodActive)
        return;
    const QDBusMessage current = callFcitx(QStringLiteral("CurrentInputMethod"));
    if (!succeeded(callFcitx(QStringLiteral("Deactivate"))))
        return;
    fcitxDeactivated_ = true;
    fcitxInputMethod_ = succeeded(current) ? current.arguments().value(0).toString() : QString();
    systemLog(QStringLiteral("Deskmark: パネルを開く間は英数入力に切り替え（fcitx5: %1 をオフ）")
                  .arg(fcitxInputMethod_));
}

void DBusInputSourceSwitcher::restoreFcitx() {
    if (!fcitxDeactivated_)
        return;
    fcitxDeactivated_ = false;
    if (succeeded(callFcitx(QStringLiteral("Activate"))))
        systemLog(QStringLiteral("Deskmark: 入力メソッドを元に戻す（fcitx5: %1 をオン）")
                      .arg(fcitxInputMethod_));
}

void DBusInputSourceSwitcher::switchIBus() {
    const QDBusConnection bus = ibusBus();
    if (!bus.isConnected())
        return;
    const QDBusMessage global = ibusProperty(bus, QStringLiteral("GlobalEngine"));
    if (!succeeded(global))
        return;
    const auto current = ibusEngine(global.arguments().value(0));
    if (!current || current->name.isEmpty() || current->name.startsWith(kIBusLayoutPrefix))
        return;
    const QDBusMessage engines = ibusProperty(bus, QStringLiteral("Engines"));
    const QString layout = ibusASCIIEngine(
        current->layout,
        succeeded(engines) ? ibusEngineNames(engines.arguments().value(0)) : QStringList());
    if (!succeeded(callIBus(bus, QStringLiteral("SetGlobalEngine"), {layout})))
        return;
    ibusPreviousEngine_ = current->name;
    systemLog(QStringLiteral("Deskmark: パネルを開く間は英数入力に切り替え（IBus: %1 → %2）")
                  .arg(current->name, layout));
}

void DBusInputSourceSwitcher::restoreIBus() {
    if (ibusPreviousEngine_.isEmpty())
        return;
    const QString engine = std::exchange(ibusPreviousEngine_, QString());
    const QDBusConnection bus = ibusBus();
    if (bus.isConnected() && succeeded(callIBus(bus, QStringLiteral("SetGlobalEngine"), {engine})))
        systemLog(QStringLiteral("Deskmark: 入力メソッドを元に戻す（IBus: %1）").arg(engine));
}

QString DBusInputSourceSwitcher::framework() {
    const QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
    if (bus && bus->isServiceRegistered(kFcitxService))
        return QStringLiteral("fcitx5");
    return ibusBus().isConnected() ? QStringLiteral("IBus") : QString();
}

QDBusConnection DBusInputSourceSwitcher::ibusBus() {
    const QString address = currentIBusAddress();
    if (!address.isEmpty() && address == ibusAddress_) {
        QDBusConnection bus(kIBusConnectionName);
        if (bus.isConnected())
            return bus;
    }
    // The daemon moved, went away or was not reached last time: start over.
    QDBusConnection::disconnectFromBus(kIBusConnectionName);
    ibusAddress_ = address;
    if (address.isEmpty() || !busAnswersPromptly(address))
        return QDBusConnection(kIBusConnectionName);
    return QDBusConnection::connectToBus(address, kIBusConnectionName);
}

QString DBusInputSourceSwitcher::ibusAddressFile(const QString& configHome,
                                                 const QString& machineId, const QString& display) {
    // "host:number.screen": an empty host means the local machine, called "unix".
    QString host = display;
    QString number = QStringLiteral("0");
    const qsizetype colon = display.indexOf(u':');
    if (colon >= 0) {
        host = display.left(colon);
        number = display.mid(colon + 1).section(u'.', 0, 0);
    }
    if (host.isEmpty())
        host = QStringLiteral("unix");
    return QStringLiteral("%1/ibus/bus/%2-%3-%4").arg(configHome, machineId, host, number);
}

} // namespace deskmark
