#include "ui/settings/SettingsWindow.h"

#include "core/app/Language.h"
#include "core/model/SettingsStore.h"
#include "ui/settings/BookmarksPane.h"
#include "ui/settings/ColorPresetsPane.h"
#include "ui/settings/CornerOverlayPane.h"
#include "ui/settings/GeneralPane.h"
#include "ui/settings/MissionControlPane.h"
#include "ui/settings/PermissionsPane.h"
#include "ui/settings/ProjectsPane.h"
#include "ui/settings/ShortcutsPane.h"
#include "ui/settings/SpacesPane.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QListWidget>
#include <QShortcut>
#include <QStackedWidget>

namespace deskmark {

SettingsWindow::SettingsWindow(SettingsContext context, QWidget* parent)
    : QWidget(parent, Qt::Window), context_(std::move(context)) {
    setWindowTitle(localized("Deskmark 設定", "Deskmark Settings"));
    setObjectName(QStringLiteral("Deskmark.settings"));
    auto* layout = new QHBoxLayout(this);
    paneList_ = new QListWidget(this);
    paneList_->setAccessibleName(localized("設定項目", "Settings panes"));
    stack_ = new QStackedWidget(this);
    layout->addWidget(paneList_);
    layout->addWidget(stack_, 1);

    const auto add = [this](const QString& title, QWidget* pane) {
        paneList_->addItem(title);
        stack_->addWidget(pane);
    };
    add(localized("一般", "General"), new GeneralPane(context_, stack_));
    add(localized("ショートカット", "Shortcuts"), new ShortcutsPane(context_, stack_));
    add(localized("プロジェクト", "Projects"), new ProjectsPane(context_, stack_));
    add(localized("ブックマーク", "Bookmarks"), new BookmarksPane(context_, stack_));
    add(localized("Space", "Spaces"), new SpacesPane(context_, stack_));
    add(localized("カラープリセット", "Color Presets"), new ColorPresetsPane(context_, stack_));
    add(localized("一覧画面とページャー", "Overview & Pager"),
        new MissionControlPane(context_, stack_));
    add(localized("コーナー表示", "Corner Overlay"), new CornerOverlayPane(context_, stack_));
    add(localized("権限", "Permissions"), new PermissionsPane(context_, stack_));
    paneList_->setFixedWidth(paneList_->sizeHintForColumn(0) + 32);
    connect(paneList_, &QListWidget::currentRowChanged, stack_, &QStackedWidget::setCurrentIndex);
    paneList_->setCurrentRow(0);

    auto* close = new QShortcut(QKeySequence::Close, this);
    connect(close, &QShortcut::activated, this, &QWidget::close);

    resize(900, 620);
    applyFloating();
    connect(&context_.settings, &SettingsStore::settingsWindowFloatingChanged, this,
            &SettingsWindow::applyFloating);
}

void SettingsWindow::present() {
    show();
    raise();
    activateWindow();
}

void SettingsWindow::showPane(Pane pane) {
    paneList_->setCurrentRow(int(pane));
}

SettingsWindow::Pane SettingsWindow::currentPane() const {
    return static_cast<Pane>(paneList_->currentRow());
}

QWidget* SettingsWindow::pane(Pane pane) const {
    return stack_->widget(int(pane));
}

void SettingsWindow::applyFloating() {
    const bool floating = context_.settings.settingsWindowFloating();
    if (floating == bool(windowFlags() & Qt::WindowStaysOnTopHint))
        return;
    const bool visible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, floating);
    if (visible)
        show(); // changing the flags hides the window
}

} // namespace deskmark
