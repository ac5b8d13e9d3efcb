#include "core/bookmarks/BookmarkOpener.h"

#include "core/app/Language.h"
#include "core/app/SystemLog.h"
#include "core/bookmarks/BrowserWindowRelocation.h"
#include "core/bookmarks/CaptureSource.h"
#include "core/bookmarks/Workspace.h"
#include "core/model/HomePath.h"

#include <QFileInfo>

#include <algorithm>

using namespace std::chrono_literals;

namespace deskmark {

namespace {

struct Services {
    Workspace* workspace = nullptr;
    WindowMover* windows = nullptr;
    CaptureSource* capture = nullptr;
    Scheduler* scheduler = nullptr;
};

Services& services() {
    static Services installed;
    return installed;
}

Workspace& workspace() {
    Q_ASSERT(services().workspace);
    return *services().workspace;
}

// A browser that was not running needs far longer to show its first window.
constexpr auto kRelocationDeadlineRunning = 3000ms;
constexpr auto kRelocationDeadlineStarting = 12000ms;

struct BrowserLaunch {
    bool opened = false;
    QString startupID;
};

BrowserLaunch runProcess(const QStringList& command) {
    const Workspace::Launch launch = workspace().startProcess(command);
    if (!launch.started)
        systemLog(QStringLiteral("Deskmark: ") + QFileInfo(command.value(0)).fileName() +
                  QStringLiteral(" の起動に失敗: ") + launch.error);
    return {launch.started, launch.startupID};
}

// Chromium browsers take "--new-window", Firefox browsers "-new-window"; any other browser
// (or one that cannot be started directly) gets the address through the ordinary opening.
BrowserLaunch openNewBrowserWindow(const std::optional<QString>& location, const QString& id,
                                   const QUrl& url) {
    const QStringList command = location ? workspace().applicationCommand(*location) : QStringList();
    const QString lowered = id.toLower();
    if (!command.isEmpty() && BookmarkOpener::chromiumFamily().contains(lowered))
        return runProcess(command + QStringList{QStringLiteral("--new-window"), url.toString()});
    if (!command.isEmpty() && BookmarkOpener::firefoxFamily().contains(lowered))
        return runProcess(command + QStringList{QStringLiteral("-new-window"), url.toString()});
    return {workspace().openURL(url), {}};
}

// A web address as stored: usable only when it parses and names a scheme.
std::optional<QUrl> webAddress(const Bookmark& bookmark) {
    if (bookmark.kind != Bookmark::Kind::Url)
        return std::nullopt;
    const QUrl url(bookmark.target);
    if (!url.isValid() || url.scheme().isEmpty())
        return std::nullopt;
    return url;
}

// The path of a file bookmark when something exists there.
std::optional<QString> existingPath(const Bookmark& bookmark) {
    std::optional<QString> path = BookmarkOpener::fileURL(bookmark);
    if (!path || !QFileInfo::exists(*path))
        return std::nullopt;
    return path;
}

QList<CandidateApp> installed(const QList<CandidateApp>& table) {
    QList<CandidateApp> result;
    for (const CandidateApp& app : table) {
        if (workspace().applicationLocation(app.bundleID))
            result << app;
    }
    return result;
}

} // namespace

void BookmarkOpener::install(Workspace& workspace, WindowMover& windows, CaptureSource& capture,
                             Scheduler& scheduler) {
    services() = {&workspace, &windows, &capture, &scheduler};
}

std::optional<QString> BookmarkOpener::fileURL(const Bookmark& bookmark) {
    if (bookmark.kind != Bookmark::Kind::File)
        return std::nullopt;
    QString path = expandTilde(bookmark.target);
    if (path.isEmpty())
        return std::nullopt;
    return path;
}

bool BookmarkOpener::isPlainDirectory(const Bookmark& bookmark) {
    const std::optional<QString> path = fileURL(bookmark);
    if (!path)
        return false;
    const QFileInfo info(*path);
    return info.isDir() && !info.isBundle();
}

bool BookmarkOpener::open(const Bookmark& bookmark) {
    if (bookmark.kind == Bookmark::Kind::Url) {
        const std::optional<QUrl> url = webAddress(bookmark);
        if (!url)
            return false;
        if (const std::optional<QString> app = appURL(bookmark)) {
            workspace().openWithApplication({*url}, *app);
            return true;
        }
        return workspace().openURL(*url);
    }
    const std::optional<QString> path = existingPath(bookmark);
    if (!path)
        return false;
    if (QFileInfo(*path).isDir())
        return workspace().openURL(QUrl::fromLocalFile(*path));
    // A file is shown in its folder, never opened in its document application.
    workspace().revealInFileManager(*path);
    return true;
}

std::optional<QString> BookmarkOpener::appURL(const Bookmark& bookmark) {
    if (!bookmark.appBundleID || bookmark.appBundleID->isEmpty())
        return std::nullopt;
    return workspace().applicationLocation(*bookmark.appBundleID);
}

bool BookmarkOpener::openInTerminal(const Bookmark& bookmark, const QString& bundleID) {
    const std::optional<QString> path = existingPath(bookmark);
    if (!path)
        return false;
    const QFileInfo info(*path);
    const QString folder = info.isDir() ? *path : info.absolutePath();
    std::optional<QString> terminal = workspace().applicationLocation(bundleID);
    if (!terminal)
        terminal = workspace().defaultTerminal();
    if (!terminal)
        return false;
    return workspace().openTerminal(folder, *terminal);
}

bool BookmarkOpener::openInEditor(const Bookmark& bookmark, const QString& bundleID) {
    if (bookmark.kind == Bookmark::Kind::Url || bundleID.isEmpty())
        return false;
    const std::optional<QString> path = existingPath(bookmark);
    if (!path)
        return false;
    const std::optional<QString> editor = workspace().applicationLocation(bundleID);
    if (!editor)
        return false;
    workspace().openWithApplication({QUrl::fromLocalFile(*path)}, *editor);
    return true;
}

bool BookmarkOpener::openInApp(const Bookmark& bookmark, const QString& appURL) {
    const std::optional<QString> path = existingPath(bookmark);
    if (!path)
        return false;
    workspace().openWithApplication({QUrl::fromLocalFile(*path)}, appURL);
    return true;
}

bool BookmarkOpener::openURLInNewWindow(const Bookmark& bookmark,
                                        const std::optional<ScreenInfo>& onScreen) {
    const std::optional<QUrl> url = webAddress(bookmark);
    if (!url)
        return false;
    std::optional<QString> browser = appURL(bookmark);
    if (!browser)
        browser = workspace().defaultApplicationForURL(*url);
    const QString id = browser ? workspace().applicationID(*browser) : QString();
    if (!onScreen || id.isEmpty())
        return openNewBrowserWindow(browser, id, *url).opened;

    const QString windowClass = workspace().applicationWindowClass(*browser);
    const QList<WindowMover::Window> before = services().windows->windows(windowClass);
    const BrowserLaunch launch = openNewBrowserWindow(browser, id, *url);
    if (launch.opened) {
        BrowserWindowRelocation::start(
            *services().windows, *services().scheduler,
            {windowClass, before, launch.startupID, *onScreen,
             before.isEmpty() ? kRelocationDeadlineStarting : kRelocationDeadlineRunning});
    }
    return launch.opened;
}

QList<CandidateApp> BookmarkOpener::installedEditors() { return installed(editorTable()); }

QList<CandidateApp> BookmarkOpener::installedTerminals() { return installed(terminalTable()); }

QString BookmarkOpener::appName(const QString& appURL) {
    return workspace().applicationName(appURL);
}

QString BookmarkOpener::appDisplayName(const QString& bundleID) {
    const std::optional<QString> location = workspace().applicationLocation(bundleID);
    return location ? appName(*location) : bundleID;
}

QString BookmarkOpener::appID(const QString& appURL) { return workspace().applicationID(appURL); }

QString BookmarkOpener::appIconName(const QString& appURL) {
    return workspace().applicationIconName(appURL);
}

std::optional<QPointF> BookmarkOpener::relocatedTopLeft(const QRectF& frame,
                                                        const ScreenInfo& screen) {
    if (screen.frame.contains(frame.center()))
        return std::nullopt;
    const QPointF centre = screen.visibleFrame.center();
    return QPointF(centre.x() - frame.width() / 2, centre.y() - frame.height() / 2);
}

std::optional<RunningApp> BookmarkOpener::frontmostApp() {
    Q_ASSERT(services().capture);
    return services().capture->frontmostApp();
}

namespace {

QString captureSourceName(const RunningApp& app) {
    return app.localizedName.isEmpty() ? app.bundleID : app.localizedName;
}

bool isKnownTerminal(const QString& loweredID) {
    const QList<CandidateApp>& table = BookmarkOpener::terminalTable();
    return std::any_of(table.begin(), table.end(), [&](const CandidateApp& terminal) {
        return terminal.bundleID.toLower() == loweredID;
    });
}

CaptureResult capturedPath(const std::optional<QString>& path) {
    if (!path || path->isEmpty())
        return CaptureResult::failed();
    QString target = *path;
    if (target.size() >= 2 && target.endsWith(u'/'))
        target.chop(1);
    return CaptureResult::ofBookmark(
        Bookmark{QUuid::createUuid(), Bookmark::Kind::File, QString(), target, std::nullopt,
                 std::nullopt});
}

CaptureResult capturedPage(const std::optional<CaptureSource::Page>& page) {
    if (!page)
        return CaptureResult::failed();
    const QUrl url(page->url.trimmed());
    if (!url.isValid() || url.scheme().isEmpty())
        return CaptureResult::failed();
    return CaptureResult::ofBookmark(Bookmark{QUuid::createUuid(), Bookmark::Kind::Url,
                                              page->title.trimmed(), url.toString(), std::nullopt,
                                              std::nullopt});
}

} // namespace

CaptureResult BookmarkOpener::captureFrontmost(const std::optional<RunningApp>& app) {
    if (!app || app->bundleID.isEmpty())
        return CaptureResult::failed();
    CaptureSource& source = *services().capture;
    const QString id = app->bundleID.toLower();
    if (fileManagerFamily().contains(id))
        return capturedPath(source.fileManagerLocation(*app));
    if (firefoxFamily().contains(id))
        return capturedPage(source.browserPage(*app));
    if (chromiumFamily().contains(id)) {
        // Chromium answers on the accessibility bus only when started with it switched on.
        const std::optional<CaptureSource::Page> page = source.browserPage(*app);
        if (!page)
            return CaptureResult::unsupported(
                captureSourceName(*app),
                localized("--force-renderer-accessibility を付けて起動すると取り込めます",
                          "start it with --force-renderer-accessibility to capture"));
        return capturedPage(page);
    }
    if (app->isTerminal || isKnownTerminal(id))
        return capturedPath(source.terminalFolder(*app));
    return CaptureResult::unsupported(captureSourceName(*app));
}

} // namespace deskmark
