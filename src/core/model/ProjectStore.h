#pragma once

#include "core/model/Bookmark.h"
#include "core/model/Project.h"
#include "core/model/SpaceStyle.h"
#include "core/model/StoreFile.h"

#include <QCollator>
#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace deskmark {

// The single owner of the user's projects and of which Space shows which project.
//
// Everything lives in memory; every change writes the whole of projects.json in the data
// folder and then emits changed(). The file is read once, at construction, and never
// again: edits made to it by hand while the program runs are overwritten. When the file
// does not exist yet, the legacy per-Space names.json is migrated into projects once.
//
// Failures never reach the caller: a file that cannot be read or decoded leaves the store
// empty (and is copied to projects.json.broken before the first save replaces it), and a
// failed save keeps the memory as it is. Each failure is one line in the system log.
//
// Project names are stored trimmed and a preset id of "default" is stored as no preset,
// whenever they pass through a mutation below.
class ProjectStore : public QObject {
    Q_OBJECT
public:
    explicit ProjectStore(const QString& dataFolder, QObject* parent = nullptr);

    const QList<Project>& projects() const { return projects_; }
    const QHash<QString, QUuid>& assignments() const { return assignments_; }

    // ---- queries ----
    std::optional<Project> project(const QUuid& id) const;
    // The Space's project; nothing when it is unassigned or its project no longer exists.
    std::optional<Project> projectForSpace(const QString& spaceUUID) const;
    // The name of projectForSpace(); nothing when there is none or the name is empty.
    std::optional<QString> nameForSpace(const QString& spaceUUID) const;
    // All projects in natural, case-insensitive order of name ("Item 2" before
    // "Item 10"); equal names ordered by the text of their ids.
    QList<Project> sortedProjects() const;
    // How many Spaces show the project; with `within`, only Spaces inside that set count.
    int assignmentCount(const QUuid& projectID,
                        const std::optional<QSet<QString>>& within = std::nullopt) const;

    // ---- per-Space edits ----
    // A non-empty name renames the Space's project (every Space that shares it changes
    // too) or, for an unassigned Space, creates a project for it. An empty name, after
    // trimming, makes the Space unnamed; the project itself stays.
    void setName(const QString& name, const QString& spaceUUID);
    // Keeps the name; on an unnamed Space this therefore creates nothing.
    void setPreset(const std::optional<QString>& presetID, const QString& spaceUUID);
    void set(const QString& name, const std::optional<QString>& presetID, const QString& spaceUUID);
    // An unknown project id is ignored.
    void assign(const QUuid& projectID, const QString& spaceUUID);
    void unassign(const QString& spaceUUID);

    // ---- project edits ----
    Project addProject(const QString& name, const std::optional<QString>& presetID);
    // Replaces the project with the same id; unknown ids are ignored.
    void updateProject(const Project& project);
    // Removes the project with its bookmarks; the Spaces that showed it become unnamed.
    void deleteProject(const QUuid& id);
    // Called when a preset is deleted: the projects that used it fall back to the default.
    void clearPreset(const QString& presetID);

    // ---- bookmarks and groups ----
    // Every operation names the project by id and does nothing (or answers false) for an
    // unknown project. Group names are trimmed where they come in; an empty one means
    // ungrouped. After every change the list is kept in group order (BookmarkOrder).

    // Refused (false) when the project already has a bookmark with the same dedupeKey().
    bool addBookmark(const Bookmark& bookmark, const QUuid& projectID);
    // Replaces the bookmark with the same id, without a duplicate check.
    void updateBookmark(const Bookmark& bookmark, const QUuid& projectID);
    void removeBookmark(const QUuid& id, const QUuid& projectID);
    // One place up or down; at the edge of its group the bookmark crosses into the
    // neighbouring group (the ungrouped section counts as the first group).
    void stepBookmark(const QUuid& id, const QUuid& projectID, bool up);
    // Makes the bookmark the last one of that group (ungrouped for nothing or blanks).
    void setBookmarkGroup(const QUuid& id, const QUuid& projectID,
                          const std::optional<QString>& group);
    void addGroup(const QString& name, const QUuid& projectID);
    // False when the new name is empty, unchanged or taken, or the old one is unknown.
    bool renameGroup(const QString& oldName, const QString& newName, const QUuid& projectID);
    // The group's bookmarks stay, ungrouped, after the bookmarks that already were.
    void removeGroup(const QString& name, const QUuid& projectID);
    void moveGroup(const QString& name, bool up, const QUuid& projectID);
    QStringList groupNames(const QUuid& projectID) const;

    // The file read at start could not be used: where the damaged file is kept once the
    // first change is saved ("…/projects.json.broken"). None when it was read.
    std::optional<QString> damagedFileCopy() const;

Q_SIGNALS:
    void changed();

private:
    void load();
    void save();
    void migrateFromNames();
    void backupNames();

    // Applies one Space's name and preset: see setName().
    void commit(const SpaceStyle& style, const QString& spaceUUID);
    // Saves and announces a change.
    void finishChange();
    // The position of the project in projects_, or -1.
    qsizetype indexOf(const QUuid& projectID) const;
    // Appends a group name the project does not list yet (no save).
    void registerGroup(const std::optional<QString>& group, qsizetype projectIndex);
    // Reorders the project's bookmarks by its groups.
    void regroup(qsizetype projectIndex);

    StoreFile file_;
    QString namesPath_;
    QList<Project> projects_;
    QHash<QString, QUuid> assignments_;
    QCollator collator_;
    qsizetype lastFileSize_ = 0; // the size of the last text read or written
    bool damagedAtStart_ = false;
};

} // namespace deskmark
