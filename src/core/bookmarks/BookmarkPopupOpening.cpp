// How the bookmark popup opens, copies and captures.

#include "core/app/Language.h"
#include "core/app/Scheduler.h"
#include "core/bookmarks/AppCandidateStore.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "core/bookmarks/BookmarkPopupModel.h"
#include "core/model/SettingsStore.h"

using namespace std::chrono_literals;

namespace deskmark {

namespace {
constexpr auto kBannerTime = 1800ms;

QString pathNotFound() {
    return localized("パスが見つからないため開けません", "Path not found — can't open");
}
} // namespace

void BookmarkPopupModel::openSelected(bool alternate, bool editor) {
    if (selection_ < 0) {
        Q_EMIT beep();
        return;
    }
    open(selection_, alternate, editor);
}

void BookmarkPopupModel::open(int index, bool alternate, bool editor) {
    if (index < 0 || index >= rows_.size())
        return;
    const Row& row = rows_[index];
    const Bookmark& bookmark = row.bookmark;
    const bool isFile = bookmark.kind == Bookmark::Kind::File;
    if (!row.exists) {
        showBanner(pathNotFound());
        return;
    }
    bool opened = false;
    if (editor) {
        if (!isFile) {
            Q_EMIT beep();
            return;
        }
        opened = BookmarkOpener::openInEditor(bookmark, services_.settings.editorBundleID());
    } else if (!alternate) {
        if (row.isPlainDirectory) {
            Q_EMIT folderMenuRequested(index);
            return;
        }
        opened = BookmarkOpener::open(bookmark);
    } else if (isFile) {
        opened = BookmarkOpener::openInTerminal(bookmark, services_.settings.terminalBundleID());
    } else {
        opened = BookmarkOpener::openURLInNewWindow(bookmark, popupScreen_);
    }
    if (!opened)
        Q_EMIT beep();
}

// The number keys open without further choice, except for a plain folder, which still
// asks for its application; a successful open closes the popup.
void BookmarkPopupModel::quickOpen(int position) {
    const int index = position - 1;
    if (index < 0 || index >= rows_.size() || !rows_[index].exists) {
        Q_EMIT beep();
        return;
    }
    setSelection(index);
    if (rows_[index].isPlainDirectory) {
        Q_EMIT folderMenuRequested(index);
        return;
    }
    if (BookmarkOpener::open(rows_[index].bookmark))
        Q_EMIT closeRequested();
    else
        Q_EMIT beep();
}

// The file manager first, then the user's visible folder applications in their order.
QList<BookmarkPopupModel::FolderApp> BookmarkPopupModel::folderApps() const {
    AppCandidateStore& candidates = services_.candidates;
    candidates.ensureLoaded();
    QList<FolderApp> apps;
    const auto& manager = candidates.finder();
    apps.append({manager ? manager->name : localized("ファイルマネージャ", "File Manager"),
                 QString(), manager ? manager->iconName : QString()});
    for (const AppCandidateStore::App& app : candidates.visibleFolderApps())
        apps.append({app.name, app.appURL, app.iconName});
    return apps;
}

void BookmarkPopupModel::openFolderWith(int index, const QString& appURL) {
    if (index < 0 || index >= rows_.size())
        return;
    const Bookmark& bookmark = rows_[index].bookmark;
    const bool opened = appURL.isEmpty() ? BookmarkOpener::open(bookmark)
                                         : BookmarkOpener::openInApp(bookmark, appURL);
    if (!opened)
        Q_EMIT beep();
}

// Every bookmark of the group that exists opens the ordinary way, in list order; folders
// open in the file manager rather than asking once per folder.
void BookmarkPopupModel::openGroup(const QString& group) {
    bool failed = false;
    for (const Row& row : std::as_const(rows_)) {
        if (row.bookmark.group != group || !row.exists)
            continue;
        failed = !BookmarkOpener::open(row.bookmark) || failed;
    }
    if (failed)
        Q_EMIT beep();
}

void BookmarkPopupModel::copySelected() {
    const Row* row = selectedRow();
    if (!row) {
        Q_EMIT beep();
        return;
    }
    const Bookmark& bookmark = row->bookmark;
    Q_EMIT copyRequested(bookmark.kind == Bookmark::Kind::Url
                             ? bookmark.target
                             : BookmarkOpener::fileURL(bookmark).value_or(bookmark.target));
    showBanner(localized("コピーしました", "Copied"), true);
}

void BookmarkPopupModel::captureFrontmost() {
    if (!project_) {
        Q_EMIT beep();
        return;
    }
    const CaptureResult result = BookmarkOpener::captureFrontmost(captureSource_);
    if (result.kind == CaptureResult::Kind::Bookmark && result.bookmark) {
        Q_EMIT formRequested(std::nullopt, result.bookmark);
        return;
    }
    Q_EMIT beep();
    showBanner(result.bannerText());
}

void BookmarkPopupModel::showBanner(const QString& text, bool copied) {
    banner_ = Banner{text, copied};
    const int serial = ++bannerSerial_;
    Q_EMIT bannerChanged();
    services_.scheduler.after(kBannerTime, this, [this, serial] {
        if (serial != bannerSerial_)
            return;
        banner_.reset();
        Q_EMIT bannerChanged();
    });
}

} // namespace deskmark
