// The bookmark and group operations of ProjectStore.

#include "core/model/BookmarkOrder.h"
#include "core/model/ProjectStore.h"

#include <algorithm>

namespace deskmark {

namespace {

// A group name as it is stored: trimmed, and nothing when that leaves it empty.
std::optional<QString> storedGroup(const std::optional<QString>& group) {
    if (!group)
        return std::nullopt;
    QString trimmed = group->trimmed();
    if (trimmed.isEmpty())
        return std::nullopt;
    return trimmed;
}

// The section a bookmark belongs to when stepping: its trimmed group, empty for ungrouped.
QString sectionOf(const Bookmark& bookmark) {
    return bookmark.group ? bookmark.group->trimmed() : QString();
}

qsizetype bookmarkIndex(const Project& project, const QUuid& id) {
    const auto it = std::find_if(project.bookmarks.cbegin(), project.bookmarks.cend(),
                                 [&](const Bookmark& b) { return b.id == id; });
    return it == project.bookmarks.cend() ? -1 : it - project.bookmarks.cbegin();
}

} // namespace

void ProjectStore::registerGroup(const std::optional<QString>& group, qsizetype projectIndex) {
    QStringList& groups = projects_[projectIndex].groups;
    if (group && !groups.contains(*group))
        groups.append(*group);
}

void ProjectStore::regroup(qsizetype projectIndex) {
    Project& project = projects_[projectIndex];
    project.bookmarks = BookmarkOrder::groupedOrder(std::move(project.bookmarks), project.groups);
}

bool ProjectStore::addBookmark(const Bookmark& bookmark, const QUuid& projectID) {
    const qsizetype index = indexOf(projectID);
    if (index < 0)
        return false;
    const QString key = bookmark.dedupeKey();
    const QList<Bookmark>& existing = projects_[index].bookmarks;
    if (std::any_of(existing.cbegin(), existing.cend(),
                    [&](const Bookmark& b) { return b.dedupeKey() == key; }))
        return false;
    Bookmark added = bookmark;
    added.group = storedGroup(bookmark.group);
    registerGroup(added.group, index);
    projects_[index].bookmarks.append(added);
    regroup(index);
    finishChange();
    return true;
}

void ProjectStore::updateBookmark(const Bookmark& bookmark, const QUuid& projectID) {
    const qsizetype index = indexOf(projectID);
    if (index < 0)
        return;
    const qsizetype position = bookmarkIndex(projects_[index], bookmark.id);
    if (position < 0)
        return;
    Bookmark updated = bookmark;
    updated.group = storedGroup(bookmark.group);
    registerGroup(updated.group, index);
    projects_[index].bookmarks[position] = updated;
    regroup(index);
    finishChange();
}

void ProjectStore::removeBookmark(const QUuid& id, const QUuid& projectID) {
    const qsizetype index = indexOf(projectID);
    if (index < 0 ||
        projects_[index].bookmarks.removeIf([&](const Bookmark& b) { return b.id == id; }) == 0)
        return;
    finishChange();
}

void ProjectStore::stepBookmark(const QUuid& id, const QUuid& projectID, bool up) {
    const qsizetype index = indexOf(projectID);
    if (index < 0)
        return;
    Project& project = projects_[index];
    const qsizetype position = bookmarkIndex(project, id);
    if (position < 0)
        return;
    // The ungrouped section first, then the groups in display order.
    const QStringList sections = QStringList{QString()} + project.groups;
    const QString section = sectionOf(project.bookmarks[position]);
    const qsizetype sectionIndex = sections.indexOf(section);
    if (sectionIndex < 0)
        return;

    const qsizetype neighbour = up ? position - 1 : position + 1;
    if (neighbour >= 0 && neighbour < project.bookmarks.size() &&
        sectionOf(project.bookmarks[neighbour]) == section) {
        project.bookmarks.swapItemsAt(position, neighbour);
    } else {
        // At the edge of its group: the bookmark joins the neighbouring group without
        // moving, which makes it the last item of the group above or the first of the
        // group below.
        const qsizetype target = up ? sectionIndex - 1 : sectionIndex + 1;
        if (target < 0 || target >= sections.size())
            return;
        project.bookmarks[position].group =
            target == 0 ? std::nullopt : std::optional<QString>(sections[target]);
    }
    finishChange();
}

void ProjectStore::setBookmarkGroup(const QUuid& id, const QUuid& projectID,
                                    const std::optional<QString>& group) {
    const qsizetype index = indexOf(projectID);
    if (index < 0)
        return;
    const qsizetype position = bookmarkIndex(projects_[index], id);
    if (position < 0)
        return;
    const std::optional<QString> stored = storedGroup(group);
    registerGroup(stored, index);
    QList<Bookmark>& bookmarks = projects_[index].bookmarks;
    Bookmark moved = bookmarks.takeAt(position);
    moved.group = stored;
    bookmarks.append(moved);
    regroup(index);
    finishChange();
}

void ProjectStore::addGroup(const QString& name, const QUuid& projectID) {
    const qsizetype index = indexOf(projectID);
    const QString trimmed = name.trimmed();
    if (index < 0 || trimmed.isEmpty() || projects_[index].groups.contains(trimmed))
        return;
    projects_[index].groups.append(trimmed);
    finishChange();
}

bool ProjectStore::renameGroup(const QString& oldName, const QString& newName,
                               const QUuid& projectID) {
    const qsizetype index = indexOf(projectID);
    if (index < 0)
        return false;
    Project& project = projects_[index];
    const QString trimmed = newName.trimmed();
    const qsizetype position = project.groups.indexOf(oldName);
    // Renaming onto an existing group would merge two groups, which is not offered.
    if (trimmed.isEmpty() || trimmed == oldName || position < 0 || project.groups.contains(trimmed))
        return false;
    project.groups[position] = trimmed;
    for (Bookmark& bookmark : project.bookmarks)
        if (bookmark.group == oldName)
            bookmark.group = trimmed;
    regroup(index);
    finishChange();
    return true;
}

void ProjectStore::removeGroup(const QString& name, const QUuid& projectID) {
    const qsizetype index = indexOf(projectID);
    if (index < 0 || !projects_[index].groups.contains(name))
        return;
    Project& project = projects_[index];
    project.groups.removeAll(name);
    for (Bookmark& bookmark : project.bookmarks)
        if (bookmark.group == name)
            bookmark.group.reset();
    regroup(index);
    finishChange();
}

void ProjectStore::moveGroup(const QString& name, bool up, const QUuid& projectID) {
    const qsizetype index = indexOf(projectID);
    if (index < 0)
        return;
    QStringList& groups = projects_[index].groups;
    const qsizetype position = groups.indexOf(name);
    const qsizetype target = up ? position - 1 : position + 1;
    if (position < 0 || target < 0 || target >= groups.size())
        return;
    groups.swapItemsAt(position, target);
    regroup(index);
    finishChange();
}

QStringList ProjectStore::groupNames(const QUuid& projectID) const {
    const qsizetype index = indexOf(projectID);
    return index < 0 ? QStringList() : projects_[index].groups;
}

} // namespace deskmark
