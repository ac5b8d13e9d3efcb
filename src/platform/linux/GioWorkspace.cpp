#include "platform/linux/GioWorkspace.h"

#include "core/app/SystemLog.h"
#include "core/bookmarks/BookmarkOpener.h"

#include <QAtomicInt>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QSysInfo>

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <memory>

namespace deskmark {

namespace {

struct Unref {
    void operator()(gpointer object) const {
        if (object)
            g_object_unref(object);
    }
};
using DesktopApp = std::unique_ptr<GDesktopAppInfo, Unref>;
using AppInfo = std::unique_ptr<GAppInfo, Unref>;

DesktopApp appAt(const QString& location) {
    if (location.isEmpty())
        return nullptr;
    return DesktopApp(g_desktop_app_info_new_from_filename(QFile::encodeName(location)));
}

QString locationOf(GAppInfo* info) {
    if (!info || !G_IS_DESKTOP_APP_INFO(info))
        return {};
    const char* file = g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(info));
    return file ? QFile::decodeName(file) : QString();
}

std::optional<QString> location(AppInfo info) {
    const QString file = locationOf(info.get());
    return file.isEmpty() ? std::nullopt : std::optional(file);
}

QString key(GDesktopAppInfo* app, const char* name) {
    gchar* value = g_desktop_app_info_get_string(app, name);
    QString text = QString::fromUtf8(value);
    g_free(value);
    return text;
}

QStringList listKey(GDesktopAppInfo* app, const char* name) {
    return key(app, name).split(u';', Qt::SkipEmptyParts);
}

// Every installed, shown application, in GIO's order.
template <typename Visit> void forEachApplication(Visit visit) {
    GList* all = g_app_info_get_all();
    for (GList* item = all; item; item = item->next) {
        auto* info = static_cast<GAppInfo*>(item->data);
        if (G_IS_DESKTOP_APP_INFO(info) && g_app_info_should_show(info))
            visit(G_DESKTOP_APP_INFO(info));
    }
    g_list_free_full(all, g_object_unref);
}

// A startup-notification id of this launch; the program started hands it to its first
// window as _NET_STARTUP_ID.
QString newStartupID(const QString& program) {
    static QAtomicInt launches;
    return QStringLiteral("deskmark-%1-%2-%3-%4")
        .arg(QCoreApplication::applicationPid())
        .arg(QSysInfo::machineHostName(), QFileInfo(program).fileName())
        .arg(launches.fetchAndAddRelaxed(1) + 1);
}

Workspace::Launch spawn(const QStringList& command, const QString& workingDirectory = {}) {
    if (command.isEmpty())
        return {false, {}, QStringLiteral("no command")};
    const QString startupID = newStartupID(command.first());
    QProcess process;
    process.setProgram(command.first());
    process.setArguments(command.mid(1));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DESKTOP_STARTUP_ID"), startupID);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(workingDirectory);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    if (!process.startDetached())
        return {false, {}, process.errorString()};
    return {true, startupID, {}};
}

void logLaunchFailure(const QString& what, GError* error) {
    systemLog(QStringLiteral("Deskmark: ") + what + QStringLiteral(" の起動に失敗: ") +
              QString::fromUtf8(error ? error->message : ""));
    g_clear_error(&error);
}

// A launch context whose programs receive a startup id of their own.
std::unique_ptr<GAppLaunchContext, Unref> launchContext(const QString& program) {
    std::unique_ptr<GAppLaunchContext, Unref> context(g_app_launch_context_new());
    g_app_launch_context_setenv(context.get(), "DESKTOP_STARTUP_ID",
                                newStartupID(program).toUtf8().constData());
    return context;
}

// Whether an Exec argument is (or holds) a placeholder the launcher fills in: files,
// addresses, the icon, the name, the entry's location, or Flatpak's file-forwarding marks.
bool isPlaceholder(const QString& argument) {
    if (argument.startsWith(QLatin1String("@@")))
        return true;
    for (qsizetype at = argument.indexOf(u'%'); at >= 0 && at + 1 < argument.size();
         at = argument.indexOf(u'%', at + 2)) {
        if (argument[at + 1] != u'%')
            return true;
    }
    return false;
}

QStringList terminalsListed(const QString& file) {
    QFile list(file);
    if (!list.open(QIODevice::ReadOnly))
        return {};
    QStringList ids;
    for (const QByteArray& line : list.readAll().split('\n')) {
        const QString id = QString::fromUtf8(line).trimmed().section(u':', 0, 0);
        if (!id.isEmpty() && !id.startsWith(u'#'))
            ids << id;
    }
    return ids;
}

} // namespace

