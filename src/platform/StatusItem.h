#pragma once

#include <QObject>
#include <QString>

#include <optional>

class QIcon;
class QMenu;

namespace deskmark {

// The item in the desktop's panel that carries the current Space's name and opens the
// Deskmark menu. The menu is the caller's: the item shows it and never owns it, and
// QMenu::aboutToShow fires before it opens (also for submenus), so a menu rebuilt on
// opening works with every implementation.
class StatusItem : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~StatusItem() override = default;

    // Text shown next to (or instead of) the icon; empty shows the icon alone.
    virtual void setTitle(const QString& title) = 0;
    virtual QString title() const = 0;

    // Shown on hover (the full name when the title is shortened); empty leaves only the
    // application's name.
    virtual void setToolTip(const QString& text) = 0;

    // The item's monochrome glyph; the item colours it for its panel. A null icon shows
    // none.
    virtual void setIcon(const QIcon& icon) = 0;

    // The menu opened from the item; nullptr for none. Not owned.
    virtual void setMenu(QMenu* menu) = 0;

    // QScreen::name() of the screen that holds the item, when the panel lets us know.
    virtual std::optional<QString> screenName() const = 0;

Q_SIGNALS:
    // The item was placed, moved or resized, or another kind of item took its place:
    // screenName() may answer differently now.
    void placementChanged();
};

} // namespace deskmark
