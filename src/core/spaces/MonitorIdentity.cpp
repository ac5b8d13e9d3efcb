#include "core/spaces/MonitorIdentity.h"

#include <QUuid>

#include <algorithm>

namespace deskmark {

namespace {

// Our own namespace for name-based (version 5) display UUIDs. Never change it: every
// stored per-display setting is keyed by UUIDs made under it.
const QUuid kDisplayNamespace(QStringLiteral("{1F7C64ED-1174-4FC2-A77C-85F88B0CB99D}"));

constexpr int kBlockSize = 128;
constexpr int kFirstDescriptor = 54;
constexpr int kDescriptorSize = 18;
constexpr int kDescriptorCount = 4;
constexpr quint8 kSerialDescriptorTag = 0xFF;

quint8 byteAt(const QByteArray& data, int index) {
    return static_cast<quint8>(data.at(index));
}

// The three letters packed five bits each into bytes 8 and 9, 1 = 'A'.
std::optional<QString> manufacturerID(const QByteArray& data) {
    const quint16 packed = quint16(byteAt(data, 8) << 8 | byteAt(data, 9));
    QString letters;
    for (int shift : {10, 5, 0}) {
        const int letter = (packed >> shift) & 0x1F;
        if (letter < 1 || letter > 26)
            return std::nullopt;
        letters += QChar(u'A' + letter - 1);
    }
    return letters;
}

// The text of the display-serial descriptor: up to 13 characters, ended by a line feed
// and padded with spaces.
QString serialText(const QByteArray& data) {
    for (int i = 0; i < kDescriptorCount; ++i) {
        const int at = kFirstDescriptor + i * kDescriptorSize;
        const bool isDisplayDescriptor = byteAt(data, at) == 0 && byteAt(data, at + 1) == 0;
        if (!isDisplayDescriptor || byteAt(data, at + 3) != kSerialDescriptorTag)
            continue;
        QByteArray text = data.mid(at + 5, kDescriptorSize - 5);
        const qsizetype end = text.indexOf('\n');
        if (end >= 0)
            text.truncate(end);
        return QString::fromLatin1(text).trimmed();
    }
    return {};
}

} // namespace

MonitorIdentity::MonitorIdentity(const QString& monitorName, const QString& connector,
                                 const QByteArray& edid)
    : name_(monitorName), connector_(connector) {
    if (const std::optional<Edid> facts = parseEdid(edid)) {
        facts_ = {QStringLiteral("edid"), facts->manufacturer, QString::number(facts->productCode),
                  QString::number(facts->serialNumber), facts->serialText};
        hasSerial_ = facts->hasSerial();
    }
}

MonitorIdentity MonitorIdentity::reported(const QString& outputName, const QString& make,
                                          const QString& model, const QString& serial) {
    const auto known = [](const QString& fact) {
        return !fact.isEmpty() && fact != QLatin1String("Unknown");
    };
    MonitorIdentity identity;
    identity.name_ = outputName;
    identity.connector_ = outputName;
    if (known(make) || known(model)) {
        identity.facts_ = {QStringLiteral("output"), make, model, known(serial) ? serial : QString()};
        identity.hasSerial_ = known(serial);
    }
    return identity;
}

std::optional<MonitorIdentity::Edid> MonitorIdentity::parseEdid(const QByteArray& data) {
    static const QByteArray header("\x00\xFF\xFF\xFF\xFF\xFF\xFF\x00", 8);
    if (data.size() < kBlockSize || !data.startsWith(header))
        return std::nullopt;
    const auto manufacturer = manufacturerID(data);
    if (!manufacturer)
        return std::nullopt;
    Edid edid;
    edid.manufacturer = *manufacturer;
    edid.productCode = quint16(byteAt(data, 10) | byteAt(data, 11) << 8);
    edid.serialNumber = quint32(byteAt(data, 12)) | quint32(byteAt(data, 13)) << 8 |
                        quint32(byteAt(data, 14)) << 16 | quint32(byteAt(data, 15)) << 24;
    edid.serialText = serialText(data);
    return edid;
}

QStringList MonitorIdentity::displayUUIDs(const QList<MonitorIdentity>& monitors) {
    QStringList uuids;
    for (const MonitorIdentity& monitor : monitors)
        uuids << QUuid::createUuidV5(kDisplayNamespace, monitor.seed(monitors).toUtf8())
                     .toString(QUuid::WithoutBraces)
                     .toUpper();
    return uuids;
}

QString MonitorIdentity::seed(const QList<MonitorIdentity>& screen) const {
    if (facts_.isEmpty())
        return QStringLiteral("monitor\n") + name_;
    QStringList facts = facts_;
    const auto twins =
        std::count_if(screen.begin(), screen.end(),
                      [this](const MonitorIdentity& other) { return other.facts_ == facts_; });
    if (!hasSerial_ || twins > 1)
        facts << connector_;
    return facts.join(u'\n');
}

} // namespace deskmark
