#include "ui/BookmarkDeleteConfirmView.h"

#include "core/app/Language.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace deskmark {

namespace {
constexpr int kWidth = 400;
constexpr int kSymbol = 32;
} // namespace

BookmarkDeleteConfirmView::BookmarkDeleteConfirmView(const QString& shownLabel, QWidget* parent)
    : QDialog(parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(localized("ブックマークを削除", "Delete Bookmark"));
    setFixedWidth(kWidth);
    auto* symbol = new QLabel(this);
    symbol->setPixmap(QIcon::fromTheme(QStringLiteral("dialog-warning"),
                                       style()->standardIcon(QStyle::SP_MessageBoxWarning))
                          .pixmap(kSymbol, kSymbol));
    auto* question = new QLabel(localized("「", "Delete “") + shownLabel +
                                    localized("」を削除しますか？", "”?"),
                                this);
    question->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* remove = buttons->addButton(localized("削除", "Delete"), QDialogButtonBox::AcceptRole);
    buttons->addButton(localized("キャンセル", "Cancel"), QDialogButtonBox::RejectRole);
    remove->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        Q_EMIT deleteConfirmed();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* top = new QHBoxLayout;
    top->addWidget(symbol, 0, Qt::AlignTop);
    top->addWidget(question, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(buttons);
}

} // namespace deskmark
