#include "core/app/HotKeyManager.h"

#include <limits>

namespace deskmark {

HotKeyManager::HotKeyManager(HotKeyRegistrar& registrar, QObject* parent)
    : QObject(parent), registrar_(registrar) {
    connect(&registrar_, &HotKeyRegistrar::pressed, this, &HotKeyManager::fire);
}

quint32 HotKeyManager::addHandler(Action action) {
    if (nextID_ == std::numeric_limits<quint32>::max())
        qFatal("Deskmark: hot-key ids exhausted");
    const quint32 id = nextID_++;
    handlers_.insert(id, std::move(action));
    return id;
}

void HotKeyManager::set(const std::optional<HotKey>& key, quint32 id) {
    registrar_.unregisterHotKey(id);
    registered_.remove(id);
    if (key && registrar_.registerHotKey(id, key->keyCode, key->modifiers))
        registered_.insert(id);
}

void HotKeyManager::fire(quint32 id) const {
    // Ids without a handler (a shortcut recorder's trial registration) are ignored.
    const auto it = handlers_.constFind(id);
    if (it != handlers_.constEnd() && *it)
        (*it)();
}

} // namespace deskmark
