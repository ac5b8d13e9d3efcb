#pragma once

#include <QString>

namespace deskmark {

// A window manager that switches Spaces on request.
class SpaceRequester {
public:
    virtual ~SpaceRequester() = default;

    // Asks for the Space at `index` of the display's Space list to become current. False
    // when the request could not be made; true says nothing about whether it took effect.
    virtual bool requestSpace(const QString& displayUUID, int index) = 0;
};

} // namespace deskmark
