#pragma once

#include "core/model/ColorPair.h"
#include "core/model/PresetStore.h"
#include "core/model/Project.h"
#include "core/model/ProjectStore.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>

#include <optional>

namespace deskmark {

// The editing state and decisions of the window that names one Space: which project the
// Space is given (a new one or an existing one), the project's name and its colour preset.
//
// The project list and the set of live Spaces are snapshots taken when the editor opens;
// the presets are read live. Nothing reaches the stores until save(). A project deleted
// elsewhere while the editor is open is saved as a new project.
class NameEditorModel : public QObject {
    Q_OBJECT
public:
    // The fixed texts of the window, in the interface language.
    struct Texts {
        QString title;
        QString caption;
        QString projectLabel;
        QString nameLabel;
        QString nameHint;
        QString presetLabel;
        QString presetHint;
        QString previewLabel;
        QString cancel;
        QString save;
    };

    // One option of the project picker; no project id means "new project".
    struct ProjectEntry {
        std::optional<QUuid> projectID;
        QString title;

        friend bool operator==(const ProjectEntry&, const ProjectEntry&) = default;
    };

    // One option of the preset picker.
    struct PresetEntry {
        QString presetID;
        QString title;

        friend bool operator==(const PresetEntry&, const PresetEntry&) = default;
    };

    // The label as it will look. Without colours the text is the plain "not shown" notice.
    struct Preview {
        QString text;
        std::optional<ColorPair> colors;

        friend bool operator==(const Preview&, const Preview&) = default;
    };

    NameEditorModel(ProjectStore& projectStore, const PresetStore& presetStore, QString spaceUUID,
                    QSet<QString> liveSpaceUUIDs, QObject* parent = nullptr);

    static Texts texts();

    const QString& spaceUUID() const { return spaceUUID_; }
    const std::optional<QUuid>& projectID() const { return projectID_; }
    const QString& name() const { return name_; }
    const QString& presetID() const { return presetID_; }

    // "New project" first, then every project of the snapshot in name order.
    QList<ProjectEntry> projectEntries() const;
    // The position of the selected project in projectEntries().
    qsizetype selectedProjectIndex() const;
    // Every preset in store order.
    QList<PresetEntry> presetEntries() const;
    // The position of presetID() in presetEntries(), or -1 when no preset has that id.
    qsizetype selectedPresetIndex() const;

    // Chooses the project the Space will show and reloads the fields from it, dropping
    // whatever was typed.
    void selectProject(const std::optional<QUuid>& projectID);
    // Fills name and preset from the project (empty and "default" when there is none, or
    // when it no longer exists). The selected project itself is left as it is.
    void loadFields(const std::optional<QUuid>& projectID);
    void setName(const QString& name);
    void setPresetID(const QString& presetID);

    // How many live Spaces will show the selected project after saving, this one
    // included; nothing when a new project is selected.
    std::optional<int> sharedCount() const;
    // The notice that the edit changes the selected project, shown only while one is
    // selected.
    std::optional<QString> sharedNote() const;
    Preview preview() const;

    // Applies the edit to the project store.
    void save();

Q_SIGNALS:
    // Something the window shows changed: a field, the selection or the presets.
    void changed();

private:
    std::optional<Project> snapshotProject(const QUuid& id) const;

    ProjectStore& projectStore_;
    const PresetStore& presetStore_;
    const QString spaceUUID_;
    const QSet<QString> liveSpaceUUIDs_;
    const QList<Project> projects_;

    std::optional<QUuid> projectID_;
    QString name_;
    QString presetID_;
};

} // namespace deskmark
