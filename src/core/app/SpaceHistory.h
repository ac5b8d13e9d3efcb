#pragma once

#include "core/spaces/CGSDisplay.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace deskmark {

// Remembers, per display, the Space shown now and the one shown before it. Entries of
// displays that disappear are kept: a display that comes back finds its history again.
class SpaceHistory {
public:
    // Notes the current Space of every display; a display whose current Space changed
    // keeps the old one as its previous Space. Displays without a current Space are skipped.
    void record(const QList<CGSDisplay>& displays);

    std::optional<QString> previousSpace(const QString& displayUUID) const;
    const QHash<QString, QString>& previousSpaces() const { return previous_; }
    const QHash<QString, QString>& lastCurrentSpaces() const { return lastCurrent_; }

private:
    QHash<QString, QString> lastCurrent_;
    QHash<QString, QString> previous_;
};

} // namespace deskmark