std::optional<QString> GioWorkspace::applicationLocation(const QString& appID) const {
    if (appID.isEmpty())
        return std::nullopt;
    const QString id = appID.endsWith(QLatin1String(".desktop")) ? appID : appID + ".desktop";
    return location(AppInfo(G_APP_INFO(g_desktop_app_info_new(id.toUtf8().constData()))));
}

QString GioWorkspace::applicationID(const QString& location) const {
    if (!appAt(location))
        return {};
    // A desktop-file id is the entry's path below an applications folder, "/" read as "-".
    const QString canonical = QFileInfo(location).absoluteFilePath();
    QString id = QFileInfo(location).fileName();
    for (const QString& folder :
         QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        if (canonical.startsWith(folder + u'/')) {
            id = canonical.mid(folder.size() + 1).replace(u'/', u'-');
            break;
        }
    }
    return id.endsWith(QLatin1String(".desktop")) ? id.chopped(8) : id;
}

QString GioWorkspace::applicationName(const QString& location) const {
    const DesktopApp app = appAt(location);
    return app ? QString::fromUtf8(g_app_info_get_display_name(G_APP_INFO(app.get()))) : QString();
}

QString GioWorkspace::applicationIconName(const QString& location) const {
    const DesktopApp app = appAt(location);
    return app ? key(app.get(), "Icon") : QString();
}

QStringList GioWorkspace::applicationCommand(const QString& location) const {
    const DesktopApp app = appAt(location);
    if (!app)
        return {};
    const QByteArray exec = key(app.get(), "Exec").toUtf8();
    gchar** argv = nullptr;
    if (exec.isEmpty() || !g_shell_parse_argv(exec.constData(), nullptr, &argv, nullptr))
        return {};
    QStringList command;
    for (gchar** argument = argv; *argument; ++argument) {
        QString text = QString::fromUtf8(*argument);
        if (!isPlaceholder(text))
            command << text.replace(QLatin1String("%%"), QLatin1String("%"));
    }
    g_strfreev(argv);
    return command;
}

QString GioWorkspace::applicationWindowClass(const QString& location) const {
    const DesktopApp app = appAt(location);
    if (!app)
        return {};
    const QString named = key(app.get(), "StartupWMClass");
    return named.isEmpty() ? applicationID(location) : named;
}

QStringList GioWorkspace::applicationsForType(const QString& mimeType) const {
    // The entries are read directly: GIO's by-type lookup misses entries in a folder that
    // has no mimeinfo.cache (as ~/.local/share/applications often has not).
    QStringList locations;
    forEachApplication([&](GDesktopAppInfo* app) {
        if (listKey(app, "MimeType").contains(mimeType))
            locations << locationOf(G_APP_INFO(app));
    });
    return locations;
}

std::optional<QString> GioWorkspace::defaultApplicationForType(const QString& mimeType) const {
    static const QLatin1String schemePrefix("x-scheme-handler/");
    if (mimeType.startsWith(schemePrefix))
        return location(AppInfo(g_app_info_get_default_for_uri_scheme(
            mimeType.mid(schemePrefix.size()).toUtf8().constData())));
    return location(AppInfo(g_app_info_get_default_for_type(mimeType.toUtf8().constData(), FALSE)));
}

std::optional<QString> GioWorkspace::defaultApplicationForURL(const QUrl& url) const {
    if (!url.isLocalFile())
        return defaultApplicationForType(QStringLiteral("x-scheme-handler/") + url.scheme());
    if (QFileInfo(url.toLocalFile()).isDir())
        return defaultApplicationForType(QStringLiteral("inode/directory"));
    gchar* type = g_content_type_guess(QFile::encodeName(url.toLocalFile()).constData(), nullptr,
                                       0, nullptr);
    std::optional<QString> found = defaultApplicationForType(QString::fromUtf8(type));
    g_free(type);
    return found;
}

bool GioWorkspace::isTerminal(const QString& location) const {
    const DesktopApp app = appAt(location);
    return app && listKey(app.get(), "Categories").contains(QStringLiteral("TerminalEmulator"));
}

