#include "ui/GroupNameView.h"

#include "core/app/Language.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace deskmark {

namespace {
constexpr int kWidth = 420;
}

GroupNameView::GroupNameView(GroupNameRequest request, QWidget* parent)
    : QDialog(parent), request_(std::move(request)), name_(new QLineEdit(this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(request_.title);
    setFixedWidth(kWidth);
    auto* title = new QLabel(QStringLiteral("<b>%1</b>").arg(request_.title.toHtmlEscaped()), this);
    auto* message = new QLabel(request_.message, this);
    message->setWordWrap(true);
    name_->setText(request_.initial);
    name_->setPlaceholderText(localized("例: Production", "e.g. Production"));
    name_->selectAll();
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(localized("キャンセル", "Cancel"), QDialogButtonBox::RejectRole);
    QPushButton* commitButton = buttons->addButton(request_.buttonTitle, QDialogButtonBox::AcceptRole);
    commitButton->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &GroupNameView::commit);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(message);
    layout->addWidget(name_);
    layout->addWidget(buttons);
}

void GroupNameView::commit() {
    if (request_.commit(name_->text()))
        accept();
    else
        QApplication::beep();
}

} // namespace deskmark
