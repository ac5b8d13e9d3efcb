#include "core/app/HotKeyBindings.h"

namespace deskmark {

namespace {
std::size_t indexOf(HotKeyAction action) {
    return static_cast<std::size_t>(action);
}

void run(const std::function<void()>& action) {
    if (action)
        action();
}
} // namespace

HotKeyBindings::HotKeyBindings(SettingsStore& settings, HotKeyManager& manager)
    : settings_(settings), manager_(manager) {}

HotKeyBindings::~HotKeyBindings() {
    if (tokens_.front() != 0)
        settings_.onHotKeysChanged = nullptr;
}

void HotKeyBindings::setup(Actions actions, MenuMirror mirror) {
    actions_ = std::move(actions);
    mirror_ = std::move(mirror);
    for (const HotKeyAction action : allHotKeyActions)
        tokens_[indexOf(action)] = manager_.addHandler(handlerFor(action));
    apply();
    settings_.onHotKeysChanged = [this] { apply(); };
}

void HotKeyBindings::apply() {
    for (const HotKeyAction action : allHotKeyActions)
        manager_.set(settings_.hotKey(action), token(action));
    if (!mirror_)
        return;
    for (const HotKeyAction action : allHotKeyActions) {
        // A key that a menu cannot show (a code without a name) leaves its item bare.
        const std::optional<HotKey> key = settings_.hotKey(action);
        mirror_(action, key && key->menuKeyEquivalent() ? key : std::nullopt);
    }
}

quint32 HotKeyBindings::token(HotKeyAction action) const {
    return tokens_[indexOf(action)];
}

void HotKeyBindings::setAdvanceOpenSwitcher(std::function<bool()> advance) {
    advanceOpenSwitcher_ = std::move(advance);
}

std::function<void()> HotKeyBindings::handlerFor(HotKeyAction action) const {
    switch (action) {
    case HotKeyAction::Name:
        return [this] { run(actions_.nameCurrent); };
    case HotKeyAction::Preset:
        return [this] { run(actions_.quickApplyNextPreset); };
    case HotKeyAction::Settings:
        return [this] { run(actions_.openSettings); };
    case HotKeyAction::Bookmark:
        return [this] { run(actions_.showBookmarks); };
    case HotKeyAction::Switcher:
        break;
    }
    return [this] { switcherPressed(); };
}

void HotKeyBindings::switcherPressed() const {
    if (advanceOpenSwitcher_ && advanceOpenSwitcher_())
        return;
    run(actions_.showSpaceSwitcher);
}

} // namespace deskmark
