#include "core/model/ProjectStore.h"

#include "core/app/SystemLog.h"
#include "core/model/AppFolders.h"
#include "core/model/BookmarkOrder.h"
#include "core/model/NaturalOrder.h"
#include "core/model/ProjectFileCodec.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace deskmark {

namespace {

// "default" names the built-in colours, which a project expresses by having no preset.
std::optional<QString> storedPreset(const std::optional<QString>& presetID) {
    if (presetID == QStringLiteral("default"))
        return std::nullopt;
    return presetID;
}

Project newProject(const QString& name, const std::optional<QString>& presetID) {
    return Project{QUuid::createUuid(), name, presetID, {}, {}};
}

} // namespace

ProjectStore::ProjectStore(const QString& dataFolder, QObject* parent)
    : QObject(parent), file_(QDir(dataFolder).filePath(QStringLiteral("projects.json"))),
      namesPath_(QDir(dataFolder).filePath(QStringLiteral("names.json"))),
      collator_(naturalCollator()) {
    AppFolders::ensureExists(dataFolder);
    if (file_.exists())
        load();
    else
        migrateFromNames();
}

std::optional<QString> ProjectStore::damagedFileCopy() const {
    if (!damagedAtStart_)
        return std::nullopt;
    return file_.path() + QStringLiteral(".broken");
}

// ---- persistence --------------------------------------------------------------------------

void ProjectStore::load() {
    const StoreFile::ReadResult result = file_.read();
    if (result.status != StoreFile::ReadStatus::Read) {
        systemLog(QStringLiteral("Deskmark: projects.json の読み込みに失敗"));
        // Its content is unknown, so it must not be replaced unseen either.
        if (result.status == StoreFile::ReadStatus::Unreadable) {
            file_.markBroken();
            damagedAtStart_ = true;
        }
        return;
    }
    auto document = ProjectFileCodec::decode(result.data);
    if (!document) {
        systemLog(QStringLiteral("Deskmark: projects.json のデコードに失敗（空で開始）"));
        file_.markBroken();
        damagedAtStart_ = true;
        return;
    }
    projects_ = std::move(document->projects);
    assignments_ = std::move(document->assignments);
    lastFileSize_ = result.data.size();

    // Groups used by bookmarks but missing from the list are appended, and every list is
    // put in group order. Written back with the next change.
    for (Project& project : projects_) {
        project.groups = BookmarkOrder::withUsedGroups(project.groups, project.bookmarks);
        project.bookmarks =
            BookmarkOrder::groupedOrder(std::move(project.bookmarks), project.groups);
    }
}

void ProjectStore::save() {
    const auto data = ProjectFileCodec::encode({projects_, assignments_}, lastFileSize_);
    if (!data) {
        systemLog(QStringLiteral("Deskmark: projects.json のエンコードに失敗"));
        return;
    }
    lastFileSize_ = data->size();
    file_.save(*data);
}

void ProjectStore::migrateFromNames() {
    const StoreFile::ReadResult names = StoreFile(namesPath_).read();
    if (names.status != StoreFile::ReadStatus::Read)
        return;
    const auto styles = ProjectFileCodec::decodeNames(names.data);
    if (!styles) {
        systemLog(QStringLiteral("Deskmark: names.json を解釈できないため移行を中止（空で開始）"));
        return;
    }
    // Every entry becomes its own project, in ascending order of Space UUID, even when
    // two carry the same name.
    for (auto it = styles->cbegin(); it != styles->cend(); ++it) {
        const Project project = newProject(it->name, it->presetID);
        projects_.append(project);
        assignments_.insert(it.key(), project.id);
    }
    if (!styles->isEmpty())
        backupNames();
    // Written even when there was nothing to migrate, so that this never runs again.
    save();
    systemLog(QStringLiteral("Deskmark: names.json から %1 件のプロジェクトへ移行")
                  .arg(projects_.size()));
}

void ProjectStore::backupNames() {
    QFile oldBackup(namesPath_ + QStringLiteral(".bak"));
    if (oldBackup.exists() && !oldBackup.remove()) {
        systemLog(QStringLiteral("Deskmark: names.json.bak の作成に失敗: ") +
                  oldBackup.errorString());
        return;
    }
    QFile names(namesPath_);
    if (!names.copy(oldBackup.fileName()))
        systemLog(QStringLiteral("Deskmark: names.json.bak の作成に失敗: ") + names.errorString());
}

void ProjectStore::finishChange() {
    save();
    Q_EMIT changed();
}

