#pragma once

#include <QString>
#include <QtGlobal>

namespace deskmark {

// One Space as the window server lists it. The uuid is kept exactly as given (its letter
// case included), since it is the key of every per-Space record.
struct CGSSpace {
    QString uuid;          // "?" when the window server gives none
    qint64 managedID = -1; // the window server's Space number; -1 when unknown

    friend bool operator==(const CGSSpace&, const CGSSpace&) = default;
};

} // namespace deskmark
