#include "core/settings/PresetsPaneModel.h"

#include "core/model/PresetStore.h"
#include "core/model/ProjectStore.h"
#include "core/model/RgbColor.h"

namespace deskmark {

PresetsPaneModel::PresetsPaneModel(PresetStore& presets, ProjectStore& projects)
    : presets_(presets), projects_(projects) {}

std::optional<QString> PresetsPaneModel::normalizedHex(const QString& text) {
    const std::optional<RgbColor> color = RgbColor::fromDeskmarkHex(text);
    if (!color)
        return std::nullopt;
    return color->deskmarkHex();
}

bool PresetsPaneModel::setColor(const QString& presetID, Part part, const QString& text) {
    std::optional<ColorPreset> preset = presets_.preset(presetID);
    const std::optional<QString> hex = normalizedHex(text);
    if (!preset || !hex)
        return false;
    (part == Part::Background ? preset->bgHex : preset->textHex) = *hex;
    presets_.updatePreset(*preset);
    return true;
}

bool PresetsPaneModel::rename(const QString& presetID, const QString& name) {
    std::optional<ColorPreset> preset = presets_.preset(presetID);
    const QString trimmed = name.trimmed();
    if (!preset || trimmed.isEmpty())
        return false;
    preset->name = trimmed;
    presets_.updatePreset(*preset);
    return true;
}

QString PresetsPaneModel::add() {
    return presets_.addPreset().id;
}

void PresetsPaneModel::remove(const QString& presetID) {
    if (presetID == PresetStore::kDefaultID || !presets_.preset(presetID))
        return;
    presets_.deletePreset(presetID);
    projects_.clearPreset(presetID);
}

} // namespace deskmark
