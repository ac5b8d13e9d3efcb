#include "core/editor/NameEditorModel.h"

#include "core/app/Language.h"

namespace deskmark {

NameEditorModel::NameEditorModel(ProjectStore& projectStore, const PresetStore& presetStore,
                                 QString spaceUUID, QSet<QString> liveSpaceUUIDs, QObject* parent)
    : QObject(parent), projectStore_(projectStore), presetStore_(presetStore),
      spaceUUID_(std::move(spaceUUID)), liveSpaceUUIDs_(std::move(liveSpaceUUIDs)),
      projects_(projectStore.sortedProjects()) {
    if (const auto current = projectStore_.projectForSpace(spaceUUID_))
        projectID_ = current->id;
    loadFields(projectID_);
    connect(&presetStore_, &PresetStore::changed, this, &NameEditorModel::changed);
}

NameEditorModel::Texts NameEditorModel::texts() {
    return {
        localized("この Space に名前をつける", "Name This Space"),
        localized("パネルと、画面の隅のラベルに表示されます。",
                  "Shown in the panel and in the corner labels on every monitor."),
        localized("プロジェクト", "Project"),
        localized("プロジェクト名", "Project name"),
        localized("空欄のまま保存すると、この Space "
                  "の割り当てを解除します（プロジェクトは一覧に残ります）。",
                  "Saving with an empty name unassigns this Space. The project stays in the list."),
        localized("プリセット", "Preset"),
        localized(
            "配色はプリセットで決まります。新しい配色は「設定 ＞ "
            "カラープリセット」で作成してください。",
            "Colors come from the preset. Create new color sets in Settings ＞ Color Presets."),
        localized("プレビュー", "Preview"),
        localized("キャンセル", "Cancel"),
        localized("保存", "Save"),
    };
}

QList<NameEditorModel::ProjectEntry> NameEditorModel::projectEntries() const {
    QList<ProjectEntry> entries;
    entries.reserve(projects_.size() + 1);
    entries.append({std::nullopt, localized("新規プロジェクト", "New Project")});
    for (const Project& project : projects_)
        entries.append({project.id, project.name.isEmpty() ? localized("（名前なし）", "(no name)")
                                                           : project.name});
    return entries;
}

qsizetype NameEditorModel::selectedProjectIndex() const {
    if (!projectID_)
        return 0;
    for (qsizetype i = 0; i < projects_.size(); ++i)
        if (projects_[i].id == *projectID_)
            return i + 1;
    return 0;
}

QList<NameEditorModel::PresetEntry> NameEditorModel::presetEntries() const {
    QList<PresetEntry> entries;
    entries.reserve(presetStore_.presets().size());
    for (const ColorPreset& preset : presetStore_.presets())
        entries.append({preset.id, preset.name});
    return entries;
}

qsizetype NameEditorModel::selectedPresetIndex() const {
    const QList<ColorPreset>& presets = presetStore_.presets();
    for (qsizetype i = 0; i < presets.size(); ++i)
        if (presets[i].id == presetID_)
            return i;
    return -1;
}

void NameEditorModel::selectProject(const std::optional<QUuid>& projectID) {
    projectID_ = projectID;
    loadFields(projectID);
}

void NameEditorModel::loadFields(const std::optional<QUuid>& projectID) {
    const std::optional<Project> project =
        projectID ? projectStore_.project(*projectID) : std::nullopt;
    if (project) {
        name_ = project->name;
        const bool presetExists = project->presetID && presetStore_.preset(*project->presetID);
        presetID_ = presetExists ? *project->presetID : PresetStore::kDefaultID;
    } else {
        name_.clear();
        presetID_ = PresetStore::kDefaultID;
    }
    Q_EMIT changed();
}

void NameEditorModel::setName(const QString& name) {
    if (name == name_)
        return;
    name_ = name;
    Q_EMIT changed();
}

void NameEditorModel::setPresetID(const QString& presetID) {
    if (presetID == presetID_)
        return;
    presetID_ = presetID;
    Q_EMIT changed();
}

std::optional<int> NameEditorModel::sharedCount() const {
    if (!projectID_)
        return std::nullopt;
    const int count = projectStore_.assignmentCount(*projectID_, liveSpaceUUIDs_);
    const bool alreadyAssigned = projectStore_.assignments().value(spaceUUID_) == *projectID_;
    return alreadyAssigned ? count : count + 1;
}

std::optional<QString> NameEditorModel::sharedNote() const {
    const std::optional<int> count = sharedCount();
    if (!count)
        return std::nullopt;
    // The project's name as it was when the editor opened, not the text being edited.
    const std::optional<Project> project = snapshotProject(*projectID_);
    const QString name = project ? project->name : QString();
    if (*count < 2)
        return localized("名前・カラーの変更はプロジェクト「%"
                         "1」に反映されます（新規プロジェクトは作られません）。",
                         "Name and color changes apply to the project “%1” (no new project is "
                         "created).")
            .arg(name);
    return localized("名前・カラーの変更はプロジェクト「%1」に反映されます（割り当て中の %2 "
                     "個の Space すべてで変わります。新規プロジェクトは作られません）。",
                     "Name and color changes apply to the project “%1” (all %2 assigned Spaces "
                     "change; no new project is created).")
        .arg(name, QString::number(*count));
}

NameEditorModel::Preview NameEditorModel::preview() const {
    const QString text = name_.trimmed();
    if (text.isEmpty())
        return {localized("表示なし", "Not shown"), std::nullopt};
    return {text, presetStore_.colors(presetID_)};
}

void NameEditorModel::save() {
    const QString name = name_.trimmed();
    if (name.isEmpty()) {
        projectStore_.unassign(spaceUUID_);
        return;
    }
    // Read the project again: its bookmarks may have changed since the editor opened.
    if (const auto project = projectID_ ? projectStore_.project(*projectID_) : std::nullopt) {
        Project updated = *project;
        updated.name = name;
        updated.presetID = presetID_;
        projectStore_.updateProject(updated);
        projectStore_.assign(updated.id, spaceUUID_);
        return;
    }
    if (!projectStore_.projectForSpace(spaceUUID_)) {
        projectStore_.set(name, presetID_, spaceUUID_);
        return;
    }
    // The Space leaves its project, which keeps its other Spaces and its bookmarks.
    const Project created = projectStore_.addProject(name, presetID_);
    projectStore_.assign(created.id, spaceUUID_);
}

std::optional<Project> NameEditorModel::snapshotProject(const QUuid& id) const {
    for (const Project& project : projects_)
        if (project.id == id)
            return project;
    return std::nullopt;
}

} // namespace deskmark
