#include "core/model/PresetStore.h"

#include "core/app/Language.h"
#include "core/app/SystemLog.h"
#include "core/model/AppFolders.h"
#include "core/model/JsonReader.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QUuid>

#include <algorithm>

namespace deskmark {

namespace {

const RgbColor kBlack{0, 0, 0};
const RgbColor kWhite{1, 1, 1};

// Every element must decode; one bad preset makes the whole file undecodable.
std::optional<QList<ColorPreset>> decodePresets(const QByteArray& data) {
    const std::optional<QJsonDocument> document = JsonReader::strictDocument(data);
    if (!document || !document->isArray())
        return std::nullopt;
    QList<ColorPreset> presets;
    for (const QJsonValue& value : document->array()) {
        auto preset = ColorPreset::fromJson(value);
        if (!preset)
            return std::nullopt;
        presets << std::move(*preset);
    }
    return presets;
}

// Nothing when a text holds a lone UTF-16 surrogate, which UTF-8 cannot carry.
std::optional<QByteArray> encodePresets(const QList<ColorPreset>& presets) {
    QJsonArray array;
    for (const ColorPreset& preset : presets) {
        for (const QString* text : {&preset.id, &preset.name, &preset.bgHex, &preset.textHex})
            if (!text->isValidUtf16())
                return std::nullopt;
        array.append(preset.toJson());
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

} // namespace

PresetStore::PresetStore(const QString& dataFolder, QObject* parent)
    : QObject(parent), file_(QDir(dataFolder).filePath(QStringLiteral("presets.json"))) {
    AppFolders::ensureExists(dataFolder);
    load();
}

void PresetStore::load() {
    const StoreFile::ReadResult result = file_.read();
    switch (result.status) {
    case StoreFile::ReadStatus::Missing:
        break;
    case StoreFile::ReadStatus::Unreadable:
        // Its content is unknown, so it must not be replaced unseen either.
        file_.markBroken();
        break;
    case StoreFile::ReadStatus::Read:
        if (auto presets = decodePresets(result.data))
            presets_ = std::move(*presets);
        else
            file_.markBroken();
        break;
    }
    // In memory only: the file receives the built-in preset with the next save.
    if (!preset(kDefaultID))
        presets_.prepend(ColorPreset{kDefaultID, localized("デフォルト", "Default"),
                                     QStringLiteral("#000000"), QStringLiteral("#FFFFFF")});
}

std::optional<ColorPreset> PresetStore::preset(const QString& id) const {
    const auto it = std::find_if(presets_.cbegin(), presets_.cend(),
                                 [&](const ColorPreset& p) { return p.id == id; });
    if (it == presets_.cend())
        return std::nullopt;
    return *it;
}

ColorPair PresetStore::colors(const std::optional<QString>& presetID) const {
    std::optional<ColorPreset> chosen = presetID ? preset(*presetID) : std::nullopt;
    if (!chosen)
        chosen = preset(kDefaultID);
    if (!chosen)
        return {kBlack, kWhite};
    return {RgbColor::fromDeskmarkHex(chosen->bgHex).value_or(kBlack),
            RgbColor::fromDeskmarkHex(chosen->textHex).value_or(kWhite)};
}

ColorPreset PresetStore::addPreset() {
    ColorPreset preset{QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(),
                       localized("新規プリセット", "New Preset"), QStringLiteral("#3366CC"),
                       QStringLiteral("#FFFFFF")};
    presets_ << preset;
    commit();
    return preset;
}

void PresetStore::deletePreset(const QString& id) {
    if (id == kDefaultID)
        return;
    presets_.removeIf([&](const ColorPreset& p) { return p.id == id; });
    commit();
}

void PresetStore::updatePreset(const ColorPreset& preset) {
    const auto it = std::find_if(presets_.begin(), presets_.end(),
                                 [&](const ColorPreset& p) { return p.id == preset.id; });
    if (it == presets_.end())
        return;
    *it = preset;
    commit();
}

void PresetStore::save() {
    const auto data = encodePresets(presets_);
    if (!data) {
        systemLog(QStringLiteral("Deskmark: presets.json のエンコードに失敗"));
        return;
    }
    file_.save(*data);
}

void PresetStore::commit() {
    save();
    Q_EMIT changed();
}

} // namespace deskmark
