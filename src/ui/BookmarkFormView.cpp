#include "ui/BookmarkFormView.h"

#include "core/app/Language.h"
#include "ui/ApplicationChooser.h"
#include "ui/BookmarkTargetTextView.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace deskmark {

namespace {
constexpr int kWidth = 460;
constexpr int kTargetLines = 3;

QLabel* caption(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 0.9);
    label->setFont(font);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}
} // namespace

BookmarkFormView::BookmarkFormView(std::unique_ptr<BookmarkFormModel> model, QWidget* parent)
    : QDialog(parent),
      model_(std::move(model)),
      target_(new BookmarkTargetTextView(this)),
      label_(new QLineEdit(this)),
      group_(new QComboBox(this)),
      newGroup_(new QLineEdit(this)),
      appLabel_(new QLabel(this)),
      app_(new QComboBox(this)),
      appCaption_(caption(QString(), this)),
      duplicate_(new QLabel(BookmarkFormModel::duplicateMessage(), this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(model_->windowTitle());
    setFixedWidth(kWidth);

    target_->setPlainText(model_->target);
    target_->setTabChangesFocus(true);
    target_->setFixedHeight(target_->fontMetrics().lineSpacing() * kTargetLines + 12);
    label_->setText(model_->label);
    label_->setPlaceholderText(localized("省略可 — URL・パスから自動で付けます",
                                         "Optional — derived from URL/path"));
    newGroup_->setPlaceholderText(localized("例: Production", "e.g. Production"));
    duplicate_->setStyleSheet(QStringLiteral("color: #d0312d;"));
    duplicate_->setVisible(false);

    auto* form = new QFormLayout;
    form->addRow(localized("URL / パス", "URL / Path"), target_);
    form->addRow(QString(), caption(localized("URL、または / か ~ で始まるパスを入力します。",
                                              "Enter a URL, or a path starting with / or ~."),
                                    this));
    form->addRow(localized("名前", "Name"), label_);
    form->addRow(localized("グループ", "Group"), group_);
    form->addRow(QString(), newGroup_);
    form->addRow(appLabel_, app_);
    form->addRow(QString(), appCaption_);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(localized("キャンセル", "Cancel"), QDialogButtonBox::RejectRole);
    QPushButton* saveButton = buttons->addButton(localized("保存", "Save"), QDialogButtonBox::AcceptRole);
    saveButton->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &BookmarkFormView::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(duplicate_);
    layout->addWidget(buttons);

    connect(target_, &BookmarkTargetTextView::submitted, this, &BookmarkFormView::save);
    connect(target_, &QPlainTextEdit::textChanged, this, [this] {
        model_->target = target_->toPlainText();
        refreshAppOptions();
    });
    connect(label_, &QLineEdit::textChanged, this, [this](const QString& text) { model_->label = text; });
    connect(newGroup_, &QLineEdit::textChanged, this,
            [this](const QString& text) { model_->newGroup = text; });
    connect(group_, &QComboBox::activated, this, [this] {
        model_->group = group_->currentData().toString();
        newGroup_->setVisible(model_->group == BookmarkFormModel::newGroupTag);
        if (newGroup_->isVisible())
            newGroup_->setFocus();
    });
    connect(app_, &QComboBox::activated, this, [this] {
        const QString tag = app_->currentData().toString();
        if (tag == BookmarkFormModel::otherAppTag)
            chooseOtherApp();
        else
            model_->appBundleID = tag;
    });
    renderGroups();
    refreshAppOptions();
    target_->setFocus();
}

BookmarkFormView::~BookmarkFormView() = default;

void BookmarkFormView::renderGroups() {
    group_->clear();
    const QList<BookmarkFormModel::Option> options = model_->groupOptions();
    for (const BookmarkFormModel::Option& option : options) {
        if (option.tag == BookmarkFormModel::newGroupTag)
            group_->insertSeparator(group_->count());
        group_->addItem(option.title, option.tag);
    }
    group_->setCurrentIndex(std::max(0, group_->findData(model_->group)));
    newGroup_->setVisible(model_->group == BookmarkFormModel::newGroupTag);
}

void BookmarkFormView::refreshAppOptions() {
    const QList<BookmarkFormModel::Option> options = model_->appOptions();
    const bool shown = !options.isEmpty();
    appLabel_->setVisible(shown);
    app_->setVisible(shown);
    appCaption_->setVisible(shown);
    appLabel_->setText(model_->appPickerLabel());
    appCaption_->setText(model_->appPickerCaption());
    app_->clear();
    for (const BookmarkFormModel::Option& option : options)
        app_->addItem(option.title, option.tag);
    app_->setCurrentIndex(std::max(0, app_->findData(model_->appBundleID)));
}

void BookmarkFormView::chooseOtherApp() {
    const QString entry = ApplicationChooser::choose(this);
    if (!entry.isEmpty())
        model_->chooseOtherApp(entry);
    refreshAppOptions();
}

void BookmarkFormView::save() {
    switch (model_->save()) {
    case BookmarkFormModel::SaveResult::Saved:
        accept();
        break;
    case BookmarkFormModel::SaveResult::Duplicate:
        duplicate_->setVisible(true);
        break;
    case BookmarkFormModel::SaveResult::Invalid:
        QApplication::beep();
        break;
    }
}

} // namespace deskmark
