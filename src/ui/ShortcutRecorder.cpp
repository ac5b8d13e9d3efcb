#include "ui/ShortcutRecorder.h"

#include "core/app/Language.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

namespace deskmark {

ShortcutRecorder::ShortcutRecorder(SettingsStore& settings, HotKeyAction action,
                                   HotKeyRegistrar& registrar, QWidget* parent)
    : QWidget(parent), model_(settings, action, registrar), button_(new QPushButton(this)),
      clearButton_(new QToolButton(this)), errorLabel_(new QLabel(this)),
      noteLabel_(new QLabel(this)) {
    button_->setMinimumWidth(160);
    clearButton_->setText(QStringLiteral("✕"));
    clearButton_->setToolTip(localized("ショートカットを削除", "Clear shortcut"));
    clearButton_->setAutoRaise(true);
    errorLabel_->setWordWrap(true);
    QPalette errorPalette = errorLabel_->palette();
    errorPalette.setColor(QPalette::WindowText, QColor(0xD0, 0x30, 0x30));
    errorLabel_->setPalette(errorPalette);
    QFont small = errorLabel_->font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    errorLabel_->setFont(small);
    noteLabel_->setFont(small);
    noteLabel_->setWordWrap(true);
    noteLabel_->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(button_, 0, 0);
    layout->addWidget(clearButton_, 0, 1);
    layout->addWidget(errorLabel_, 1, 0, 1, 2);
    layout->addWidget(noteLabel_, 2, 0, 1, 2);

    connect(button_, &QPushButton::clicked, this, [this] {
        if (model_.isRecording())
            model_.stop();
        else
            model_.start();
    });
    connect(clearButton_, &QToolButton::clicked, &model_, &ShortcutRecorderModel::clearBinding);
    connect(&model_, &ShortcutRecorderModel::textsChanged, this, &ShortcutRecorder::render);
    connect(&model_, &ShortcutRecorderModel::recordingChanged, this,
            &ShortcutRecorder::recordingChanged);
    connect(&model_, &ShortcutRecorderModel::beepRequested, this, [] { QApplication::beep(); });
    render();
}

bool ShortcutRecorder::event(QEvent* event) {
    if (model_.isRecording()) {
        if (event->type() == QEvent::ShortcutOverride) {
            // Keeps window shortcuts and focus moves (Tab) from taking the keys.
            event->accept();
            return true;
        }
        if (event->type() == QEvent::KeyPress) {
            const auto* key = static_cast<QKeyEvent*>(event);
            if (model_.keyPressed(key->key(), key->nativeScanCode(), key->modifiers())) {
                event->accept();
                return true;
            }
        }
    }
    return QWidget::event(event);
}

bool ShortcutRecorder::eventFilter(QObject* watched, QEvent* event) {
    if (watched == watchedWindow_ && event->type() == QEvent::WindowDeactivate)
        model_.windowDeactivated();
    return QWidget::eventFilter(watched, event);
}

void ShortcutRecorder::hideEvent(QHideEvent* event) {
    model_.stop();
    QWidget::hideEvent(event);
}

void ShortcutRecorder::render() {
    button_->setText(model_.buttonText());
    button_->setDown(model_.isRecording());
    clearButton_->setEnabled(model_.binding().has_value());
    errorLabel_->setText(model_.errorText());
    errorLabel_->setVisible(!model_.errorText().isEmpty());
    noteLabel_->setText(model_.noteText());
    noteLabel_->setVisible(!model_.noteText().isEmpty());
    // A window does not grow for a label that wraps on its own: ask for the height of
    // every line at the width the control has.
    const int wrapWidth = std::max(width(), minimumSizeHint().width());
    errorLabel_->setMinimumHeight(std::max(0, errorLabel_->heightForWidth(wrapWidth)));
}

void ShortcutRecorder::recordingChanged(bool recording) {
    if (watchedWindow_)
        watchedWindow_->removeEventFilter(this);
    watchedWindow_ = nullptr;
    if (!recording) {
        releaseKeyboard();
        return;
    }
    QWidget* top = window();
    top->raise();
    top->activateWindow();
    grabKeyboard();
    watchedWindow_ = top;
    top->installEventFilter(this);
}

} // namespace deskmark
