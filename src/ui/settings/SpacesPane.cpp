#include "ui/settings/SpacesPane.h"

#include "core/app/Language.h"
#include "core/model/PresetStore.h"
#include "core/model/ProjectStore.h"
#include "core/spaces/SpaceStore.h"
#include "core/spaces/WindowServer.h"
#include "ui/QtColor.h"
#include "ui/settings/SettingControls.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace deskmark {

SpacesPane::SpacesPane(const SettingsContext& context, QWidget* parent)
    : QWidget(parent), context_(context), model_(context.projects, context.presets) {
    QVBoxLayout* layout = SettingControls::page(this);
    layout->addWidget(SettingControls::note(SpacesPaneModel::unnamedNote(), this));
    list_ = new QListWidget(this);
    list_->setMinimumHeight(160);
    list_->setAccessibleName(localized("Space", "Spaces"));
    layout->addWidget(list_);

    auto* form = new QFormLayout();
    layout->addLayout(form);
    project_ = new QComboBox(this);
    unassign_ = new QPushButton(localized("割り当てを解除", "Unassign"), this);
    auto* projectRow = new QHBoxLayout();
    projectRow->addWidget(project_, 1);
    projectRow->addWidget(unassign_);
    form->addRow(localized("プロジェクト", "Project"), projectRow);

    name_ = new QLineEdit(this);
    name_->setPlaceholderText(localized("プロジェクト名", "Project name"));
    form->addRow(localized("名前", "Name"), name_);
    preset_ = new QComboBox(this);
    form->addRow(localized("カラープリセット", "Color preset"), preset_);
    auto* buttons = new QHBoxLayout();
    create_ = new QPushButton(localized("新規プロジェクトとして作成", "Create New Project"), this);
    rename_ = new QPushButton(localized("プロジェクト名を変更", "Rename Project"), this);
    buttons->addWidget(create_);
    buttons->addWidget(rename_);
    buttons->addStretch();
    form->addRow(QString(), buttons);

    auto* staleRow = new QHBoxLayout();
    stale_ = new QLabel(this);
    removeStale_ = new QPushButton(localized("割り当てを削除", "Remove Assignments"), this);
    staleRow->addWidget(stale_, 1);
    staleRow->addWidget(removeStale_);
    layout->addLayout(staleRow);

    connect(list_, &QListWidget::currentRowChanged, this, [this] { renderSelection(); });
    connect(project_, &QComboBox::activated, this, [this](int index) {
        const auto space = selectedSpace();
        if (!space)
            return;
        const QUuid id = project_->itemData(index).toUuid();
        if (id.isNull())
            context_.projects.unassign(*space);
        else
            context_.projects.assign(id, *space);
    });
    connect(unassign_, &QPushButton::clicked, this, [this] {
        if (const auto space = selectedSpace())
            context_.projects.unassign(*space);
    });
    connect(preset_, &QComboBox::activated, this, [this] {
        const auto space = selectedSpace();
        if (space && context_.projects.projectForSpace(*space))
            context_.projects.setPreset(chosenPreset(), *space);
    });
    connect(create_, &QPushButton::clicked, this, [this] {
        if (const auto space = selectedSpace())
            model_.createProject(name_->text(), chosenPreset(), *space);
    });
    const auto rename = [this] {
        const auto space = selectedSpace();
        if (space && !name_->text().trimmed().isEmpty())
            context_.projects.setName(name_->text(), *space);
    };
    connect(rename_, &QPushButton::clicked, this, rename);
    connect(name_, &QLineEdit::returnPressed, this, [this, rename] {
        const auto space = selectedSpace();
        if (space && context_.projects.projectForSpace(*space))
            rename();
        else if (space)
            model_.createProject(name_->text(), chosenPreset(), *space);
    });
    connect(name_, &QLineEdit::textChanged, this, [this] { renderButtons(); });
    connect(removeStale_, &QPushButton::clicked, this,
            [this] { model_.removeStaleAssignments(context_.spaces.liveSpaceUUIDs()); });

    connect(&context.projects, &ProjectStore::changed, this, &SpacesPane::render);
    connect(&context.presets, &PresetStore::changed, this, &SpacesPane::render);
    connect(&context.windowServer, &WindowServer::activeSpaceChanged, this, &SpacesPane::render);
    render();
}

std::optional<QString> SpacesPane::selectedSpace() const {
    const QListWidgetItem* item = list_->currentItem();
    if (!item)
        return std::nullopt;
    return item->data(Qt::UserRole).toString();
}

std::optional<QString> SpacesPane::chosenPreset() const {
    const QString id = preset_->currentData().toString();
    return id.isEmpty() ? std::nullopt : std::optional(id);
}

void SpacesPane::render() {
    const std::optional<QString> selected = selectedSpace();
    {
        const QSignalBlocker blocker(list_);
        list_->clear();
        for (const SpacesPaneModel::Row& row : model_.rows(context_.spaces.displays())) {
            QString text = row.title;
            if (row.current)
                text += localized("（現在）", " (current)");
            auto* item = new QListWidgetItem(text, list_);
            item->setData(Qt::UserRole, row.spaceUUID);
            if (row.colors) {
                item->setBackground(qtColor(row.colors->bg));
                item->setForeground(qtColor(row.colors->text));
            }
            if (selected == row.spaceUUID)
                list_->setCurrentItem(item);
        }
        if (!list_->currentItem() && list_->count() > 0)
            list_->setCurrentRow(0);
    }
    const QStringList stale = model_.staleAssignments(context_.spaces.liveSpaceUUIDs());
    stale_->setText(localized("存在しない Space への割り当て: %1 件",
                              "Assignments to Spaces that no longer exist: %1")
                        .arg(stale.size()));
    stale_->setVisible(!stale.isEmpty());
    removeStale_->setVisible(!stale.isEmpty());
    renderSelection();
}

void SpacesPane::renderSelection() {
    const std::optional<QString> space = selectedSpace();
    const std::optional<Project> project =
        space ? context_.projects.projectForSpace(*space) : std::nullopt;
    {
        const QSignalBlocker blocker(project_);
        project_->clear();
        project_->addItem(localized("（なし）", "(None)"), QUuid());
        for (const Project& p : context_.projects.sortedProjects())
            project_->addItem(p.name, p.id);
        project_->setCurrentIndex(project ? std::max(0, project_->findData(project->id)) : 0);
    }
    SettingControls::fillPresets(preset_, context_.presets,
                                 project ? project->presetID.value_or(PresetStore::kDefaultID)
                                         : preset_->currentData().toString());
    name_->setText(project ? project->name : QString());
    renderButtons();
}

void SpacesPane::renderButtons() {
    const std::optional<QString> space = selectedSpace();
    const std::optional<Project> project =
        space ? context_.projects.projectForSpace(*space) : std::nullopt;
    const bool named = !name_->text().trimmed().isEmpty();
    for (QWidget* w : {static_cast<QWidget*>(project_), static_cast<QWidget*>(name_),
                       static_cast<QWidget*>(preset_)})
        w->setEnabled(space.has_value());
    unassign_->setEnabled(project.has_value());
    create_->setEnabled(space && named);
    rename_->setEnabled(project && named && name_->text().trimmed() != project->name);
}

} // namespace deskmark
