#pragma once

#include "platform/linux/DBusMenuTypes.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QTimer>

class QAction;
class QMenu;

namespace deskmark {

// Publishes a QMenu on the bus with the com.canonical.dbusmenu interface, so that the
// panel draws the menu itself. Item 0 is the menu; every action gets an id the first time
// the panel sees it. Actions added to or removed from the menu or any submenu raise the
// layout revision and are announced with one LayoutUpdated per turn of the event loop; a
// changed action (text, check mark, enabled, shortcut) goes out in one
// ItemsPropertiesUpdated per turn, with only what differs from what the panel last fetched.
// Checkable actions of an exclusive QActionGroup are radio items.
// A "clicked" event triggers the action; AboutToShow emits the (sub)menu's aboutToShow(),
// so a menu rebuilt on opening works as with a menu Qt opens itself.
class DBusMenuExporter : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)

public:
    DBusMenuExporter(const QDBusConnection& bus, const QString& path, QObject* parent = nullptr);
    ~DBusMenuExporter() override;

    // The menu to publish; nullptr publishes an empty one. Not owned.
    void setMenu(QMenu* menu);

    uint version() const { return 3; }
    QString textDirection() const;
    QString status() const { return QStringLiteral("normal"); }

public Q_SLOTS:
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   deskmark::DBusMenuLayoutItem& layout);
    deskmark::DBusMenuItemList GetGroupProperties(const QList<int>& ids,
                                                  const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const deskmark::DBusMenuEventList& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

Q_SIGNALS:
    void LayoutUpdated(uint revision, int parent);
    void ItemsPropertiesUpdated(const deskmark::DBusMenuItemList& updatedProps,
                                const deskmark::DBusMenuItemKeysList& removedProps);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool knows(int id) const;
    QMenu* menuOf(int id) const;
    int idOf(QAction* action);
    void forget(const QAction* action);
    void watch(QMenu* menu);
    void layoutChanged();
    void announceProperties();
    QVariantMap properties(int id, const QStringList& names) const;
    DBusMenuLayoutItem layoutOf(int id, int depth, const QStringList& names);
    bool handleEvent(int id, const QString& eventId);
    void replyUnknownId(int id);

    QDBusConnection bus_;
    QString path_;
    QPointer<QMenu> menu_;
    QList<QPointer<QMenu>> watched_;
    QHash<int, QPointer<QAction>> actions_;
    QHash<const QAction*, int> ids_;
    int nextId_ = 1;
    uint revision_ = 1;
    int changes_ = 0;
    QTimer announce_;
    // The full properties of each item as the panel last fetched or heard them, and the
    // items changed since the last announcement.
    QHash<int, QVariantMap> known_;
    QSet<int> changed_;
    QTimer announceProperties_;
};

} // namespace deskmark
