#include "core/spaces/I3Layout.h"

#include "core/spaces/I3IpcCodec.h"
#include "core/spaces/PrimaryDisplay.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVariantMap>

#include <algorithm>

namespace deskmark {

namespace {

std::optional<QJsonArray> objectList(const QByteArray& reply) {
    const QJsonDocument document = QJsonDocument::fromJson(reply);
    if (!document.isArray())
        return std::nullopt;
    const QJsonArray list = document.array();
    if (!std::all_of(list.begin(), list.end(), [](const QJsonValue& v) { return v.isObject(); }))
        return std::nullopt;
    return list;
}

} // namespace

bool I3Layout::setOutputs(const QByteArray& reply) {
    const auto list = objectList(reply);
    if (!list)
        return false;
    QList<Output> outputs;
    QList<MonitorIdentity> identities;
    for (const QJsonValue& value : *list) {
        const QJsonObject output = value.toObject();
        const QString name = output.value(QLatin1String("name")).toString();
        // i3 lists its placeholder "xroot-0" and disabled outputs as inactive; sway lists
        // disabled ones.
        if (name.isEmpty() || !output.value(QLatin1String("active")).toBool())
            continue;
        outputs << Output{name, {}, output.value(QLatin1String("primary")).toBool()};
        std::optional<MonitorIdentity> known = monitorFacts_ ? monitorFacts_(name) : std::nullopt;
        identities << known.value_or(MonitorIdentity::reported(
                          name, output.value(QLatin1String("make")).toString(),
                          output.value(QLatin1String("model")).toString(),
                          output.value(QLatin1String("serial")).toString()));
    }
    const QStringList uuids = MonitorIdentity::displayUUIDs(identities);
    for (qsizetype i = 0; i < outputs.size(); ++i)
        outputs[i].uuid = uuids[i];
    outputs_ = outputs;
    hasOutputs_ = true;
    return true;
}

bool I3Layout::setWorkspaces(const QByteArray& reply) {
    const auto list = objectList(reply);
    if (!list)
        return false;
    QList<Workspace> workspaces;
    for (const QJsonValue& value : *list) {
        const QJsonObject workspace = value.toObject();
        workspaces << Workspace{workspace.value(QLatin1String("name")).toString(),
                                workspace.value(QLatin1String("output")).toString(),
                                workspace.value(QLatin1String("num")).toInteger(-1),
                                workspace.value(QLatin1String("visible")).toBool()};
    }
    workspaces_ = workspaces;
    hasWorkspaces_ = true;
    return true;
}

void I3Layout::clear() {
    outputs_.clear();
    workspaces_.clear();
    hasOutputs_ = false;
    hasWorkspaces_ = false;
}

QVariant I3Layout::displaySpaces() const {
    if (!isComplete())
        return {};
    QVariantList displays;
    for (const Output& output : outputs_) {
        QVariantList spaces;
        QVariantMap display{{QStringLiteral("Display Identifier"), output.uuid}};
        for (const Workspace& workspace : workspacesOn(output.name)) {
            QVariantMap space{{QStringLiteral("uuid"), spaceUUID(workspace.name)}};
            // Named workspaces without a number are -1 to i3, as unknown is to us.
            if (workspace.number >= 0)
                space.insert(QStringLiteral("ManagedSpaceID"), workspace.number);
            spaces << space;
            if (workspace.visible)
                display.insert(QStringLiteral("Current Space"),
                               QVariantMap{{QStringLiteral("uuid"), spaceUUID(workspace.name)}});
        }
        display.insert(QStringLiteral("Spaces"), spaces);
        displays << display;
    }
    return displays;
}

std::optional<QString> I3Layout::mainDisplayUUID() const { return primaryOrFirstUUID(outputs_); }

std::optional<QString> I3Layout::displayUUIDOfOutput(const QString& outputName) const {
    for (const Output& output : outputs_) {
        if (output.name == outputName)
            return output.uuid;
    }
    return std::nullopt;
}

std::optional<QString> I3Layout::workspaceName(const QString& displayUUID, int index) const {
    for (const Output& output : outputs_) {
        if (output.uuid != displayUUID)
            continue;
        const QList<Workspace> workspaces = workspacesOn(output.name);
        if (index < 0 || index >= workspaces.size())
            return std::nullopt;
        return workspaces[index].name;
    }
    return std::nullopt;
}

QStringList I3Layout::firstDisplayWorkspaces() const {
    QStringList names;
    if (!outputs_.isEmpty()) {
        for (const Workspace& workspace : workspacesOn(outputs_.first().name))
            names << workspace.name;
    }
    return names;
}

QString I3Layout::spaceUUID(const QString& workspaceName) {
    return QStringLiteral("workspace:") + workspaceName;
}

I3Layout::Staleness I3Layout::staleAfter(quint32 event, const QByteArray& payload) {
    if (event == I3IpcCodec::OutputEvent)
        return Staleness::Everything;
    if (event != I3IpcCodec::WorkspaceEvent)
        return Staleness::None;
    // Urgency hints change nothing we show; every other change (focus, init, empty,
    // rename, move, reload, restored, and those of later versions) may.
    const QString change =
        QJsonDocument::fromJson(payload).object().value(QLatin1String("change")).toString();
    return change == QLatin1String("urgent") ? Staleness::None : Staleness::Workspaces;
}

QList<I3Layout::Workspace> I3Layout::workspacesOn(const QString& outputName) const {
    QList<Workspace> workspaces;
    std::copy_if(workspaces_.begin(), workspaces_.end(), std::back_inserter(workspaces),
                 [&outputName](const Workspace& workspace) { return workspace.output == outputName; });
    return workspaces;
}

} // namespace deskmark
