#include "core/spaces/I3IpcWindowServer.h"

#include "core/app/Scheduler.h"
#include "core/app/SystemLog.h"
#include "core/spaces/I3IpcChannel.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <utility>

namespace deskmark {

I3IpcWindowServer::I3IpcWindowServer(I3IpcChannel& channel, Scheduler& scheduler,
                                     QString windowManager, QObject* parent)
    : WindowServer(parent), channel_(channel), scheduler_(scheduler),
      windowManager_(std::move(windowManager)) {
    connect(&channel_, &I3IpcChannel::opened, this, &I3IpcWindowServer::opened);
    connect(&channel_, &I3IpcChannel::received, this, &I3IpcWindowServer::received);
    connect(&channel_, &I3IpcChannel::closed, this, &I3IpcWindowServer::closed);
}

void I3IpcWindowServer::start() { channel_.open(); }

bool I3IpcWindowServer::requestSpace(const QString& displayUUID, int index) {
    const std::optional<QString> name = layout_.workspaceName(displayUUID, index);
    if (!name || !connected_)
        return false;
    return sendCommand(workspaceCommand(*name), {});
}

void I3IpcWindowServer::runCommand(const QString& command, std::function<void(bool)> done) {
    if (!connected_ || !sendCommand(command.toUtf8(), done)) {
        if (done)
            done(false);
    }
}

bool I3IpcWindowServer::sendCommand(const QByteArray& command, std::function<void(bool)> done) {
    // Queued first: a channel may hand over the answer before write() returns.
    unansweredCommands_.append(std::move(done));
    if (channel_.write(I3IpcCodec::encode(I3IpcCodec::RunCommand, command)))
        return true;
    unansweredCommands_.removeLast();
    return false;
}

// The answer holds one result per command of the line.
void I3IpcWindowServer::commandAnswered(const QByteArray& payload) {
    if (unansweredCommands_.isEmpty())
        return;
    const std::function<void(bool)> done = unansweredCommands_.takeFirst();
    if (!done)
        return;
    const QJsonArray results = QJsonDocument::fromJson(payload).array();
    done(!results.isEmpty() &&
         std::all_of(results.begin(), results.end(), [](const QJsonValue& result) {
             return result.toObject().value(QLatin1String("success")).toBool();
         }));
}

void I3IpcWindowServer::failUnansweredCommands() {
    const QList<std::function<void(bool)>> unanswered = std::exchange(unansweredCommands_, {});
    for (const std::function<void(bool)>& done : unanswered) {
        if (done)
            done(false);
    }
}

bool I3IpcWindowServer::setDesktopNames(const QStringList& names) {
    Q_UNUSED(names);
    if (!reportedNaming_)
        systemLog(QStringLiteral("Deskmark: %1 のワークスペース名は Space の識別子なので書き換えない")
                      .arg(windowManager_));
    reportedNaming_ = true;
    return false;
}

QByteArray I3IpcWindowServer::workspaceCommand(const QString& name) {
    QString quoted = name;
    quoted.replace(u'\\', QLatin1String("\\\\")).replace(u'"', QLatin1String("\\\""));
    // Without the flag, a window manager set to "workspace_auto_back_and_forth" would
    // answer a request for the focused workspace by leaving it.
    return QByteArrayLiteral("workspace --no-auto-back-and-forth \"") + quoted.toUtf8() + '"';
}

void I3IpcWindowServer::opened() {
    connected_ = true;
    if (reportedLoss_)
        systemLog(QStringLiteral("Deskmark: %1 の IPC ソケットに接続した").arg(windowManager_));
    reportedLoss_ = false;
    retryDelay_ = kFirstRetry;
    codec_.reset();
    outputsQuestion_ = {};
    workspacesQuestion_ = {};
    // One subscription per event: sway before 1.8 has no output events and refuses a
    // subscription that names one, which would cost the workspace events too.
    for (const QString& event : {QStringLiteral("workspace"), QStringLiteral("output")})
        channel_.write(
            I3IpcCodec::encode(I3IpcCodec::Subscribe,
                               QJsonDocument(QJsonArray{event}).toJson(QJsonDocument::Compact)));
    ask(I3IpcCodec::GetOutputs);
    ask(I3IpcCodec::GetWorkspaces);
    Q_EMIT connected();
}

void I3IpcWindowServer::received(const QByteArray& bytes) {
    codec_.feed(bytes);
    while (const std::optional<I3IpcCodec::Message> message = codec_.next())
        handle(*message);
    if (codec_.isBroken()) {
        systemLog(QStringLiteral("Deskmark: %1 の IPC ソケットから読めないデータが届いたため接続し直す")
                      .arg(windowManager_));
        channel_.close();
    }
}

void I3IpcWindowServer::closed() {
    if (!reportedLoss_)
        systemLog(connected_
                      ? QStringLiteral("Deskmark: %1 との IPC 接続が切れた。接続し直す").arg(windowManager_)
                      : QStringLiteral("Deskmark: %1 の IPC ソケットに接続できない。試み続ける")
                            .arg(windowManager_));
    reportedLoss_ = true;
    connected_ = false;
    failUnansweredCommands();
    scheduler_.after(retryDelay_, this, [this] { channel_.open(); });
    retryDelay_ = std::min(retryDelay_ * 2, kLongestRetry);
}

void I3IpcWindowServer::handle(const I3IpcCodec::Message& message) {
    if (message.isEvent) {
        switch (I3Layout::staleAfter(message.type, message.payload)) {
        case I3Layout::Staleness::Everything:
            ask(I3IpcCodec::GetOutputs);
            ask(I3IpcCodec::GetWorkspaces);
            break;
        case I3Layout::Staleness::Workspaces:
            ask(I3IpcCodec::GetWorkspaces);
            break;
        case I3Layout::Staleness::None:
            break;
        }
        return;
    }
    switch (message.type) {
    case I3IpcCodec::GetOutputs:
        layout_.setOutputs(message.payload);
        answered(message.type);
        break;
    case I3IpcCodec::GetWorkspaces:
        layout_.setWorkspaces(message.payload);
        answered(message.type);
        break;
    case I3IpcCodec::Subscribe:
        if (!QJsonDocument::fromJson(message.payload).object().value(QLatin1String("success")).toBool())
            systemLog(QStringLiteral("Deskmark: %1 がイベントの購読を断った").arg(windowManager_));
        break;
    case I3IpcCodec::RunCommand:
        commandAnswered(message.payload);
        break;
    default:
        break;
    }
}

void I3IpcWindowServer::ask(quint32 type) {
    Question& asked = question(type);
    if (asked.pending) {
        asked.again = true;
        return;
    }
    // Marked before writing: a channel may answer before write() returns.
    asked.pending = true;
    if (!channel_.write(I3IpcCodec::encode(type)))
        asked.pending = false;
}

void I3IpcWindowServer::answered(quint32 type) {
    Question& asked = question(type);
    asked.pending = false;
    if (asked.again) {
        asked.again = false;
        ask(type);
    }
    // Half an answer (new outputs with the old workspaces) is not announced.
    if (outputsQuestion_.pending || workspacesQuestion_.pending || !layout_.isComplete())
        return;
    const QVariant displays = layout_.displaySpaces();
    const std::optional<QString> main = layout_.mainDisplayUUID();
    if (displays == announced_ && main == announcedMain_)
        return;
    announced_ = displays;
    announcedMain_ = main;
    Q_EMIT activeSpaceChanged();
}

} // namespace deskmark
