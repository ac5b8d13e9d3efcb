#include "core/spaces/SpaceStore.h"

#include "core/spaces/WindowServer.h"

#include <QVariantHash>
#include <QVariantList>
#include <QVariantMap>

#include <limits>

namespace deskmark {

namespace {

const QString kUnknown = QStringLiteral("?");

// A dictionary keyed by strings, whichever of Qt's two map types carries it.
std::optional<QVariantMap> asDictionary(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::QVariantMap:
        return value.toMap();
    case QMetaType::QVariantHash: {
        const QVariantHash hash = value.toHash();
        QVariantMap map;
        for (auto it = hash.constBegin(); it != hash.constEnd(); ++it)
            map.insert(it.key(), it.value());
        return map;
    }
    default:
        return std::nullopt;
    }
}

// A list whose every element is a dictionary; a single other element fails the whole
// list, as a typed cast of the window server's array would.
std::optional<QList<QVariantMap>> asDictionaryList(const QVariant& value) {
    if (value.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    QList<QVariantMap> result;
    for (const QVariant& element : value.toList()) {
        auto dictionary = asDictionary(element);
        if (!dictionary)
            return std::nullopt;
        result << std::move(*dictionary);
    }
    return result;
}

std::optional<QString> asString(const QVariant& value) {
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
}

// Only genuine integer types count: a numeric string or a floating-point number is not a
// Space number, and an unsigned value beyond the signed range cannot be one either.
std::optional<qint64> asInteger(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
        return value.toLongLong();
    case QMetaType::UInt:
        return qint64(value.toUInt());
    case QMetaType::ULongLong: {
        const qulonglong number = value.toULongLong();
        if (number > qulonglong(std::numeric_limits<qint64>::max()))
            return std::nullopt;
        return qint64(number);
    }
    default:
        return std::nullopt;
    }
}

CGSSpace readSpace(const QVariantMap& dictionary) {
    CGSSpace space;
    space.uuid = asString(dictionary.value(QStringLiteral("uuid"))).value_or(kUnknown);
    auto managedID = asInteger(dictionary.value(QStringLiteral("ManagedSpaceID")));
    if (!managedID)
        managedID = asInteger(dictionary.value(QStringLiteral("id64")));
    space.managedID = managedID.value_or(-1);
    return space;
}

std::optional<QString> readCurrentSpace(const QVariantMap& display) {
    const auto current = asDictionary(display.value(QStringLiteral("Current Space")));
    if (!current)
        return std::nullopt;
    return asString(current->value(QStringLiteral("uuid")));
}

QList<CGSSpace> readSpaces(const QVariantMap& display) {
    QList<CGSSpace> spaces;
    const auto dictionaries = asDictionaryList(display.value(QStringLiteral("Spaces")));
    if (!dictionaries)
        return spaces;
    for (const QVariantMap& dictionary : *dictionaries)
        spaces << readSpace(dictionary);
    return spaces;
}

} // namespace

QList<CGSDisplay> SpaceStore::displays() const {
    const auto entries = asDictionaryList(windowServer_.managedDisplaySpaces());
    if (!entries)
        return {};
    const std::optional<QString> mainUUID = mainDisplayUUID();

    QStringList rawIDs;
    for (const QVariantMap& entry : *entries)
        rawIDs << asString(entry.value(QStringLiteral("Display Identifier")))
                      .value_or(kUnknown)
                      .toUpper();

    // The window server may name one display "MAIN" instead of giving its UUID. That entry
    // takes the main display's UUID, which is what screen lookups produce, unless another
    // entry already carries that UUID: one display per UUID matters more.
    const bool mainUUIDIsFree = mainUUID && !rawIDs.contains(*mainUUID);

    QList<CGSDisplay> result;
    result.reserve(entries->size());
    for (qsizetype i = 0; i < entries->size(); ++i) {
        const QVariantMap& entry = entries->at(i);
        CGSDisplay display;
        display.rawDisplayID = rawIDs.at(i);
        display.displayUUID = display.rawDisplayID == QLatin1String("MAIN") && mainUUIDIsFree
                                  ? *mainUUID
                                  : display.rawDisplayID;
        display.spaces = readSpaces(entry);
        display.currentUUID = readCurrentSpace(entry);
        result << std::move(display);
    }
    return result;
}

std::optional<QString> SpaceStore::mainDisplayUUID() const {
    const auto uuid = windowServer_.mainDisplayUUID();
    if (!uuid)
        return std::nullopt;
    return uuid->toUpper();
}

std::optional<QString> SpaceStore::displayUUID(const QString& screenName) const {
    const auto uuid = windowServer_.displayUUIDForScreen(screenName);
    if (!uuid)
        return std::nullopt;
    return uuid->toUpper();
}

QSet<QString> SpaceStore::liveSpaceUUIDs() const {
    QSet<QString> uuids;
    for (const CGSDisplay& display : displays()) {
        for (const CGSSpace& space : display.spaces)
            uuids.insert(space.uuid);
    }
    return uuids;
}

std::optional<QString> SpaceStore::currentSpace(const QString& displayUUID) const {
    for (const CGSDisplay& display : displays()) {
        if (display.displayUUID == displayUUID)
            return display.currentUUID;
    }
    return std::nullopt;
}

} // namespace deskmark
