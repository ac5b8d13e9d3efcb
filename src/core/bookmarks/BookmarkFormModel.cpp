#include "core/bookmarks/BookmarkFormModel.h"

#include "core/app/Language.h"
#include "core/bookmarks/AppCandidateStore.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "core/model/ProjectStore.h"

#include <algorithm>

namespace deskmark {

const QString BookmarkFormModel::newGroupTag = QStringLiteral("\x01new-group");
const QString BookmarkFormModel::otherAppTag = QStringLiteral("\x01other-app");

BookmarkFormModel::BookmarkFormModel(ProjectStore& projects, AppCandidateStore& candidates,
                                     QUuid projectID, std::optional<Bookmark> editing,
                                     std::optional<Bookmark> prefill)
    : projects_(projects),
      candidates_(candidates),
      projectID_(projectID),
      editing_(std::move(editing)) {
    if (const std::optional<Bookmark>& start = editing_ ? editing_ : prefill) {
        target = start->target;
        label = start->label;
        group = start->group.value_or(QString());
        appBundleID = start->appBundleID.value_or(QString());
    }
}

QString BookmarkFormModel::windowTitle() const {
    return editing_ ? localized("ブックマークを編集", "Edit Bookmark")
                    : localized("ブックマークを追加", "Add Bookmark");
}

QString BookmarkFormModel::duplicateMessage() {
    return localized("この URL・パスは既に登録されています。", "This URL/path is already bookmarked.");
}

BookmarkFormModel::AppPicker BookmarkFormModel::appPicker() const {
    const std::optional<Bookmark> parsed = BookmarkOpener::parseManualEntry(target);
    if (!parsed)
        return AppPicker::None;
    if (parsed->kind == Bookmark::Kind::Url)
        return AppPicker::Browser;
    return BookmarkOpener::isPlainDirectory(*parsed) ? AppPicker::Folder : AppPicker::None;
}

QList<BookmarkFormModel::Option> BookmarkFormModel::groupOptions() const {
    QList<Option> options{{localized("グループなし", "No Group"), QString()}};
    for (const QString& name : projects_.groupNames(projectID_))
        options.append({name, name});
    options.append({localized("新しいグループ…", "New Group…"), newGroupTag});
    return options;
}

QList<BookmarkFormModel::Option> BookmarkFormModel::appOptions() const {
    candidates_.ensureLoaded();
    QList<Option> options;
    const auto addApps = [&](const QList<AppCandidateStore::App>& apps) {
        for (const AppCandidateStore::App& app : apps)
            options.append({app.name, app.bundleID});
    };
    switch (appPicker()) {
    case AppPicker::None:
        break;
    case AppPicker::Browser:
        options.append({localized("既定のブラウザ", "Default browser"), QString()});
        addApps(candidates_.browserApps());
        break;
    case AppPicker::Folder:
        options.append({localized("ファイルマネージャ（既定）", "File Manager (default)"), QString()});
        addApps(candidates_.orderedFolderApps());
        if (otherApp_ && std::none_of(options.cbegin(), options.cend(), [&](const Option& o) {
                return o.tag == otherApp_->tag;
            }))
            options.append(*otherApp_);
        options.append({localized("その他…", "Other…"), otherAppTag});
        break;
    }
    return options;
}

QString BookmarkFormModel::appPickerLabel() const {
    switch (appPicker()) {
    case AppPicker::Browser:
        return localized("開くブラウザ", "Open in");
    case AppPicker::Folder:
        return localized("開くアプリ", "Open with");
    case AppPicker::None:
        break;
    }
    return {};
}

QString BookmarkFormModel::appPickerCaption() const {
    switch (appPicker()) {
    case AppPicker::Browser:
        return localized("この URL を開くブラウザを選びます（既定ならデスクトップの設定に従います）。",
                         "Choose the browser this URL opens in (default follows the desktop's "
                         "setting).");
    case AppPicker::Folder:
        return localized("Enter で出るアプリ選択メニューの先頭（デフォルト）になります。",
                         "This becomes the first item of the app menu shown by Enter.");
    case AppPicker::None:
        break;
    }
    return {};
}

void BookmarkFormModel::chooseOtherApp(const QString& appURL) {
    const QString id = BookmarkOpener::appID(appURL);
    if (id.isEmpty())
        return;
    otherApp_ = Option{BookmarkOpener::appName(appURL), id};
    appBundleID = id;
}

BookmarkFormModel::SaveResult BookmarkFormModel::save() {
    std::optional<Bookmark> bookmark = BookmarkOpener::parseManualEntry(target);
    if (!bookmark)
        return SaveResult::Invalid;
    const QString chosenGroup = group == newGroupTag ? newGroup.trimmed() : group;
    bookmark->group = chosenGroup.isEmpty() ? std::nullopt : std::optional(chosenGroup);
    bookmark->label = label.trimmed();
    bookmark->appBundleID = appBundleID.isEmpty() || appBundleID == otherAppTag
                                ? std::nullopt
                                : std::optional(appBundleID);
    if (!editing_) {
        duplicate_ = !projects_.addBookmark(*bookmark, projectID_);
        return duplicate_ ? SaveResult::Duplicate : SaveResult::Saved;
    }
    bookmark->id = editing_->id;
    const std::optional<Project> project = projects_.project(projectID_);
    const QList<Bookmark> others = project ? project->bookmarks : QList<Bookmark>();
    duplicate_ = std::any_of(others.cbegin(), others.cend(), [&](const Bookmark& other) {
        return other.id != bookmark->id && other.kind == bookmark->kind &&
               other.target == bookmark->target;
    });
    if (duplicate_)
        return SaveResult::Duplicate;
    projects_.updateBookmark(*bookmark, projectID_);
    return SaveResult::Saved;
}

} // namespace deskmark
