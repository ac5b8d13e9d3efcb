#pragma once

#include "core/spaces/CGSDisplay.h"

#include <QList>
#include <QSet>
#include <QString>

#include <optional>

namespace deskmark {

class WindowServer;

// The program's only reader of the Space layout. It keeps nothing: every query asks the
// window server again, so callers that poll simply call again. Malformed answers never
// fail a caller; they give placeholders ("?", -1, no current Space) or an empty list.
class SpaceStore {
public:
    explicit SpaceStore(const WindowServer& windowServer) : windowServer_(windowServer) {}

    // One entry per display the window server reports, in its order, unfiltered and
    // unsorted; empty when the answer is not a list of string-keyed dictionaries.
    QList<CGSDisplay> displays() const;
    // The main display's UUID, upper-cased.
    std::optional<QString> mainDisplayUUID() const;
    // The display UUID of a screen (named as QScreen::name() names it), upper-cased, so
    // that it compares equal to the displayUUID of the matching CGSDisplay.
    std::optional<QString> displayUUID(const QString& screenName) const;
    // The current Space of the display with that UUID; none when the display is missing
    // or does not say.
    std::optional<QString> currentSpace(const QString& displayUUID) const;
    // The uuid of every Space on every display.
    QSet<QString> liveSpaceUUIDs() const;

private:
    const WindowServer& windowServer_;
};

} // namespace deskmark
