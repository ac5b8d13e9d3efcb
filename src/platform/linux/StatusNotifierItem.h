#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/StatusNotifierTypes.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QIcon>
#include <QPointer>

class QDBusServiceWatcher;
class QMenu;

namespace deskmark {

class DBusMenuExporter;

// The panel item as a StatusNotifierItem on the session bus: the panel (its
// StatusNotifierWatcher and host) draws the icon, the title as the Ayatana label and the
// menu, which DBusMenuExporter publishes. The item registers with the watcher at start and
// again whenever the watcher comes back (a restarted panel).
//
// The icon always goes out three ways, since hosts differ in what they draw: the theme
// name of Deskmark's symbolic icon, a theme folder that holds it when no installed theme
// does (an uninstalled build), and the pictures of the icon given to setIcon in the
// palette's text colour. Hosts that draw no label show the icon and the tool tip.
class StatusNotifierItem : public StatusItem {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ applicationTitle)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(QString IconThemePath READ iconThemePath)
    Q_PROPERTY(deskmark::DBusImageList IconPixmap READ iconPixmap)
    Q_PROPERTY(deskmark::DBusToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menuPath)
    Q_PROPERTY(QString XAyatanaLabel READ title)
    Q_PROPERTY(QString XAyatanaLabelGuide READ title)

public:
    // Publishes the item on the session bus and registers it with the watcher.
    explicit StatusNotifierItem(QObject* parent = nullptr);
    ~StatusNotifierItem() override;

    // Whether the session bus carries a StatusNotifierWatcher (a panel that shows items).
    static bool watcherAvailable();

    void setTitle(const QString& title) override;
    QString title() const override { return title_; }
    void setToolTip(const QString& text) override;
    void setIcon(const QIcon& icon) override;
    void setMenu(QMenu* menu) override;
    // The panel does not say where it draws the item.
    std::optional<QString> screenName() const override { return std::nullopt; }

    // The bus name the item is published under: org.kde.StatusNotifierItem-<pid>-1.
    QString serviceName() const { return serviceName_; }

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return QStringLiteral("deskmark"); }
    QString applicationTitle() const { return QStringLiteral("Deskmark"); }
    QString status() const { return QStringLiteral("Active"); }
    // The themed symbolic icon's name, while there is an icon.
    QString iconName() const;
    // A folder with hicolor/symbolic/apps/<IconName>.svg when no installed theme has it.
    QString iconThemePath() const { return iconThemePath_; }
    DBusImageList iconPixmap() const { return iconImages_; }
    DBusToolTip toolTip() const;
    bool itemIsMenu() const { return true; }
    QDBusObjectPath menuPath() const;

public Q_SLOTS:
    void Activate(int x, int y);
    void ContextMenu(int x, int y);
    void SecondaryActivate(int x, int y);
    void Scroll(int delta, const QString& orientation);

Q_SIGNALS:
    void NewIcon();
    void NewToolTip();
    void XAyatanaNewLabel(const QString& label, const QString& guide);

private:
    void registerWithWatcher();
    void popUpMenu();

    QDBusConnection bus_;
    QString serviceName_;
    DBusMenuExporter* menuExporter_;
    QDBusServiceWatcher* watcherWatcher_;
    QPointer<QMenu> menu_;
    QString title_;
    QString toolTip_;
    QIcon icon_;
    DBusImageList iconImages_;
    QString iconThemePath_;
};

} // namespace deskmark
