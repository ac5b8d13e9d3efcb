#include "ui/settings/BookmarkAppsSection.h"

#include "core/app/Language.h"
#include "core/bookmarks/AppCandidateStore.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "core/model/SettingsStore.h"
#include "ui/settings/SettingControls.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace deskmark {

namespace {
// Fills a picker with the installed applications of a table, keeping the chosen one
// listed even when it is not installed.
void fillApps(QComboBox* box, const QList<CandidateApp>& installed, const QString& chosen) {
    const QSignalBlocker blocker(box);
    box->clear();
    for (const CandidateApp& app : installed)
        box->addItem(app.name, app.bundleID);
    if (box->findData(chosen) < 0)
        box->addItem(chosen.isEmpty() ? localized("（なし）", "(None)") : chosen, chosen);
    box->setCurrentIndex(box->findData(chosen));
}
} // namespace

BookmarkAppsSection::BookmarkAppsSection(const SettingsContext& context, QWidget* parent)
    : QWidget(parent), context_(context), folderApps_(context.candidates, context.settings) {
    SettingsStore& s = context.settings;
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* form = new QFormLayout();
    layout->addLayout(form);
    terminal_ = new QComboBox(this);
    editor_ = new QComboBox(this);
    form->addRow(localized("ターミナル", "Terminal"), terminal_);
    form->addRow(localized("エディタ", "Editor"), editor_);
    connect(terminal_, &QComboBox::activated, this,
            [this, &s] { s.setTerminalBundleID(terminal_->currentData().toString()); });
    connect(editor_, &QComboBox::activated, this,
            [this, &s] { s.setEditorBundleID(editor_->currentData().toString()); });
    connect(&s, &SettingsStore::terminalBundleIDChanged, this, &BookmarkAppsSection::renderPickers);
    connect(&s, &SettingsStore::editorBundleIDChanged, this, &BookmarkAppsSection::renderPickers);

    layout->addWidget(
        SettingControls::heading(localized("フォルダを開くアプリ", "Folder applications"), this));
    layout->addWidget(SettingControls::note(
        localized(
            "フォルダの行で Enter を押したときに出るアプリのメニューです。チェックを外したアプリは"
            "表示されず、▲▼ "
            "で順番を変えられます（ファイルマネージャは常に先頭、「その他…」は常に末尾）。",
            "The app menu shown when you press Enter on a folder row. Unchecked apps are "
            "omitted, and ▲▼ changes the order (the file manager is always first, “Other…” always "
            "last)."),
        this));
    auto* row = new QHBoxLayout();
    folderList_ = new QListWidget(this);
    folderList_->setMinimumHeight(110);
    folderList_->setAccessibleName(localized("フォルダを開くアプリ", "Folder applications"));
    row->addWidget(folderList_, 1);
    auto* buttons = new QVBoxLayout();
    auto* up = new QPushButton(QStringLiteral("▲"), this);
    up->setAccessibleName(localized("上へ", "Move Up"));
    auto* down = new QPushButton(QStringLiteral("▼"), this);
    down->setAccessibleName(localized("下へ", "Move Down"));
    buttons->addWidget(up);
    buttons->addWidget(down);
    buttons->addStretch();
    row->addLayout(buttons);
    layout->addLayout(row);
    const auto move = [this](bool upward) {
        const QListWidgetItem* item = folderList_->currentItem();
        const QString id = item ? item->data(Qt::UserRole).toString() : QString();
        if (!id.isEmpty())
            folderApps_.move(id, upward);
    };
    connect(up, &QPushButton::clicked, this, [move] { move(true); });
    connect(down, &QPushButton::clicked, this, [move] { move(false); });
    connect(folderList_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        const QString id = item->data(Qt::UserRole).toString();
        if (!id.isEmpty())
            folderApps_.setShown(id, item->checkState() == Qt::Checked);
    });
    connect(&context.candidates, &AppCandidateStore::changed, this, [this] {
        renderPickers();
        renderFolderApps();
    });
    connect(&s, &SettingsStore::folderAppOrderChanged, this,
            &BookmarkAppsSection::renderFolderApps);
    connect(&s, &SettingsStore::folderAppHiddenChanged, this,
            &BookmarkAppsSection::renderFolderApps);
    renderPickers();
    renderFolderApps();
}

void BookmarkAppsSection::renderPickers() {
    fillApps(terminal_, BookmarkOpener::installedTerminals(), context_.settings.terminalBundleID());
    fillApps(editor_, BookmarkOpener::installedEditors(), context_.settings.editorBundleID());
}

void BookmarkAppsSection::renderFolderApps() {
    const AppCandidateStore& candidates = context_.candidates;
    const QListWidgetItem* current = folderList_->currentItem();
    const QString selected = current ? current->data(Qt::UserRole).toString() : QString();
    const QSignalBlocker blocker(folderList_);
    folderList_->clear();
    if (candidates.finder()) {
        auto* finder = new QListWidgetItem(candidates.finder()->name, folderList_);
        finder->setFlags(Qt::ItemIsEnabled);
    }
    const QStringList& hidden = context_.settings.folderAppHidden();
    for (const AppCandidateStore::App& app : candidates.orderedFolderApps()) {
        auto* item = new QListWidgetItem(app.name, folderList_);
        item->setData(Qt::UserRole, app.bundleID);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(hidden.contains(app.bundleID) ? Qt::Unchecked : Qt::Checked);
        if (app.bundleID == selected)
            folderList_->setCurrentItem(item);
    }
}

} // namespace deskmark
