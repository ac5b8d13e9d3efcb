#pragma once

#include "core/app/HotKeyBindings.h"
#include "core/app/HotKeyManager.h"
#include "core/app/PagerNameSync.h"
#include "core/app/QtScheduler.h"
#include "core/app/SpaceHistory.h"
#include "core/bookmarks/BookmarkPopupGeometry.h"
#include "core/bookmarks/GroupNameRequest.h"
#include "core/model/PresetStore.h"
#include "core/model/ProjectStore.h"
#include "core/model/SettingsStore.h"
#include "core/overlay/CornerOverlayController.h"
#include "core/spaces/SpaceStore.h"
#include "core/switcher/DirectSwitchDriver.h"
#include "core/switcher/SpaceSwitcher.h"
#include "core/switcher/SwitchDebugLog.h"
#include "platform/StatusItem.h"
#include "platform/linux/AutostartLoginItem.h"
#include "platform/linux/DBusControlService.h"
#include "platform/linux/DBusInputSourceSwitcher.h"
#include "platform/linux/GioWorkspace.h"
#include "platform/linux/LinuxCaptureSource.h"
#include "platform/linux/SettingsFile.h"
#include "platform/linux/SessionPlatform.h"
#include "platform/linux/WindowServerBackend.h"
#include "platform/linux/X11ScreenWatcher.h"
#include "ui/AppearanceApplier.h"
#include "ui/QtCornerLabelWindows.h"
#include "ui/QtLabelTextMeasurer.h"
#include "ui/QtScreenProvider.h"
#include "ui/StatusMenu.h"

#include <QIcon>
#include <QUuid>
#include <QObject>
#include <QPointer>

#include <memory>
#include <optional>

class QDialog;
class QScreen;

namespace deskmark {

class AppCandidateStore;
class BookmarkPopupCoordinator;
class NameEditorWindow;
class SettingsWindow;
class SpaceSwitcherPanel;

// Owns every long-lived object of the running program and wires them together: the
// stores, the Space source, the status item with its menu, the observers and timers.
class AppDelegate : public QObject {
    Q_OBJECT
public:
    explicit AppDelegate(QObject* parent = nullptr);
    ~AppDelegate() override;

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    // The current Space of the display whose panel carries the status item.
    std::optional<QString> activeDisplayCurrentSpaceUUID() const;
    void recordSpaceHistory();
    void updateStatusTitle();

    std::optional<QString> previousSpace(const QString& displayUUID) const {
        return history_.previousSpace(displayUUID);
    }

    // Makes the Space current on that display, and the same project's Spaces on the
    // others; nothing when the display or the Space is gone.
    void switchSpace(const QString& spaceUUID, const QString& displayUUID);

    // Where the bookmark popup opens: near the mouse on the screen of the panel item.
    std::optional<BookmarkAnchor> bookmarkAnchor() const;
    // The popup's form and dialogs; each shows above the popup, which stays open meanwhile.
    void showBookmarkForm(const QUuid& projectID, const std::optional<Bookmark>& editing,
                          const std::optional<Bookmark>& prefill);
    void showGroupNameWindow(const GroupNameRequest& request);
    void showBookmarkDeleteConfirm(const Bookmark& bookmark);

public Q_SLOTS:
    // Opens the switcher panel on the screen of the panel item; while it is open, moves
    // its selection to the next tile instead.
    void showSpaceSwitcher();
    void closeSpaceSwitcher();
    // Opens the name and colour editor for the current Space of the active display,
    // replacing an editor that is open; does nothing when there is no current Space.
    void nameCurrent();
    // Opens the settings window, or brings the open one to the front.
    void openSettings();
    // Opens the bookmark popup of the current Space, or closes it when it is open.
    void showBookmarks();
    void closeBookmarkWindow();

private:
    std::optional<QString> statusItemDisplayUUID() const;
    // The screen that holds the panel item, else the primary one.
    QScreen* statusItemScreen() const;
    // Shows a dialog of the popup above it; the popup resumes when the dialog closes.
    void presentPopupDialog(QDialog* dialog);
    bool advanceOpenSwitcher();
    const QIcon& menuBarIcon();
    void buildStatusItem();
    void installObservers();
    void activeSpaceDidChange();
    void screenParametersDidChange();
    void refreshCornerOverlay();
    CornerOverlayController& cornerOverlay();
    void installCornerOverlaySubscriptions();
    // Follows the session around the labels: reserved areas, the compositing manager and
    // full-screen windows (AppDelegateLabels.cpp).
    void installScreenWatcher();
    void followFullScreenWindow();
    // A desktop notification, or a tool tip at the pointer where no notification
    // service runs (AppDelegateLabels.cpp).
    void tellUser(const QString& summary, const QString& body);
    void reportDamagedProjectsFile();
    // The preset hot key on an unnamed Space: a beep, and why.
    void tellPresetNeedsName();
    void checkMenuBarDisplay();
    QString firstRunHint() const;
    void showFirstRunNotice();
    void rebuildPresetMenu();
    void applyPreset(const QString& presetID);
    void quickApplyNextPreset();
    void showAbout();
    void quit();
    void setupHotKeys();
    // What a hot key, and the command line, starts: the action's menu item, or the next
    // preset.
    void performAction(HotKeyAction action);
    // The command line's way in (AppDelegateCommands.cpp).
    void publishCommandInterface();
    bool switchToProject(const QString& name);

