#pragma once

#include "core/model/ColorPair.h"
#include "core/spaces/CGSDisplay.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace deskmark {

class PresetStore;
class ProjectStore;

// What the Spaces pane lists and the decisions behind its buttons. It reads the stores
// afresh on every call; the pane calls again whenever a store or the layout changes.
class SpacesPaneModel {
public:
    struct Row {
        QString spaceUUID;
        // The project's name, or "Desktop N" by the Space's position on its display.
        QString title;
        // Present when the Space shows a project with a non-empty name.
        std::optional<QUuid> projectID;
        // The project's colours; none for an unnamed Space.
        std::optional<ColorPair> colors;
        bool current = false;

        friend bool operator==(const Row&, const Row&) = default;
    };

    SpacesPaneModel(ProjectStore& projects, const PresetStore& presets);

    // Where the labels are configured, the reminder that unnamed Spaces show none.
    static QString unnamedNote();

    // Every Space of every display in display order, each Space once: where displays share
    // their Spaces (EWMH desktops span all monitors) the first display's entry stands.
    QList<Row> rows(const QList<CGSDisplay>& displays) const;

    // Assigned Spaces that no longer exist, in text order.
    QStringList staleAssignments(const QSet<QString>& liveSpaceUUIDs) const;
    // Unassigns every stale Space; returns how many there were.
    int removeStaleAssignments(const QSet<QString>& liveSpaceUUIDs);

    // Gives the Space a new project of its own, even when it showed one before (that
    // project stays). Refused (false) for a name that is empty after trimming.
    bool createProject(const QString& name, const std::optional<QString>& presetID,
                       const QString& spaceUUID);

private:
    ProjectStore& projects_;
    const PresetStore& presets_;
};

} // namespace deskmark
