#include "ui/SpaceSwitcherTileList.h"

#include "ui/QtColor.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>

namespace deskmark {

namespace {
constexpr int kTextPadding = 12;
constexpr int kSwatch = 14;
constexpr int kSwatchGap = 10;
constexpr int kNameIndent = kTextPadding + kSwatch + kSwatchGap;
} // namespace

SpaceSwitcherTileList::SpaceSwitcherTileList(SpaceSwitcherController& controller, Colors colors,
                                             QWidget* parent)
    : QWidget(parent), controller_(controller), colors_(std::move(colors)) {
    setMouseTracking(true);
    setFocusPolicy(Qt::NoFocus);
    connect(&controller_, &SpaceSwitcherController::selectionChanged, this, [this] {
        scrollToSelection();
        update();
    });
    reload();
}

void SpaceSwitcherTileList::reload() {
    tiles_ = controller_.visible();
    firstRow_ = 0;
    scrollToSelection();
    updateGeometry();
    update();
}

int SpaceSwitcherTileList::fittingWidth() const {
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    int widest = 0;
    for (const SpaceSwitcherController::Tile& tile : controller_.entries())
        widest = std::max(widest, metrics.horizontalAdvance(tile.name));
    return widest + kNameIndent + kTextPadding;
}

void SpaceSwitcherTileList::setMaxRows(int rows) {
    maxRows_ = std::max(1, rows);
    updateGeometry();
}

QSize SpaceSwitcherTileList::sizeHint() const {
    const int rows = std::min<int>(int(tiles_.size()), maxRows_);
    return {fittingWidth(), rows * kRowHeight};
}

void SpaceSwitcherTileList::scrollToSelection() {
    const auto& selected = controller_.selectedID();
    for (int row = 0; row < tiles_.size(); ++row) {
        if (!selected || tiles_[row].id != *selected)
            continue;
        if (row < firstRow_)
            firstRow_ = row;
        else if (row >= firstRow_ + maxRows_)
            firstRow_ = row - maxRows_ + 1;
    }
}

int SpaceSwitcherTileList::rowAt(QPoint position) const {
    const int row = firstRow_ + position.y() / kRowHeight;
    return position.y() >= 0 && row < tiles_.size() ? row : -1;
}

void SpaceSwitcherTileList::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto& selected = controller_.selectedID();
    const int last = std::min<int>(int(tiles_.size()), firstRow_ + maxRows_);
    for (int row = firstRow_; row < last; ++row) {
        const SpaceSwitcherController::Tile& tile = tiles_[row];
        const QRectF box(0, (row - firstRow_) * kRowHeight, width(), kRowHeight);
        const bool isSelected = selected && tile.id == *selected;
        QFont font = this->font();
        font.setBold(isSelected);
        painter.setFont(font);
        if (isSelected) {
            QPainterPath path;
            path.addRoundedRect(box.adjusted(0, 1, 0, -1), 6, 6);
            painter.fillPath(path, palette().highlight());
            painter.setPen(palette().highlightedText().color());
        } else {
            painter.setPen(palette().text().color());
        }
        if (const std::optional<ColorPair> colors = colors_ ? colors_(tile.spaceUUID) : std::nullopt) {
            const QRectF swatch(box.left() + kTextPadding, box.center().y() - kSwatch / 2.0,
                                kSwatch, kSwatch);
            painter.setBrush(qtColor(colors->bg));
            painter.setPen(QPen(qtColor(colors->text), 1.5));
            painter.drawRoundedRect(swatch.adjusted(0.75, 0.75, -0.75, -0.75), 4, 4);
            painter.setPen(isSelected ? palette().highlightedText().color()
                                      : palette().text().color());
        }
        painter.drawText(box.adjusted(kNameIndent, 0, -kTextPadding, 0),
                         Qt::AlignVCenter | Qt::AlignLeft, tile.name);
    }
}

void SpaceSwitcherTileList::mouseMoveEvent(QMouseEvent* event) {
    const int row = rowAt(event->position().toPoint());
    if (row >= 0)
        controller_.hovered(tiles_[row].id, event->globalPosition());
}

void SpaceSwitcherTileList::mousePressEvent(QMouseEvent* event) {
    const int row = rowAt(event->position().toPoint());
    if (row < 0 || event->button() != Qt::LeftButton)
        return;
    controller_.choose(tiles_[row].id);
}

void SpaceSwitcherTileList::wheelEvent(QWheelEvent* event) {
    const int steps = event->angleDelta().y() / 120;
    if (steps != 0)
        controller_.advance(-steps);
}

} // namespace deskmark
