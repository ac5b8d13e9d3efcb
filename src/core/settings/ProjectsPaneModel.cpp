#include "core/settings/ProjectsPaneModel.h"

#include "core/app/Language.h"
#include "core/model/PresetStore.h"
#include "core/model/ProjectStore.h"

namespace deskmark {

ProjectsPaneModel::ProjectsPaneModel(ProjectStore& projects, const PresetStore& presets)
    : projects_(projects), presets_(presets) {}

QList<ProjectsPaneModel::Row> ProjectsPaneModel::rows(const QSet<QString>& liveSpaceUUIDs) const {
    QList<Row> result;
    for (const Project& project : projects_.sortedProjects()) {
        result << Row{project.id,
                      project.name,
                      project.presetID.value_or(PresetStore::kDefaultID),
                      presets_.colors(project.presetID),
                      projects_.assignmentCount(project.id, liveSpaceUUIDs),
                      int(project.bookmarks.size())};
    }
    return result;
}

bool ProjectsPaneModel::rename(const QUuid& id, const QString& name) {
    std::optional<Project> project = projects_.project(id);
    if (!project || name.trimmed().isEmpty())
        return false;
    project->name = name;
    projects_.updateProject(*project);
    return true;
}

void ProjectsPaneModel::setPreset(const QUuid& id, const QString& presetID) {
    std::optional<Project> project = projects_.project(id);
    if (!project)
        return;
    project->presetID = presetID;
    projects_.updateProject(*project);
}

std::optional<QString>
ProjectsPaneModel::deleteQuestion(const QUuid& id, const QSet<QString>& liveSpaceUUIDs) const {
    const std::optional<Project> project = projects_.project(id);
    if (!project)
        return std::nullopt;
    const qsizetype bookmarks = project->bookmarks.size();
    const int spaces = projects_.assignmentCount(id, liveSpaceUUIDs);
    QString question = localized("プロジェクト「%1」を削除しますか？", "Delete the project “%1”?")
                           .arg(project->name);
    if (bookmarks == 1)
        question += QLatin1Char('\n') + localized("1 件のブックマークも削除されます。",
                                                  "Its bookmark will be deleted with it.");
    else if (bookmarks > 1)
        question += QLatin1Char('\n') + localized("%1 件のブックマークも削除されます。",
                                                  "Its %1 bookmarks will be deleted with it.")
                                            .arg(bookmarks);
    if (spaces == 1)
        question += QLatin1Char('\n') + localized("1 個の Space が名前なしになります。",
                                                  "1 Space will become unnamed.");
    else if (spaces > 1)
        question += QLatin1Char('\n') + localized("%1 個の Space が名前なしになります。",
                                                  "%1 Spaces will become unnamed.")
                                            .arg(spaces);
    return question;
}

void ProjectsPaneModel::deleteProject(const QUuid& id) {
    projects_.deleteProject(id);
}

} // namespace deskmark
