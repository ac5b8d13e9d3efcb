#include "platform/linux/AtSpiReader.h"

#include "core/app/SystemLog.h"
#include "core/model/HomePath.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDir>
#include <QFileInfo>

#include <functional>

namespace deskmark {

namespace {

// Role and state numbers of the AT-SPI protocol.
constexpr quint32 kRoleDirectoryPane = 17;
constexpr quint32 kRoleFrame = 23;
constexpr quint32 kRoleText = 61;
constexpr quint32 kRoleEntry = 79;
constexpr quint32 kRolePageTab = 37;
constexpr quint32 kRoleDocumentWeb = 95;
constexpr int kStateActive = 1;
constexpr int kStateSelected = 23;
constexpr int kStateShowing = 25;
// Enough for any browser's own controls; a page's content is never walked into.
constexpr int kMaxNodes = 3000;
constexpr int kCallTimeoutMs = 1000;

const QString kAccessible = QStringLiteral("org.a11y.atspi.Accessible");

struct Node {
    QString service;
    QString path;
};

struct Facts {
    quint32 role = 0;
    quint64 states = 0;
};

class Bus {
public:
    explicit Bus(QDBusConnection connection) : connection_(std::move(connection)) {}

    QDBusMessage call(const Node& node, const QString& interface, const QString& method,
                      const QVariantList& arguments = {}) const {
        QDBusMessage message =
            QDBusMessage::createMethodCall(node.service, node.path, interface, method);
        message.setArguments(arguments);
        return connection_.call(message, QDBus::Block, kCallTimeoutMs);
    }

    QList<Node> children(const Node& node) const {
        const QDBusMessage reply = call(node, kAccessible, QStringLiteral("GetChildren"));
        QList<Node> result;
        if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
            return result;
        const auto list = reply.arguments().first().value<QDBusArgument>();
        list.beginArray();
        while (!list.atEnd()) {
            Node child;
            QDBusObjectPath path;
            list.beginStructure();
            list >> child.service >> path;
            list.endStructure();
            child.path = path.path();
            result << child;
        }
        list.endArray();
        return result;
    }

    Facts facts(const Node& node) const {
        Facts facts;
        const QDBusMessage role = call(node, kAccessible, QStringLiteral("GetRole"));
        if (role.type() == QDBusMessage::ReplyMessage && !role.arguments().isEmpty())
            facts.role = role.arguments().first().toUInt();
        const QDBusMessage state = call(node, kAccessible, QStringLiteral("GetState"));
        if (state.type() == QDBusMessage::ReplyMessage && !state.arguments().isEmpty()) {
            QList<quint32> words;
            state.arguments().first().value<QDBusArgument>() >> words;
            for (int i = 0; i < words.size() && i < 2; ++i)
                facts.states |= quint64(words[i]) << (32 * i);
        }
        return facts;
    }

    QString name(const Node& node) const {
        const QDBusMessage reply =
            call(node, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                 {kAccessible, QStringLiteral("Name")});
        if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
            return {};
        return reply.arguments().first().value<QDBusVariant>().variant().toString();
    }

    QString documentAddress(const Node& node) const {
        const QDBusMessage reply =
            call(node, QStringLiteral("org.a11y.atspi.Document"), QStringLiteral("GetAttributes"));
        if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
            return {};
        QMap<QString, QString> attributes;
        reply.arguments().first().value<QDBusArgument>() >> attributes;
        for (const char* key : {"DocURL", "URI", "URL"}) {
            const QString value = attributes.value(QLatin1String(key));
            if (!value.isEmpty())
                return value;
        }
        return {};
    }

    QString text(const Node& node) const {
        const QDBusMessage reply = call(node, QStringLiteral("org.a11y.atspi.Text"),
                                        QStringLiteral("GetText"), {0, -1});
        if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
            return {};
        return reply.arguments().first().toString();
    }

