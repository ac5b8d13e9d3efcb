#include "ui/settings/BookmarkListSection.h"

#include "core/app/Language.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "core/model/ProjectStore.h"
#include "ui/settings/SettingControls.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace deskmark {

namespace {
QPushButton* button(const QString& text, const QString& name, QWidget* parent) {
    auto* b = new QPushButton(text, parent);
    b->setAccessibleName(name);
    return b;
}
} // namespace

BookmarkListSection::BookmarkListSection(const SettingsContext& context, QWidget* parent)
    : QWidget(parent), context_(context) {
    ProjectStore& store = context.projects;
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    project_ = new QComboBox(this);
    project_->setAccessibleName(localized("プロジェクト", "Project"));
    layout->addWidget(new QLabel(localized("プロジェクト", "Project"), this), 0, 0);
    layout->addWidget(project_, 0, 1, 1, 2);

    bookmarks_ = new QListWidget(this);
    bookmarks_->setMinimumHeight(130);
    bookmarks_->setAccessibleName(localized("ブックマーク", "Bookmarks"));
    layout->addWidget(bookmarks_, 1, 0, 1, 2);
    auto* bookmarkButtons = new QVBoxLayout();
    auto* up = button(QStringLiteral("▲"), localized("上へ", "Move Up"), this);
    auto* down = button(QStringLiteral("▼"), localized("下へ", "Move Down"), this);
    auto* remove = button(localized("削除", "Delete"),
                          localized("ブックマークを削除", "Delete Bookmark"), this);
    moveTo_ = new QComboBox(this);
    moveTo_->setAccessibleName(localized("グループへ移動", "Move to Group"));
    for (QWidget* w : {static_cast<QWidget*>(up), static_cast<QWidget*>(down),
                       static_cast<QWidget*>(moveTo_), static_cast<QWidget*>(remove)})
        bookmarkButtons->addWidget(w);
    bookmarkButtons->addStretch();
    layout->addLayout(bookmarkButtons, 1, 2);

    groups_ = new QListWidget(this);
    groups_->setMaximumHeight(100);
    groups_->setAccessibleName(localized("グループ", "Groups"));
    layout->addWidget(new QLabel(localized("グループ", "Groups"), this), 2, 0);
    layout->addWidget(groups_, 3, 0, 1, 2);
    auto* groupButtons = new QVBoxLayout();
    auto* groupUp = button(QStringLiteral("▲"), localized("グループを上へ", "Move Group Up"), this);
    auto* groupDown =
        button(QStringLiteral("▼"), localized("グループを下へ", "Move Group Down"), this);
    auto* groupRemove =
        button(localized("削除", "Remove"), localized("グループを削除", "Remove Group"), this);
    for (QWidget* w : {static_cast<QWidget*>(groupUp), static_cast<QWidget*>(groupDown),
                       static_cast<QWidget*>(groupRemove)})
        groupButtons->addWidget(w);
    groupButtons->addStretch();
    layout->addLayout(groupButtons, 3, 2);
    groupName_ = new QLineEdit(this);
    groupName_->setPlaceholderText(localized("グループ名", "Group name"));
    auto* groupAdd = new QPushButton(localized("追加", "Add"), this);
    auto* groupRename = new QPushButton(localized("名前を変更", "Rename"), this);
    auto* nameRow = new QHBoxLayout();
    nameRow->addWidget(groupName_, 1);
    nameRow->addWidget(groupAdd);
    nameRow->addWidget(groupRename);
    layout->addLayout(nameRow, 4, 0, 1, 3);
    groupError_ = SettingControls::note(
        localized("その名前のグループは既にあります。", "A group with that name already exists."),
        this);
    groupError_->hide();
    layout->addWidget(groupError_, 5, 0, 1, 3);
    layout->setColumnStretch(1, 1);

    connect(project_, &QComboBox::activated, this, [this] { render(); });
    const auto step = [this, &store](bool upward) {
        const auto id = selectedBookmark();
        if (id && project())
            store.stepBookmark(*id, *project(), upward);
    };
    connect(up, &QPushButton::clicked, this, [step] { step(true); });
    connect(down, &QPushButton::clicked, this, [step] { step(false); });
    connect(remove, &QPushButton::clicked, this, [this, &store] {
        const auto id = selectedBookmark();
        if (id && project())
            store.removeBookmark(*id, *project());
    });
    connect(moveTo_, &QComboBox::activated, this, [this, &store](int index) {
        const auto id = selectedBookmark();
        if (!id || !project() || index <= 0)
            return;
        const QString group = moveTo_->itemData(index).toString();
        store.setBookmarkGroup(*id, *project(),
                               group.isEmpty() ? std::nullopt : std::optional(group));
    });
    const auto moveGroup = [this, &store](bool upward) {
        const auto group = selectedGroup();
        if (group && project())
            store.moveGroup(*group, upward, *project());
    };
    connect(groupUp, &QPushButton::clicked, this, [moveGroup] { moveGroup(true); });
    connect(groupDown, &QPushButton::clicked, this, [moveGroup] { moveGroup(false); });
    connect(groupRemove, &QPushButton::clicked, this, [this, &store] {
        const auto group = selectedGroup();
        if (group && project())
            store.removeGroup(*group, *project());
    });
    connect(groupAdd, &QPushButton::clicked, this, [this, &store] {
        if (project())
            store.addGroup(groupName_->text(), *project());
    });
    connect(groupRename, &QPushButton::clicked, this, [this, &store] {
        const auto group = selectedGroup();
        if (group && project())
            groupError_->setVisible(!store.renameGroup(*group, groupName_->text(), *project()));
    });
    connect(groups_, &QListWidget::currentTextChanged, groupName_, &QLineEdit::setText);
    connect(&store, &ProjectStore::changed, this, &BookmarkListSection::render);
    render();
}

