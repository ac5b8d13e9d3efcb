// The bookmark popup and its dialogs, as AppDelegate opens and closes them.

#include "app/AppDelegate.h"

#include "core/bookmarks/AppCandidateStore.h"
#include "core/bookmarks/BookmarkFormModel.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "ui/BookmarkDeleteConfirmView.h"
#include "ui/BookmarkFormView.h"
#include "ui/BookmarkPopupCoordinator.h"
#include "ui/BookmarkPopupView.h"
#include "ui/GroupNameView.h"
#include "ui/QtScreenProvider.h"

#include <QCursor>
#include <QScreen>

namespace deskmark {

std::optional<BookmarkAnchor> AppDelegate::bookmarkAnchor() const {
    QScreen* screen = statusItemScreen();
    if (!screen)
        return std::nullopt;
    const double scale = settings_.bookmarkPopupScale(spaceStore_.displayUUID(screen->name()));
    return BookmarkPopupGeometry::bookmarkAnchor(QtScreenProvider::info(*screen), scale,
                                                 QCursor::pos());
}

void AppDelegate::showBookmarks() {
    if (bookmarkPopup_) {
        closeBookmarkWindow();
        return;
    }
    // Noted before the popup takes the keyboard: a capture reads from it.
    const std::optional<RunningApp> captureSource = BookmarkOpener::frontmostApp();
    QScreen* screen = statusItemScreen();
    const std::optional<QString> display =
        screen ? spaceStore_.displayUUID(screen->name()) : std::nullopt;
    auto model = std::make_unique<BookmarkPopupModel>(
        BookmarkPopupModel::Services{projectStore_, settings_, *appCandidates_, scheduler_},
        activeDisplayCurrentSpaceUUID(), display, captureSource);
    BookmarkPopupCoordinator::Hooks hooks;
    hooks.onClose = [this] { closeBookmarkWindow(); };
    hooks.presentForm = [this](const std::optional<Bookmark>& editing,
                               const std::optional<Bookmark>& prefill) {
        if (bookmarkPopup_ && bookmarkPopup_->model().project())
            showBookmarkForm(bookmarkPopup_->model().project()->id, editing, prefill);
    };
    hooks.presentGroupName = [this](const GroupNameRequest& request) { showGroupNameWindow(request); };
    hooks.presentDeleteConfirm = [this](const Bookmark& bookmark) { showBookmarkDeleteConfirm(bookmark); };
    bookmarkPopup_ = std::make_unique<BookmarkPopupCoordinator>(std::move(model), settings_,
                                                                bookmarkAnchor(), std::move(hooks));
    bookmarkPopup_->present();
}

void AppDelegate::closeBookmarkWindow() {
    // The popup may be closing itself from one of its own events: finish those first.
    if (BookmarkPopupCoordinator* popup = bookmarkPopup_.release())
        popup->deleteLater();
}

void AppDelegate::presentPopupDialog(QDialog* dialog) {
    if (bookmarkPopup_) {
        QPointer<BookmarkPopupCoordinator> popup = bookmarkPopup_.get();
        connect(dialog, &QDialog::finished, bookmarkPopup_.get(), [popup] {
            if (popup)
                popup->resume();
        });
    }
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

void AppDelegate::showBookmarkForm(const QUuid& projectID, const std::optional<Bookmark>& editing,
                                   const std::optional<Bookmark>& prefill) {
    appCandidates_->ensureLoaded();
    presentPopupDialog(new BookmarkFormView(
        std::make_unique<BookmarkFormModel>(projectStore_, *appCandidates_, projectID, editing, prefill),
        bookmarkPopup_ ? bookmarkPopup_->window() : nullptr));
}

void AppDelegate::showGroupNameWindow(const GroupNameRequest& request) {
    presentPopupDialog(new GroupNameView(request, bookmarkPopup_ ? bookmarkPopup_->window() : nullptr));
}

void AppDelegate::showBookmarkDeleteConfirm(const Bookmark& bookmark) {
    if (!bookmarkPopup_ || !bookmarkPopup_->model().project())
        return;
    const QUuid project = bookmarkPopup_->model().project()->id;
    auto* dialog = new BookmarkDeleteConfirmView(BookmarkOpener::displayLabel(bookmark),
                                                 bookmarkPopup_->window());
    connect(dialog, &BookmarkDeleteConfirmView::deleteConfirmed, this,
            [this, project, id = bookmark.id] { projectStore_.removeBookmark(id, project); });
    presentPopupDialog(dialog);
}

} // namespace deskmark