    std::optional<quint32> processOf(const QString& service) const {
        const QDBusMessage reply = call({QStringLiteral("org.freedesktop.DBus"),
                                         QStringLiteral("/org/freedesktop/DBus")},
                                        QStringLiteral("org.freedesktop.DBus"),
                                        QStringLiteral("GetConnectionUnixProcessID"), {service});
        if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
            return std::nullopt;
        return reply.arguments().first().toUInt();
    }

private:
    QDBusConnection connection_;
};

bool has(const Facts& facts, int state) { return (facts.states >> state) & 1u; }

const Node kBusLauncher{QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus")};

std::optional<QDBusConnection> accessibilityBus() {
    const Bus session(QDBusConnection::sessionBus());
    const QDBusMessage reply =
        session.call(kBusLauncher, QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return std::nullopt;
    QDBusConnection bus = QDBusConnection::connectToBus(reply.arguments().first().toString(),
                                                        QStringLiteral("deskmark-a11y"));
    if (!bus.isConnected())
        return std::nullopt;
    return bus;
}

// Visits the shown elements of a window breadth first; visit returns whether to look
// inside the element, or stops the walk by setting done.
void walkShown(const Bus& bus, const Node& frame,
               const std::function<bool(const Node&, const Facts&, bool& done)>& visit) {
    QList<Node> pending{frame};
    bool done = false;
    for (int visited = 0; !done && !pending.isEmpty() && visited < kMaxNodes; ++visited) {
        const Node node = pending.takeFirst();
        const Facts facts = bus.facts(node);
        if (node.path != frame.path && !has(facts, kStateShowing))
            continue; // hidden menus, panels and the documents of other tabs
        if (visit(node, facts, done))
            pending << bus.children(node);
    }
}

// The selected tab's name and the shown document's address inside one window; a page's
// content is never walked into.
std::optional<CaptureSource::Page> pageIn(const Bus& bus, const Node& frame) {
    QString tabName, address, documentName;
    walkShown(bus, frame, [&](const Node& node, const Facts& facts, bool& done) {
        if (facts.role == kRolePageTab && has(facts, kStateSelected) && tabName.isEmpty())
            tabName = bus.name(node);
        if (facts.role != kRoleDocumentWeb)
            return true;
        if (address.isEmpty()) {
            address = bus.documentAddress(node);
            documentName = bus.name(node);
        }
        done = !tabName.isEmpty() && !address.isEmpty();
        return false;
    });
    if (address.isEmpty())
        return std::nullopt;
    return CaptureSource::Page{address, tabName.isEmpty() ? documentName : tabName};
}

// The first text field holding an existing folder's path; the folder's items are not
// walked into.
std::optional<QString> folderIn(const Bus& bus, const Node& frame) {
    std::optional<QString> folder;
    walkShown(bus, frame, [&](const Node& node, const Facts& facts, bool& done) {
        if (facts.role == kRoleText || facts.role == kRoleEntry) {
            const QString path = expandTilde(bus.text(node).trimmed());
            if (path.startsWith(u'/') && QFileInfo(path).isDir()) {
                folder = QDir::cleanPath(path);
                done = true;
            }
            return false;
        }
        return facts.role != kRoleDirectoryPane;
    });
    return folder;
}

// What read finds in the window of the process pid titled windowTitle; else in its active
// window; else in its first.
template <typename T>
std::optional<T> inWindow(qint64 pid, const QString& windowTitle,
                          std::optional<T> (*read)(const Bus&, const Node&)) {
    const std::optional<QDBusConnection> connection = accessibilityBus();
    if (!connection || pid <= 0)
        return std::nullopt;
    const Bus bus(*connection);
    const Node root{QStringLiteral("org.a11y.atspi.Registry"),
                    QStringLiteral("/org/a11y/atspi/accessible/root")};
    for (const Node& application : bus.children(root)) {
        if (bus.processOf(application.service) != quint32(pid))
            continue;
        // The window by its title; else the active one; else the first.
        std::optional<Node> chosen, active, first;
        for (const Node& window : bus.children(application)) {
            const Facts facts = bus.facts(window);
            if (facts.role != kRoleFrame)
                continue;
            if (!first)
                first = window;
            if (!active && has(facts, kStateActive))
                active = window;
            if (!chosen && !windowTitle.isEmpty() && bus.name(window) == windowTitle)
                chosen = window;
        }
        if (!chosen)
            chosen = active ? active : first;
        if (chosen)
            return read(bus, *chosen);
    }
    return std::nullopt;
}

} // namespace

void AtSpiReader::enableAccessibility() {
    if (enableTried_)
        return;
    enableTried_ = true;
    const Bus session(QDBusConnection::sessionBus());
    const QString status = QStringLiteral("org.a11y.Status");
    const QDBusMessage enabled =
        session.call(kBusLauncher, QStringLiteral("org.freedesktop.DBus.Properties"),
                     QStringLiteral("Get"), {status, QStringLiteral("IsEnabled")});
    if (enabled.type() != QDBusMessage::ReplyMessage || enabled.arguments().isEmpty() ||
        enabled.arguments().first().value<QDBusVariant>().variant().toBool())
        return;
    session.call(kBusLauncher, QStringLiteral("org.freedesktop.DBus.Properties"),
                 QStringLiteral("Set"),
                 {status, QStringLiteral("IsEnabled"), QVariant::fromValue(QDBusVariant(true))});
    systemLog(QStringLiteral("Deskmark: 取り込みのためにアクセシビリティを有効にしました "
                             "(org.a11y.Status.IsEnabled、ユーザー設定に保存されます)"));
}

std::optional<CaptureSource::Page> AtSpiReader::selectedPage(qint64 pid,
                                                             const QString& windowTitle) {
    enableAccessibility();
    return inWindow<CaptureSource::Page>(pid, windowTitle, pageIn);
}

std::optional<QString> AtSpiReader::shownFolder(qint64 pid, const QString& windowTitle) {
    enableAccessibility();
    return inWindow<QString>(pid, windowTitle, folderIn);
}

} // namespace deskmark
