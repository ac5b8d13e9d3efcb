#pragma once

#include "core/model/ColorPair.h"
#include "core/model/Project.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

#include <optional>

namespace deskmark {

class PresetStore;
class ProjectStore;

// What the Projects pane lists and the decisions behind its edits: every project in name
// order with its colours and how many existing Spaces show it, renaming, the preset,
// and deleting with the confirmation that says what goes with the project.
class ProjectsPaneModel {
public:
    struct Row {
        QUuid id;
        QString name;
        // The preset id as the pickers know it: "default" when the project has none.
        QString presetID;
        ColorPair colors;
        int liveSpaceCount = 0;
        int bookmarkCount = 0;

        friend bool operator==(const Row&, const Row&) = default;
    };

    ProjectsPaneModel(ProjectStore& projects, const PresetStore& presets);

    QList<Row> rows(const QSet<QString>& liveSpaceUUIDs) const;

    // Refused (false) for an unknown project or a name that is empty after trimming.
    bool rename(const QUuid& id, const QString& name);
    void setPreset(const QUuid& id, const QString& presetID);

    // The question asked before deleting, naming the project, its bookmarks and the
    // Spaces that will become unnamed; none for an unknown project.
    std::optional<QString> deleteQuestion(const QUuid& id,
                                          const QSet<QString>& liveSpaceUUIDs) const;
    void deleteProject(const QUuid& id);

private:
    ProjectStore& projects_;
    const PresetStore& presets_;
};

} // namespace deskmark
