#include "ui/NameEditorWindow.h"

#include <QComboBox>
#include <QCursor>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyle>
#include <QVBoxLayout>

namespace deskmark {

namespace {
QLabel* wrappedLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    return label;
}

// Hints and notes: the secondary text under a field.
QLabel* hintLabel(const QString& text, QWidget* parent) {
    QLabel* label = wrappedLabel(text, parent);
    label->setForegroundRole(QPalette::PlaceholderText);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 0.9);
    label->setFont(font);
    return label;
}

// The field with its hint below it, as one row of the form.
QWidget* withHint(QWidget* field, const QString& hint, QWidget* parent) {
    auto* box = new QWidget(parent);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(field);
    layout->addWidget(hintLabel(hint, box));
    return box;
}
} // namespace

NameEditorWindow::NameEditorWindow(std::unique_ptr<NameEditorModel> model, QWidget* parent)
    : QDialog(parent), model_(std::move(model)) {
    const NameEditorModel::Texts texts = NameEditorModel::texts();
    setWindowTitle(texts.title);
    // A title and a close button: a small form has nothing to gain from maximising.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowCloseButtonHint);
    setMinimumWidth(460);

    auto* title = new QLabel(texts.title, this);
    QFont titleFont = title->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.2);
    title->setFont(titleFont);
    QLabel* caption = hintLabel(texts.caption, this);

    projectPicker_ = new QComboBox(this);
    projectPicker_->setObjectName(QStringLiteral("projectPicker"));
    for (const NameEditorModel::ProjectEntry& entry : model_->projectEntries())
        projectPicker_->addItem(entry.title);
    nameField_ = new QLineEdit(this);
    nameField_->setObjectName(QStringLiteral("nameField"));
    presetPicker_ = new QComboBox(this);
    presetPicker_->setObjectName(QStringLiteral("presetPicker"));

    preview_ = new QLabel(this);
    preview_->setObjectName(QStringLiteral("preview"));
    preview_->setTextFormat(Qt::PlainText);
    auto* previewRow = new QHBoxLayout;
    previewRow->addWidget(preview_);
    previewRow->addStretch();

    note_ = wrappedLabel(QString(), this);
    note_->setObjectName(QStringLiteral("note"));
    note_->setTextFormat(Qt::PlainText);

    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(texts.projectLabel, projectPicker_);
    form->addRow(texts.nameLabel, withHint(nameField_, texts.nameHint, this));
    form->addRow(texts.presetLabel, withHint(presetPicker_, texts.presetHint, this));
    form->addRow(texts.previewLabel, previewRow);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* save = buttons->addButton(texts.save, QDialogButtonBox::AcceptRole);
    QPushButton* cancel = buttons->addButton(texts.cancel, QDialogButtonBox::RejectRole);
    // Return always saves, whichever control has the keyboard; Space presses a button.
    save->setAutoDefault(false);
    cancel->setAutoDefault(false);
    save->setDefault(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(caption);
    layout->addSpacing(8);
    layout->addLayout(form);
    layout->addWidget(note_);
    layout->addStretch();
    layout->addWidget(buttons);

    setTabOrder(projectPicker_, nameField_);
    setTabOrder(nameField_, presetPicker_);
    setTabOrder(presetPicker_, cancel);
    setTabOrder(cancel, save);

    connect(projectPicker_, &QComboBox::activated, this, [this](int index) {
        model_->selectProject(model_->projectEntries().value(index).projectID);
    });
    connect(nameField_, &QLineEdit::textEdited, model_.get(), &NameEditorModel::setName);
    connect(presetPicker_, &QComboBox::activated, this, [this](int index) {
        if (index >= 0 && index < shownPresets_.size())
            model_->setPresetID(shownPresets_[index].presetID);
    });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        model_->save();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(this, &QDialog::finished, this, &QObject::deleteLater);
    connect(model_.get(), &NameEditorModel::changed, this, &NameEditorWindow::render);

    render();
    nameField_->setFocus();
}

NameEditorWindow::~NameEditorWindow() = default;

void NameEditorWindow::present() {
    adjustSize();
    // The window keeps the size its form needs.
    setFixedWidth(width());
    fitHeight();
    QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (screen)
        setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size(),
                                        screen->availableGeometry()));
    show();
    raise();
    activateWindow();
}

// The wrapped texts need a height that depends on the width, which the window's minimum
// size does not follow: fix the height that the layout needs at the present width.
void NameEditorWindow::fitHeight() {
    setFixedHeight(layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width())
                                                 : sizeHint().height());
}

void NameEditorWindow::render() {
    {
        const QSignalBlocker blocker(projectPicker_);
        projectPicker_->setCurrentIndex(int(model_->selectedProjectIndex()));
    }
    // Only replace the text when the model's differs, so typing keeps the cursor.
    if (nameField_->text() != model_->name())
        nameField_->setText(model_->name());
    renderPresets();
    renderPreview();
    const std::optional<QString> note = model_->sharedNote();
    const QString noteText = note.value_or(QString());
    if (note_->text() != noteText || note_->isHidden() == note.has_value()) {
        note_->setText(noteText);
        note_->setVisible(note.has_value());
        // The note changes with the project choice; the window's height follows it.
        if (isVisible())
            fitHeight();
    }
}

void NameEditorWindow::renderPresets() {
    const QSignalBlocker blocker(presetPicker_);
    const QList<NameEditorModel::PresetEntry> presets = model_->presetEntries();
    if (presets != shownPresets_) {
        presetPicker_->clear();
        for (const NameEditorModel::PresetEntry& entry : presets)
            presetPicker_->addItem(entry.title);
        shownPresets_ = presets;
    }
    presetPicker_->setCurrentIndex(int(model_->selectedPresetIndex()));
}

void NameEditorWindow::renderPreview() {
    const NameEditorModel::Preview preview = model_->preview();
    preview_->setText(preview.text);
    if (preview.colors) {
        preview_->setStyleSheet(
            QStringLiteral("QLabel { background-color: %1; color: %2; "
                           "padding: 5px 12px; }")
                .arg(preview.colors->bg.deskmarkHex(), preview.colors->text.deskmarkHex()));
    } else {
        preview_->setStyleSheet(QString());
    }
}

} // namespace deskmark
