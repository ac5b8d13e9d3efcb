#pragma once

#include "core/app/HotKeyRegistrar.h"
#include "core/model/HotKeyAction.h"
#include "core/model/SettingsStore.h"

#include <QObject>
#include <QString>

namespace deskmark {

// What a shortcut recorder control decides: it records a new hot key for one of the
// five hot-key settings from the keys the user presses.
//
// While recording, a press of Escape ends recording without change; a key without any
// modifier (Shift alone counts) or a key that cannot be a hot key beeps and recording
// goes on; the bound combination itself ends recording; any other combination is tried
// with a registration of its own id and, if the registrar grants it, released at once
// and stored, else reported as in use. Only one recorder records at a time: starting
// posts beganRecordingNotification, which stops every other one. Losing the window's
// focus while recording stops with a message, since another program has most likely
// taken the keys.
class ShortcutRecorderModel : public QObject {
    Q_OBJECT
public:
    static constexpr const char* beganRecordingNotification =
        "Deskmark.ShortcutRecorder.beganRecording";
    // The id of the trial registration, apart from the live hot keys' ids.
    static constexpr quint32 trialID = 65535;

    ShortcutRecorderModel(SettingsStore& settings, HotKeyAction action, HotKeyRegistrar& registrar,
                          QObject* parent = nullptr);

    bool isRecording() const { return recording_; }
    std::optional<HotKey> binding() const { return settings_.hotKey(action_); }
    // "Type shortcut…" while recording, else the bound shortcut as Linux writes it, or
    // "None".
    QString buttonText() const;
    // The last refusal; empty when there is none.
    QString errorText() const { return errorText_; }
    // Where the window manager owns the keys: the line that binds the shortcut in its
    // configuration. Empty where Deskmark holds its hot keys itself.
    QString noteText() const;

    void start();
    void stop();
    // The clear control: no hot key for this action.
    void clearBinding();
    // A key press, with Qt's key, the native scan code and the modifiers held. Returns
    // true when the press was used and must go no further; presses while idle pass.
    bool keyPressed(int qtKey, quint32 nativeScanCode, Qt::KeyboardModifiers modifiers);
    // The recorder's window stopped being the active one.
    void windowDeactivated();

Q_SIGNALS:
    // isRecording() changed: the control takes or releases the keyboard.
    void recordingChanged(bool recording);
    // buttonText() or errorText() may have changed.
    void textsChanged();
    void beepRequested();

private:
    void otherRecorderBegan(const QString& notification);
    void setErrorText(const QString& text);

    SettingsStore& settings_;
    const HotKeyAction action_;
    HotKeyRegistrar& registrar_;
    bool recording_ = false;
    QString errorText_;
    QMetaObject::Connection beganRecordingObserver_;
};

} // namespace deskmark
