#pragma once

#include "core/switcher/SpaceSwitcherController.h"
#include "ui/SpaceSwitcherTileList.h"

#include <QWidget>

#include <memory>

class QLabel;
class QLineEdit;

namespace deskmark {

// The switcher: a frameless panel with the filter field, the tiles and the key hints,
// above ordinary windows and holding the keyboard while open. Keys typed into the field
// go to the controller first; what it does not use edits the filter text.
class SpaceSwitcherPanel : public QWidget {
    Q_OBJECT
public:
    static constexpr int kInitialContentWidth = 280;

    // `composited`: translucent windows blend with the desktop, so the panel can draw
    // rounded corners with a shadow; otherwise it is cut to its rounded shape.
    SpaceSwitcherPanel(std::unique_ptr<SpaceSwitcherController> controller,
                       SpaceSwitcherTileList::Colors colors, bool composited);
    ~SpaceSwitcherPanel() override;

    SpaceSwitcherController& controller() { return *controller_; }
    // Sizes the panel to its content, centres it on `area` (the available part of a
    // screen), shows it and takes the keyboard.
    void present(const QRect& area);

Q_SIGNALS:
    // Every paint; the benchmark waits for the first.
    void painted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void render();
    void fitToContent();
    QRectF panelRect() const;

    std::unique_ptr<SpaceSwitcherController> controller_;
    bool composited_;
    int margin_;
    QLineEdit* field_;
    SpaceSwitcherTileList* tiles_;
    QLabel* noMatch_;
    QLabel* hints_;
    bool composing_ = false;
    int contentWidth_ = kInitialContentWidth;
};

} // namespace deskmark
