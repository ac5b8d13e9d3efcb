#include "core/app/DiagnosticsReport.h"

#include <QJsonArray>

namespace deskmark::DiagnosticsReport {

namespace {
QJsonValue projectName(const QString& spaceUUID, const ProjectFileCodec::Document& projects) {
    const auto assigned = projects.assignments.constFind(spaceUUID);
    if (assigned == projects.assignments.constEnd())
        return QJsonValue::Null;
    for (const Project& project : projects.projects) {
        if (project.id == *assigned)
            return project.name;
    }
    return QJsonValue::Null;
}

QJsonValue geometry(const std::optional<QRect>& rect) {
    if (!rect)
        return QJsonValue::Null;
    return QJsonObject{{QStringLiteral("x"), rect->x()},
                       {QStringLiteral("y"), rect->y()},
                       {QStringLiteral("width"), rect->width()},
                       {QStringLiteral("height"), rect->height()}};
}
} // namespace

QJsonObject build(const QList<CGSDisplay>& displays,
                  const QHash<QString, QRect>& screenGeometryByDisplay,
                  const ProjectFileCodec::Document& projects) {
    QJsonArray displayArray;
    for (const CGSDisplay& display : displays) {
        QJsonArray spaces;
        for (const CGSSpace& space : display.spaces) {
            spaces.append(QJsonObject{{QStringLiteral("uuid"), space.uuid},
                                      {QStringLiteral("managedID"), space.managedID},
                                      {QStringLiteral("project"), projectName(space.uuid, projects)}});
        }
        const auto screen = screenGeometryByDisplay.constFind(display.displayUUID);
        displayArray.append(QJsonObject{
            {QStringLiteral("displayUUID"), display.displayUUID},
            {QStringLiteral("rawDisplayID"), display.rawDisplayID},
            {QStringLiteral("screen"),
             geometry(screen == screenGeometryByDisplay.constEnd() ? std::nullopt
                                                                   : std::optional(*screen))},
            {QStringLiteral("currentSpace"),
             display.currentUUID ? QJsonValue(*display.currentUUID) : QJsonValue::Null},
            {QStringLiteral("spaces"), spaces}});
    }
    return QJsonObject{{QStringLiteral("displays"), displayArray}};
}

} // namespace deskmark::DiagnosticsReport
