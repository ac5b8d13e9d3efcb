#pragma once

#include <QString>

namespace deskmark {

// A desktop notification through org.freedesktop.Notifications on the session bus.
class DesktopNotification {
public:
    // Shows summary and body from Deskmark. Where no session bus or no notification
    // service runs, does nothing and returns false.
    static bool show(const QString& summary, const QString& body);
};

} // namespace deskmark
