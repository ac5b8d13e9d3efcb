#include "ui/settings/ProjectsPane.h"

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
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace deskmark {

ProjectsPane::ProjectsPane(const SettingsContext& context, QWidget* parent)
    : QWidget(parent), context_(context), model_(context.projects, context.presets) {
    QVBoxLayout* layout = SettingControls::page(this);
    list_ = new QListWidget(this);
    list_->setMinimumHeight(160);
    list_->setAccessibleName(localized("プロジェクト", "Projects"));
    layout->addWidget(list_);

    auto* form = new QFormLayout();
    layout->addLayout(form);
    name_ = new QLineEdit(this);
    rename_ = new QPushButton(localized("名前を変更", "Rename"), this);
    auto* nameRow = new QHBoxLayout();
    nameRow->addWidget(name_, 1);
    nameRow->addWidget(rename_);
    form->addRow(localized("名前", "Name"), nameRow);
    preset_ = new QComboBox(this);
    form->addRow(localized("カラープリセット", "Color preset"), preset_);
    delete_ = new QPushButton(localized("プロジェクトを削除…", "Delete Project…"), this);
    form->addRow(QString(), delete_);
    layout->addWidget(
        SettingControls::note(localized("プロジェクトを削除すると、そのブックマークも削除され、表示"
                                        "していた Space は名前なしになります。",
                                        "Deleting a project deletes its bookmarks too; the Spaces "
                                        "that showed it become unnamed."),
                              this));

    connect(list_, &QListWidget::currentRowChanged, this, [this] { renderSelection(); });
    const auto rename = [this] {
        if (const auto id = selectedProject())
            model_.rename(*id, name_->text());
    };
    connect(rename_, &QPushButton::clicked, this, rename);
    connect(name_, &QLineEdit::returnPressed, this, rename);
    connect(preset_, &QComboBox::activated, this, [this] {
        if (const auto id = selectedProject())
            model_.setPreset(*id, preset_->currentData().toString());
    });
    connect(delete_, &QPushButton::clicked, this, [this] {
        const auto id = selectedProject();
        if (!id)
            return;
        const auto question = model_.deleteQuestion(*id, context_.spaces.liveSpaceUUIDs());
        if (!question)
            return;
        const auto answer = QMessageBox::question(
            this, localized("プロジェクトを削除", "Delete Project"), *question,
            QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel);
        if (answer == QMessageBox::Yes)
            model_.deleteProject(*id);
    });

    connect(&context.projects, &ProjectStore::changed, this, &ProjectsPane::render);
    connect(&context.presets, &PresetStore::changed, this, &ProjectsPane::render);
    connect(&context.windowServer, &WindowServer::activeSpaceChanged, this, &ProjectsPane::render);
    render();
}

std::optional<QUuid> ProjectsPane::selectedProject() const {
    const QListWidgetItem* item = list_->currentItem();
    if (!item)
        return std::nullopt;
    return item->data(Qt::UserRole).toUuid();
}

void ProjectsPane::render() {
    const std::optional<QUuid> selected = selectedProject();
    {
        const QSignalBlocker blocker(list_);
        list_->clear();
        for (const ProjectsPaneModel::Row& row : model_.rows(context_.spaces.liveSpaceUUIDs())) {
            const QString text = localized("%1　（Space %2 個・ブックマーク %3 件）",
                                           "%1   (%2 Spaces, %3 bookmarks)")
                                     .arg(row.name)
                                     .arg(row.liveSpaceCount)
                                     .arg(row.bookmarkCount);
            auto* item = new QListWidgetItem(text, list_);
            item->setData(Qt::UserRole, row.id);
            item->setBackground(qtColor(row.colors.bg));
            item->setForeground(qtColor(row.colors.text));
            if (selected == row.id)
                list_->setCurrentItem(item);
        }
        if (!list_->currentItem() && list_->count() > 0)
            list_->setCurrentRow(0);
    }
    renderSelection();
}

void ProjectsPane::renderSelection() {
    const std::optional<QUuid> id = selectedProject();
    const std::optional<Project> project = id ? context_.projects.project(*id) : std::nullopt;
    name_->setText(project ? project->name : QString());
    SettingControls::fillPresets(preset_, context_.presets,
                                 project ? project->presetID.value_or(PresetStore::kDefaultID)
                                         : PresetStore::kDefaultID);
    for (QWidget* w : {static_cast<QWidget*>(name_), static_cast<QWidget*>(rename_),
                       static_cast<QWidget*>(preset_), static_cast<QWidget*>(delete_)})
        w->setEnabled(project.has_value());
}

} // namespace deskmark
