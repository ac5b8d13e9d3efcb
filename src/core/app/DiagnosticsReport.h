#pragma once

#include "core/model/ProjectFileCodec.h"
#include "core/spaces/CGSDisplay.h"

#include <QHash>
#include <QJsonObject>
#include <QRect>

namespace deskmark {

// The document `deskmark --diagnose` prints: every display with its identity and screen
// geometry, its Spaces with their project names, and the current Space. It is built from
// snapshots only, so producing it changes nothing.
namespace DiagnosticsReport {

QJsonObject build(const QList<CGSDisplay>& displays,
                  const QHash<QString, QRect>& screenGeometryByDisplay,
                  const ProjectFileCodec::Document& projects);

} // namespace DiagnosticsReport

} // namespace deskmark
