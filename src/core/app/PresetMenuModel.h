#pragma once

#include "core/model/ColorPreset.h"

#include <QList>
#include <QString>

#include <optional>

namespace deskmark {

// The quick-select preset menu of the status item and the next-preset hot key.
namespace PresetMenuModel {

struct Entry {
    QString presetID;
    QString title;
    bool checked = false;

    friend bool operator==(const Entry&, const Entry&) = default;
};

// One entry per preset in store order. projectPresetID is the preset of the current
// Space's project; when there is none (no Space, no project or no preset) "default" is
// the checked entry.
QList<Entry> entries(const QList<ColorPreset>& presets,
                     const std::optional<QString>& projectPresetID);

// The preset that follows the current one in store order, wrapping at the end; an
// unknown current id starts at the first preset. Nothing when there are no presets.
std::optional<QString> nextPresetID(const QList<ColorPreset>& presets,
                                    const std::optional<QString>& projectPresetID);

} // namespace PresetMenuModel

} // namespace deskmark
