#include "app/AppDelegate.h"

#include "core/app/FirstRunNotice.h"
#include "core/app/Language.h"
#include "core/app/PresetMenuModel.h"
#include "core/app/Relaunch.h"
#include "core/app/StatusTitle.h"
#include "core/bookmarks/AppCandidateStore.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "core/model/AppFolders.h"
#include "core/spaces/WindowServer.h"
#include "platform/linux/DesktopNotification.h"
#include "platform/linux/GioWorkspace.h"
#include "platform/linux/LinuxSessionFacts.h"
#include "ui/AboutBox.h"
#include "ui/BookmarkPopupCoordinator.h"
#include "ui/NameEditorWindow.h"
#include "ui/SpaceSwitcherPanel.h"
#include "ui/settings/SettingsWindow.h"

#include <QApplication>
#include <QCursor>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>

using namespace std::chrono_literals;

namespace deskmark {

namespace {
constexpr auto kScreenSettleDelay = 350ms;

// The session's default terminal and the first known editor installed.
SettingsStore::PlatformDefaults linuxDefaults(const LoginItem& loginItem) {
    SettingsStore::PlatformDefaults defaults;
    const GioWorkspace desktop;
    if (const std::optional<QString> terminal = desktop.defaultTerminal())
        defaults.terminalBundleID = desktop.applicationID(*terminal);
    defaults.firstInstalledEditor = [] {
        const GioWorkspace desktop;
        for (const CandidateApp& editor : BookmarkOpener::editorTable()) {
            if (desktop.applicationLocation(editor.bundleID))
                return editor.bundleID;
        }
        return QString();
    };
    defaults.launchAtLogin = loginItem.isEnabled();
    return defaults;
}
} // namespace

AppDelegate::AppDelegate(QObject* parent)
    : QObject(parent),
      settingsFile_(AppFolders::configFolder() + QStringLiteral("/settings.json")),
      loginItem_(AppFolders::autostartFolder(), QCoreApplication::applicationFilePath()),
      settings_(settingsFile_, linuxDefaults(loginItem_)),
      projectStore_(AppFolders::dataFolder()),
      presetStore_(AppFolders::dataFolder()),
      spaceStore_(windowServer_.windowServer()),
      appCandidates_(std::make_unique<AppCandidateStore>(workspace_, settings_)) {
    BookmarkOpener::install(workspace_, windowMover_, captureSource_, scheduler_);
}

AppDelegate::~AppDelegate() {
    delete nameEditor_;
    delete switcherPanel_;
    delete settingsWindow_;
    bookmarkPopup_.reset();
}

void AppDelegate::applicationDidFinishLaunching() {
    appearance_.apply(settings_.appearanceRaw());
    buildStatusItem();
    updateStatusTitle();
    setupHotKeys();
    publishCommandInterface();
    appCandidates_->refreshInBackground();
    recordSpaceHistory();
    installObservers();
    refreshCornerOverlay();
    showFirstRunNotice();
    reportDamagedProjectsFile();
}

void AppDelegate::applicationWillTerminate() {
    closeBookmarkWindow();
    for (const QMetaObject::Connection& connection : std::as_const(connections_))
        disconnect(connection);
    connections_.clear();
}

std::optional<QString> AppDelegate::statusItemDisplayUUID() const {
    if (!statusItem_)
        return std::nullopt;
    const std::optional<QString> screen = statusItem_->screenName();
    if (!screen)
        return std::nullopt;
    return spaceStore_.displayUUID(*screen);
}

QScreen* AppDelegate::statusItemScreen() const {
    if (statusItem_) {
        if (const std::optional<QString> name = statusItem_->screenName()) {
            for (QScreen* screen : QGuiApplication::screens()) {
                if (screen->name() == *name)
                    return screen;
            }
        }
    }
    return QGuiApplication::primaryScreen();
}

std::optional<QString> AppDelegate::activeDisplayCurrentSpaceUUID() const {
    return activeDisplayCurrentSpace(spaceStore_.displays(), statusItemDisplayUUID());
}

void AppDelegate::recordSpaceHistory() { history_.record(spaceStore_.displays()); }

// The symbolic icon, or the bitmap where Qt cannot draw SVG.
const QIcon& AppDelegate::menuBarIcon() {
    if (!menuBarIcon_) {
        QIcon icon(QStringLiteral(":/icons/io.github.deskmark.Deskmark-symbolic.svg"));
        if (icon.pixmap(16).isNull())
            icon = QIcon(QStringLiteral(":/MenuBarIcon.png"));
        icon.setIsMask(true);
        menuBarIcon_ = icon;
    }
    return *menuBarIcon_;
}

void AppDelegate::updateStatusTitle() {
    if (!statusItem_)
        return;
    std::optional<QString> name;
    if (settings_.showCurrentSpaceInMenuBar()) {
        if (const auto space = activeDisplayCurrentSpaceUUID())
            name = projectStore_.nameForSpace(*space);
    }
    const StatusTitle title =
        StatusTitle::compute(settings_.showCurrentSpaceInMenuBar(), name, !menuBarIcon().isNull());
    statusItem_->setTitle(title.text);
    // Until there is a project, the tool tip tells how to make one.
    statusItem_->setToolTip(title.toolTip.isEmpty() && projectStore_.projects().isEmpty()
                                ? firstRunHint()
                                : title.toolTip);
}

QString AppDelegate::firstRunHint() const {
    return FirstRunNotice::body(settings_.nameHotKey(), StatusMenu::nameTitle());
}

// Once, on a start with no projects: a desktop notification tells how to name a desktop.
// Remembered only when a notification service took it.
void AppDelegate::showFirstRunNotice() {
    if (settings_.firstRunNoticeShown() || !projectStore_.projects().isEmpty())
        return;
    if (DesktopNotification::show(FirstRunNotice::summary(), firstRunHint()))
        settings_.setFirstRunNoticeShown(true);
}

void AppDelegate::buildStatusItem() {
    menu_ = std::make_unique<StatusMenu>();
    menu_->setKeysBoundByWindowManager(hotKeyRegistrar_.boundByWindowManager());
    statusItem_ = platform_.createStatusItem();
    // The item always carries its icon; hosts that draw no label show it alone.
    statusItem_->setIcon(menuBarIcon());
    statusItem_->setMenu(menu_.get());

    connect(menu_->nameAction(), &QAction::triggered, this, &AppDelegate::nameCurrent);
    connect(menu_->switcherAction(), &QAction::triggered, this, &AppDelegate::showSpaceSwitcher);
    connect(menu_->bookmarkAction(), &QAction::triggered, this, &AppDelegate::showBookmarks);
    connect(menu_->settingsAction(), &QAction::triggered, this, &AppDelegate::openSettings);
    connect(menu_.get(), &StatusMenu::presetMenuAboutToShow, this, &AppDelegate::rebuildPresetMenu);
    connect(menu_.get(), &StatusMenu::presetChosen, this, &AppDelegate::applyPreset);
    connect(menu_->aboutAction(), &QAction::triggered, this, &AppDelegate::showAbout);
    connect(menu_->quitAction(), &QAction::triggered, this, &AppDelegate::quit);
}

void AppDelegate::installObservers() {
    connections_ << connect(&windowServer_.windowServer(), &WindowServer::activeSpaceChanged, this,
                            &AppDelegate::activeSpaceDidChange);
    // The panel's display is read again whenever the item or the screens change.
    connections_ << connect(statusItem_.get(), &StatusItem::placementChanged, this,
                            &AppDelegate::checkMenuBarDisplay);
    connections_ << connect(&settings_, &SettingsStore::nameHotKeyChanged, this,
                            &AppDelegate::updateStatusTitle);

    const auto watchScreen = [this](QScreen* screen) {
        connections_ << connect(screen, &QScreen::geometryChanged, this,
                                &AppDelegate::screenParametersDidChange);
        connections_ << connect(screen, &QScreen::availableGeometryChanged, this,
                                &AppDelegate::screenParametersDidChange);
    };
    for (QScreen* screen : QGuiApplication::screens())
        watchScreen(screen);
    connections_ << connect(qGuiApp, &QGuiApplication::screenAdded, this,
                            [this, watchScreen](QScreen* screen) {
                                watchScreen(screen);
                                screenParametersDidChange();
                            });
    connections_ << connect(qGuiApp, &QGuiApplication::screenRemoved, this,
                            &AppDelegate::screenParametersDidChange);
    connections_ << connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this,
                            &AppDelegate::screenParametersDidChange);

