#pragma once

#include "platform/StatusItem.h"

#include <QIcon>
#include <QPixmap>
#include <QPointer>
#include <QSystemTrayIcon>

namespace deskmark {

// The panel item for desktops without a StatusNotifierWatcher: an XEmbed tray icon. A tray
// icon has no text of its own, so the title is drawn into the icon (and is the tool tip);
// with an empty title the item shows the icon. Both mouse buttons open the menu.
//
// Qt shows the icon in a widget of its own that asks the tray for a 22x22 slot, and trays
// give what their icons ask for (trayer, stalonetray, the GTK notification areas), which
// would shrink the text to a third of the panel's height. So the item widens that widget
// to the title, and draws the title again whenever the tray gives it another height.
class TrayIconStatusItem : public StatusItem {
    Q_OBJECT
public:
    explicit TrayIconStatusItem(QObject* parent = nullptr);

    void setTitle(const QString& title) override;
    QString title() const override { return title_; }
    void setIcon(const QIcon& icon) override;
    void setMenu(QMenu* menu) override;
    std::optional<QString> screenName() const override;

    // The title drawn for a tray `height` device pixels high: anti-aliased text on a
    // rounded plate in the palette's window colours (readable on any panel), as wide as
    // the text needs.
    static QPixmap titlePixmap(const QString& title, int height);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void refresh();

    QSystemTrayIcon tray_;
    QPointer<QMenu> menu_;
    QString title_;
    QIcon icon_;
    int drawnHeight_ = 0;
};

} // namespace deskmark
