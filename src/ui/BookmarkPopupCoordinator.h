#pragma once

#include "core/bookmarks/BookmarkPopupGeometry.h"
#include "core/bookmarks/BookmarkPopupModel.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class QMenu;

namespace deskmark {

class BookmarkPopupView;
class SettingsStore;

// One open bookmark popup: its window, where it sits and when it closes. It closes on
// Escape, after a quick open, and when it loses the keyboard unless it is pinned or is
// showing one of its own menus or dialogs (suppressAutoClose, ended by resume()).
class BookmarkPopupCoordinator : public QObject {
    Q_OBJECT
public:
    struct Hooks {
        std::function<void()> onClose;
        std::function<void(const std::optional<Bookmark>& editing,
                           const std::optional<Bookmark>& prefill)>
            presentForm;
        std::function<void(const GroupNameRequest&)> presentGroupName;
        std::function<void(const Bookmark&)> presentDeleteConfirm;
    };

    BookmarkPopupCoordinator(std::unique_ptr<BookmarkPopupModel> model, SettingsStore& settings,
                             std::optional<BookmarkAnchor> anchor, Hooks hooks,
                             QObject* parent = nullptr);
    ~BookmarkPopupCoordinator() override;

    BookmarkPopupView* window() const;
    BookmarkPopupModel& model() { return *model_; }
    bool pinned() const { return pinned_; }

    // Lays the window out, places it at the anchor, and gives it the keyboard.
    void present();
    void keepInsideScreen();
    // A dialog or menu of the popup is about to show: losing the keyboard to it keeps the
    // popup open until resume().
    void suppressAutoClose() { suppressAutoClose_ = true; }
    void resume();
    void close();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void layOut();
    void scheduleLayOut();
    void presentFolderAppMenu(int row);
    void showHeaderMenu(const QString& group, const QPoint& globalPos);
    void showRowMenu(int row, const QPoint& globalPos);
    void addFiles();
    // Runs a menu of the popup, keeping the popup open while it shows.
    void runMenu(QMenu& menu, const QPoint& globalPos);

    std::unique_ptr<BookmarkPopupModel> model_;
    SettingsStore& settings_;
    std::optional<BookmarkAnchor> anchor_;
    Hooks hooks_;
    QPointer<BookmarkPopupView> window_;
    bool pinned_ = false;
    bool suppressAutoClose_ = false;
    bool closing_ = false;
    bool layOutPending_ = false;
};

} // namespace deskmark
