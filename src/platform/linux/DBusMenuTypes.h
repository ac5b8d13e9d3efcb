#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// The structures of the com.canonical.dbusmenu interface, with their D-Bus marshalling.

namespace deskmark {

// One item and its properties: (ia{sv}).
struct DBusMenuItem {
    int id = 0;
    QVariantMap properties;
};
using DBusMenuItemList = QList<DBusMenuItem>;

// One item and the names of properties it no longer has: (ias).
struct DBusMenuItemKeys {
    int id = 0;
    QStringList properties;
};
using DBusMenuItemKeysList = QList<DBusMenuItemKeys>;

// A node of the tree that GetLayout returns: (ia{sv}av), each child a variant that holds
// another node.
struct DBusMenuLayoutItem {
    int id = 0;
    QVariantMap properties;
    QList<DBusMenuLayoutItem> children;
};

// One event of an EventGroup call: (isvu).
struct DBusMenuEvent {
    int id = 0;
    QString eventId;
    QDBusVariant data;
    uint timestamp = 0;
};
using DBusMenuEventList = QList<DBusMenuEvent>;

// A shortcut: its key chords, each the modifier names followed by the key name (aas).
using DBusMenuShortcut = QList<QStringList>;

// Makes the types above known to QtDBus; safe to call more than once.
void registerDBusMenuTypes();

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItem& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItem& item);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuItemKeys& keys);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuItemKeys& keys);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuLayoutItem& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuLayoutItem& item);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuEvent& event);

} // namespace deskmark

Q_DECLARE_METATYPE(deskmark::DBusMenuItem)
Q_DECLARE_METATYPE(deskmark::DBusMenuItemKeys)
Q_DECLARE_METATYPE(deskmark::DBusMenuLayoutItem)
Q_DECLARE_METATYPE(deskmark::DBusMenuEvent)
