#include "ui/BookmarkPopupCoordinator.h"

#include "core/app/Language.h"
#include "core/model/SettingsStore.h"
#include "ui/ApplicationChooser.h"
#include "ui/BookmarkPopupView.h"
#include "ui/MenuIcons.h"
#include "ui/QtScreenProvider.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenu>
#include <QScreen>
#include <QTimer>

namespace deskmark {

namespace {
// The screen under the mouse, else the primary one.
QScreen* screenUnderMouse() {
    if (QScreen* screen = QGuiApplication::screenAt(QCursor::pos()))
        return screen;
    return QGuiApplication::primaryScreen();
}
} // namespace

BookmarkPopupCoordinator::BookmarkPopupCoordinator(std::unique_ptr<BookmarkPopupModel> model,
                                                   SettingsStore& settings,
                                                   std::optional<BookmarkAnchor> anchor,
                                                   Hooks hooks, QObject* parent)
    : QObject(parent),
      model_(std::move(model)),
      settings_(settings),
      anchor_(anchor),
      hooks_(std::move(hooks)),
      window_(new BookmarkPopupView(*model_, settings)) {
    window_->installEventFilter(this);
    BookmarkPopupModel& popup = *model_;
    connect(&popup, &BookmarkPopupModel::beep, this, [] { QApplication::beep(); });
    connect(&popup, &BookmarkPopupModel::closeRequested, this, &BookmarkPopupCoordinator::close);
    connect(&popup, &BookmarkPopupModel::copyRequested, this,
            [](const QString& text) { QGuiApplication::clipboard()->setText(text); });
    connect(&popup, &BookmarkPopupModel::scaleChanged, this, &BookmarkPopupCoordinator::scheduleLayOut);
    connect(&popup, &BookmarkPopupModel::folderMenuRequested, this,
            &BookmarkPopupCoordinator::presentFolderAppMenu);
    connect(&popup, &BookmarkPopupModel::formRequested, this,
            [this](const std::optional<Bookmark>& editing, const std::optional<Bookmark>& prefill) {
                suppressAutoClose();
                hooks_.presentForm(editing, prefill);
            });
    connect(&popup, &BookmarkPopupModel::groupNameRequested, this,
            [this](const GroupNameRequest& request) {
                suppressAutoClose();
                hooks_.presentGroupName(request);
            });
    connect(&popup, &BookmarkPopupModel::deleteConfirmRequested, this,
            [this](const Bookmark& bookmark) {
                suppressAutoClose();
                hooks_.presentDeleteConfirm(bookmark);
            });
    connect(window_, &BookmarkPopupView::contentResized, this,
            &BookmarkPopupCoordinator::scheduleLayOut);
    connect(window_, &BookmarkPopupView::pinnedChanged, this, [this](bool on) { pinned_ = on; });
    connect(window_, &BookmarkPopupView::headerMenuRequested, this,
            &BookmarkPopupCoordinator::showHeaderMenu);
    connect(window_, &BookmarkPopupView::rowMenuRequested, this,
            &BookmarkPopupCoordinator::showRowMenu);
    connect(window_, &BookmarkPopupView::addFilesRequested, this, &BookmarkPopupCoordinator::addFiles);
}

BookmarkPopupCoordinator::~BookmarkPopupCoordinator() {
    if (window_) {
        window_->removeEventFilter(this);
        delete window_;
    }
}

BookmarkPopupView* BookmarkPopupCoordinator::window() const { return window_; }

void BookmarkPopupCoordinator::layOut() {
    QScreen* target = screenUnderMouse();
    const std::optional<ScreenInfo> screen =
        target ? std::optional(QtScreenProvider::info(*target)) : std::nullopt;
    const double scale = model_->scale();
    const double width = screen ? BookmarkPopupGeometry::popupWidth(screen->visibleFrame, scale)
                                : 720 * scale;
    window_->layOut(width, BookmarkPopupGeometry::maxListHeight(screen, anchor_, QCursor::pos(),
                                                                settings_.bookmarkHintVisible(),
                                                                scale));
    if (anchor_)
        window_->move(BookmarkPopupGeometry::topLeftAt(*anchor_, window_->size()).toPoint());
    else
        window_->move(QCursor::pos());
}

// Once the event that changed the content has been handled, and once for several changes.
void BookmarkPopupCoordinator::scheduleLayOut() {
    if (layOutPending_ || !window_->isVisible())
        return;
    layOutPending_ = true;
    QTimer::singleShot(0, this, [this] {
        layOutPending_ = false;
        layOut();
        keepInsideScreen();
    });
}

void BookmarkPopupCoordinator::present() {
    layOut();
    window_->show();
    keepInsideScreen();
    if (QScreen* screen = window_->screen())
        model_->setPopupScreen(QtScreenProvider::info(*screen));
    window_->raise();
    window_->activateWindow();
    window_->setFocus();
}

void BookmarkPopupCoordinator::keepInsideScreen() {
    QScreen* screen = QGuiApplication::screenAt(window_->geometry().center());
    if (!screen)
        screen = window_->screen();
    if (!screen)
        return;
    const QRectF inside = BookmarkPopupGeometry::keepInsideScreen(QRectF(window_->geometry()),
                                                                  QRectF(screen->availableGeometry()));
    window_->move(inside.topLeft().toPoint());
}

void BookmarkPopupCoordinator::resume() {
    suppressAutoClose_ = false;
    if (!window_)
        return;
    window_->raise();
    window_->activateWindow();
}

void BookmarkPopupCoordinator::close() {
    if (closing_)
        return;
    closing_ = true;
    if (hooks_.onClose)
        hooks_.onClose();
}

bool BookmarkPopupCoordinator::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window_ && event->type() == QEvent::WindowDeactivate && !pinned_ &&
        !suppressAutoClose_) {
        // Closing destroys this object: leave the event first.
        QTimer::singleShot(0, this, [this] {
            if (window_ && !window_->isActiveWindow() && !pinned_ && !suppressAutoClose_)
                close();
        });
    }
    return QObject::eventFilter(watched, event);
}

