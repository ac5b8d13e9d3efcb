#pragma once

#include <QString>

#include <optional>

namespace deskmark {

class PresetStore;
class ProjectStore;

// The edits of the Color Presets pane. Colours typed as text are accepted exactly when
// the preset file's own reader accepts them, and stored in its "#RRGGBB" form.
class PresetsPaneModel {
public:
    enum class Part { Background, Text };

    PresetsPaneModel(PresetStore& presets, ProjectStore& projects);

    // The text in the stored form, or none when the preset reader would reject it.
    static std::optional<QString> normalizedHex(const QString& text);

    // Refused (false) for an unknown preset or a text the reader rejects.
    bool setColor(const QString& presetID, Part part, const QString& text);
    // Refused (false) for an unknown preset or a name that is empty after trimming.
    bool rename(const QString& presetID, const QString& name);
    // Adds a preset with the starting name and colours; returns its id.
    QString add();
    // Deletes the preset ("default" is kept) and lets the projects that used it fall back
    // to the default colours.
    void remove(const QString& presetID);

private:
    PresetStore& presets_;
    ProjectStore& projects_;
};

} // namespace deskmark
