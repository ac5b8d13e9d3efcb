#pragma once

#include "core/spaces/MonitorIdentity.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariant>

#include <functional>
#include <optional>

namespace deskmark {

// The Space layout of an i3 or sway session as its IPC replies describe it: every active
// output is a display, its workspaces (in the window manager's order) are its Spaces,
// and the workspace visible on it is its current Space. A Space is called
// "workspace:" and the workspace name; a display's UUID comes from the make, model and
// serial the window manager reports (sway), else from the output name, as for RandR
// monitors.
class I3Layout {
public:
    // What the platform knows itself of the monitor behind an output (on i3, the RandR
    // monitor of that name with its EDID); nothing when it knows nothing more.
    using MonitorFacts = std::function<std::optional<MonitorIdentity>(const QString& outputName)>;

    // What an event means for the layout read so far.
    enum class Staleness { None, Workspaces, Everything };

    // Known facts about a monitor win over what the window manager reports, so that a
    // monitor keeps the UUID it has under other window managers.
    void setMonitorFacts(MonitorFacts facts) { monitorFacts_ = std::move(facts); }
    // Reads a GET_OUTPUTS or GET_WORKSPACES reply; false (and nothing changed) when the
    // reply is not a list of objects.
    bool setOutputs(const QByteArray& reply);
    bool setWorkspaces(const QByteArray& reply);
    // Both lists have been read since the last clear().
    bool isComplete() const { return hasOutputs_ && hasWorkspaces_; }
    void clear();

    // The displays in WindowServer::managedDisplaySpaces() form; invalid until complete.
    QVariant displaySpaces() const;
    // The primary output's UUID, else the first display's.
    std::optional<QString> mainDisplayUUID() const;
    std::optional<QString> displayUUIDOfOutput(const QString& outputName) const;
    // The workspace at `index` of the display's Spaces.
    std::optional<QString> workspaceName(const QString& displayUUID, int index) const;
    // The names of the first display's workspaces, in order.
    QStringList firstDisplayWorkspaces() const;

    static QString spaceUUID(const QString& workspaceName);
    // Which part of the layout an event of that number and payload makes stale.
    static Staleness staleAfter(quint32 event, const QByteArray& payload);

private:
    struct Output {
        QString name;
        QString uuid;
        bool primary = false;
    };
    struct Workspace {
        QString name;
        QString output;
        qlonglong number = -1;
        bool visible = false;
    };

    QList<Workspace> workspacesOn(const QString& outputName) const;

    MonitorFacts monitorFacts_;
    QList<Output> outputs_; // active outputs only, in the window manager's order
    QList<Workspace> workspaces_;
    bool hasOutputs_ = false;
    bool hasWorkspaces_ = false;
};

} // namespace deskmark