    QtScheduler scheduler_;
    SettingsFile settingsFile_;
    AutostartLoginItem loginItem_;
    SettingsStore settings_;
    ProjectStore projectStore_;
    PresetStore presetStore_;
    // The pieces that differ between X11 and Wayland sessions.
    SessionPlatform platform_{scheduler_};
    WindowServerBackend& windowServer_{platform_.backend()};
    SpaceStore spaceStore_;
    SwitchDebugLog switchLog_;
    DirectSwitchDriver switchDriver_{windowServer_.requester(), spaceStore_, scheduler_, switchLog_};
    SpaceSwitcher switcher_{spaceStore_, projectStore_, switchDriver_, scheduler_, switchLog_};
    AppearanceApplier appearance_;
    SpaceHistory history_;

    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<StatusMenu> menu_;
    std::optional<QIcon> menuBarIcon_;
    std::optional<QString> lastMenuBarDisplay_;
    QList<QMetaObject::Connection> connections_;
    QPointer<NameEditorWindow> nameEditor_;
    // Made on first use and kept, hidden when closed, so it reopens on its last pane.
    QPointer<SettingsWindow> settingsWindow_;
    PagerNameSync pagerNames_{settings_, projectStore_, spaceStore_, windowServer_.windowServer(),
                              windowServer_.namer()};
    QPointer<SpaceSwitcherPanel> switcherPanel_;
    DBusInputSourceSwitcher inputSource_;

    // The bookmark opener's desktop services, the application candidates and the popup.
    GioWorkspace workspace_;
    WindowMover& windowMover_{platform_.windowMover()};
    LinuxCaptureSource captureSource_{workspace_, platform_.readsX11Windows()};
    std::unique_ptr<AppCandidateStore> appCandidates_;
    std::unique_ptr<BookmarkPopupCoordinator> bookmarkPopup_;

    // Global hot keys: the grabs, their ids and actions, and the five settings' bindings.
    HotKeyRegistrar& hotKeyRegistrar_{platform_.hotKeyRegistrar()};
    HotKeyManager hotKeyManager_{hotKeyRegistrar_};
    HotKeyBindings hotKeys_{settings_, hotKeyManager_};
    std::unique_ptr<DBusControlService> commandInterface_;

    // The corner labels; the controller is made on first use. The visible frames come
    // from the session's reserved areas.
    QtScreenProvider screens_{[this](const QRect& frame) -> std::optional<QRect> {
        const X11ScreenWatcher* watcher = platform_.screenWatcher();
        return watcher ? watcher->availableArea(frame) : std::nullopt;
    }};
    QtLabelTextMeasurer labelMeasurer_;
    QtCornerLabelWindows cornerWindows_{platform_.labelPlacer()};
    std::unique_ptr<CornerOverlayController> cornerOverlay_;
};

} // namespace deskmark