    connections_ << connect(&settings_, &SettingsStore::showCurrentSpaceInMenuBarChanged, this,
                            &AppDelegate::updateStatusTitle);
    connections_ << connect(&settings_, &SettingsStore::appearanceRawChanged, this,
                            [this] { appearance_.apply(settings_.appearanceRaw()); });
    connections_ << connect(&settings_, &SettingsStore::launchAtLoginChanged, this,
                            [this] { loginItem_.apply(settings_.launchAtLogin()); });
    connections_ << connect(&projectStore_, &ProjectStore::changed, this, [this] {
        refreshCornerOverlay();
        updateStatusTitle();
    });
    connections_ << connect(&presetStore_, &PresetStore::changed, this,
                            &AppDelegate::refreshCornerOverlay);
    installCornerOverlaySubscriptions();
    installScreenWatcher();
}

void AppDelegate::activeSpaceDidChange() {
    recordSpaceHistory();
    updateStatusTitle();
    refreshCornerOverlay();
    closeBookmarkWindow();
}

void AppDelegate::screenParametersDidChange() {
    checkMenuBarDisplay();
    refreshCornerOverlay();
    // The geometry of a display settles a moment after the change is announced.
    scheduler_.after(kScreenSettleDelay, this, [this] { refreshCornerOverlay(); });
}

