#pragma once

#include "core/model/HotKeyAction.h"

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace deskmark {

// The running agent's command interface on the session bus: the well-known name
// io.github.deskmark.Deskmark with one object whose methods run the hot-key actions and
// switch by project name. The command line (DBusControlClient) calls it; a window
// manager's key bindings can too.
class DBusControlService : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "io.github.deskmark.Deskmark.Control")
public:
    static const QString kServiceName;
    static const QString kObjectPath;
    static const QString kInterface;

    struct Handlers {
        std::function<void(HotKeyAction)> perform;
        // Switches to the first Space of the project with that name; false when none.
        std::function<bool(const QString& projectName)> switchToProject;
    };

    explicit DBusControlService(Handlers handlers, QObject* parent = nullptr);
    ~DBusControlService() override;

    // Exports the object, then takes the name; a failure is logged and the agent runs
    // on without a command interface. True when both succeeded.
    bool publish();

    // The D-Bus method that runs an action.
    static QString methodFor(HotKeyAction action);

public Q_SLOTS:
    void ShowSwitcher();
    void ShowBookmarks();
    void Rename();
    void OpenSettings();
    void NextPreset();
    bool Switch(const QString& projectName);

private:
    Handlers handlers_;
    QDBusConnection bus_;
    bool published_ = false;
};

} // namespace deskmark
