#include "platform/linux/DBusMenuTypes.h"

#include <QDBusMetaType>

namespace deskmark {

void registerDBusMenuTypes() {
    static const bool registered = [] {
        qDBusRegisterMetaType<DBusMenuItem>();
        qDBusRegisterMetaType<DBusMenuItemList>();
        qDBusRegisterMetaType<DBusMenuItemKeys>();
        qDBusRegisterMetaType<DBusMenuItemKeysList>();
        qDBusRegisterMetaType<DBusMenuLayoutItem>();
        qDBusRegisterMetaType<DBusMenuEvent>();
        qDBusRegisterMetaType<DBusMenuEventList>();
        qDBusRegisterMetaType<DBusMenuShortcut>();
        // QtDBus matches the slots and signals of the exported object by the type names
        // written in them, so the lists are known by their own names too.
        qRegisterMetaType<DBusMenuItemList>("deskmark::DBusMenuItemList");
        qRegisterMetaType<DBusMenuItemKeysList>("deskmark::DBusMenuItemKeysList");
        qRegisterMetaType<DBusMenuEventList>("deskmark::DBusMenuEventList");
        return true;
    }();
    Q_UNUSED(registered);
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItem& item) {
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItem& item) {
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItemKeys& keys) {
    argument.beginStructure();
    argument << keys.id << keys.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItemKeys& keys) {
    argument.beginStructure();
    argument >> keys.id >> keys.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuLayoutItem& item) {
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const DBusMenuLayoutItem& child : item.children)
        argument << QDBusVariant(QVariant::fromValue(child));
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuLayoutItem& item) {
    argument.beginStructure();
    argument >> item.id >> item.properties;
    item.children.clear();
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        item.children.append(qdbus_cast<DBusMenuLayoutItem>(child.variant()));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuEvent& event) {
    argument.beginStructure();
    argument << event.id << event.eventId << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuEvent& event) {
    argument.beginStructure();
    argument >> event.id >> event.eventId >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

} // namespace deskmark