void AppDelegate::refreshCornerOverlay() { cornerOverlay().refresh(); }

CornerOverlayController& AppDelegate::cornerOverlay() {
    if (!cornerOverlay_)
        cornerOverlay_ = std::make_unique<CornerOverlayController>(
            projectStore_, presetStore_, settings_, spaceStore_, screens_, cornerWindows_,
            labelMeasurer_);
    return *cornerOverlay_;
}

// Opacity and offset changes restyle or move the labels on screen; everything else that
// shapes a label rebuilds what changed.
void AppDelegate::installCornerOverlaySubscriptions() {
    using Signal = void (SettingsStore::*)();
    const auto follow = [this](std::initializer_list<Signal> sources, auto reaction) {
        for (const Signal source : sources)
            connections_ << connect(&settings_, source, this, reaction);
    };
    follow(
        {&SettingsStore::cornerOverlayEnabledChanged,
         &SettingsStore::cornerOverlayEnabledByDisplayChanged,
         &SettingsStore::cornerPositionRawChanged, &SettingsStore::cornerPositionByDisplayChanged,
         &SettingsStore::cornerShapeRawChanged, &SettingsStore::cornerShapeByDisplayChanged,
         &SettingsStore::cornerWeightRawChanged, &SettingsStore::cornerWeightByDisplayChanged,
         &SettingsStore::cornerVPaddingRawChanged, &SettingsStore::cornerVPaddingByDisplayChanged,
         &SettingsStore::cornerColorModeRawChanged, &SettingsStore::cornerColorModeByDisplayChanged,
         &SettingsStore::cornerOverridesByDisplayChanged, &SettingsStore::cornerFontSizeChanged,
         &SettingsStore::cornerFontSizeByDisplayChanged, &SettingsStore::cornerMarginChanged,
         &SettingsStore::cornerMarginByDisplayChanged,
         &SettingsStore::hideLabelsOverFullScreenChanged},
        [this] { refreshCornerOverlay(); });
    follow({&SettingsStore::cornerBgOpacityChanged, &SettingsStore::cornerBgOpacityByDisplayChanged},
           [this] { cornerOverlay().updateOpacityOnly(); });
    follow({&SettingsStore::cornerOffsetYChanged, &SettingsStore::cornerOffsetXChanged,
            &SettingsStore::cornerOffsetYByDisplayChanged,
            &SettingsStore::cornerOffsetXByDisplayChanged},
           [this] { cornerOverlay().updateOffsetOnly(); });
}

void AppDelegate::checkMenuBarDisplay() {
    if (!settings_.showCurrentSpaceInMenuBar())
        return;
    const std::optional<QString> display = statusItemDisplayUUID();
    if (display == lastMenuBarDisplay_)
        return;
    lastMenuBarDisplay_ = display;
    updateStatusTitle();
}

void AppDelegate::nameCurrent() {
    const auto space = activeDisplayCurrentSpaceUUID();
    if (!space)
        return;
    // One editor at a time: a new one replaces the open one, whose edits are dropped.
    delete nameEditor_;
    nameEditor_ = new NameEditorWindow(std::make_unique<NameEditorModel>(
        projectStore_, presetStore_, *space, spaceStore_.liveSpaceUUIDs()));
    nameEditor_->present();
}

void AppDelegate::openSettings() {
    if (!settingsWindow_) {
        const auto displays = [this] {
            QList<DisplayEntry> entries;
            for (QScreen* screen : QGuiApplication::screens()) {
                const auto uuid = spaceStore_.displayUUID(screen->name());
                if (!uuid)
                    continue;
                const QSize size = screen->size();
                entries << DisplayEntry{*uuid, QStringLiteral("%1 (%2 × %3)")
                                                   .arg(screen->name())
                                                   .arg(size.width())
                                                   .arg(size.height())};
            }
            return entries;
        };
        settingsWindow_ = new SettingsWindow(SettingsContext{
            settings_, projectStore_, presetStore_, spaceStore_, windowServer_.windowServer(), hotKeyRegistrar_,
            *appCandidates_, pagerNames_, displays,
            [this] {
                return LinuxSessionFacts::gather(spaceStore_, settings_, hotKeys_, hotKeyManager_,
                                                 inputSource_, platform_);
            },
            [] { return Relaunch::start(); }});
    }
    settingsWindow_->present();
}

