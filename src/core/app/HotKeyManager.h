#pragma once

#include "core/app/HotKeyRegistrar.h"
#include "core/model/HotKey.h"

#include <QHash>
#include <QSet>
#include <QObject>

#include <functional>
#include <optional>

namespace deskmark {

// The program's live hot keys: hands out ids for actions, registers a hot key under
// an id through the platform's registrar and runs the id's action when it is pressed.
class HotKeyManager : public QObject {
    Q_OBJECT
public:
    using Action = std::function<void()>;

    explicit HotKeyManager(HotKeyRegistrar& registrar, QObject* parent = nullptr);

    // Keeps action under a new id, counting from 1, and returns the id.
    quint32 addHandler(Action action);
    // Releases what id holds, then registers key under it. No key leaves id without a
    // hot key; a key that cannot be registered (held elsewhere, no such key on this
    // platform) quietly does nothing when pressed.
    void set(const std::optional<HotKey>& key, quint32 id);
    // Whether the last key set under id was registered; false when none was set.
    bool isRegistered(quint32 id) const { return registered_.contains(id); }

private:
    void fire(quint32 id) const;

    HotKeyRegistrar& registrar_;
    QHash<quint32, Action> handlers_;
    quint32 nextID_ = 1;
    QSet<quint32> registered_;
};

} // namespace deskmark
