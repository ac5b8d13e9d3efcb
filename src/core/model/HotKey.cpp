#include "core/model/HotKey.h"

#include "core/model/KeyTable.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <cmath>
#include <limits>

namespace deskmark {

namespace {

std::optional<quint32> unsigned32(const QJsonValue& value) {
    if (!value.isDouble())
        return std::nullopt;
    const double number = value.toDouble();
    if (number < 0 || number > std::numeric_limits<quint32>::max() || number != std::floor(number))
        return std::nullopt;
    return static_cast<quint32>(number);
}

struct MenuCharacter {
    quint32 keyCode;
    char16_t character;
};

// Keys whose menu key equivalent is not their name.
constexpr std::array<MenuCharacter, 26> menuCharacters{{
    {36, u'\r'},   {48, u'\t'},   {49, u' '},    {51, 0x08},    {53, 0x1B},    {122, 0xF704},
    {120, 0xF705}, {99, 0xF706},  {118, 0xF707}, {96, 0xF708},  {97, 0xF709},  {98, 0xF70A},
    {100, 0xF70B}, {101, 0xF70C}, {109, 0xF70D}, {103, 0xF70E}, {111, 0xF70F}, {126, 0xF700},
    {125, 0xF701}, {123, 0xF702}, {124, 0xF703}, {117, 0xF728}, {115, 0xF729}, {119, 0xF72B},
    {116, 0xF72C}, {121, 0xF72D},
}};

} // namespace

QByteArray HotKey::toJson() const {
    const QJsonObject record{{QStringLiteral("keyCode"), static_cast<double>(keyCode)},
                             {QStringLiteral("modifiers"), static_cast<double>(modifiers)}};
    return QJsonDocument(record).toJson(QJsonDocument::Compact);
}

std::optional<HotKey> HotKey::fromJson(const QByteArray& json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject record = document.object();
    const auto keyCode = unsigned32(record.value(QLatin1String("keyCode")));
    const auto modifiers = unsigned32(record.value(QLatin1String("modifiers")));
    if (!keyCode || !modifiers)
        return std::nullopt;
    return HotKey{*keyCode, *modifiers};
}

QString HotKey::keyName() const {
    const KeyTable::Entry* entry = KeyTable::find(keyCode);
    return entry ? QString::fromUtf8(entry->glyph) : QStringLiteral("?");
}

QString HotKey::displayString() const {
    QString text;
    for (const KeyTable::Modifier& modifier : KeyTable::modifiers()) {
        if (modifiers & modifier.carbon)
            text += QString::fromUtf8(modifier.glyph);
    }
    return text + keyName();
}

std::optional<QString> HotKey::menuKeyEquivalent() const {
    for (const MenuCharacter& special : menuCharacters) {
        if (special.keyCode == keyCode)
            return QString(QChar(special.character));
    }
    const QString name = keyName();
    if (name.size() == 1 && name.at(0).unicode() < 0x80 && name != QLatin1String("?"))
        return name.toLower();
    return std::nullopt;
}

std::optional<QKeyCombination> HotKey::qtKeyCombination() const {
    const KeyTable::Entry* entry = KeyTable::find(keyCode);
    if (!entry)
        return std::nullopt;
    Qt::KeyboardModifiers flags;
    for (const KeyTable::Modifier& modifier : KeyTable::modifiers()) {
        if (modifiers & modifier.carbon)
            flags |= modifier.qt;
    }
    return QKeyCombination(flags, entry->qtKey);
}

quint32 HotKey::carbonModifiers(Qt::KeyboardModifiers flags) {
    quint32 bits = 0;
    for (const KeyTable::Modifier& modifier : KeyTable::modifiers()) {
        if (flags & modifier.qt)
            bits |= modifier.carbon;
    }
    return bits;
}

} // namespace deskmark