bool AppDelegate::advanceOpenSwitcher() {
    if (!switcherPanel_)
        return false;
    switcherPanel_->controller().advance(1);
    return true;
}

void AppDelegate::showSpaceSwitcher() {
    if (advanceOpenSwitcher())
        return;
    QScreen* screen = statusItemScreen();
    if (!screen)
        return;
    std::optional<QString> activeDisplay = statusItemDisplayUUID();
    if (!activeDisplay)
        activeDisplay = spaceStore_.mainDisplayUUID();
    SpaceSwitcherController::Callbacks callbacks;
    callbacks.commit = [this](const QString& spaceUUID, const QString& displayUUID) {
        closeSpaceSwitcher();
        scheduler_.after(0ms, this, [this, spaceUUID, displayUUID] {
            switchSpace(spaceUUID, displayUUID);
        });
    };
    callbacks.cancel = [this] { closeSpaceSwitcher(); };
    auto controller = std::make_unique<SpaceSwitcherController>(
        spaceStore_.displays(), projectStore_, activeDisplay, history_.previousSpaces(),
        QCursor::pos(), std::move(callbacks));
    const auto colors = [this](const QString& spaceUUID) -> std::optional<ColorPair> {
        const auto project = projectStore_.projectForSpace(spaceUUID);
        if (!project)
            return std::nullopt;
        return presetStore_.colors(project->presetID);
    };
    switcherPanel_ =
        new SpaceSwitcherPanel(std::move(controller), colors, platform_.isCompositing());
    switcherPanel_->present(screen->availableGeometry());
    inputSource_.switchToASCIIInput();
}

void AppDelegate::closeSpaceSwitcher() {
    if (!switcherPanel_)
        return;
    inputSource_.restorePreviousInput();
    switcherPanel_->close(); // deletes itself once its event handling is over
    switcherPanel_ = nullptr;
}

void AppDelegate::switchSpace(const QString& spaceUUID, const QString& displayUUID) {
    switcher_.switchSpace(spaceUUID, displayUUID);
}

void AppDelegate::rebuildPresetMenu() {
    std::optional<QString> projectPresetID;
    if (const auto space = activeDisplayCurrentSpaceUUID()) {
        if (const auto project = projectStore_.projectForSpace(*space))
            projectPresetID = project->presetID;
    }
    menu_->setPresetEntries(PresetMenuModel::entries(presetStore_.presets(), projectPresetID));
}

void AppDelegate::applyPreset(const QString& presetID) {
    const auto space = activeDisplayCurrentSpaceUUID();
    if (!space)
        return;
    projectStore_.setPreset(presetID.isEmpty() ? std::nullopt : std::optional(presetID), *space);
    refreshCornerOverlay();
}

void AppDelegate::quickApplyNextPreset() {
    const auto space = activeDisplayCurrentSpaceUUID();
    if (!space) {
        QApplication::beep();
        return;
    }
    const auto project = projectStore_.projectForSpace(*space);
    if (!project || project->name.isEmpty()) {
        // A preset colours a project's name; an unnamed Space has neither.
        tellPresetNeedsName();
        return;
    }
    const auto next = PresetMenuModel::nextPresetID(
        presetStore_.presets(), project ? project->presetID : std::nullopt);
    if (!next)
        return;
    projectStore_.setPreset(*next, *space);
    refreshCornerOverlay();
}

void AppDelegate::showAbout() { AboutBox::exec(); }

void AppDelegate::quit() { QCoreApplication::quit(); }

// Each hot key does what its menu item does; the items of windows that are not built
// yet stay inert until their owners connect them.
void AppDelegate::setupHotKeys() {
    const auto perform = [this](HotKeyAction action) {
        return [this, action] { performAction(action); };
    };
    HotKeyBindings::Actions actions;
    actions.nameCurrent = perform(HotKeyAction::Name);
    actions.quickApplyNextPreset = perform(HotKeyAction::Preset);
    actions.openSettings = perform(HotKeyAction::Settings);
    actions.showBookmarks = perform(HotKeyAction::Bookmark);
    actions.showSpaceSwitcher = perform(HotKeyAction::Switcher);
    hotKeys_.setAdvanceOpenSwitcher([this] { return advanceOpenSwitcher(); });
    hotKeys_.setup(std::move(actions),
                   [this](HotKeyAction action, const std::optional<HotKey>& key) {
                       menu_->showHotKey(action, key);
                   });
}

} // namespace deskmark
