#pragma once

#include "core/settings/SpacesPaneModel.h"
#include "ui/settings/SettingsContext.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace deskmark {

// Every Space with its project: assign an existing project, create a new one, rename,
// unassign, and remove assignments to Spaces that no longer exist.
class SpacesPane : public QWidget {
    Q_OBJECT
public:
    explicit SpacesPane(const SettingsContext& context, QWidget* parent = nullptr);

private:
    void render();
    void renderSelection();
    void renderButtons();
    std::optional<QString> selectedSpace() const;
    std::optional<QString> chosenPreset() const;

    const SettingsContext& context_;
    SpacesPaneModel model_;
    QListWidget* list_;
    QComboBox* project_;
    QPushButton* unassign_;
    QLineEdit* name_;
    QComboBox* preset_;
    QPushButton* create_;
    QPushButton* rename_;
    QLabel* stale_;
    QPushButton* removeStale_;
};

} // namespace deskmark
