#pragma once

#include "platform/StatusItem.h"

#include <QIcon>
#include <QPointer>
#include <QTimer>

#include <memory>

class QDBusServiceWatcher;

namespace deskmark {

// The panel item for this session, whichever kind the session shows: a StatusNotifierItem
// while a StatusNotifierWatcher is on the session bus (the panel then shows the title as a
// label), an XEmbed tray icon while there is none. The choice follows the bus: a watcher
// that appears after Deskmark started (a panel that comes up late at login) turns the
// tray icon into a StatusNotifierItem, and a watcher that goes away and stays away turns
// it back. Title, tool tip, icon and menu carry over, and each change of kind is logged
// and announced as placementChanged(). Where there can be no tray icon (Wayland), the
// StatusNotifierItem stays and shows whenever a watcher is there.
class SwitchingStatusItem : public StatusItem {
    Q_OBJECT
public:
    explicit SwitchingStatusItem(QObject* parent = nullptr, bool trayIconPossible = true);
    ~SwitchingStatusItem() override;

    void setTitle(const QString& title) override;
    QString title() const override { return title_; }
    void setToolTip(const QString& text) override;
    void setIcon(const QIcon& icon) override;
    void setMenu(QMenu* menu) override;
    std::optional<QString> screenName() const override { return item_->screenName(); }

    // The item that shows now: a StatusNotifierItem or a TrayIconStatusItem.
    StatusItem* current() const { return item_.get(); }

private:
    void useStatusNotifierItem(bool use, const QString& reason);

    bool trayIconPossible_;
    std::unique_ptr<StatusItem> item_;
    QDBusServiceWatcher* watcher_;
    // A panel that restarts drops its watcher and brings it back a moment later; only a
    // watcher that stays away this long sends the item to the tray.
    QTimer fallback_;
    QString title_;
    QString toolTip_;
    QIcon icon_;
    QPointer<QMenu> menu_;
};

} // namespace deskmark
