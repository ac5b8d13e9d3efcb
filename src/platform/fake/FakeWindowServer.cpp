#include "platform/fake/FakeWindowServer.h"

#include <QVariantMap>

namespace deskmark {

std::optional<QString> FakeWindowServer::displayUUIDForScreen(const QString& screenName) const {
    const auto it = screens_.constFind(screenName);
    if (it == screens_.constEnd())
        return std::nullopt;
    return *it;
}

void FakeWindowServer::setLayout(const QList<Display>& displays) {
    layout_ = displays;
    QVariantList answer;
    for (const Display& display : displays) {
        QVariantList spaces;
        qlonglong managedID = 0;
        for (const QString& uuid : display.spaces)
            spaces << QVariantMap{{QStringLiteral("uuid"), uuid},
                                  {QStringLiteral("ManagedSpaceID"), ++managedID}};
        QVariantMap entry{{QStringLiteral("Display Identifier"), display.identifier},
                          {QStringLiteral("Spaces"), spaces}};
        if (!display.currentSpace.isEmpty())
            entry.insert(QStringLiteral("Current Space"),
                         QVariantMap{{QStringLiteral("uuid"), display.currentSpace}});
        answer << entry;
    }
    answer_ = answer;
}

void FakeWindowServer::setScreenUUID(const QString& screenName, const QString& uuid) {
    screens_.insert(screenName, uuid);
}

bool FakeWindowServer::requestSpace(const QString& displayUUID, int index) {
    requests_ << QStringLiteral("%1:%2").arg(displayUUID).arg(index);
    for (const Display& display : std::as_const(layout_)) {
        if (display.identifier.toUpper() != displayUUID || index < 0 ||
            index >= display.spaces.size())
            continue;
        if (ignoredRequests_ > 0) {
            --ignoredRequests_;
            return true;
        }
        const QString space = display.spaces[index];
        for (Display& other : layout_) {
            if (other.spaces.contains(space))
                other.currentSpace = space;
        }
        setLayout(layout_);
        Q_EMIT activeSpaceChanged();
        return true;
    }
    return false;
}

void FakeWindowServer::switchTo(const QString& displayIdentifier, const QString& spaceUUID) {
    for (Display& display : layout_) {
        if (display.identifier == displayIdentifier)
            display.currentSpace = spaceUUID;
    }
    setLayout(layout_);
    Q_EMIT activeSpaceChanged();
}

} // namespace deskmark