std::optional<QString> GioWorkspace::defaultTerminal() const {
    // The user's choice in xdg-terminals.list (the desktop's own list first), then Debian's
    // x-terminal-emulator, then the first known terminal installed, then any terminal.
    QStringList lists;
    for (const QString& desktop : qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts))
        lists << desktop.toLower() + QStringLiteral("-xdg-terminals.list");
    lists << QStringLiteral("xdg-terminals.list");
    for (const QString& name : std::as_const(lists)) {
        for (const QString& file :
             QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, name)) {
            for (const QString& id : terminalsListed(file)) {
                if (std::optional<QString> found = applicationLocation(id))
                    return found;
            }
        }
    }
    const QString alternative =
        QFileInfo(QFileInfo(QStringLiteral("/usr/bin/x-terminal-emulator")).canonicalFilePath())
            .fileName();
    std::optional<QString> known, any;
    forEachApplication([&](GDesktopAppInfo* app) {
        const QString file = locationOf(G_APP_INFO(app));
        if (!listKey(app, "Categories").contains(QStringLiteral("TerminalEmulator")))
            return;
        if (!any)
            any = file;
        const QString program = QFileInfo(applicationCommand(file).value(0)).fileName();
        if (!known && !alternative.isEmpty() && program == alternative)
            known = file;
    });
    if (known)
        return known;
    for (const CandidateApp& terminal : BookmarkOpener::terminalTable()) {
        if (std::optional<QString> found = applicationLocation(terminal.bundleID))
            return found;
    }
    return any;
}

bool GioWorkspace::openURL(const QUrl& url) {
    GError* error = nullptr;
    const QByteArray uri = url.toEncoded();
    const auto context = launchContext(url.scheme());
    if (g_app_info_launch_default_for_uri(uri.constData(), context.get(), &error))
        return true;
    logLaunchFailure(url.toString(), error);
    return false;
}

bool GioWorkspace::openWithApplication(const QList<QUrl>& urls, const QString& location) {
    const DesktopApp app = appAt(location);
    if (!app)
        return false;
    QList<QByteArray> encoded;
    GList* uris = nullptr;
    for (const QUrl& url : urls)
        encoded << url.toEncoded();
    for (const QByteArray& uri : std::as_const(encoded))
        uris = g_list_append(uris, const_cast<char*>(uri.constData()));
    GError* error = nullptr;
    const auto context = launchContext(applicationID(location));
    const bool launched = g_app_info_launch_uris(G_APP_INFO(app.get()), uris, context.get(), &error);
    g_list_free(uris);
    if (!launched)
        logLaunchFailure(QFileInfo(location).fileName(), error);
    return launched;
}

bool GioWorkspace::openTerminal(const QString& folder, const QString& location) {
    // The entry's own command in the folder: a terminal's shell starts where the terminal
    // was started, and terminals that hand new windows to one running process pass their
    // working folder along.
    const Launch launch = spawn(applicationCommand(location), folder);
    if (!launch.started)
        systemLog(QStringLiteral("Deskmark: ") + QFileInfo(location).fileName() +
                  QStringLiteral(" の起動に失敗: ") + launch.error);
    return launch.started;
}

void GioWorkspace::revealInFileManager(const QString& path) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QString::fromUtf8(QUrl::fromLocalFile(path).toEncoded())}
         << newStartupID(QStringLiteral("filemanager"));
    auto* watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(call, revealTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, path] {
        watcher->deleteLater();
        if (!watcher->isError())
            return;
        // No file manager answered: its folder, in the default file manager.
        systemLog(QStringLiteral("Deskmark: ファイルマネージャでの表示に失敗: ") +
                  watcher->error().message());
        openURL(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
    });
}

Workspace::Launch GioWorkspace::startProcess(const QStringList& command) { return spawn(command); }

std::optional<QString> GioWorkspace::applicationForWindowClass(const QStringList& names) const {
    std::optional<QString> byClass, byID;
    forEachApplication([&](GDesktopAppInfo* app) {
        const QString file = locationOf(G_APP_INFO(app));
        const QString named = key(app, "StartupWMClass");
        if (!byClass && !named.isEmpty() && names.contains(named, Qt::CaseInsensitive))
            byClass = file;
        if (!byID && names.contains(applicationID(file), Qt::CaseInsensitive))
            byID = file;
    });
    return byClass ? byClass : byID;
}

} // namespace deskmark
