#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

#include <optional>

namespace deskmark {

// What the core needs of the platform's window server to know the Space layout.
//
// managedDisplaySpaces() answers with one dictionary per managed display, keyed
// exactly as the window server describes them ("Display Identifier", "Current Space",
// "Spaces", and per Space "uuid", "ManagedSpaceID", "id64"), or with an invalid
// QVariant when it has nothing to say. Values may be of any type; SpaceStore checks
// them. Display UUIDs are returned as the platform gives them; SpaceStore upper-cases.
class WindowServer : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~WindowServer() override = default;

    virtual QVariant managedDisplaySpaces() const = 0;
    virtual std::optional<QString> mainDisplayUUID() const = 0;
    // The display UUID of a screen, named as QScreen::name() names it.
    virtual std::optional<QString> displayUUIDForScreen(const QString& screenName) const = 0;

Q_SIGNALS:
    // The current Space of some display changed (or the Spaces themselves did).
    void activeSpaceChanged();
};

} // namespace deskmark
