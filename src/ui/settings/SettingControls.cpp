#include "ui/settings/SettingControls.h"

#include "core/model/PresetStore.h"

#include <QLabel>
#include <QPalette>
#include <QScrollArea>
#include <QVBoxLayout>

namespace deskmark {

void SettingControls::fillPresets(QComboBox* box, const PresetStore& presets,
                                  const QString& presetID) {
    const QSignalBlocker blocker(box);
    box->clear();
    for (const ColorPreset& preset : presets.presets())
        box->addItem(preset.name, preset.id);
    box->setCurrentIndex(std::max(0, box->findData(presetID)));
}

QLabel* SettingControls::note(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QLabel* SettingControls::heading(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

QVBoxLayout* SettingControls::page(QWidget* pane) {
    auto* outer = new QVBoxLayout(pane);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* scroll = new QScrollArea(pane);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus); // Tab goes from the pane list into the pane
    auto* content = new QWidget(scroll);
    scroll->setWidget(content);
    outer->addWidget(scroll);
    auto* layout = new QVBoxLayout(content);
    layout->setAlignment(Qt::AlignTop);
    return layout;
}

} // namespace deskmark
