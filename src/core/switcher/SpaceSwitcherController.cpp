#include "core/switcher/SpaceSwitcherController.h"

#include "core/app/Language.h"
#include "core/model/ProjectStore.h"

#include <QSet>

#include <algorithm>

#include <cmath>

namespace deskmark {

SpaceSwitcherController::SpaceSwitcherController(const QList<CGSDisplay>& displays,
                                                 const ProjectStore& projects,
                                                 const std::optional<QString>& activeDisplayUUID,
                                                 const QHash<QString, QString>& previous,
                                                 QPointF mouseAtOpen, Callbacks callbacks,
                                                 QObject* parent)
    : QObject(parent), entries_(tiles(displays, projects)), mouseAtOpen_(mouseAtOpen),
      callbacks_(std::move(callbacks)) {
    for (const Tile& tile : std::as_const(entries_))
        entryBySpace_.insert(tile.spaceUUID, tile.id);
    selectedID_ = initialSelection(displays, activeDisplayUUID, previous);
}

QList<SpaceSwitcherController::Tile> SpaceSwitcherController::tiles(
    const QList<CGSDisplay>& displays, const ProjectStore& projects) {
    QList<Tile> result;
    QSet<QString> listed;
    for (const CGSDisplay& display : displays) {
        for (qsizetype i = 0; i < display.spaces.size(); ++i) {
            const QString& space = display.spaces[i].uuid;
            if (listed.contains(space))
                continue;
            listed.insert(space);
            const QString name = projects.nameForSpace(space).value_or(
                localized("デスクトップ %1", "Desktop %1").arg(i + 1));
            result << Tile{display.displayUUID + QLatin1Char('/') + space, space,
                           display.displayUUID, name};
        }
    }
    return result;
}

std::optional<SpaceSwitcherController::Tile> SpaceSwitcherController::firstTileOfProject(
    const QList<CGSDisplay>& displays, const ProjectStore& projects, const QString& name) {
    for (const Tile& tile : tiles(displays, projects)) {
        const std::optional<QString> project = projects.nameForSpace(tile.spaceUUID);
        if (project && project->compare(name, Qt::CaseInsensitive) == 0)
            return tile;
    }
    return std::nullopt;
}

std::optional<QString> SpaceSwitcherController::initialSelection(
    const QList<CGSDisplay>& displays, const std::optional<QString>& activeDisplayUUID,
    const QHash<QString, QString>& previous) const {
    const std::optional<QString> first =
        entries_.isEmpty() ? std::nullopt : std::optional(entries_.first().id);
    if (!activeDisplayUUID)
        return first;
    for (const CGSDisplay& display : displays) {
        if (display.displayUUID != *activeDisplayUUID)
            continue;
        const auto back = previous.constFind(display.displayUUID);
        if (back != previous.constEnd() && entryBySpace_.contains(*back))
            return entryBySpace_.value(*back);
        if (display.currentUUID && entryBySpace_.contains(*display.currentUUID))
            return entryBySpace_.value(*display.currentUUID);
        break;
    }
    return first;
}

QList<SpaceSwitcherController::Tile> SpaceSwitcherController::visible() const {
    if (query_.isEmpty())
        return entries_;
    QList<Tile> shown;
    for (const Tile& tile : entries_) {
        if (filter_.contains(tile.name, query_))
            shown << tile;
    }
    return shown;
}

void SpaceSwitcherController::setQuery(const QString& query) {
    if (query == query_)
        return;
    query_ = query;
    Q_EMIT queryChanged();
    const QList<Tile> shown = visible();
    const bool selectionShown =
        selectedID_ && std::any_of(shown.begin(), shown.end(),
                                   [this](const Tile& tile) { return tile.id == *selectedID_; });
    if (!selectionShown && !shown.isEmpty())
        select(shown.first().id);
}

void SpaceSwitcherController::select(const std::optional<QString>& id) {
    if (id == selectedID_)
        return;
    selectedID_ = id;
    Q_EMIT selectionChanged();
}

void SpaceSwitcherController::advance(int delta) {
    const QList<Tile> shown = visible();
    const qsizetype n = shown.size();
    if (n == 0)
        return;
    qsizetype i = 0;
    for (qsizetype k = 0; k < n; ++k) {
        if (selectedID_ && shown[k].id == *selectedID_)
            i = k;
    }
    select(shown[((i + delta) % n + n) % n].id);
}

void SpaceSwitcherController::hovered(const QString& id, QPointF pointer) {
    if (!pointerMoved_)
        pointerMoved_ = std::abs(pointer.x() - mouseAtOpen_.x()) > kHoverThreshold ||
                        std::abs(pointer.y() - mouseAtOpen_.y()) > kHoverThreshold;
    if (pointerMoved_ && !finished_)
        select(id);
}

bool SpaceSwitcherController::handleKey(int qtKey, Qt::KeyboardModifiers modifiers,
                                        bool composing) {
    if (composing || finished_)
        return false;
    switch (qtKey) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        commit();
        return true;
    case Qt::Key_Tab:
        advance(modifiers.testFlag(Qt::ShiftModifier) ? -1 : 1);
        return true;
    case Qt::Key_Backtab: // Shift+Tab, as Qt reports it
        advance(-1);
        return true;
    case Qt::Key_Down:
        advance(1);
        return true;
    case Qt::Key_Up:
        advance(-1);
        return true;
    case Qt::Key_Escape:
        if (query_.isEmpty())
            cancel();
        else
            setQuery(QString());
        return true;
    default:
        return false;
    }
}

void SpaceSwitcherController::commit() {
    if (finished_ || !selectedID_)
        return;
    for (const Tile& tile : visible()) {
        if (tile.id != *selectedID_)
            continue;
        finished_ = true;
        if (callbacks_.commit)
            callbacks_.commit(tile.spaceUUID, tile.displayUUID);
        return;
    }
}

void SpaceSwitcherController::choose(const QString& id) {
    if (finished_)
        return;
    select(id);
    commit();
}

void SpaceSwitcherController::cancel() {
    if (finished_)
        return;
    finished_ = true;
    if (callbacks_.cancel)
        callbacks_.cancel();
}

void SpaceSwitcherController::windowDidResignKey() { cancel(); }

} // namespace deskmark
