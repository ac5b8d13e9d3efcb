#include "ui/SpaceSwitcherPanel.h"

#include "core/app/Language.h"

#include <QBitmap>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include <algorithm>

namespace deskmark {

namespace {
constexpr int kShadowMargin = 14;
constexpr int kPadding = 10;
constexpr double kCornerRadius = 12;
} // namespace

SpaceSwitcherPanel::SpaceSwitcherPanel(std::unique_ptr<SpaceSwitcherController> controller,
                                       SpaceSwitcherTileList::Colors colors, bool composited)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      controller_(std::move(controller)), composited_(composited),
      margin_(composited ? kShadowMargin : 0), field_(new QLineEdit(this)),
      tiles_(new SpaceSwitcherTileList(*controller_, std::move(colors), this)), noMatch_(new QLabel(this)),
      hints_(new QLabel(this)) {
    setObjectName(QStringLiteral("Deskmark.spaceSwitcher"));
    setWindowTitle(localized("Space を切り替え", "Switch Space"));
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_DeleteOnClose);

    field_->setPlaceholderText(localized("名前で絞り込み", "Filter by name"));
    field_->setClearButtonEnabled(false);
    field_->installEventFilter(this);
    noMatch_->setText(localized("該当する Space はありません", "No matching spaces"));
    noMatch_->setAlignment(Qt::AlignCenter);
    noMatch_->setEnabled(false);
    hints_->setText(localized("Return 切り替え　Tab 次へ　Esc 閉じる",
                              "Return switch   Tab next   Esc close"));
    hints_->setAlignment(Qt::AlignCenter);
    hints_->setEnabled(false);
    QFont small = hints_->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    hints_->setFont(small);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin_ + kPadding, margin_ + kPadding, margin_ + kPadding,
                               margin_ + kPadding);
    layout->setSpacing(8);
    layout->addWidget(field_);
    layout->addWidget(tiles_);
    layout->addWidget(noMatch_);
    layout->addWidget(hints_);

    connect(field_, &QLineEdit::textEdited, controller_.get(), &SpaceSwitcherController::setQuery);
    connect(controller_.get(), &SpaceSwitcherController::queryChanged, this,
            &SpaceSwitcherPanel::render);
    render();
}

SpaceSwitcherPanel::~SpaceSwitcherPanel() = default;

void SpaceSwitcherPanel::render() {
    if (field_->text() != controller_->query())
        field_->setText(controller_->query());
    tiles_->reload();
    const bool empty = controller_->visible().isEmpty();
    tiles_->setVisible(!empty);
    noMatch_->setVisible(empty);
    if (isVisible())
        fitToContent();
}

QRectF SpaceSwitcherPanel::panelRect() const {
    return QRectF(rect()).adjusted(margin_, margin_, -margin_, -margin_);
}

void SpaceSwitcherPanel::fitToContent() {
    // The panel keeps the width it opened with while the list narrows, so it does not
    // jump about under the typing; it only grows to fit.
    contentWidth_ = std::max({contentWidth_, tiles_->fittingWidth(), hints_->sizeHint().width()});
    const QPoint centre = geometry().center();
    resize(contentWidth_ + 2 * (margin_ + kPadding), layout()->sizeHint().height());
    // While open, the top edge stays put: the list shrinks and grows below the field.
    if (isVisible())
        move(centre.x() - width() / 2, y());
    if (!composited_) {
        QBitmap mask(size());
        mask.fill(Qt::color0);
        QPainter painter(&mask);
        painter.setBrush(Qt::color1);
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(panelRect(), kCornerRadius, kCornerRadius);
        painter.end();
        setMask(mask);
    }
}

void SpaceSwitcherPanel::present(const QRect& area) {
    const int rowsThatFit =
        std::max(3, (area.height() * 2 / 3 - 100) / SpaceSwitcherTileList::kRowHeight);
    tiles_->setMaxRows(rowsThatFit);
    fitToContent();
    move(area.center() - QPoint(width() / 2, height() / 2));
    show();
    raise();
    activateWindow();
    field_->setFocus();
}

bool SpaceSwitcherPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == field_) {
        if (event->type() == QEvent::InputMethod)
            composing_ = !static_cast<QInputMethodEvent*>(event)->preeditString().isEmpty();
        if (event->type() == QEvent::KeyPress) {
            const auto* key = static_cast<QKeyEvent*>(event);
            if (controller_->handleKey(key->key(), key->modifiers(), composing_))
                return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

bool SpaceSwitcherPanel::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate)
        controller_->windowDidResignKey();
    return QWidget::event(event);
}

void SpaceSwitcherPanel::paintEvent(QPaintEvent*) {
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF panel = panelRect();
        if (composited_) {
            // A soft shadow: rings of fading black around the panel.
            for (int ring = margin_; ring > 0; --ring) {
                QPainterPath shadow;
                shadow.addRoundedRect(panel.adjusted(-ring, -ring + 3, ring, ring + 3),
                                      kCornerRadius + ring, kCornerRadius + ring);
                painter.fillPath(shadow, QColor(0, 0, 0, 6));
            }
        }
        QPainterPath background;
        background.addRoundedRect(panel, kCornerRadius, kCornerRadius);
        QColor fill = palette().window().color();
        fill.setAlphaF(composited_ ? 0.96f : 1.0f);
        painter.fillPath(background, fill);
        painter.setPen(QPen(palette().mid().color(), 1));
        painter.drawPath(background);
    }
    Q_EMIT painted();
}

} // namespace deskmark
