#pragma once

#include "core/spaces/WindowServer.h"

#include <QHash>

namespace deskmark {

// A window server that answers with a scripted layout. Tests set the raw answer
// (any QVariant, to exercise malformed input) or build a layout with setLayout().
class FakeWindowServer : public WindowServer {
    Q_OBJECT
public:
    struct Display {
        QString identifier;
        QString currentSpace; // empty: the display reports no current Space
        QStringList spaces;   // Space UUIDs; managed ids are their 1-based positions
    };

    using WindowServer::WindowServer;

    QVariant managedDisplaySpaces() const override { return answer_; }
    std::optional<QString> mainDisplayUUID() const override { return mainDisplay_; }
    std::optional<QString> displayUUIDForScreen(const QString& screenName) const override;

    void setAnswer(const QVariant& answer) { answer_ = answer; }
    void setLayout(const QList<Display>& displays);
    void setMainDisplayUUID(std::optional<QString> uuid) { mainDisplay_ = std::move(uuid); }
    void setScreenUUID(const QString& screenName, const QString& uuid);
    // Makes spaceUUID current on the display with that identifier and announces it.
    void switchTo(const QString& displayIdentifier, const QString& spaceUUID);

private:
    QVariant answer_;
    QList<Display> layout_;
    std::optional<QString> mainDisplay_;
    QHash<QString, QString> screens_;
};

} // namespace deskmark
