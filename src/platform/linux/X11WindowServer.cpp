#include "platform/linux/X11WindowServer.h"

#include "core/app/SystemLog.h"
#include "core/spaces/MonitorIdentity.h"
#include "core/spaces/PrimaryDisplay.h"
#include "platform/linux/X11RootClient.h"

#include <QVariantList>
#include <QVariantMap>

#include <algorithm>

namespace deskmark {

namespace {

using Property = X11RootClient::Property;

// A window manager may publish any number; a nonsensical one must not make us build
// millions of Spaces.
constexpr qlonglong kMostDesktops = 1000;

QString spaceUUID(qlonglong number) {
    return QStringLiteral("desktop-%1").arg(number);
}

} // namespace

X11WindowServer::X11WindowServer(QObject* parent)
    : WindowServer(parent), client_(new X11RootClient(this)) {
    if (!client_->isConnected()) {
        systemLog(
            QStringLiteral("Deskmark: X ディスプレイ \"%1\" に接続できないため Space を読めない")
                .arg(QString::fromLocal8Bit(qgetenv("DISPLAY"))));
        return;
    }
    connect(client_, &X11RootClient::desktopsChanged, this, &X11WindowServer::scheduleAnnouncement);
    connect(client_, &X11RootClient::monitorsChanged, this, [this] {
        displays_.reset();
        scheduleAnnouncement();
    });
    connect(client_, &X11RootClient::disconnected, this, [this] {
        systemLog(QStringLiteral("Deskmark: X ディスプレイとの接続が切れたため Space を読めない"));
        displays_.reset();
        scheduleAnnouncement();
    });
}

QVariant X11WindowServer::managedDisplaySpaces() const {
    const auto desktops = this->desktops();
    if (!desktops || displays().isEmpty())
        return {};
    QVariantList spaces;
    for (qlonglong number = 1; number <= desktops->count; ++number)
        spaces << QVariantMap{{QStringLiteral("uuid"), spaceUUID(number)},
                              {QStringLiteral("ManagedSpaceID"), number}};
    QVariantList answer;
    for (const Display& display : displays()) {
        QVariantMap entry{{QStringLiteral("Display Identifier"), display.uuid},
                          {QStringLiteral("Spaces"), spaces}};
        if (desktops->current)
            entry.insert(QStringLiteral("Current Space"),
                         QVariantMap{{QStringLiteral("uuid"), spaceUUID(*desktops->current + 1)}});
        answer << entry;
    }
    return answer;
}

std::optional<QString> X11WindowServer::mainDisplayUUID() const {
    return primaryOrFirstUUID(displays());
}

std::optional<QString> X11WindowServer::displayUUIDForScreen(const QString& screenName) const {
    const auto find = [this, &screenName]() -> std::optional<QString> {
        for (const Display& display : displays()) {
            if (display.name == screenName)
                return display.uuid;
        }
        for (const Display& display : displays()) {
            if (display.outputs.contains(screenName))
                return display.uuid;
        }
        return std::nullopt;
    };
    if (const auto uuid = find())
        return uuid;
    // Qt's own connection may have heard of a new monitor before ours did.
    reloadDisplays();
    return find();
}

QStringList X11WindowServer::desktopNames() const {
    return client_->utf8List(Property::DesktopNames);
}

bool X11WindowServer::setDesktopNames(const QStringList& names) {
    return client_->setUtf8List(Property::DesktopNames, names);
}

bool X11WindowServer::requestDesktop(int index) {
    const auto desktops = this->desktops();
    if (!desktops || index < 0 || index >= desktops->count)
        return false;
    // The second field is the request's timestamp; 0 is CurrentTime.
    return client_->sendMessage(Property::CurrentDesktop, {quint32(index), 0, 0, 0, 0});
}

bool X11WindowServer::requestSpace(const QString& displayUUID, int index) {
    Q_UNUSED(displayUUID);
    return requestDesktop(index);
}

std::optional<X11WindowServer::Desktops> X11WindowServer::desktops() const {
    if (!client_->isConnected())
        return std::nullopt; // logged when it happened
    const auto count =
        client_->hasWindowManager() ? client_->cardinal(Property::NumberOfDesktops) : std::nullopt;
    if (!count || *count == 0) {
        if (!reportedNoWindowManager_)
            systemLog(QStringLiteral("Deskmark: EWMH 対応のウィンドウマネージャが見つからないため "
                                     "Space を読めない（_NET_SUPPORTING_WM_CHECK / "
                                     "_NET_NUMBER_OF_DESKTOPS なし）"));
        reportedNoWindowManager_ = true;
        return std::nullopt;
    }
    reportedNoWindowManager_ = false;
    Desktops desktops;
    desktops.count = std::min<qlonglong>(*count, kMostDesktops);
    const auto current = client_->cardinal(Property::CurrentDesktop);
    if (current && *current < desktops.count)
        desktops.current = *current;
    return desktops;
}

const QList<X11WindowServer::Display>& X11WindowServer::displays() const {
    if (!displays_)
        reloadDisplays();
    return *displays_;
}

void X11WindowServer::reloadDisplays() const {
    const QList<RandrMonitor> monitors = client_->monitors();
    QList<MonitorIdentity> identities;
    for (const RandrMonitor& monitor : monitors)
        identities << MonitorIdentity(monitor.name, monitor.outputs.value(0), monitor.edid);
    const QStringList uuids = MonitorIdentity::displayUUIDs(identities);

    QList<Display> displays;
    for (qsizetype i = 0; i < monitors.size(); ++i)
        displays << Display{monitors[i].name, monitors[i].outputs, monitors[i].primary, uuids[i]};
    if (displays.isEmpty() && client_->isConnected() && !reportedNoMonitors_)
        systemLog(QStringLiteral("Deskmark: X サーバーが RandR 1.5 のモニターを示さないため "
                                 "ディスプレイを読めない"));
    reportedNoMonitors_ = displays.isEmpty();
    displays_ = displays;
}

void X11WindowServer::scheduleAnnouncement() {
    if (announcementPending_)
        return;
    announcementPending_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            announcementPending_ = false;
            Q_EMIT activeSpaceChanged();
        },
        Qt::QueuedConnection);
}

} // namespace deskmark
