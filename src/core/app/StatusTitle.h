#pragma once

#include "core/spaces/CGSDisplay.h"

#include <QList>
#include <QString>

#include <optional>

namespace deskmark {

// The text beside the status item's icon: the current Space's name, or none, or, when
// there is no icon, the label emoji. A long name is shortened in the panel and given
// whole as the tool tip.
struct StatusTitle {
    QString text;
    // The full name when a name is shown, else empty.
    QString toolTip;

    // Names longer than this many characters are cut in the panel.
    static constexpr qsizetype kMaxTitleLength = 24;

    static StatusTitle compute(bool showCurrentSpace, const std::optional<QString>& spaceName,
                               bool iconAvailable);

    // The name as the panel shows it: up to kMaxTitleLength characters (a character being
    // what the reader sees as one, so an accented letter or an emoji is never split);
    // a longer name keeps its first kMaxTitleLength - 1 characters, without trailing
    // spaces, and ends with "…".
    static QString shortened(const QString& name);

    friend bool operator==(const StatusTitle&, const StatusTitle&) = default;
};

// The current Space of the display that holds the status item. When that display is
// unknown, or is not among the window server's displays, the first display's current
// Space stands in. A known display answers even when it reports no current Space.
std::optional<QString> activeDisplayCurrentSpace(const QList<CGSDisplay>& displays,
                                                 const std::optional<QString>& statusDisplayUUID);

} // namespace deskmark
