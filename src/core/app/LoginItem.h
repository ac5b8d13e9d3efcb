#pragma once

#include <QString>

namespace deskmark {

// Whether Deskmark starts when the user logs in. The platform decides what that means
// (on Linux an XDG autostart entry); the settings store's launchAtLogin reads
// isEnabled() once at start and calls apply() whenever the setting changes.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    virtual bool isEnabled() const = 0;
    // Registers (true) or unregisters (false). On failure returns false with the
    // reason in *error.
    virtual bool setEnabled(bool enabled, QString* error) = 0;

    // Brings the registration in line with the wanted state, touching it only when it
    // differs. A refusal is logged; the caller's setting keeps its value.
    void apply(bool wanted);
};

} // namespace deskmark
