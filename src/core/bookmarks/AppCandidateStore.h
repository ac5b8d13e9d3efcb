#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class QThread;

namespace deskmark {

class SettingsStore;
class Workspace;

// The installed applications that open folders (offered when a folder bookmark opens and
// in the settings) and the installed browsers (the bookmark form's browser picker), named,
// sorted, and with the user's order and hidden set applied to the folder applications.
// The default file manager is kept apart: it is always offered first.
class AppCandidateStore : public QObject {
    Q_OBJECT
public:
    struct App {
        QString name;
        QString bundleID;
        // The application's location (its desktop entry).
        QString appURL;
        // For QIcon::fromTheme; may be empty.
        QString iconName;

        friend bool operator==(const App&, const App&) = default;
    };

    AppCandidateStore(Workspace& workspace, SettingsStore& settings, QObject* parent = nullptr);
    ~AppCandidateStore() override;

    // Builds the lists on this thread if they were never built.
    void ensureLoaded();
    // Rebuilds the lists on a background thread; the result is stored and published on the
    // main thread. A request made while a refresh runs is dropped.
    void refreshInBackground();

    const QList<App>& folderApps() const { return folderApps_; }
    const QList<App>& browserApps() const { return browserApps_; }
    // The default file manager, shown as "File Manager (default)".
    const std::optional<App>& finder() const { return finder_; }
    bool isLoaded() const { return loaded_; }
    bool refreshing() const { return refreshing_; }

    QList<App> orderedFolderApps() const;
    QList<App> visibleFolderApps() const;
    std::optional<App> app(const QString& bundleID) const;

    // The folder MIME type and the sample address whose handlers are the browsers.
    static const QString folderType;
    static const QString browserType;

Q_SIGNALS:
    void changed();

private:
    struct Lists {
        QList<App> folderApps;
        QList<App> browserApps;
        std::optional<App> finder;
    };
    static Lists build(const Workspace& workspace);
    void store(Lists lists);

    Workspace& workspace_;
    SettingsStore& settings_;
    QList<App> folderApps_;
    QList<App> browserApps_;
    std::optional<App> finder_;
    bool loaded_ = false;
    bool refreshing_ = false;
    std::unique_ptr<QThread> worker_;
};

} // namespace deskmark
