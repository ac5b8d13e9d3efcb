#include "platform/fake/FakeHotKeyRegistrar.h"

#include "core/model/KeyTable.h"

namespace deskmark {

namespace {
quint64 combinationKey(quint32 keyCode, quint32 modifiers) {
    return (quint64(keyCode) << 32) | modifiers;
}
} // namespace

bool FakeHotKeyRegistrar::registerHotKey(quint32 id, quint32 keyCode, quint32 carbonModifiers) {
    registrations_.remove(id);
    const Combination wanted{keyCode, carbonModifiers};
    if (takenByOthers_.contains(combinationKey(keyCode, carbonModifiers)))
        return false;
    for (const Combination& held : std::as_const(registrations_)) {
        if (held == wanted)
            return false;
    }
    registrations_.insert(id, wanted);
    return true;
}

void FakeHotKeyRegistrar::unregisterHotKey(quint32 id) {
    registrations_.remove(id);
}

std::optional<quint32> FakeHotKeyRegistrar::keyCodeForScanCode(quint32 nativeScanCode) const {
    if (!KeyTable::find(nativeScanCode))
        return std::nullopt;
    return nativeScanCode;
}

void FakeHotKeyRegistrar::setTakenByOthers(quint32 keyCode, quint32 carbonModifiers) {
    takenByOthers_.insert(combinationKey(keyCode, carbonModifiers));
}

std::optional<FakeHotKeyRegistrar::Combination>
FakeHotKeyRegistrar::registration(quint32 id) const {
    const auto it = registrations_.constFind(id);
    if (it == registrations_.constEnd())
        return std::nullopt;
    return *it;
}

void FakeHotKeyRegistrar::press(quint32 keyCode, quint32 carbonModifiers) {
    const Combination pressedKeys{keyCode, carbonModifiers};
    for (auto it = registrations_.constBegin(); it != registrations_.constEnd(); ++it) {
        if (*it == pressedKeys) {
            Q_EMIT pressed(it.key());
            return;
        }
    }
}

} // namespace deskmark
