#pragma once

#include "core/settings/ProjectsPaneModel.h"
#include "ui/settings/SettingsContext.h"

#include <QWidget>

class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace deskmark {

// Every project in name order with its colours and how many Spaces show it: rename,
// change the preset, delete.
class ProjectsPane : public QWidget {
    Q_OBJECT
public:
    explicit ProjectsPane(const SettingsContext& context, QWidget* parent = nullptr);

private:
    void render();
    void renderSelection();
    std::optional<QUuid> selectedProject() const;

    const SettingsContext& context_;
    ProjectsPaneModel model_;
    QListWidget* list_;
    QLineEdit* name_;
    QPushButton* rename_;
    QComboBox* preset_;
    QPushButton* delete_;
};

} // namespace deskmark
