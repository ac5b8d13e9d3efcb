#pragma once

#include "core/settings/CornerSettingsModel.h"

#include <QWidget>

#include <functional>

class QAbstractButton;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QSlider;

namespace deskmark {

// The control of one corner setting, global or one display's: a check box, a slider
// with its value shown, a picker of labelled cases, or for the position a 3 × 3 grid.
// It writes through its model at once and shows the store's value after any change.
class CornerItemEditor : public QWidget {
    Q_OBJECT
public:
    CornerItemEditor(SettingsStore& settings, CornerSettingsModel model, CornerOverrideItem item,
                     QWidget* parent = nullptr);

    // Calls react whenever any corner setting changes, while receiver lives.
    static void onCornerChange(SettingsStore& settings, QObject* receiver,
                               const std::function<void()>& react);

    void render();

private:
    void buildPositionGrid();

    CornerSettingsModel model_;
    CornerOverrideItem item_;
    QCheckBox* toggle_ = nullptr;
    QSlider* slider_ = nullptr;
    QLabel* value_ = nullptr;
    QComboBox* choice_ = nullptr;
    QButtonGroup* positions_ = nullptr;
};

} // namespace deskmark
