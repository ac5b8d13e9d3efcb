#include "platform/linux/StatusNotifierItem.h"
#include "platform/linux/DBusMenuTypes.h"
#include "platform/linux/StatusNotifierTypes.h"
#include "platform/linux/SwitchingStatusItem.h"

#include <QActionGroup>
#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDir>
#include <QMenu>
#include <QPixmap>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace deskmark;

namespace {
const QString kItemPath = QStringLiteral("/StatusNotifierItem");
const QString kItemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString kMenuPath = QStringLiteral("/MenuBar");
const QString kMenuInterface = QStringLiteral("com.canonical.dbusmenu");
const QString kWatcherService = QStringLiteral("org.kde.StatusNotifierWatcher");

const DBusMenuLayoutItem* findLabel(const DBusMenuLayoutItem& item, const QString& label) {
    if (item.properties.value(QStringLiteral("label")).toString() == label)
        return &item;
    for (const DBusMenuLayoutItem& child : item.children)
        if (const DBusMenuLayoutItem* found = findLabel(child, label))
            return found;
    return nullptr;
}
} // namespace

// The panel's side, as little of it as the item needs: a StatusNotifierWatcher that
// records who registers, and a receiver for the signals the panel listens to.
class Panel : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
public:
    QStringList registered;
    QList<QStringList> labels;
    QList<uint> layoutRevisions;
    QList<DBusMenuItemList> updatedProperties;
    QList<DBusMenuItemKeysList> removedProperties;

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service) { registered << service; }
    void newLabel(const QString& label, const QString& guide) {
        labels << QStringList{label, guide};
    }
    void layoutUpdated(uint revision, int parent) {
        QCOMPARE(parent, 0);
        layoutRevisions << revision;
    }
    void itemsPropertiesUpdated(const deskmark::DBusMenuItemList& updated,
                                const deskmark::DBusMenuItemKeysList& removed) {
        updatedProperties << updated;
        removedProperties << removed;
    }
};

class StatusNotifierItemTest : public QObject {
    Q_OBJECT

    // The panel talks over its own connection, as a real panel process would.
    QDBusConnection bus_ =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("panel"));
    Panel panel_;
    std::unique_ptr<StatusItem> item_;
    QString service_;
    std::unique_ptr<QMenu> menu_;
    QAction* edit_ = nullptr;
    QMenu* presets_ = nullptr;
    QAction* quit_ = nullptr;
    int presetBuilds_ = 0;

    QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(service_, path, interface, method);
        message.setArguments(arguments);
        return bus_.call(message, QDBus::BlockWithGui);
    }
    QVariantMap itemProperties() {
        const QDBusMessage reply =
            call(kItemPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                 QStringLiteral("GetAll"), {kItemInterface});
        return qdbus_cast<QVariantMap>(reply.arguments().value(0));
    }
    DBusMenuLayoutItem layout(int parent = 0, int depth = -1, uint* revision = nullptr) {
        const QDBusMessage reply = call(kMenuPath, kMenuInterface, QStringLiteral("GetLayout"),
                                        {parent, depth, QStringList()});
        if (revision)
            *revision = reply.arguments().value(0).toUInt();
        return qdbus_cast<DBusMenuLayoutItem>(reply.arguments().value(1));
    }
    int idOf(const QString& label) {
        const DBusMenuLayoutItem root = layout();
        const DBusMenuLayoutItem* item = findLabel(root, label);
        return item ? item->id : -1;
    }
    QDBusMessage click(int id) {
        return call(kMenuPath, kMenuInterface, QStringLiteral("Event"),
                    {id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), 0u});
    }

