#pragma once

#include "core/app/HotKeyRegistrar.h"

#include <QHash>
#include <QSet>

#include <optional>

namespace deskmark {

// Hot keys in memory. Tests decide which combinations other programs hold and press
// keys by hand; every key code counts as mappable. Its scan codes are the key codes of
// the named keys (KeyTable) themselves.
class FakeHotKeyRegistrar : public HotKeyRegistrar {
    Q_OBJECT
public:
    struct Combination {
        quint32 keyCode = 0;
        quint32 modifiers = 0;
        friend bool operator==(const Combination&, const Combination&) = default;
    };

    using HotKeyRegistrar::HotKeyRegistrar;

    bool registerHotKey(quint32 id, quint32 keyCode, quint32 carbonModifiers) override;
    void unregisterHotKey(quint32 id) override;
    std::optional<quint32> keyCodeForScanCode(quint32 nativeScanCode) const override;
    bool boundByWindowManager() const override { return boundByWindowManager_; }
    void setBoundByWindowManager(bool bound) { boundByWindowManager_ = bound; }

    // Marks a combination as held by another program.
    void setTakenByOthers(quint32 keyCode, quint32 carbonModifiers);
    // What id holds now, if anything.
    std::optional<Combination> registration(quint32 id) const;
    // The user presses the combination: pressed(id) for the id that holds it.
    void press(quint32 keyCode, quint32 carbonModifiers);

private:
    QHash<quint32, Combination> registrations_;
    QSet<quint64> takenByOthers_;
    bool boundByWindowManager_ = false;
};

} // namespace deskmark
