#include "platform/linux/DBusMenuExporter.h"

#include "core/app/SystemLog.h"

#include <QAction>
#include <QActionEvent>
#include <QActionGroup>
#include <QDBusError>
#include <QGuiApplication>
#include <QKeySequence>
#include <QMenu>

namespace deskmark {

namespace {

// dbusmenu marks the mnemonic with '_' where Qt uses '&': "&&" is a literal '&', a lone
// '&' marks the next letter, and a literal '_' is written twice. A shortcut that QMenu
// shows after a tab is left out: the panel draws the "shortcut" property instead.
QString dbusMenuLabel(const QString& actionText) {
    const QString text = actionText.section(u'\t', 0, 0);
    QString label;
    label.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'&') {
            if (i + 1 < text.size() && text.at(i + 1) == u'&') {
                label += u'&';
                ++i;
            } else if (i + 1 < text.size()) {
                label += u'_';
            }
        } else if (c == u'_') {
            label += QStringLiteral("__");
        } else {
            label += c;
        }
    }
    return label;
}

DBusMenuShortcut dbusMenuShortcut(const QKeySequence& sequence) {
    DBusMenuShortcut shortcut;
    for (int i = 0; i < sequence.count(); ++i) {
        const QKeyCombination combination = sequence[i];
        const Qt::KeyboardModifiers modifiers = combination.keyboardModifiers();
        QStringList chord;
        if (modifiers & Qt::ControlModifier)
            chord << QStringLiteral("Control");
        if (modifiers & Qt::AltModifier)
            chord << QStringLiteral("Alt");
        if (modifiers & Qt::MetaModifier)
            chord << QStringLiteral("Super");
        if (modifiers & Qt::ShiftModifier)
            chord << QStringLiteral("Shift");
        chord << QKeySequence(combination.key()).toString(QKeySequence::PortableText);
        shortcut << chord;
    }
    return shortcut;
}

QVariantMap actionProperties(QAction* action) {
    QVariantMap properties;
    properties.insert(QStringLiteral("visible"), action->isVisible());
    if (action->isSeparator()) {
        properties.insert(QStringLiteral("type"), QStringLiteral("separator"));
        return properties;
    }
    properties.insert(QStringLiteral("label"), dbusMenuLabel(action->text()));
    properties.insert(QStringLiteral("enabled"), action->isEnabled());
    if (action->isCheckable()) {
        const QActionGroup* group = action->actionGroup();
        properties.insert(QStringLiteral("toggle-type"), group && group->isExclusive()
                                                             ? QStringLiteral("radio")
                                                             : QStringLiteral("checkmark"));
        properties.insert(QStringLiteral("toggle-state"), action->isChecked() ? 1 : 0);
    }
    if (action->menu())
        properties.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
    if (!action->shortcut().isEmpty())
        properties.insert(QStringLiteral("shortcut"),
                          QVariant::fromValue(dbusMenuShortcut(action->shortcut())));
    return properties;
}

} // namespace

DBusMenuExporter::DBusMenuExporter(const QDBusConnection& bus, const QString& path, QObject* parent)
    : QObject(parent), bus_(bus), path_(path) {
    registerDBusMenuTypes();
    announce_.setSingleShot(true);
    announce_.setInterval(0);
    connect(&announce_, &QTimer::timeout, this, [this] { Q_EMIT LayoutUpdated(revision_, 0); });
    announceProperties_.setSingleShot(true);
    announceProperties_.setInterval(0);
    connect(&announceProperties_, &QTimer::timeout, this, &DBusMenuExporter::announceProperties);
    if (!bus_.registerObject(path_, this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                                 QDBusConnection::ExportAllProperties))
        systemLog(QStringLiteral("Deskmark: could not publish the menu at %1 on the session bus")
                      .arg(path_));
}

DBusMenuExporter::~DBusMenuExporter() {
    bus_.unregisterObject(path_);
}

void DBusMenuExporter::setMenu(QMenu* menu) {
    for (const QPointer<QMenu>& watched : std::as_const(watched_))
        if (watched)
            watched->removeEventFilter(this);
    watched_.clear();
    actions_.clear();
    ids_.clear();
    known_.clear();
    changed_.clear();
    menu_ = menu;
    if (menu)
        watch(menu);
    layoutChanged();
}

QString DBusMenuExporter::textDirection() const {
    return QGuiApplication::layoutDirection() == Qt::RightToLeft ? QStringLiteral("rtl")
                                                                 : QStringLiteral("ltr");
}

uint DBusMenuExporter::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                                 DBusMenuLayoutItem& layout) {
    if (!knows(parentId))
        replyUnknownId(parentId);
    else
        layout = layoutOf(parentId, recursionDepth, propertyNames);
    return revision_;
}

DBusMenuItemList DBusMenuExporter::GetGroupProperties(const QList<int>& ids,
                                                      const QStringList& propertyNames) {
    QList<int> wanted = ids;
    if (wanted.isEmpty()) { // all items
        wanted << 0;
        for (auto it = actions_.cbegin(); it != actions_.cend(); ++it)
            if (it.value())
                wanted << it.key();
    }
    DBusMenuItemList items;
    for (int id : std::as_const(wanted))
        if (knows(id)) {
            items << DBusMenuItem{id, properties(id, propertyNames)};
            if (propertyNames.isEmpty())
                known_.insert(id, items.constLast().properties);
        }
    return items;
}

QDBusVariant DBusMenuExporter::GetProperty(int id, const QString& name) {
    if (!knows(id)) {
        replyUnknownId(id);
        return {};
    }
    const QVariant value = properties(id, {name}).value(name);
    if (!value.isValid() && calledFromDBus())
        sendErrorReply(QDBusError::InvalidArgs,
                       QStringLiteral("menu item %1 has no %2").arg(id).arg(name));
    return QDBusVariant(value);
}