private Q_SLOTS:
    void initTestCase() {
        registerDBusMenuTypes();
        registerStatusNotifierTypes();
        QVERIFY(bus_.registerObject(QStringLiteral("/StatusNotifierWatcher"), &panel_,
                                    QDBusConnection::ExportAllSlots));
        QVERIFY(bus_.registerService(kWatcherService));
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: status item: StatusNotifierItem (the "
                                           "panel has a StatusNotifierWatcher)");
        item_ = std::make_unique<SwitchingStatusItem>();
        auto* item = qobject_cast<StatusNotifierItem*>(
            static_cast<SwitchingStatusItem*>(item_.get())->current());
        QVERIFY(item);
        service_ = item->serviceName();
        QCOMPARE(service_, QStringLiteral("org.kde.StatusNotifierItem-%1-1")
                               .arg(QCoreApplication::applicationPid()));
        QVERIFY(bus_.connect(service_, kItemPath, kItemInterface,
                             QStringLiteral("XAyatanaNewLabel"), &panel_,
                             SLOT(newLabel(QString, QString))));
        QVERIFY(bus_.connect(service_, kMenuPath, kMenuInterface, QStringLiteral("LayoutUpdated"),
                             &panel_, SLOT(layoutUpdated(uint, int))));
        QVERIFY(bus_.connect(service_, kMenuPath, kMenuInterface,
                             QStringLiteral("ItemsPropertiesUpdated"), &panel_,
                             SLOT(itemsPropertiesUpdated(deskmark::DBusMenuItemList,
                                                         deskmark::DBusMenuItemKeysList))));
    }

    void init() {
        item_->setTitle(QStringLiteral("Work"));
        menu_ = std::make_unique<QMenu>();
        // The shortcut after the tab is for QMenu only; the label leaves it out.
        edit_ = menu_->addAction(QStringLiteral("&Edit Name\tCtrl+Alt+N"));
        edit_->setShortcut(QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_N));
        presets_ = menu_->addMenu(QStringLiteral("Presets"));
        // Rebuilt on every opening, as the preset submenu is.
        connect(presets_, &QMenu::aboutToShow, this, [this] {
            presets_->clear();
            ++presetBuilds_;
            auto* oneOf = new QActionGroup(presets_);
            for (int i = 1; i <= presetBuilds_; ++i) {
                QAction* preset = presets_->addAction(QStringLiteral("Preset %1").arg(i));
                preset->setCheckable(true);
                preset->setChecked(i == 1);
                oneOf->addAction(preset);
            }
        });
        menu_->addSeparator();
        quit_ = menu_->addAction(QStringLiteral("Save && Quit_now"));
        quit_->setEnabled(false);
        item_->setMenu(menu_.get());
        // Announcements of earlier tests may still be on their way: wait for this one.
        uint revision = 0;
        layout(0, 0, &revision);
        QTRY_VERIFY(panel_.layoutRevisions.contains(revision));
        panel_.labels.clear();
        panel_.layoutRevisions.clear();
        panel_.updatedProperties.clear();
        panel_.removedProperties.clear();
    }

    void cleanup() {
        item_->setMenu(nullptr);
        menu_.reset();
        presetBuilds_ = 0;
    }

    void registersWithTheWatcherAndAgainWhenItComesBack() {
        QTRY_COMPARE(panel_.registered, QStringList{service_});
        QVERIFY(bus_.unregisterService(kWatcherService));
        QVERIFY(bus_.registerService(kWatcherService));
        QTRY_COMPARE(panel_.registered, (QStringList{service_, service_}));
    }

    void propertiesFollowTheTitleAndPointToTheMenu() {
        item_->setToolTip(QStringLiteral("Work, all of it"));
        const QVariantMap properties = itemProperties();
        QCOMPARE(properties.value(QStringLiteral("Status")).toString(), "Active");
        QCOMPARE(properties.value(QStringLiteral("ItemIsMenu")).toBool(), true);
        QCOMPARE(properties.value(QStringLiteral("Menu")).value<QDBusObjectPath>().path(),
                 kMenuPath);
        QCOMPARE(properties.value(QStringLiteral("XAyatanaLabel")).toString(), "Work");
        QCOMPARE(properties.value(QStringLiteral("XAyatanaLabelGuide")).toString(), "Work");
        const auto toolTip = qdbus_cast<DBusToolTip>(properties.value(QStringLiteral("ToolTip")));
        QCOMPARE(toolTip.title, "Deskmark");
        QCOMPARE(toolTip.description, "Work, all of it");
    }

    void newTitleIsAnnouncedOnce() {
        item_->setTitle(QStringLiteral("Mail"));
        QTRY_COMPARE(panel_.labels, (QList<QStringList>{{"Mail", "Mail"}}));
        QCOMPARE(itemProperties().value(QStringLiteral("XAyatanaLabel")).toString(), "Mail");
        item_->setTitle(QStringLiteral("Mail"));
        item_->setTitle(QString()); // icon only
        QTRY_COMPARE(panel_.labels.size(), 2);
        QCOMPARE(panel_.labels.last(), (QStringList{"", ""}));
        QCOMPARE(item_->title(), QString());
    }

    // The icon goes out by theme name, with a theme folder that holds it (none is
    // installed here), and as pictures in the palette's text colour, ARGB in network order.
    void iconGoesOutByNameFolderAndPixels() {
        QPixmap pixmap(16, 16);
        pixmap.fill(QColor(0x11, 0x22, 0x33));
        item_->setIcon(QIcon(pixmap));
        const QVariantMap properties = itemProperties();
        const QString name = "io.github.deskmark.Deskmark-symbolic";
        QCOMPARE(properties.value("IconName").toString(), name);
        const QString folder = properties.value("IconThemePath").toString();
        QVERIFY(QFile::exists(folder + "/hicolor/22x22/apps/" + name + ".png"));
        QVERIFY(QFile::exists(folder + "/" + name + ".png"));
        QCOMPARE(qdbus_cast<DBusToolTip>(properties.value("ToolTip")).iconName, name);

        const auto images = qdbus_cast<DBusImageList>(properties.value("IconPixmap"));
        QVERIFY(images.size() >= 4);
        QCOMPARE(images[0].width, 16);
        QCOMPARE(images[0].height, 16);
        QCOMPARE(images[0].pixels.size(), 16 * 16 * 4);
        const QColor ink = QGuiApplication::palette().color(QPalette::WindowText);
        const char argb[] = {'\xff', char(ink.red()), char(ink.green()), char(ink.blue())};
        QCOMPARE(images[0].pixels.left(4), QByteArray(argb, 4));
        QVERIFY(std::any_of(images.cbegin(), images.cend(),
                            [](const DBusImage& image) { return image.width == 48; }));

        item_->setIcon(QIcon());
        QVERIFY(qdbus_cast<DBusImageList>(itemProperties().value("IconPixmap")).isEmpty());
        QCOMPARE(itemProperties().value("IconName").toString(), QString());
    }

    void layoutCarriesTheMenu() {
        uint revision = 0;
        const DBusMenuLayoutItem root = layout(0, -1, &revision);
        QVERIFY(revision > 0);
        QCOMPARE(root.id, 0);
        QCOMPARE(root.properties.value("children-display").toString(), "submenu");
        QCOMPARE(root.children.size(), 4);

        const QVariantMap edit = root.children[0].properties;
        QCOMPARE(edit.value("label").toString(), "_Edit Name");
        QCOMPARE(edit.value("enabled").toBool(), true);
        QCOMPARE(edit.value("visible").toBool(), true);
        QCOMPARE(qdbus_cast<DBusMenuShortcut>(edit.value("shortcut")),
                 (DBusMenuShortcut{{"Control", "Alt", "N"}}));
        QVERIFY(!edit.contains("toggle-type"));

        QCOMPARE(root.children[1].properties.value("label").toString(), "Presets");
        QCOMPARE(root.children[1].properties.value("children-display").toString(), "submenu");
        QCOMPARE(root.children[2].properties.value("type").toString(), "separator");
        QVERIFY(!root.children[2].properties.contains("label"));

        const QVariantMap quit = root.children[3].properties;
        QCOMPARE(quit.value("label").toString(), "Save & Quit__now");
        QCOMPARE(quit.value("enabled").toBool(), false);

        QVERIFY(layout(0, 0).children.isEmpty());
        const QDBusMessage unknown =
            call(kMenuPath, kMenuInterface, QStringLiteral("GetLayout"), {4242, -1, QStringList()});
        QCOMPARE(unknown.type(), QDBusMessage::ErrorMessage);
    }

    void propertiesCanBeAskedForSingly() {
        const int editId = idOf("_Edit Name");
        const QDBusMessage one = call(kMenuPath, kMenuInterface, QStringLiteral("GetProperty"),
                                      {editId, QStringLiteral("label")});
        QCOMPARE(one.arguments().value(0).value<QDBusVariant>().variant().toString(), "_Edit Name");

        const QDBusMessage group =
            call(kMenuPath, kMenuInterface, QStringLiteral("GetGroupProperties"),
                 {QVariant::fromValue(QList<int>{editId, 4242}), QStringList{"enabled"}});
        const auto items = qdbus_cast<DBusMenuItemList>(group.arguments().value(0));
        QCOMPARE(items.size(), 1); // the unknown id is left out
        QCOMPARE(items[0].id, editId);
        QCOMPARE(items[0].properties, (QVariantMap{{"enabled", true}}));
    }

    void clickedTriggersEnabledActionsOnly() {
        QSignalSpy edited(edit_, &QAction::triggered);
        QSignalSpy quitted(quit_, &QAction::triggered);
        QCOMPARE(click(idOf("_Edit Name")).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(click(idOf("Save & Quit__now")).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE(edited.size(), 1);
        QCoreApplication::processEvents();
        QCOMPARE(quitted.size(), 0);
        QCOMPARE(click(4242).type(), QDBusMessage::ErrorMessage);
    }

    void aboutToShowRebuildsTheSubmenu() {
        const int presetsId = idOf("Presets");
        const QDBusMessage shown =
            call(kMenuPath, kMenuInterface, QStringLiteral("AboutToShow"), {presetsId});
        QCOMPARE(shown.arguments().value(0).toBool(), true);
        QCOMPARE(presetBuilds_, 1);
        DBusMenuLayoutItem submenu = layout(presetsId);
        QCOMPARE(submenu.children.size(), 1);
        QCOMPARE(submenu.children[0].properties.value("label").toString(), "Preset 1");
        QCOMPARE(submenu.children[0].properties.value("toggle-type").toString(), "radio");
        QCOMPARE(submenu.children[0].properties.value("toggle-state").toInt(), 1);

        // A click on a rebuilt item reaches the new action.
        QSignalSpy triggered(presets_->actions().value(0), &QAction::triggered);
        click(submenu.children[0].id);
        QTRY_COMPARE(triggered.size(), 1);

        call(kMenuPath, kMenuInterface, QStringLiteral("AboutToShow"), {presetsId});
        submenu = layout(presetsId);
        QCOMPARE(submenu.children.size(), 2);
        QCOMPARE(submenu.children[1].properties.value("label").toString(), "Preset 2");
        QCOMPARE(submenu.children[1].properties.value("toggle-state").toInt(), 0);

        // Nothing rebuilds the top level: no update needed.
        const QDBusMessage root =
            call(kMenuPath, kMenuInterface, QStringLiteral("AboutToShow"), {0});
        QCOMPARE(root.arguments().value(0).toBool(), false);
    }

    // What panels built on libdbusmenu do: open and click in batches, and follow changed
    // items through their properties alone.
    void groupCallsAndPropertyUpdates() {
        const int editId = idOf("_Edit Name");
        const int presetsId = idOf("Presets");
        const int quitId = idOf("Save & Quit__now");
        const QDBusMessage shown =
            call(kMenuPath, kMenuInterface, QStringLiteral("AboutToShowGroup"),
                 {QVariant::fromValue(QList<int>{presetsId, 0, 4242})});
        QCOMPARE(shown.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(qdbus_cast<QList<int>>(shown.arguments().value(0)), QList<int>{presetsId});
        QCOMPARE(qdbus_cast<QList<int>>(shown.arguments().value(1)), QList<int>{4242});
        call(kMenuPath, kMenuInterface, QStringLiteral("AboutToShow"), {presetsId});
        const DBusMenuLayoutItem submenu = layout(presetsId);
        QCOMPARE(submenu.children.size(), 2);

        QSignalSpy edited(edit_, &QAction::triggered);
        const DBusMenuEventList events{{editId, "clicked", QDBusVariant(0), 0},
                                       {4242, "clicked", QDBusVariant(0), 0}};
        const QDBusMessage clicked = call(kMenuPath, kMenuInterface, QStringLiteral("EventGroup"),
                                          {QVariant::fromValue(events)});
        QCOMPARE(clicked.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(qdbus_cast<QList<int>>(clicked.arguments().value(0)), QList<int>{4242});
        QTRY_COMPARE(edited.size(), 1);

        // Only what changed goes out, once per turn, and the layout stays as it was.
        uint revision = 0;
        layout(0, -1, &revision);
        QTRY_VERIFY(panel_.layoutRevisions.contains(revision)); // the submenu's rebuilds
        panel_.layoutRevisions.clear();
        edit_->setText(QStringLiteral("Rename"));
        edit_->setShortcut(QKeySequence());
        quit_->setEnabled(true);
        QTRY_COMPARE(panel_.updatedProperties.size(), 1);
        QTest::qWait(50);
        QCOMPARE(panel_.updatedProperties.size(), 1);
        QMap<int, QVariantMap> updated;
        for (const DBusMenuItem& item : std::as_const(panel_.updatedProperties[0]))
            updated.insert(item.id, item.properties);
        QCOMPARE(updated, (QMap<int, QVariantMap>{{editId, {{"label", "Rename"}}},
                                                  {quitId, {{"enabled", true}}}}));
        QCOMPARE(panel_.removedProperties[0].size(), 1);
        QCOMPARE(panel_.removedProperties[0][0].id, editId);
        QCOMPARE(panel_.removedProperties[0][0].properties, QStringList{"shortcut"});
        QVERIFY(panel_.layoutRevisions.isEmpty());

        // A radio item clicked: the check mark moves from one item to the other.
        click(submenu.children[1].id);
        QTRY_COMPARE(panel_.updatedProperties.size(), 2);
        QMap<int, QVariant> states;
        for (const DBusMenuItem& item : std::as_const(panel_.updatedProperties[1]))
            states.insert(item.id, item.properties.value("toggle-state"));
        QCOMPARE(states,
                 (QMap<int, QVariant>{{submenu.children[0].id, 0}, {submenu.children[1].id, 1}}));
    }

    void changesAreAnnouncedOncePerTurn() {
        uint before = 0;
        layout(0, -1, &before);
        menu_->addAction(QStringLiteral("One"));
        menu_->addAction(QStringLiteral("Two"));
        edit_->setText(QStringLiteral("Rename"));
        QTRY_COMPARE(panel_.layoutRevisions.size(), 1);
        QTest::qWait(50);
        QCOMPARE(panel_.layoutRevisions.size(), 1);
        uint after = 0;
        const DBusMenuLayoutItem root = layout(0, -1, &after);
        QCOMPARE(after, panel_.layoutRevisions[0]);
        QVERIFY(after > before);
        QCOMPARE(root.children.size(), 6);
        QVERIFY(findLabel(root, "Rename"));
        QVERIFY(findLabel(root, "Two"));

        delete menu_->actions().constLast();
        QTRY_COMPARE(panel_.layoutRevisions.size(), 2);
        QCOMPARE(layout().children.size(), 5);
    }
};

QTEST_MAIN(StatusNotifierItemTest)
#include "StatusNotifierItemTest.moc"
