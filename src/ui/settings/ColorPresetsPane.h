#pragma once

#include "core/settings/PresetsPaneModel.h"
#include "ui/settings/SettingsContext.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace deskmark {

// The colour presets: add, rename, both colours (a colour dialog or "#RRGGBB" text),
// delete, and a label in the preset's colours.
class ColorPresetsPane : public QWidget {
    Q_OBJECT
public:
    explicit ColorPresetsPane(const SettingsContext& context, QWidget* parent = nullptr);

private:
    struct ColorField {
        QPushButton* swatch;
        QLineEdit* hex;
    };
    ColorField addColorField(PresetsPaneModel::Part part);
    void commitHex(PresetsPaneModel::Part part);
    void render();
    void renderSelection();
    QString selectedPreset() const;

    const SettingsContext& context_;
    PresetsPaneModel model_;
    QListWidget* list_;
    QLineEdit* name_;
    ColorField background_{};
    ColorField text_{};
    QLabel* error_;
    QLabel* preview_;
    QPushButton* delete_;
};

} // namespace deskmark
