#pragma once

#include "core/spaces/WindowServer.h"
#include "core/switcher/SpaceRequester.h"

#include <QHash>

namespace deskmark {

// A window server that answers with a scripted layout. Tests set the raw answer
// (any QVariant, to exercise malformed input) or build a layout with setLayout(). A
// request for a Space makes it current on every display that lists it, unless the
// window manager is told to ignore requests.
class FakeWindowServer : public WindowServer, public SpaceRequester {
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

    bool requestSpace(const QString& displayUUID, int index) override;

    void setAnswer(const QVariant& answer) { answer_ = answer; }
    void setLayout(const QList<Display>& displays);
    void setMainDisplayUUID(std::optional<QString> uuid) { mainDisplay_ = std::move(uuid); }
    void setScreenUUID(const QString& screenName, const QString& uuid);
    // Makes spaceUUID current on the display with that identifier and announces it.
    void switchTo(const QString& displayIdentifier, const QString& spaceUUID);

    // The next `count` requests are accepted but never carried out.
    void ignoreRequests(int count) { ignoredRequests_ = count; }
    // Every request as "display UUID:index", in order.
    const QStringList& requests() const { return requests_; }

private:
    QVariant answer_;
    int ignoredRequests_ = 0;
    QStringList requests_;
    QList<Display> layout_;
    std::optional<QString> mainDisplay_;
    QHash<QString, QString> screens_;
};

} // namespace deskmark
