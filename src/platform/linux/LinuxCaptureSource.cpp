#include "platform/linux/LinuxCaptureSource.h"

#include "core/model/HomePath.h"
#include "platform/linux/AtSpiReader.h"
#include "platform/linux/GioWorkspace.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace deskmark {

namespace {

struct ProcessFacts {
    qint64 parent = 0;
    qint64 terminal = 0; // the controlling terminal's device number; 0 for none
};

// Fields of /proc/PID/stat after the command name, which may itself hold blanks and
// parentheses: state, ppid, pgrp, session, tty_nr.
std::optional<ProcessFacts> processFacts(const QString& pid) {
    QFile stat(QStringLiteral("/proc/") + pid + QStringLiteral("/stat"));
    if (!stat.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray text = stat.readAll();
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    if (fields.size() < 5)
        return std::nullopt;
    return ProcessFacts{fields[1].toLongLong(), fields[4].toLongLong()};
}

// OpenWindowsWithLocations: window object path → the locations it shows, current first.
QMap<QString, QStringList> fileManagerWindows() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << QStringLiteral("org.freedesktop.FileManager1")
         << QStringLiteral("OpenWindowsWithLocations");
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 2000);
    QMap<QString, QStringList> windows;
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return windows;
    const QDBusArgument map =
        reply.arguments().first().value<QDBusVariant>().variant().value<QDBusArgument>();
    map >> windows;
    return windows;
}

} // namespace

LinuxCaptureSource::LinuxCaptureSource(const GioWorkspace& workspace, bool readX11Windows)
    : workspace_(workspace),
      x11_(readX11Windows ? std::make_unique<X11WindowProperties>() : nullptr),
      accessibility_(std::make_unique<AtSpiReader>()) {}

LinuxCaptureSource::~LinuxCaptureSource() = default;

std::optional<RunningApp> LinuxCaptureSource::frontmostApp() const {
    const std::optional<quint32> window = x11_ ? x11_->activeWindow() : std::nullopt;
    if (!window)
        return std::nullopt;
    RunningApp app;
    app.window = *window;
    app.pid = x11_->number(*window, "_NET_WM_PID").value_or(0);
    const QStringList names = x11_->windowClass(*window);
    if (const std::optional<QString> location = workspace_.applicationForWindowClass(names)) {
        app.bundleID = workspace_.applicationID(*location);
        app.localizedName = workspace_.applicationName(*location);
        app.isTerminal = workspace_.isTerminal(*location);
    } else {
        // A program without a desktop entry goes by its class name.
        app.bundleID = names.value(1).toLower();
        app.localizedName = names.value(1);
    }
    return app;
}

std::optional<CaptureSource::Page> LinuxCaptureSource::browserPage(const RunningApp& app) {
    return accessibility_->selectedPage(app.pid, windowTitle(app));
}

std::optional<QString> LinuxCaptureSource::fileManagerLocation(const RunningApp& app) {
    const QString object =
        x11_ ? x11_->text(quint32(app.window), "_GTK_WINDOW_OBJECT_PATH") : QString();
    if (!object.isEmpty()) {
        const QStringList locations = fileManagerWindows().value(object);
        if (!locations.isEmpty()) {
            const QUrl current(locations.first());
            if (current.isLocalFile())
                return current.toLocalFile();
        }
    }
    if (std::optional<QString> folder = accessibility_->shownFolder(app.pid, windowTitle(app)))
        return folder;
    return titleFolder(app);
}

std::optional<QString> LinuxCaptureSource::terminalFolder(const RunningApp& app) {
    if (std::optional<QString> folder = shellFolder(app.pid))
        return folder;
    // One process with several windows (or tabs) has several shells: only the title can
    // say which one is shown.
    return titleFolder(app);
}

std::optional<QString> LinuxCaptureSource::shellFolder(qint64 pid) {
    if (pid <= 0)
        return std::nullopt;
    QStringList shells;
    const QStringList processes =
        QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& child : processes) {
        const std::optional<ProcessFacts> facts = processFacts(child);
        if (facts && facts->parent == pid && facts->terminal != 0)
            shells << child;
    }
    if (shells.size() != 1)
        return std::nullopt;
    const QString folder =
        QFileInfo(QStringLiteral("/proc/") + shells.first() + QStringLiteral("/cwd"))
            .symLinkTarget();
    return folder.isEmpty() ? std::nullopt : std::optional(folder);
}

std::optional<QString> LinuxCaptureSource::folderInTitle(const QString& title) {
    for (qsizetype start = 0; start < title.size(); ++start) {
        if (title[start] != u'/' && title[start] != u'~')
            continue;
        if (start > 0 && !title[start - 1].isSpace() && title[start - 1] != u':')
            continue;
        // The longest run from here to a blank or the end that names an existing folder (a
        // path may hold blanks, but does not stop inside a word).
        for (qsizetype end = title.size(); end > start; --end) {
            if (end < title.size() && !title[end].isSpace())
                continue;
            const QString path = expandTilde(title.mid(start, end - start).trimmed());
            if (path.startsWith(u'/') && QFileInfo(path).isDir())
                return QDir::cleanPath(path);
        }
    }
    return std::nullopt;
}

QString LinuxCaptureSource::windowTitle(const RunningApp& app) const {
    if (!x11_)
        return {};
    const QString title = x11_->text(quint32(app.window), "_NET_WM_NAME");
    return title.isEmpty() ? x11_->text(quint32(app.window), "WM_NAME") : title;
}

std::optional<QString> LinuxCaptureSource::titleFolder(const RunningApp& app) const {
    return folderInTitle(windowTitle(app));
}

} // namespace deskmark
