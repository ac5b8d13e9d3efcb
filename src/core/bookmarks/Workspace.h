#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace deskmark {

// The desktop's applications and how to start them. An application is named by its
// location (on Linux the path of its desktop entry) or by its id (the desktop-file id
// without ".desktop"). Queries may be called from a background thread; the open and
// launch operations are called on the main thread.
class Workspace {
public:
    virtual ~Workspace() = default;

    // Location of the installed application with this id, or none.
    virtual std::optional<QString> applicationLocation(const QString& appID) const = 0;
    // The id of the application at a location; empty when it has none.
    virtual QString applicationID(const QString& location) const = 0;
    // The application's display name; empty when the location holds no application.
    virtual QString applicationName(const QString& location) const = 0;
    // The icon the application asks for (a theme icon name or an absolute file); may be empty.
    virtual QString applicationIconName(const QString& location) const = 0;
    // The program and arguments that start the application, without the entry's
    // placeholders for files and addresses; empty when it cannot be started directly.
    virtual QStringList applicationCommand(const QString& location) const = 0;
    // What the window manager knows the application's windows by (WM_CLASS).
    virtual QString applicationWindowClass(const QString& location) const = 0;

    // Every installed application that declares it opens this MIME type, in the system's
    // order ("inode/directory" for folders, "x-scheme-handler/https" for browsers).
    virtual QStringList applicationsForType(const QString& mimeType) const = 0;
    // The user's default application for a MIME type, or none.
    virtual std::optional<QString> defaultApplicationForType(const QString& mimeType) const = 0;
    // The default application for an address (for a web address: the default browser).
    virtual std::optional<QString> defaultApplicationForURL(const QUrl& url) const = 0;
    // The session's default terminal, or none.
    virtual std::optional<QString> defaultTerminal() const = 0;

    // Opens with the default application (a folder in the default file manager).
    virtual bool openURL(const QUrl& url) = 0;
    // Opens the files or addresses with the application at location. Handing over is
    // the result: the application's own success is not awaited.
    virtual bool openWithApplication(const QList<QUrl>& urls, const QString& location) = 0;
    // Starts the terminal at location with folder as its working directory.
    virtual bool openTerminal(const QString& folder, const QString& location) = 0;
    // Shows the file manager's window on the item's folder with the item selected.
    virtual void revealInFileManager(const QString& path) = 0;

    struct Launch {
        bool started = false;
        // The startup-notification id handed to the process (DESKTOP_STARTUP_ID).
        QString startupID;
        // Why it did not start.
        QString error;
    };
    // Starts command (program and arguments) with a new startup id, output discarded,
    // without waiting for it.
    virtual Launch startProcess(const QStringList& command) = 0;
};

} // namespace deskmark
