#include "core/app/PresetMenuModel.h"

namespace deskmark::PresetMenuModel {

namespace {
QString effectivePresetID(const std::optional<QString>& projectPresetID) {
    return projectPresetID.value_or(QStringLiteral("default"));
}
} // namespace

QList<Entry> entries(const QList<ColorPreset>& presets,
                     const std::optional<QString>& projectPresetID) {
    const QString current = effectivePresetID(projectPresetID);
    QList<Entry> result;
    result.reserve(presets.size());
    for (const ColorPreset& preset : presets)
        result.append({preset.id, preset.name, preset.id == current});
    return result;
}

std::optional<QString> nextPresetID(const QList<ColorPreset>& presets,
                                    const std::optional<QString>& projectPresetID) {
    if (presets.isEmpty())
        return std::nullopt;
    const QString current = effectivePresetID(projectPresetID);
    qsizetype index = -1;
    for (qsizetype i = 0; i < presets.size(); ++i) {
        if (presets[i].id == current) {
            index = i;
            break;
        }
    }
    return presets[(index + 1) % presets.size()].id;
}

} // namespace deskmark::PresetMenuModel
