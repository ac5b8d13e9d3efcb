#pragma once

#include "ui/settings/SettingsContext.h"

#include <QWidget>

class QGridLayout;

namespace deskmark {

// What the session offers and what it means, asked again each time the pane is shown.
class PermissionsPane : public QWidget {
    Q_OBJECT
public:
    explicit PermissionsPane(const SettingsContext& context, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void render();

    const SettingsContext& context_;
    QGridLayout* grid_;
};

} // namespace deskmark
