#pragma once

#include "core/spaces/CGSSpace.h"

#include <QList>
#include <QString>

#include <optional>

namespace deskmark {

// One display with its Spaces in the window server's order.
struct CGSDisplay {
    // The identity the rest of the program uses: upper case, with the window server's
    // "MAIN" placeholder replaced by the main display's UUID where that is unambiguous.
    QString displayUUID;
    // The window server's identifier, upper-cased; "?" when it gave none.
    QString rawDisplayID;
    QList<CGSSpace> spaces;
    // The Space shown on this display; absent when the window server does not say.
    std::optional<QString> currentUUID;

    friend bool operator==(const CGSDisplay&, const CGSDisplay&) = default;
};

} // namespace deskmark
