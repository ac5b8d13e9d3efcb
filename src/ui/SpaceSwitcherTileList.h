#pragma once

#include "core/model/ColorPair.h"
#include "core/switcher/SpaceSwitcherController.h"

#include <QWidget>

namespace deskmark {

// The switcher's tiles: one row per visible Space with its name after a swatch of its
// project's colours, the selected row highlighted. Rows are painted, not widgets, and scroll to keep the selection in view
// when there are more than fit. Hovering and clicking go to the controller.
class SpaceSwitcherTileList : public QWidget {
    Q_OBJECT
public:
    static constexpr int kRowHeight = 30;
    // The colours of a Space's project; none for a Space without one.
    using Colors = std::function<std::optional<ColorPair>(const QString& spaceUUID)>;

    SpaceSwitcherTileList(SpaceSwitcherController& controller, Colors colors,
                          QWidget* parent = nullptr);

    // Shows the controller's visible tiles again (after the query changed).
    void reload();
    // The width that shows the widest name in full.
    int fittingWidth() const;
    // At most this many rows are shown at once; more scroll.
    void setMaxRows(int rows);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    int rowAt(QPoint position) const;
    void scrollToSelection();

    SpaceSwitcherController& controller_;
    Colors colors_;
    QList<SpaceSwitcherController::Tile> tiles_;
    int firstRow_ = 0;
    int maxRows_ = 12;
};

} // namespace deskmark
