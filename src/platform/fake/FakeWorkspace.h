#pragma once

#include "core/bookmarks/CaptureSource.h"
#include "core/bookmarks/WindowMover.h"
#include "core/bookmarks/Workspace.h"

#include <QHash>
#include <QList>
#include <QMap>

namespace deskmark {

// A desktop held in memory: installed applications, defaults, windows and what the
// capture sources answer. Every opening, launch and move is recorded as one line of text
// in `calls`, e.g. "openURL https://a", "terminal /tmp/x with /apps/xterm.desktop".
class FakeWorkspace : public Workspace, public WindowMover, public CaptureSource {
public:
    struct Application {
        QString id;
        QString name;
        QStringList mimeTypes;
        QStringList command;
        QString windowClass;
        QString iconName;
    };

    // Installs an application at "/apps/<id>.desktop" and returns that location.
    QString addApplication(const Application& application);
    // Installs a second copy of an application under another location.
    void addApplicationCopy(const QString& location, const Application& application);

    // Workspace
    std::optional<QString> applicationLocation(const QString& appID) const override;
    QString applicationID(const QString& location) const override;
    QString applicationName(const QString& location) const override;
    QString applicationIconName(const QString& location) const override;
    QStringList applicationCommand(const QString& location) const override;
    QString applicationWindowClass(const QString& location) const override;
    QStringList applicationsForType(const QString& mimeType) const override;
    std::optional<QString> defaultApplicationForType(const QString& mimeType) const override;
    std::optional<QString> defaultApplicationForURL(const QUrl& url) const override;
    std::optional<QString> defaultTerminal() const override { return defaultTerminal_; }
    bool openURL(const QUrl& url) override;
    bool openWithApplication(const QList<QUrl>& urls, const QString& location) override;
    bool openTerminal(const QString& folder, const QString& location) override;
    void revealInFileManager(const QString& path) override;
    Launch startProcess(const QStringList& command) override;

    // WindowMover
    QList<Window> windows(const QString& windowClass) const override;
    void moveWindow(quint64 window, QPointF topLeft) override;

    // CaptureSource
    std::optional<RunningApp> frontmostApp() const override { return frontmost_; }
    std::optional<Page> browserPage(const RunningApp& app) override;
    std::optional<QString> fileManagerLocation(const RunningApp& app) override;
    std::optional<QString> terminalFolder(const RunningApp& app) override;

    void setDefault(const QString& mimeType, const QString& location) { defaults_[mimeType] = location; }
    void setDefaultTerminal(std::optional<QString> location) { defaultTerminal_ = std::move(location); }
    void setOpenURLResult(bool result) { openURLResult_ = result; }
    // Programs whose start fails with this error.
    void failToStart(const QString& program, const QString& error) { startErrors_[program] = error; }
    // Windows of a class, oldest first.
    void addWindow(const QString& windowClass, const Window& window);
    void setFrontmost(std::optional<RunningApp> app) { frontmost_ = std::move(app); }
    // What the capture sources answer; none means the source finds nothing.
    std::optional<Page> page;
    std::optional<QString> location;

    QStringList calls;

private:
    QMap<QString, Application> applications_; // by location
    QStringList order_;                        // locations in installation order
    QHash<QString, QString> defaults_;
    std::optional<QString> defaultTerminal_;
    bool openURLResult_ = true;
    QHash<QString, QString> startErrors_;
    int launches_ = 0;
    QList<QPair<QString, Window>> windows_;
    std::optional<RunningApp> frontmost_;
};

} // namespace deskmark