void DBusMenuExporter::Event(int id, const QString& eventId, const QDBusVariant& data,
                             uint timestamp) {
    Q_UNUSED(data);
    Q_UNUSED(timestamp);
    if (!handleEvent(id, eventId))
        replyUnknownId(id);
}

QList<int> DBusMenuExporter::EventGroup(const DBusMenuEventList& events) {
    QList<int> idErrors;
    for (const DBusMenuEvent& event : events)
        if (!handleEvent(event.id, event.eventId))
            idErrors << event.id;
    if (!events.isEmpty() && idErrors.size() == events.size() && calledFromDBus())
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("none of the menu items exists"));
    return idErrors;
}

bool DBusMenuExporter::AboutToShow(int id) {
    if (!knows(id)) {
        replyUnknownId(id);
        return false;
    }
    QMenu* menu = menuOf(id);
    if (!menu)
        return false;
    watch(menu);
    const int before = changes_;
    Q_EMIT menu->aboutToShow();
    return changes_ != before;
}

QList<int> DBusMenuExporter::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) {
    QList<int> updatesNeeded;
    for (int id : ids) {
        if (!knows(id))
            idErrors << id;
        else if (AboutToShow(id))
            updatesNeeded << id;
    }
    return updatesNeeded;
}

bool DBusMenuExporter::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ActionAdded:
    case QEvent::ActionRemoved:
        layoutChanged();
        break;
    case QEvent::ActionChanged:
        if (const auto it = ids_.constFind(static_cast<QActionEvent*>(event)->action());
            it != ids_.cend()) {
            changed_.insert(it.value());
            ++changes_;
            announceProperties_.start();
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool DBusMenuExporter::knows(int id) const {
    return id == 0 || !actions_.value(id).isNull();
}

QMenu* DBusMenuExporter::menuOf(int id) const {
    if (id == 0)
        return menu_;
    const QPointer<QAction> action = actions_.value(id);
    return action ? action->menu() : nullptr;
}

int DBusMenuExporter::idOf(QAction* action) {
    if (const auto it = ids_.constFind(action); it != ids_.cend())
        return it.value();
    const int id = nextId_++;
    ids_.insert(action, id);
    actions_.insert(id, action);
    connect(action, &QObject::destroyed, this, [this, action] { forget(action); });
    return id;
}

void DBusMenuExporter::forget(const QAction* action) {
    if (const auto it = ids_.constFind(action); it != ids_.cend()) {
        actions_.remove(it.value());
        known_.remove(it.value());
        ids_.erase(it);
    }
}

// Sends what changed in the items the panel has fetched since it last heard of them:
// the properties with new values and the names of those that are gone.
void DBusMenuExporter::announceProperties() {
    DBusMenuItemList updated;
    DBusMenuItemKeysList removed;
    for (const int id : std::as_const(changed_)) {
        const auto known = known_.find(id);
        if (known == known_.end() || !knows(id))
            continue; // never fetched: the panel asks for it when it needs it
        const QVariantMap now = properties(id, {});
        QVariantMap changes;
        for (auto it = now.cbegin(); it != now.cend(); ++it)
            if (known->value(it.key()) != it.value())
                changes.insert(it.key(), it.value());
        QStringList gone;
        for (auto it = known->cbegin(); it != known->cend(); ++it)
            if (!now.contains(it.key()))
                gone << it.key();
        *known = now;
        if (!changes.isEmpty())
            updated << DBusMenuItem{id, changes};
        if (!gone.isEmpty())
            removed << DBusMenuItemKeys{id, gone};
    }
    changed_.clear();
    if (!updated.isEmpty() || !removed.isEmpty())
        Q_EMIT ItemsPropertiesUpdated(updated, removed);
}

void DBusMenuExporter::watch(QMenu* menu) {
    watched_.removeIf([](const QPointer<QMenu>& watched) { return watched.isNull(); });
    if (watched_.contains(menu))
        return;
    menu->installEventFilter(this);
    watched_ << menu;
}

void DBusMenuExporter::layoutChanged() {
    ++revision_;
    ++changes_;
    announce_.start();
}

QVariantMap DBusMenuExporter::properties(int id, const QStringList& names) const {
    QVariantMap all;
    if (id == 0)
        all.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
    else if (QAction* action = actions_.value(id))
        all = actionProperties(action);
    if (names.isEmpty())
        return all;
    QVariantMap chosen;
    for (const QString& name : names)
        if (const auto it = all.constFind(name); it != all.cend())
            chosen.insert(name, it.value());
    return chosen;
}

DBusMenuLayoutItem DBusMenuExporter::layoutOf(int id, int depth, const QStringList& names) {
    DBusMenuLayoutItem item{id, properties(id, names), {}};
    if (names.isEmpty())
        known_.insert(id, item.properties);
    QMenu* menu = menuOf(id);
    if (!menu || depth == 0)
        return item;
    watch(menu);
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions)
        item.children << layoutOf(idOf(action), depth - 1, names); // depth < 0: all levels
    return item;
}

bool DBusMenuExporter::handleEvent(int id, const QString& eventId) {
    if (!knows(id))
        return false;
    QAction* action = actions_.value(id);
    if (eventId == QStringLiteral("clicked") && action && action->isEnabled()) {
        // Triggered on the next turn of the event loop: the action may open a modal
        // dialog, and the panel is waiting for this call to return.
        QTimer::singleShot(0, action, [action] { action->trigger(); });
    }
    return true;
}

void DBusMenuExporter::replyUnknownId(int id) {
    if (calledFromDBus())
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("unknown menu item %1").arg(id));
}

} // namespace deskmark
