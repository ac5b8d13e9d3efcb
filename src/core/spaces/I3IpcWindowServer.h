#pragma once

#include "core/spaces/DesktopNamer.h"
#include "core/spaces/I3IpcCodec.h"
#include "core/spaces/I3Layout.h"
#include "core/spaces/WindowManagerCommands.h"
#include "core/spaces/WindowServer.h"
#include "core/switcher/SpaceRequester.h"

#include <chrono>

namespace deskmark {

class I3IpcChannel;
class Scheduler;

// The Space layout of an i3 or sway session, read over the window manager's IPC socket:
// each output is a display with its own workspaces and its own current Space.
//
// On connecting it subscribes to workspace and output events and asks for the outputs
// and the workspaces; each event that can change what we show asks again, and
// activeSpaceChanged() is emitted when an answer changes the layout. Nothing polls.
// Answers are kept, so questions are answered at once; before the first complete answer
// there is no layout.
//
// A connection that closes (the window manager restarts or exits) is opened again after
// 0.1 s, then after twice as long each time up to 5 s; the loss is logged once, and the
// layout last read stays until the window manager answers again.
//
// Switching: the `workspace` command shows a workspace on its output and focuses that
// output. Workspace names are the Spaces' identities, so i3 has no desktop names of its
// own to rewrite: the names read are the workspace names, and writing is refused.
//
// Other commands (runCommand) go over the same socket; their answers come back in the
// order they were asked, and a connection that closes fails the ones still unanswered.
class I3IpcWindowServer : public WindowServer,
                          public SpaceRequester,
                          public DesktopNamer,
                          public WindowManagerCommands {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds kFirstRetry{100};
    static constexpr std::chrono::milliseconds kLongestRetry{5000};

    // windowManager: "i3" or "sway", for the log.
    I3IpcWindowServer(I3IpcChannel& channel, Scheduler& scheduler, QString windowManager,
                      QObject* parent = nullptr);

    // See I3Layout::setMonitorFacts; set before start().
    void setMonitorFacts(I3Layout::MonitorFacts facts) { layout_.setMonitorFacts(std::move(facts)); }
    // Opens the connection; the layout arrives with the first activeSpaceChanged().
    void start();
    bool isConnected() const { return connected_; }
    bool hasLayout() const { return layout_.isComplete(); }

    QVariant managedDisplaySpaces() const override { return layout_.displaySpaces(); }
    std::optional<QString> mainDisplayUUID() const override { return layout_.mainDisplayUUID(); }
    // Qt names a screen after the output (the RandR monitor on i3, the Wayland output on
    // sway), as the window manager does.
    std::optional<QString> displayUUIDForScreen(const QString& screenName) const override {
        return layout_.displayUUIDOfOutput(screenName);
    }

    bool requestSpace(const QString& displayUUID, int index) override;

    QStringList desktopNames() const override { return layout_.firstDisplayWorkspaces(); }
    bool setDesktopNames(const QStringList& names) override;

    void runCommand(const QString& command, std::function<void(bool)> done = {}) override;

    // The command that shows a workspace, with its name quoted for the command parser.
    static QByteArray workspaceCommand(const QString& name);

Q_SIGNALS:
    // A connection is open (also again after a loss): commands can be run from now on.
    void connected();

private:
    void opened();
    void received(const QByteArray& bytes);
    void closed();
    void handle(const I3IpcCodec::Message& message);
    void ask(quint32 type);
    // Sends a command whose answer goes to done; false when it could not be sent.
    bool sendCommand(const QByteArray& command, std::function<void(bool)> done);
    void commandAnswered(const QByteArray& payload);
    void failUnansweredCommands();
    void answered(quint32 type);

    // A question that is on its way; an event meanwhile asks it again once answered.
    struct Question {
        bool pending = false;
        bool again = false;
    };
    Question& question(quint32 type) {
        return type == I3IpcCodec::GetOutputs ? outputsQuestion_ : workspacesQuestion_;
    }

    I3IpcChannel& channel_;
    Scheduler& scheduler_;
    QString windowManager_;
    I3IpcCodec codec_;
    I3Layout layout_;
    QVariant announced_;
    std::optional<QString> announcedMain_;
    bool connected_ = false;
    bool reportedLoss_ = false;
    bool reportedNaming_ = false;
    QList<std::function<void(bool)>> unansweredCommands_;
    Question outputsQuestion_;
    Question workspacesQuestion_;
    std::chrono::milliseconds retryDelay_ = kFirstRetry;
};

} // namespace deskmark
