#pragma once

#include "core/spaces/CGSDisplay.h"

#include <QList>
#include <QString>

#include <optional>

namespace deskmark {

// What the status item shows: the current Space's name, or the icon with no text, or,
// when there is no icon, the label emoji.
struct StatusTitle {
    QString text;
    bool showsIcon = false;

    static StatusTitle compute(bool showCurrentSpace, const std::optional<QString>& spaceName,
                               bool iconAvailable);

    friend bool operator==(const StatusTitle&, const StatusTitle&) = default;
};

// The current Space of the display that holds the status item. When that display is
// unknown, or is not among the window server's displays, the first display's current
// Space stands in. A known display answers even when it reports no current Space.
std::optional<QString> activeDisplayCurrentSpace(const QList<CGSDisplay>& displays,
                                                 const std::optional<QString>& statusDisplayUUID);

} // namespace deskmark
