#pragma once

#include "core/editor/NameEditorModel.h"

#include <QDialog>

#include <memory>

class QComboBox;
class QLabel;
class QLineEdit;

namespace deskmark {

// The window that names the current Space. It renders a NameEditorModel and forwards every
// edit to it; Save (the default button, Return) saves and closes, Cancel and Escape close
// without saving. The window deletes itself once it is closed.
class NameEditorWindow : public QDialog {
    Q_OBJECT
public:
    explicit NameEditorWindow(std::unique_ptr<NameEditorModel> model, QWidget* parent = nullptr);
    ~NameEditorWindow() override;

    NameEditorModel& model() { return *model_; }

    // Shows the window in the middle of the screen under the pointer and gives it the
    // keyboard, with the name field focused.
    void present();

private:
    void fitHeight();
    void render();
    void renderPresets();
    void renderPreview();

    std::unique_ptr<NameEditorModel> model_;
    QComboBox* projectPicker_;
    QLineEdit* nameField_;
    QComboBox* presetPicker_;
    QLabel* preview_;
    QLabel* note_;
    QList<NameEditorModel::PresetEntry> shownPresets_;
};

} // namespace deskmark
