#pragma once

#include "core/app/ShortcutRecorderModel.h"

#include <QPointer>
#include <QWidget>

class QLabel;
class QPushButton;
class QToolButton;

namespace deskmark {

// The control that records a hot key for one action: a button showing the shortcut
// (click to record), a clear button and an error line under them. While recording it
// holds the keyboard, so that every combination reaches it, even one that this or
// another program has registered as a hot key; the decisions are its model's.
class ShortcutRecorder : public QWidget {
    Q_OBJECT
public:
    ShortcutRecorder(SettingsStore& settings, HotKeyAction action, HotKeyRegistrar& registrar,
                     QWidget* parent = nullptr);

    ShortcutRecorderModel& model() { return model_; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void render();
    void recordingChanged(bool recording);

    ShortcutRecorderModel model_;
    QPushButton* button_;
    QToolButton* clearButton_;
    QLabel* errorLabel_;
    // The window manager's binding line, where it owns the keys; selectable for copying.
    QLabel* noteLabel_;
    QPointer<QWidget> watchedWindow_;
};

} // namespace deskmark
