#include "ui/settings/ColorPresetsPane.h"

#include "core/app/Language.h"
#include "core/model/PresetStore.h"
#include "core/model/RgbColor.h"
#include "ui/QtColor.h"
#include "ui/settings/SettingControls.h"

#include <QColorDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace deskmark {

namespace {
QString swatchStyle(const QString& hex) {
    return QStringLiteral("background-color: %1; min-width: 48px;")
        .arg(RgbColor::fromDeskmarkHex(hex).value_or(RgbColor{}).deskmarkHex());
}
} // namespace

ColorPresetsPane::ColorPresetsPane(const SettingsContext& context, QWidget* parent)
    : QWidget(parent), context_(context), model_(context.presets, context.projects) {
    QVBoxLayout* layout = SettingControls::page(this);
    list_ = new QListWidget(this);
    list_->setMinimumHeight(140);
    list_->setAccessibleName(localized("カラープリセット", "Color Presets"));
    layout->addWidget(list_);
    auto* listButtons = new QHBoxLayout();
    auto* add = new QPushButton(localized("プリセットを追加", "Add Preset"), this);
    delete_ = new QPushButton(localized("プリセットを削除", "Delete Preset"), this);
    listButtons->addWidget(add);
    listButtons->addWidget(delete_);
    listButtons->addStretch();
    layout->addLayout(listButtons);

    auto* form = new QFormLayout();
    layout->addLayout(form);
    name_ = new QLineEdit(this);
    form->addRow(localized("名前", "Name"), name_);
    background_ = addColorField(PresetsPaneModel::Part::Background);
    text_ = addColorField(PresetsPaneModel::Part::Text);
    for (const auto& [field, title] : {std::pair(background_, localized("背景色", "Background")),
                                       std::pair(text_, localized("文字色", "Text"))}) {
        auto* row = new QHBoxLayout();
        row->addWidget(field.swatch);
        row->addWidget(field.hex, 1);
        form->addRow(title, row);
    }
    error_ = new QLabel(localized("色は #RRGGBB の形で入力してください（例: #3366CC）。",
                                  "Enter a colour as #RRGGBB (for example #3366CC)."),
                        this);
    error_->setStyleSheet(QStringLiteral("color: #C0392B;"));
    error_->hide();
    form->addRow(QString(), error_);
    preview_ = new QLabel(this);
    preview_->setAlignment(Qt::AlignCenter);
    preview_->setMinimumHeight(32);
    form->addRow(localized("プレビュー", "Preview"), preview_);
    layout->addWidget(SettingControls::note(
        localized(
            "プリセットを削除すると、それを使っていたプロジェクトはデフォルトの色になります。",
            "Projects that used a deleted preset get the default colours."),
        this));

    connect(list_, &QListWidget::currentRowChanged, this, [this] { renderSelection(); });
    connect(add, &QPushButton::clicked, this, [this] {
        const QString id = model_.add();
        for (int i = 0; i < list_->count(); ++i) {
            if (list_->item(i)->data(Qt::UserRole).toString() == id)
                list_->setCurrentRow(i);
        }
    });
    connect(delete_, &QPushButton::clicked, this, [this] { model_.remove(selectedPreset()); });
    connect(name_, &QLineEdit::editingFinished, this, [this] {
        if (!model_.rename(selectedPreset(), name_->text()))
            renderSelection();
    });
    connect(&context.presets, &PresetStore::changed, this, &ColorPresetsPane::render);
    render();
}

ColorPresetsPane::ColorField ColorPresetsPane::addColorField(PresetsPaneModel::Part part) {
    ColorField field{new QPushButton(this), new QLineEdit(this)};
    field.swatch->setAccessibleName(part == PresetsPaneModel::Part::Background
                                        ? localized("背景色を選ぶ", "Choose Background Colour")
                                        : localized("文字色を選ぶ", "Choose Text Colour"));
    field.hex->setPlaceholderText(QStringLiteral("#RRGGBB"));
    connect(field.hex, &QLineEdit::editingFinished, this, [this, part] { commitHex(part); });
    connect(field.swatch, &QPushButton::clicked, this, [this, part, field] {
        const auto current = RgbColor::fromDeskmarkHex(field.hex->text()).value_or(RgbColor{});
        const QColor chosen = QColorDialog::getColor(qtColor(current), this);
        if (chosen.isValid())
            model_.setColor(selectedPreset(), part, chosen.name());
    });
    return field;
}

void ColorPresetsPane::commitHex(PresetsPaneModel::Part part) {
    const ColorField& field = part == PresetsPaneModel::Part::Background ? background_ : text_;
    const bool accepted = model_.setColor(selectedPreset(), part, field.hex->text());
    error_->setVisible(!accepted);
}

QString ColorPresetsPane::selectedPreset() const {
    const QListWidgetItem* item = list_->currentItem();
    return item ? item->data(Qt::UserRole).toString() : QString();
}

void ColorPresetsPane::render() {
    const QString selected = selectedPreset();
    {
        const QSignalBlocker blocker(list_);
        list_->clear();
        for (const ColorPreset& preset : context_.presets.presets()) {
            auto* item = new QListWidgetItem(preset.name, list_);
            item->setData(Qt::UserRole, preset.id);
            const ColorPair colors = context_.presets.colors(preset.id);
            item->setBackground(qtColor(colors.bg));
            item->setForeground(qtColor(colors.text));
            if (preset.id == selected)
                list_->setCurrentItem(item);
        }
        if (!list_->currentItem() && list_->count() > 0)
            list_->setCurrentRow(0);
    }
    renderSelection();
}

void ColorPresetsPane::renderSelection() {
    const std::optional<ColorPreset> preset = context_.presets.preset(selectedPreset());
    if (!preset)
        return;
    name_->setText(preset->name);
    for (const auto& [field, hex] :
         {std::pair(background_, preset->bgHex), std::pair(text_, preset->textHex)}) {
        field.hex->setText(hex);
        field.swatch->setStyleSheet(swatchStyle(hex));
    }
    error_->hide();
    const ColorPair colors = context_.presets.colors(preset->id);
    preview_->setText(preset->name);
    preview_->setStyleSheet(QStringLiteral("background-color: %1; color: %2; border-radius: 12px; "
                                           "padding: 4px 16px;")
                                .arg(colors.bg.deskmarkHex(), colors.text.deskmarkHex()));
    delete_->setEnabled(preset->id != PresetStore::kDefaultID);
}

} // namespace deskmark
