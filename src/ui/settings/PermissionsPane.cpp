#include "ui/settings/PermissionsPane.h"

#include "core/app/Language.h"
#include "ui/settings/SettingControls.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace deskmark {

PermissionsPane::PermissionsPane(const SettingsContext& context, QWidget* parent)
    : QWidget(parent), context_(context) {
    QVBoxLayout* layout = SettingControls::page(this);
    layout->addWidget(SettingControls::note(
        localized(
            "X11 では特別な許可は要りません。Deskmark が使うデスクトップの機能と、その状態です。",
            "X11 needs no special permission. These are the desktop facilities Deskmark "
            "uses, and how they stand."),
        this));
    grid_ = new QGridLayout();
    grid_->setColumnStretch(2, 1);
    layout->addLayout(grid_);
    auto* again = new QPushButton(localized("もう一度調べる", "Check Again"), this);
    connect(again, &QPushButton::clicked, this, &PermissionsPane::render);
    layout->addWidget(again, 0, Qt::AlignLeft);
}

void PermissionsPane::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    render();
}

void PermissionsPane::render() {
    while (QLayoutItem* item = grid_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    int line = 0;
    for (const PermissionsPaneModel::Row& row :
         PermissionsPaneModel::rows(context_.sessionFacts())) {
        auto* mark = new QLabel(row.ok ? QStringLiteral("✓") : QStringLiteral("✗"), this);
        mark->setStyleSheet(row.ok ? QStringLiteral("color: #2E7D32;")
                                   : QStringLiteral("color: #C0392B;"));
        grid_->addWidget(mark, line, 0, Qt::AlignTop);
        grid_->addWidget(SettingControls::heading(row.title, this), line, 1, Qt::AlignTop);
        auto* state = new QLabel(row.state, this);
        state->setWordWrap(true);
        grid_->addWidget(state, line++, 2);
        if (!row.remedy.isEmpty())
            grid_->addWidget(SettingControls::note(row.remedy, this), line++, 2);
    }
}

} // namespace deskmark
