#pragma once

#include "core/model/ColorPair.h"
#include "core/model/ColorPreset.h"
#include "core/model/StoreFile.h"

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace deskmark {

// The colour presets, kept in presets.json in the data folder in display order. A preset
// with the id "default" always exists: it is put first when the file lacks it, and it can
// be edited but never deleted.
//
// Every change is saved at once and then announced with changed(). Reading fails silently
// (the built-in preset alone remains); a file that is there but cannot be decoded is set
// aside as presets.json.broken before the first save replaces it.
class PresetStore : public QObject {
    Q_OBJECT
public:
    static inline const QString kDefaultID = QStringLiteral("default");

    explicit PresetStore(const QString& dataFolder, QObject* parent = nullptr);

    const QList<ColorPreset>& presets() const { return presets_; }
    // The first preset with that id.
    std::optional<ColorPreset> preset(const QString& id) const;
    // The colours of that preset, or of "default" when there is no such preset (or no id).
    // Never fails: an unusable background is black, an unusable text colour white.
    ColorPair colors(const std::optional<QString>& presetID) const;

    // Appends a preset with a fresh id and the starting name and colours, and returns it.
    ColorPreset addPreset();
    // Removes the preset with that id; "default" is refused silently, without a write.
    // Projects that used the preset are cleared by the caller.
    void deletePreset(const QString& id);
    // Replaces the name and colours of the preset with the same id; unknown ids are ignored.
    void updatePreset(const ColorPreset& preset);
    // Writes every preset to presets.json; a failure is logged and the memory kept.
    void save();

Q_SIGNALS:
    void changed();

private:
    void load();
    void commit();

    StoreFile file_;
    QList<ColorPreset> presets_;
};

} // namespace deskmark
