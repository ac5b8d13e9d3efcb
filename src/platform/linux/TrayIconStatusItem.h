#pragma once

#include "platform/StatusItem.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QPointer>
#include <QSystemTrayIcon>
#include <QTimer>

namespace deskmark {

// The panel item for desktops without a StatusNotifierWatcher: an XEmbed tray icon. A tray
// icon has no text of its own, so the icon and the title after it are drawn into one
// picture; the tool tip is set apart. Both mouse buttons open the menu.
//
// Qt shows the icon in a widget of its own that asks the tray for a 22x22 slot, and trays
// give what their icons ask for (trayer, stalonetray, the GTK notification areas), which
// would shrink the text to a third of the panel's height. So the item widens that widget
// to the title, and draws again whenever the tray gives it another height, in the slot's
// device pixels (a scaled session gets sharp text of the same proportions). Nothing tells
// a tray icon the panel's colour, so the item reads the screen's pixels behind its slot a
// moment after the slot is placed and draws light on a dark panel, dark on a light one;
// where the screen cannot be read, the palette's window colour stands in.
class TrayIconStatusItem : public StatusItem {
    Q_OBJECT
public:
    explicit TrayIconStatusItem(QObject* parent = nullptr);

    void setTitle(const QString& title) override;
    QString title() const override { return title_; }
    void setToolTip(const QString& text) override;
    void setIcon(const QIcon& icon) override;
    void setMenu(QMenu* menu) override;
    std::optional<QString> screenName() const override;

    // The slot's picture, `height` device pixels high: the icon, then the title, in the
    // colour that stands out on `background`; as wide as they need and at least square.
    static QImage slotImage(const QIcon& icon, const QString& title, int height,
                            const QColor& background);

    // The colour that dominates `image` (the median by lightness), invalid for an empty one.
    static QColor dominantColor(const QImage& image);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void refresh();
    void readPanelBackground();

    QSystemTrayIcon tray_;
    QPointer<QMenu> menu_;
    QString title_;
    QIcon icon_;
    int drawnHeight_ = 0;
    QColor panelBackground_;
    QTimer backgroundCheck_;
};

} // namespace deskmark
