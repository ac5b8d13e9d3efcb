#include "ui/settings/CornerItemEditor.h"

#include "core/app/Language.h"
#include "core/model/SettingsStore.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

#include <cmath>

namespace deskmark {

namespace {
using Kind = CornerSettingsModel::Kind;

// Grid cell and arrow of each position, in case order; the middle cell stays empty.
struct Cell {
    int row;
    int column;
    const char* arrow;
};
constexpr std::array<Cell, 8> kCells{{{0, 0, "↖"},
                                      {0, 1, "↑"},
                                      {0, 2, "↗"},
                                      {1, 0, "←"},
                                      {1, 2, "→"},
                                      {2, 0, "↙"},
                                      {2, 1, "↓"},
                                      {2, 2, "↘"}}};
} // namespace

CornerItemEditor::CornerItemEditor(SettingsStore& settings, CornerSettingsModel model,
                                   CornerOverrideItem item, QWidget* parent)
    : QWidget(parent), model_(std::move(model)), item_(item) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    const QString title = CornerSettingsModel::label(item);
    switch (CornerSettingsModel::kind(item)) {
    case Kind::Toggle:
        toggle_ = new QCheckBox(
            model_.display() ? localized("このディスプレイに表示", "Show on this display") : title,
            this);
        layout->addWidget(toggle_);
        connect(toggle_, &QCheckBox::toggled, this,
                [this](bool on) { model_.setValue(item_, on); });
        break;
    case Kind::Number: {
        const CornerSettingsModel::Bounds range = CornerSettingsModel::bounds(item);
        slider_ = new QSlider(Qt::Horizontal, this);
        slider_->setRange(0, int(std::lround((range.maximum - range.minimum) / range.step)));
        slider_->setAccessibleName(title);
        slider_->setMinimumWidth(220);
        value_ = new QLabel(this);
        value_->setMinimumWidth(56);
        layout->addWidget(slider_, 1);
        layout->addWidget(value_);
        connect(slider_, &QSlider::valueChanged, this, [this, range](int step) {
            model_.setValue(item_, range.minimum + step * range.step);
        });
        break;
    }
    case Kind::Choice:
        if (item == CornerOverrideItem::Position) {
            buildPositionGrid();
            break;
        }
        choice_ = new QComboBox(this);
        choice_->setAccessibleName(title);
        for (const CornerSettingsModel::Option& option : CornerSettingsModel::options(item))
            choice_->addItem(option.label, option.raw);
        layout->addWidget(choice_);
        layout->addStretch();
        connect(choice_, &QComboBox::activated, this,
                [this](int index) { model_.setValue(item_, choice_->itemData(index)); });
        break;
    }
    onCornerChange(settings, this, [this] { render(); });
    render();
}

void CornerItemEditor::buildPositionGrid() {
    auto* grid = new QGridLayout();
    grid->setSpacing(2);
    positions_ = new QButtonGroup(this);
    const QList<CornerSettingsModel::Option> options = CornerSettingsModel::options(item_);
    for (qsizetype i = 0; i < options.size(); ++i) {
        auto* button = new QToolButton(this);
        button->setText(QString::fromUtf8(kCells[size_t(i)].arrow));
        button->setToolTip(options[i].label);
        button->setAccessibleName(options[i].label);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setFixedSize(32, 26);
        positions_->addButton(button, int(i));
        grid->addWidget(button, kCells[size_t(i)].row, kCells[size_t(i)].column);
    }
    static_cast<QHBoxLayout*>(layout())->addLayout(grid);
    static_cast<QHBoxLayout*>(layout())->addStretch();
    connect(positions_, &QButtonGroup::idClicked, this,
            [this, options](int id) { model_.setValue(item_, options[id].raw); });
}

void CornerItemEditor::render() {
    const QVariant value = model_.value(item_);
    if (toggle_) {
        const QSignalBlocker blocker(toggle_);
        toggle_->setChecked(value.toBool());
    } else if (slider_) {
        const CornerSettingsModel::Bounds range = CornerSettingsModel::bounds(item_);
        const QSignalBlocker blocker(slider_);
        slider_->setValue(int(std::lround((value.toDouble() - range.minimum) / range.step)));
        value_->setText(CornerSettingsModel::valueText(item_, value.toDouble()));
    } else if (choice_) {
        const QSignalBlocker blocker(choice_);
        choice_->setCurrentIndex(std::max(0, choice_->findData(value)));
    } else if (positions_) {
        const QList<CornerSettingsModel::Option> options = CornerSettingsModel::options(item_);
        for (qsizetype i = 0; i < options.size(); ++i) {
            if (options[i].raw == value.toString())
                positions_->button(int(i))->setChecked(true);
        }
    }
}

void CornerItemEditor::onCornerChange(SettingsStore& settings, QObject* receiver,
                                      const std::function<void()>& react) {
    using S = SettingsStore;
    for (const auto signal : {&S::cornerOverlayEnabledChanged,
                              &S::cornerOverlayEnabledByDisplayChanged,
                              &S::cornerPositionRawChanged,
                              &S::cornerPositionByDisplayChanged,
                              &S::cornerFontSizeChanged,
                              &S::cornerFontSizeByDisplayChanged,
                              &S::cornerOffsetYChanged,
                              &S::cornerOffsetYByDisplayChanged,
                              &S::cornerOffsetXChanged,
                              &S::cornerOffsetXByDisplayChanged,
                              &S::cornerMarginChanged,
                              &S::cornerMarginByDisplayChanged,
                              &S::cornerWeightRawChanged,
                              &S::cornerWeightByDisplayChanged,
                              &S::cornerVPaddingRawChanged,
                              &S::cornerVPaddingByDisplayChanged,
                              &S::cornerShapeRawChanged,
                              &S::cornerShapeByDisplayChanged,
                              &S::cornerColorModeRawChanged,
                              &S::cornerColorModeByDisplayChanged,
                              &S::cornerBgOpacityChanged,
                              &S::cornerBgOpacityByDisplayChanged,
                              &S::cornerOverridesByDisplayChanged})
        QObject::connect(&settings, signal, receiver, react);
}

} // namespace deskmark
