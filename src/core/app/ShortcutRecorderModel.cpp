#include "core/app/ShortcutRecorderModel.h"

#include "core/app/Language.h"
#include "core/app/LinuxShortcutText.h"
#include "core/app/NotificationCenter.h"
#include "core/app/WindowManagerKeyBinding.h"

namespace deskmark {

namespace {

constexpr quint32 escapeKeyCode = 53;

// Keys that only change the others; the recorder waits for the key they go with.
bool isModifierKey(int qtKey) {
    switch (qtKey) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
    case Qt::Key_Mode_switch:
        return true;
    default:
        return false;
    }
}

} // namespace

ShortcutRecorderModel::ShortcutRecorderModel(SettingsStore& settings, HotKeyAction action,
                                             HotKeyRegistrar& registrar, QObject* parent)
    : QObject(parent), settings_(settings), action_(action), registrar_(registrar) {
    // The binding may also change elsewhere (another recorder, a reset).
    for (auto changed :
         {&SettingsStore::nameHotKeyChanged, &SettingsStore::presetHotKeyChanged,
          &SettingsStore::settingsHotKeyChanged, &SettingsStore::bookmarkHotKeyChanged,
          &SettingsStore::switcherHotKeyChanged})
        connect(&settings_, changed, this, &ShortcutRecorderModel::textsChanged);
}

QString ShortcutRecorderModel::buttonText() const {
    if (recording_)
        return localized("キーを入力…", "Type shortcut…");
    if (const std::optional<HotKey> key = binding())
        return linuxShortcutText(key->keyCode, key->modifiers);
    return localized("なし", "None");
}

QString ShortcutRecorderModel::noteText() const {
    if (!registrar_.boundByWindowManager())
        return {};
    return WindowManagerKeyBinding::settingsNote(action_, binding());
}

void ShortcutRecorderModel::start() {
    if (recording_)
        return;
    recording_ = true;
    errorText_.clear();
    // Posted before listening, so that only the other recorders stop.
    NotificationCenter::shared().post(QLatin1String(beganRecordingNotification));
    beganRecordingObserver_ = connect(&NotificationCenter::shared(), &NotificationCenter::posted,
                                      this, &ShortcutRecorderModel::otherRecorderBegan);
    Q_EMIT recordingChanged(true);
    Q_EMIT textsChanged();
}

void ShortcutRecorderModel::stop() {
    if (!recording_)
        return;
    disconnect(beganRecordingObserver_);
    recording_ = false;
    Q_EMIT recordingChanged(false);
    Q_EMIT textsChanged();
}

void ShortcutRecorderModel::clearBinding() {
    settings_.setHotKey(action_, std::nullopt);
}

bool ShortcutRecorderModel::keyPressed(int qtKey, quint32 nativeScanCode,
                                       Qt::KeyboardModifiers modifiers) {
    if (!recording_)
        return false;
    if (isModifierKey(qtKey))
        return true;
    const std::optional<quint32> keyCode = registrar_.keyCodeForScanCode(nativeScanCode);
    if (qtKey == Qt::Key_Escape || keyCode == escapeKeyCode) {
        stop();
        return true;
    }
    const quint32 carbonModifiers = HotKey::carbonModifiers(modifiers);
    if (carbonModifiers == 0 || !keyCode) {
        Q_EMIT beepRequested();
        return true;
    }
    const HotKey candidate{*keyCode, carbonModifiers};
    if (binding() == candidate) {
        stop();
        return true;
    }
    if (registrar_.registerHotKey(trialID, candidate.keyCode, candidate.modifiers)) {
        registrar_.unregisterHotKey(trialID);
        settings_.setHotKey(action_, candidate); // re-applies every hot key
        setErrorText(QString());
        stop();
    } else {
        setErrorText(localized("このキーは使用できません（他で使用中）", "Already in use"));
        Q_EMIT beepRequested();
    }
    return true;
}

void ShortcutRecorderModel::windowDeactivated() {
    if (!recording_)
        return;
    setErrorText(
        localized("記録を中断しました。そのキーは他のアプリに取られている可能性があります。",
                  "Recording stopped — another app may have captured that key."));
    stop();
}

void ShortcutRecorderModel::otherRecorderBegan(const QString& notification) {
    if (notification == QLatin1String(beganRecordingNotification))
        stop();
}

void ShortcutRecorderModel::setErrorText(const QString& text) {
    if (errorText_ == text)
        return;
    errorText_ = text;
    Q_EMIT textsChanged();
}

} // namespace deskmark