qsizetype ProjectStore::indexOf(const QUuid& projectID) const {
    const auto it = std::find_if(projects_.cbegin(), projects_.cend(),
                                 [&](const Project& p) { return p.id == projectID; });
    return it == projects_.cend() ? -1 : it - projects_.cbegin();
}

// ---- queries --------------------------------------------------------------------------------

std::optional<Project> ProjectStore::project(const QUuid& id) const {
    const qsizetype index = indexOf(id);
    if (index < 0)
        return std::nullopt;
    return projects_[index];
}

std::optional<Project> ProjectStore::projectForSpace(const QString& spaceUUID) const {
    const auto it = assignments_.constFind(spaceUUID);
    if (it == assignments_.cend())
        return std::nullopt;
    return project(*it);
}

std::optional<QString> ProjectStore::nameForSpace(const QString& spaceUUID) const {
    const auto found = projectForSpace(spaceUUID);
    if (!found || found->name.isEmpty())
        return std::nullopt;
    return found->name;
}

QList<Project> ProjectStore::sortedProjects() const {
    QList<Project> sorted = projects_;
    std::stable_sort(sorted.begin(), sorted.end(), [this](const Project& a, const Project& b) {
        if (const int order = collator_.compare(a.name, b.name))
            return order < 0;
        return ProjectFileCodec::uuidText(a.id) < ProjectFileCodec::uuidText(b.id);
    });
    return sorted;
}

int ProjectStore::assignmentCount(const QUuid& projectID,
                                  const std::optional<QSet<QString>>& within) const {
    int count = 0;
    for (auto it = assignments_.cbegin(); it != assignments_.cend(); ++it)
        if (*it == projectID && (!within || within->contains(it.key())))
            ++count;
    return count;
}

// ---- per-Space edits ------------------------------------------------------------------------

void ProjectStore::commit(const SpaceStyle& style, const QString& spaceUUID) {
    const auto assigned = assignments_.constFind(spaceUUID);
    const qsizetype index = assigned == assignments_.cend() ? -1 : indexOf(*assigned);
    if (style.name.isEmpty()) {
        // The project keeps its bookmarks and stays available to other Spaces.
        assignments_.remove(spaceUUID);
    } else if (index >= 0) {
        // Deliberately in place: every Space that shares the project changes with it.
        projects_[index].name = style.name;
        projects_[index].presetID = style.presetID;
    } else {
        const Project project = newProject(style.name, style.presetID);
        projects_.append(project);
        assignments_.insert(spaceUUID, project.id);
    }
    finishChange();
}

void ProjectStore::setName(const QString& name, const QString& spaceUUID) {
    const auto current = projectForSpace(spaceUUID);
    commit({name.trimmed(), current ? current->presetID : std::nullopt}, spaceUUID);
}

void ProjectStore::setPreset(const std::optional<QString>& presetID, const QString& spaceUUID) {
    const auto current = projectForSpace(spaceUUID);
    commit({current ? current->name : QString(), storedPreset(presetID)}, spaceUUID);
}

void ProjectStore::set(const QString& name, const std::optional<QString>& presetID,
                       const QString& spaceUUID) {
    commit({name.trimmed(), storedPreset(presetID)}, spaceUUID);
}

void ProjectStore::assign(const QUuid& projectID, const QString& spaceUUID) {
    if (indexOf(projectID) < 0)
        return;
    assignments_.insert(spaceUUID, projectID);
    finishChange();
}

void ProjectStore::unassign(const QString& spaceUUID) {
    if (!assignments_.remove(spaceUUID))
        return;
    finishChange();
}

// ---- project edits --------------------------------------------------------------------------

Project ProjectStore::addProject(const QString& name, const std::optional<QString>& presetID) {
    const Project project = newProject(name.trimmed(), storedPreset(presetID));
    projects_.append(project);
    finishChange();
    return project;
}

void ProjectStore::updateProject(const Project& project) {
    const qsizetype index = indexOf(project.id);
    if (index < 0)
        return;
    Project& stored = projects_[index];
    stored = project;
    stored.name = project.name.trimmed();
    stored.presetID = storedPreset(project.presetID);
    finishChange();
}

void ProjectStore::deleteProject(const QUuid& id) {
    const qsizetype index = indexOf(id);
    if (index < 0)
        return;
    projects_.removeAt(index);
    assignments_.removeIf([&](const auto& entry) { return entry.value() == id; });
    finishChange();
}

void ProjectStore::clearPreset(const QString& presetID) {
    bool used = false;
    for (Project& project : projects_) {
        if (project.presetID == presetID) {
            project.presetID.reset();
            used = true;
        }
    }
    if (used)
        finishChange();
}

} // namespace deskmark
