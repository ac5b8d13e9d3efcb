#include "platform/fake/FakeI3WindowManager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>

namespace deskmark {

namespace {

QByteArray json(const QJsonValue& value) {
    return value.isArray() ? QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact)
                           : QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact);
}

} // namespace

void FakeI3WindowManager::open() {
    if (refusing_ || open_) {
        if (!open_)
            Q_EMIT closed();
        return;
    }
    open_ = true;
    ++connections_;
    inbox_.reset();
    subscriptions_.clear();
    Q_EMIT opened();
}

void FakeI3WindowManager::close() {
    if (!open_)
        return;
    open_ = false;
    outbox_.clear();
    Q_EMIT closed();
}

void FakeI3WindowManager::drop() { close(); }

bool FakeI3WindowManager::write(const QByteArray& bytes) {
    if (!open_)
        return false;
    inbox_.feed(bytes);
    while (const auto request = inbox_.next())
        handle(*request);
    deliver();
    return true;
}

void FakeI3WindowManager::deliver() {
    if (delivering_)
        return; // the loop below sends it
    delivering_ = true;
    while (open_ && !outbox_.isEmpty())
        Q_EMIT received(outbox_.takeFirst());
    delivering_ = false;
}

void FakeI3WindowManager::setOutputs(const QList<Output>& outputs) { outputs_ = outputs; }

void FakeI3WindowManager::setWorkspaces(const QList<Workspace>& workspaces,
                                        const QString& focusedOutput) {
    workspaces_ = workspaces;
    focusedOutput_ = focusedOutput;
}

void FakeI3WindowManager::replugOutputs(const QList<Output>& outputs) {
    outputs_ = outputs;
    sendEvent(I3IpcCodec::OutputEvent, R"({"change":"unspecified"})");
    deliver();
}

QString FakeI3WindowManager::visibleOn(const QString& output) const {
    for (const Workspace& workspace : workspaces_) {
        if (workspace.output == output && workspace.visible)
            return workspace.name;
    }
    return {};
}

void FakeI3WindowManager::handle(const I3IpcCodec::Message& request) {
    switch (request.type) {
    case I3IpcCodec::GetOutputs:
        send(I3IpcCodec::encode(request.type, outputsReply()));
        break;
    case I3IpcCodec::GetWorkspaces:
        send(I3IpcCodec::encode(request.type, workspacesReply()));
        break;
    case I3IpcCodec::Subscribe:
        for (const QJsonValue& event : QJsonDocument::fromJson(request.payload).array())
            subscriptions_ << event.toString();
        send(I3IpcCodec::encode(request.type, R"({"success":true})"));
        break;
    case I3IpcCodec::RunCommand:
        send(I3IpcCodec::encode(request.type, runCommand(QString::fromUtf8(request.payload))));
        break;
    default:
        send(I3IpcCodec::encode(request.type, R"({"success":false})"));
        break;
    }
}

QByteArray FakeI3WindowManager::runCommand(const QString& command) {
    commands_ << command;
    static const QRegularExpression workspaceCommand(
        QStringLiteral(R"re(^workspace --no-auto-back-and-forth "((?:[^"\\]|\\.)*)"$)re"));
    const QRegularExpressionMatch match = workspaceCommand.match(command);
    QString name = match.captured(1);
    name.replace(QRegularExpression(QStringLiteral(R"(\\(.))")), QStringLiteral("\\1"));
    const auto wanted = std::find_if(workspaces_.begin(), workspaces_.end(),
                                     [&name](const Workspace& w) { return w.name == name; });
    if (!match.hasMatch() || wanted == workspaces_.end())
        return R"([{"success":false,"error":"unknown command"}])";
    const QString old = visibleOn(focusedOutput_);
    for (Workspace& workspace : workspaces_) {
        if (workspace.output == wanted->output)
            workspace.visible = workspace.name == name;
    }
    focusedOutput_ = wanted->output;
    if (old != name)
        sendEvent(I3IpcCodec::WorkspaceEvent,
                  json(QJsonObject{{"change", "focus"},
                                   {"current", QJsonObject{{"name", name}}},
                                   {"old", QJsonObject{{"name", old}}}}));
    return R"([{"success":true}])";
}

QByteArray FakeI3WindowManager::outputsReply() const {
    // i3 lists a placeholder for the root window among the outputs, never active.
    QJsonArray list{QJsonObject{{"name", "xroot-0"}, {"active", false}, {"primary", false}}};
    for (const Output& output : outputs_) {
        list << QJsonObject{{"name", output.name},
                            {"active", true},
                            {"primary", output.primary},
                            {"current_workspace", visibleOn(output.name)}};
    }
    return json(list);
}

QByteArray FakeI3WindowManager::workspacesReply() const {
    QJsonArray list;
    int id = 94000;
    for (const Workspace& workspace : workspaces_) {
        const QString number = workspace.name.section(u':', 0, 0);
        bool isNumber = false;
        const int num = number.toInt(&isNumber);
        list << QJsonObject{{"id", ++id},
                            {"num", isNumber ? num : -1},
                            {"name", workspace.name},
                            {"visible", workspace.visible},
                            {"focused", workspace.visible && workspace.output == focusedOutput_},
                            {"urgent", false},
                            {"output", workspace.output}};
    }
    return json(list);
}

void FakeI3WindowManager::send(const QByteArray& message) { outbox_ << message; }

void FakeI3WindowManager::sendEvent(quint32 event, const QByteArray& payload) {
    const QString name = event == I3IpcCodec::OutputEvent ? QStringLiteral("output")
                                                          : QStringLiteral("workspace");
    if (subscriptions_.contains(name))
        send(I3IpcCodec::encodeEvent(event, payload));
}

} // namespace deskmark