void BookmarkPopupCoordinator::runMenu(QMenu& menu, const QPoint& globalPos) {
    suppressAutoClose();
    menu.exec(globalPos);
    resume();
}

void BookmarkPopupCoordinator::presentFolderAppMenu(int row) {
    QMenu menu(window_);
    for (const BookmarkPopupModel::FolderApp& app : model_->folderApps()) {
        QAction* action = menu.addAction(MenuIcons::application(app.iconName), app.name);
        connect(action, &QAction::triggered, this,
                [this, row, url = app.appURL] { model_->openFolderWith(row, url); });
    }
    menu.addSeparator();
    QAction* other = menu.addAction(localized("その他…", "Other…"));
    connect(other, &QAction::triggered, this, [this, row] {
        // Any installed application, chosen by its desktop entry.
        const QString entry = ApplicationChooser::choose(window_);
        if (!entry.isEmpty())
            model_->openFolderWith(row, entry);
    });
    menu.setActiveAction(menu.actions().value(0));
    runMenu(menu, window_->menuPosition(row));
}

void BookmarkPopupCoordinator::showHeaderMenu(const QString& group, const QPoint& globalPos) {
    QMenu menu(window_);
    connect(menu.addAction(localized("名前を変更…", "Rename…")), &QAction::triggered, this,
            [this, group] { model_->promptRenameGroup(group); });
    connect(menu.addAction(localized("上へ移動", "Move Up")), &QAction::triggered, this,
            [this, group] { model_->moveGroup(group, true); });
    connect(menu.addAction(localized("下へ移動", "Move Down")), &QAction::triggered, this,
            [this, group] { model_->moveGroup(group, false); });
    connect(menu.addAction(localized("すべて開く", "Open All")), &QAction::triggered, this,
            [this, group] { model_->openGroup(group); });
    menu.addSeparator();
    connect(menu.addAction(localized("グループ「", "Delete Group “") + group +
                           localized("」を削除", "”")),
            &QAction::triggered, this, [this, group] { model_->removeGroup(group); });
    runMenu(menu, globalPos);
}

void BookmarkPopupCoordinator::showRowMenu(int row, const QPoint& globalPos) {
    const std::optional<Project>& project = model_->project();
    if (!project || row < 0 || row >= model_->rows().size())
        return;
    const std::optional<QString> current = model_->rows()[row].bookmark.group;
    QMenu menu(window_);
    QAction* none = menu.addAction(localized("グループなし", "No Group"));
    none->setCheckable(true);
    none->setChecked(!current);
    connect(none, &QAction::triggered, this, [this, row] { model_->assignGroup(row, std::nullopt); });
    for (const QString& group : project->groups) {
        QAction* action = menu.addAction(group);
        action->setCheckable(true);
        action->setChecked(current == group);
        connect(action, &QAction::triggered, this, [this, row, group] { model_->assignGroup(row, group); });
    }
    menu.addSeparator();
    connect(menu.addAction(localized("新しいグループ…", "New Group…")), &QAction::triggered, this,
            [this, row] { model_->promptNewGroup(row); });
    runMenu(menu, globalPos);
}

void BookmarkPopupCoordinator::addFiles() {
    suppressAutoClose();
    const QStringList paths = QFileDialog::getOpenFileNames(
        window_, localized("ファイルを追加", "Add Files"), QDir::homePath());
    resume();
    if (!paths.isEmpty())
        model_->addFiles(paths);
}

} // namespace deskmark
