#include "core/settings/SpacesPaneModel.h"

#include "core/app/Language.h"
#include "core/model/PresetStore.h"
#include "core/model/ProjectStore.h"

#include <algorithm>

namespace deskmark {

SpacesPaneModel::SpacesPaneModel(ProjectStore& projects, const PresetStore& presets)
    : projects_(projects), presets_(presets) {}

QString SpacesPaneModel::unnamedNote() {
    return localized(
        "名前のない Space にはオーバーレイが表示されません。「Space」で名前を付けてください。",
        "Overlays are hidden for unnamed Spaces. Add a name in “Spaces.”");
}

QList<SpacesPaneModel::Row> SpacesPaneModel::rows(const QList<CGSDisplay>& displays) const {
    QList<Row> result;
    QSet<QString> listed;
    for (const CGSDisplay& display : displays) {
        for (qsizetype i = 0; i < display.spaces.size(); ++i) {
            const QString& space = display.spaces[i].uuid;
            if (listed.contains(space))
                continue;
            listed.insert(space);
            Row row;
            row.spaceUUID = space;
            row.current = display.currentUUID == space;
            const auto project = projects_.projectForSpace(space);
            if (project && !project->name.isEmpty()) {
                row.title = project->name;
                row.projectID = project->id;
                row.colors = presets_.colors(project->presetID);
            } else {
                row.title = localized("デスクトップ %1", "Desktop %1").arg(i + 1);
            }
            result << row;
        }
    }
    return result;
}

QStringList SpacesPaneModel::staleAssignments(const QSet<QString>& liveSpaceUUIDs) const {
    QStringList stale;
    for (auto it = projects_.assignments().cbegin(); it != projects_.assignments().cend(); ++it) {
        if (!liveSpaceUUIDs.contains(it.key()))
            stale << it.key();
    }
    std::sort(stale.begin(), stale.end());
    return stale;
}

int SpacesPaneModel::removeStaleAssignments(const QSet<QString>& liveSpaceUUIDs) {
    const QStringList stale = staleAssignments(liveSpaceUUIDs);
    for (const QString& space : stale)
        projects_.unassign(space);
    return int(stale.size());
}

bool SpacesPaneModel::createProject(const QString& name, const std::optional<QString>& presetID,
                                    const QString& spaceUUID) {
    if (name.trimmed().isEmpty())
        return false;
    const Project project = projects_.addProject(name, presetID);
    projects_.assign(project.id, spaceUUID);
    return true;
}

} // namespace deskmark
