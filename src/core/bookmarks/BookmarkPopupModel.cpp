// The bookmark popup's list, selection, keys and edits; opening is in
// BookmarkPopupOpening.cpp.

#include "core/bookmarks/BookmarkPopupModel.h"

#include "core/app/Language.h"
#include "core/bookmarks/BookmarkKeyTable.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "core/bookmarks/BookmarkPopupScale.h"
#include "core/model/ProjectStore.h"
#include "core/model/SettingsStore.h"

#include <QFileInfo>

#include <algorithm>

namespace deskmark {

BookmarkPopupModel::BookmarkPopupModel(Services services, std::optional<QString> spaceUUID,
                                       std::optional<QString> displayUUID,
                                       std::optional<RunningApp> captureSource, QObject* parent)
    : QObject(parent),
      services_(services),
      spaceUUID_(std::move(spaceUUID)),
      displayUUID_(std::move(displayUUID)),
      captureSource_(std::move(captureSource)) {
    connect(&services_.projects, &ProjectStore::changed, this, &BookmarkPopupModel::reload);
    reload();
}

void BookmarkPopupModel::reload() {
    const Row* selected = selectedRow();
    reloadKeeping(selected ? std::optional(selected->bookmark.id) : std::nullopt);
}

// Rebuilds the list from the store; the selection stays on the bookmark `selected` when
// it is still listed, else on the same position, else on the first row.
void BookmarkPopupModel::reloadKeeping(const std::optional<QUuid>& selected) {
    const int oldSelection = selection_;
    project_ = spaceUUID_ ? services_.projects.projectForSpace(*spaceUUID_) : std::nullopt;
    entries_.clear();
    rows_.clear();
    if (project_) {
        std::optional<QString> currentGroup;
        for (const Bookmark& bookmark : std::as_const(project_->bookmarks)) {
            const std::optional<QString> group =
                bookmark.group && !bookmark.group->isEmpty() ? bookmark.group : std::nullopt;
            if (group && group != currentGroup)
                entries_.append({QStringLiteral("header-") + *group, group, -1});
            currentGroup = group;
            Row row{bookmark,
                    BookmarkOpener::displayLabel(bookmark),
                    BookmarkOpener::displayTarget(bookmark),
                    true,
                    false,
                    std::nullopt};
            if (const auto path = BookmarkOpener::fileURL(bookmark)) {
                row.exists = QFileInfo::exists(*path);
                row.isPlainDirectory = row.exists && BookmarkOpener::isPlainDirectory(bookmark);
                if (row.isPlainDirectory)
                    row.branch = BookmarkOpener::gitBranch(bookmark);
            } else if (bookmark.kind == Bookmark::Kind::File) {
                row.exists = false;
            }
            entries_.append({QStringLiteral("row-") + bookmark.id.toString(QUuid::WithoutBraces),
                             std::nullopt, int(rows_.size())});
            rows_.append(std::move(row));
        }
    }
    int next = -1;
    if (selected) {
        const auto it = std::find_if(rows_.cbegin(), rows_.cend(), [&](const Row& row) {
            return row.bookmark.id == *selected;
        });
        if (it != rows_.cend())
            next = int(it - rows_.cbegin());
    }
    if (next < 0 && !rows_.isEmpty())
        next = std::clamp(oldSelection, 0, int(rows_.size() - 1));
    selection_ = next;
    Q_EMIT changed();
    Q_EMIT selectionChanged();
}

const BookmarkPopupModel::Row* BookmarkPopupModel::selectedRow() const {
    return selection_ >= 0 && selection_ < rows_.size() ? &rows_[selection_] : nullptr;
}

QList<BookmarkHint> BookmarkPopupModel::hints() const {
    const Row* row = selectedRow();
    if (!row)
        return BookmarkHints::withoutSelection();
    return BookmarkHints::forRow(row->bookmark.kind, row->isPlainDirectory, row->exists);
}

QString BookmarkPopupModel::emptyTitle() const {
    if (!project_)
        return localized("プロジェクトがありません", "No project");
    return {};
}

QString BookmarkPopupModel::emptyMessage() const {
    if (!project_)
        return localized("メニューの「現在の Space の名前・カラーを編集…」で割り当ててください。",
                         "Assign one from “Edit Current Space's Name & Color…” in the menu.");
    if (rows_.isEmpty())
        return localized("ブックマークはまだありません。下のボタンで追加してください。",
                         "No bookmarks yet. Add one with the buttons below.");
    return {};
}

double BookmarkPopupModel::scale() const {
    return services_.settings.bookmarkPopupScale(displayUUID_);
}

bool BookmarkPopupModel::handleKey(int key, Qt::KeyboardModifiers modifiers) {
    using Kind = BookmarkKeyCommand::Kind;
    const BookmarkKeyCommand command = BookmarkKeyTable::command(key, modifiers);
    const Row* row = selectedRow();
    switch (command.kind) {
    case Kind::None:
        return false;
    case Kind::Close:
        Q_EMIT closeRequested();
        break;
    case Kind::ScaleUp:
    case Kind::ScaleDown:
        stepScale(command.kind == Kind::ScaleUp);
        break;
    case Kind::MoveBookmarkUp:
    case Kind::MoveBookmarkDown:
        moveSelectedBookmark(command.kind == Kind::MoveBookmarkUp);
        break;
    case Kind::MoveGroupUp:
    case Kind::MoveGroupDown:
        moveSelectedGroup(command.kind == Kind::MoveGroupUp);
        break;
    case Kind::Capture:
        captureFrontmost();
        break;
    case Kind::Edit:
        editSelected();
        break;
    case Kind::RenameGroup:
        if (row && row->bookmark.group)
            promptRenameGroup(*row->bookmark.group);
        else
            Q_EMIT beep();
        break;
    case Kind::Add:
        if (project_)
            Q_EMIT formRequested(std::nullopt, std::nullopt);
        else
            Q_EMIT beep();
        break;
    case Kind::NewGroup:
        promptNewGroup();
        break;
    case Kind::Open:
    case Kind::OpenAlternate:
    case Kind::OpenInEditor:
        openSelected(command.kind != Kind::Open, command.kind == Kind::OpenInEditor);
        break;
    case Kind::Remove:
        removeSelected();
        break;
    case Kind::Copy:
        copySelected();
        break;
    case Kind::SelectNext:
    case Kind::SelectPrevious:
        moveSelection(command.kind == Kind::SelectNext ? 1 : -1);
        break;
    case Kind::QuickOpen:
        quickOpen(command.position);
        break;
    }
    return true;
}

void BookmarkPopupModel::setSelection(int row) {
    if (row < 0 || row >= rows_.size() || row == selection_)
        return;
    selection_ = row;
    Q_EMIT selectionChanged();
}

void BookmarkPopupModel::moveSelection(int by) {
    if (rows_.isEmpty())
        return;
    const int next = selection_ < 0 ? 0 : selection_ + by;
    if (next < 0 || next >= rows_.size()) {
        Q_EMIT beep();
        return;
    }
    setSelection(next);
}

void BookmarkPopupModel::stepScale(bool up) {
    const std::optional<double> next = BookmarkPopupScale::stepped(scale(), up);
    if (!next) {
        Q_EMIT beep();
        return;
    }
    services_.settings.setBookmarkPopupScale(*next, displayUUID_);
    Q_EMIT scaleChanged();
}

template <typename Edit>
void BookmarkPopupModel::editProject(Edit edit) {
    if (!project_) {
        Q_EMIT beep();
        return;
    }
    const QUuid id = project_->id;
    const std::optional<Project> before = services_.projects.project(id);
    edit(id);
    if (services_.projects.project(id) == before)
        Q_EMIT beep();
}

void BookmarkPopupModel::moveSelectedBookmark(bool up) {
    const Row* row = selectedRow();
    if (!row) {
        Q_EMIT beep();
        return;
    }
    const QUuid bookmark = row->bookmark.id;
    editProject([&](const QUuid& project) { services_.projects.stepBookmark(bookmark, project, up); });
}

void BookmarkPopupModel::moveSelectedGroup(bool up) {
    const Row* row = selectedRow();
    if (!row || !row->bookmark.group) {
        Q_EMIT beep();
        return;
    }
    moveGroup(*row->bookmark.group, up);
}

void BookmarkPopupModel::moveGroup(const QString& group, bool up) {
    editProject([&](const QUuid& project) { services_.projects.moveGroup(group, up, project); });
}

void BookmarkPopupModel::assignGroup(int row, const std::optional<QString>& group) {
    if (row < 0 || row >= rows_.size() || !project_)
        return;
    const QUuid bookmark = rows_[row].bookmark.id;
    services_.projects.setBookmarkGroup(bookmark, project_->id, group);
    reloadKeeping(bookmark);
}

void BookmarkPopupModel::promptNewGroup(int rowToAssign) {
    if (!project_) {
        Q_EMIT beep();
        return;
    }
    const QUuid project = project_->id;
    const std::optional<QUuid> bookmark =
        rowToAssign >= 0 && rowToAssign < rows_.size()
            ? std::optional(rows_[rowToAssign].bookmark.id)
            : std::nullopt;
    Q_EMIT groupNameRequested(GroupNameRequest::newGroup([this, project, bookmark](const QString& name) {
        services_.projects.addGroup(name, project);
        if (bookmark)
            services_.projects.setBookmarkGroup(*bookmark, project, name);
        reloadKeeping(bookmark);
    }));
}

void BookmarkPopupModel::promptRenameGroup(const QString& group) {
    if (!project_)
        return;
    const QUuid project = project_->id;
    Q_EMIT groupNameRequested(
        GroupNameRequest::renameGroup(group, [this, project, group](const QString& name) {
            if (name.isEmpty())
                services_.projects.removeGroup(group, project);
            else if (!services_.projects.renameGroup(group, name, project))
                Q_EMIT beep();
        }));
}

void BookmarkPopupModel::removeGroup(const QString& group) {
    if (!project_)
        return;
    services_.projects.removeGroup(group, project_->id);
}

void BookmarkPopupModel::editSelected() {
    if (const Row* row = selectedRow())
        Q_EMIT formRequested(row->bookmark, std::nullopt);
    else
        Q_EMIT beep();
}

void BookmarkPopupModel::removeSelected() {
    const Row* row = selectedRow();
    if (!row || !project_) {
        Q_EMIT beep();
        return;
    }
    if (services_.settings.bookmarkConfirmDelete()) {
        Q_EMIT deleteConfirmRequested(row->bookmark);
        return;
    }
    services_.projects.removeBookmark(row->bookmark.id, project_->id);
}

bool BookmarkPopupModel::addFiles(const QStringList& paths) {
    if (!project_) {
        Q_EMIT beep();
        return false;
    }
    bool added = false;
    for (const QString& path : paths) {
        const Bookmark bookmark{QUuid::createUuid(), Bookmark::Kind::File, QString(), path,
                                std::nullopt, std::nullopt};
        added = services_.projects.addBookmark(bookmark, project_->id) || added;
    }
    if (!added)
        Q_EMIT beep();
    return added;
}

} // namespace deskmark
