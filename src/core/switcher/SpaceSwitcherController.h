#pragma once

#include "core/spaces/CGSDisplay.h"
#include "core/switcher/NameFilter.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointF>

#include <functional>
#include <optional>

namespace deskmark {

class ProjectStore;

// The switcher panel's model: one tile per Space, the filter text, the selection and the
// keys. The panel shows `visible()`, forwards keys, pointer hovers and focus loss, and
// closes when the owner's commit or cancel callback has run.
class SpaceSwitcherController : public QObject {
    Q_OBJECT
public:
    struct Tile {
        QString id;
        QString spaceUUID;
        QString displayUUID;
        QString name; // the project's name, or "Desktop N" by the position on its display
    };
    struct Callbacks {
        std::function<void(const QString& spaceUUID, const QString& displayUUID)> commit;
        std::function<void()> cancel;
    };
    // The pointer must move this far, on either axis, before hovering selects a tile.
    static constexpr double kHoverThreshold = 2.0;

    // Tiles display by display, each display's Spaces in order. A Space that an earlier
    // display already lists (desktops that span every monitor) gets no second tile.
    SpaceSwitcherController(const QList<CGSDisplay>& displays, const ProjectStore& projects,
                            const std::optional<QString>& activeDisplayUUID,
                            const QHash<QString, QString>& previous, QPointF mouseAtOpen,
                            Callbacks callbacks, QObject* parent = nullptr);

    // The tiles of those displays in the switcher's order: display by display, each
    // display's Spaces in order, a Space that an earlier display lists left out.
    static QList<Tile> tiles(const QList<CGSDisplay>& displays, const ProjectStore& projects);
    // The first of those tiles whose Space's project is called `name`, letter case aside:
    // where a switch by project name goes.
    static std::optional<Tile> firstTileOfProject(const QList<CGSDisplay>& displays,
                                                  const ProjectStore& projects,
                                                  const QString& name);

    const QList<Tile>& entries() const { return entries_; }
    QList<Tile> visible() const;
    const QString& query() const { return query_; }
    const std::optional<QString>& selectedID() const { return selectedID_; }
    bool isFinished() const { return finished_; }

    void setQuery(const QString& query);
    void advance(int delta);
    // The pointer, at `pointer`, is over the tile with that id.
    void hovered(const QString& id, QPointF pointer);
    // A key pressed in the panel (Qt key code and modifiers). `composing`: the filter field
    // holds text an input method is still composing. True when the key was used up.
    bool handleKey(int qtKey, Qt::KeyboardModifiers modifiers, bool composing);
    void commit();
    // Selects the tile with that id and commits it (a click on it).
    void choose(const QString& id);
    void cancel();
    void windowDidResignKey();

Q_SIGNALS:
    void queryChanged();
    void selectionChanged();

private:
    void select(const std::optional<QString>& id);
    std::optional<QString> initialSelection(const QList<CGSDisplay>& displays,
                                            const std::optional<QString>& activeDisplayUUID,
                                            const QHash<QString, QString>& previous) const;

    QList<Tile> entries_;
    QHash<QString, QString> entryBySpace_;
    QString query_;
    std::optional<QString> selectedID_;
    bool finished_ = false;
    QPointF mouseAtOpen_;
    bool pointerMoved_ = false;
    Callbacks callbacks_;
    NameFilter filter_;
};

} // namespace deskmark