std::optional<QUuid> BookmarkListSection::project() const {
    const QUuid id = project_->currentData().toUuid();
    return id.isNull() ? std::nullopt : std::optional(id);
}

std::optional<QUuid> BookmarkListSection::selectedBookmark() const {
    const QListWidgetItem* item = bookmarks_->currentItem();
    return item ? std::optional(item->data(Qt::UserRole).toUuid()) : std::nullopt;
}

std::optional<QString> BookmarkListSection::selectedGroup() const {
    const QListWidgetItem* item = groups_->currentItem();
    return item ? std::optional(item->text()) : std::nullopt;
}

void BookmarkListSection::render() {
    const ProjectStore& store = context_.projects;
    {
        const QSignalBlocker blocker(project_);
        const QUuid shown = project_->currentData().toUuid();
        project_->clear();
        for (const Project& p : store.sortedProjects())
            project_->addItem(p.name, p.id);
        project_->setCurrentIndex(std::max(0, project_->findData(shown)));
    }
    const std::optional<QUuid> selectedID = selectedBookmark();
    const std::optional<QString> selectedGroupName = selectedGroup();
    const std::optional<Project> current = project() ? store.project(*project()) : std::nullopt;
    bookmarks_->clear();
    groups_->clear();
    {
        const QSignalBlocker blocker(moveTo_);
        moveTo_->clear();
        moveTo_->addItem(localized("グループへ移動…", "Move to Group…"));
        moveTo_->addItem(localized("（グループなし）", "(No Group)"), QString());
    }
    if (!current)
        return;
    for (const Bookmark& bookmark : current->bookmarks) {
        const QString group = bookmark.group.value_or(QString());
        const QString text = (group.isEmpty() ? QString() : QStringLiteral("[%1]  ").arg(group)) +
                             BookmarkOpener::displayLabel(bookmark) + QStringLiteral("  —  ") +
                             BookmarkOpener::displayTarget(bookmark);
        auto* item = new QListWidgetItem(text, bookmarks_);
        item->setData(Qt::UserRole, bookmark.id);
        if (selectedID == bookmark.id)
            bookmarks_->setCurrentItem(item);
    }
    for (const QString& group : current->groups) {
        auto* item = new QListWidgetItem(group, groups_);
        moveTo_->addItem(group, group);
        if (selectedGroupName == group)
            groups_->setCurrentItem(item);
    }
}

} // namespace deskmark
