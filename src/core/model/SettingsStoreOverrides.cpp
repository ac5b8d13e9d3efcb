// SettingsStore: the per-display corner overrides.
#include "core/model/SettingsStore.h"

#include <type_traits>

namespace deskmark {

// The one place that pairs each item with its settings. Enumerations keep raw text
// in both, so each pair shares one value type.
template <typename S, typename F> void SettingsStore::forEachOverride(S& self, F&& visit) {
    using Item = CornerOverrideItem;
    visit(Item::Enabled, self.cornerOverlayEnabledByDisplay_, self.cornerOverlayEnabled_);
    visit(Item::Position, self.cornerPositionByDisplay_, self.cornerPositionRaw_);
    visit(Item::FontSize, self.cornerFontSizeByDisplay_, self.cornerFontSize_);
    visit(Item::OffsetY, self.cornerOffsetYByDisplay_, self.cornerOffsetY_);
    visit(Item::OffsetX, self.cornerOffsetXByDisplay_, self.cornerOffsetX_);
    visit(Item::Margin, self.cornerMarginByDisplay_, self.cornerMargin_);
    visit(Item::Weight, self.cornerWeightByDisplay_, self.cornerWeightRaw_);
    visit(Item::VPadding, self.cornerVPaddingByDisplay_, self.cornerVPaddingRaw_);
    visit(Item::Shape, self.cornerShapeByDisplay_, self.cornerShapeRaw_);
    visit(Item::ColorMode, self.cornerColorModeByDisplay_, self.cornerColorModeRaw_);
    visit(Item::BgOpacity, self.cornerBgOpacityByDisplay_, self.cornerBgOpacity_);
}

template <typename T, typename S, typename F>
void SettingsStore::withOverride(S& self, CornerOverrideItem item, F&& visit) {
    forEachOverride(self, [&](CornerOverrideItem each, auto& byDisplay, auto& global) {
        if constexpr (std::is_same_v<std::decay_t<decltype(global.value)>, T>) {
            if (each == item)
                visit(byDisplay, global);
        }
    });
}

template <typename T, typename Usable>
T SettingsStore::effective(CornerOverrideItem item, const QString& display, Usable usable) const {
    T result{};
    withOverride<T>(*this, item, [&](const auto& byDisplay, const auto& global) {
        const auto own = byDisplay.value.constFind(display);
        const bool useOwn =
            own != byDisplay.value.constEnd() && isOverrideOn(item, display) && usable(*own);
        result = useOwn ? *own : global.value;
    });
    return result;
}

// A display's unknown raw text gives the global value rather than the fallback.
template <typename E>
E SettingsStore::effectiveEnum(CornerOverrideItem item, const QString& display) const {
    const auto known = [](const QString& raw) { return enumFromRaw<E>(raw).has_value(); };
    return enumOrFallback<E>(effective<QString>(item, display, known));
}

template <typename T>
void SettingsStore::setOwnValue(CornerOverrideItem item, const QString& display, const T& value) {
    withOverride<T>(*this, item, [&](auto& byDisplay, const auto&) {
        setDisplayEntry(byDisplay, display, value);
    });
}

namespace {
constexpr auto anyValue = [](const auto&) { return true; };
}

bool SettingsStore::cornerOverlayEnabled(const QString& display) const {
    return effective<bool>(CornerOverrideItem::Enabled, display, anyValue);
}
CornerPosition SettingsStore::cornerPosition(const QString& display) const {
    return effectiveEnum<CornerPosition>(CornerOverrideItem::Position, display);
}
double SettingsStore::cornerFontSize(const QString& display) const {
    return effective<double>(CornerOverrideItem::FontSize, display, anyValue);
}
double SettingsStore::cornerOffsetY(const QString& display) const {
    return effective<double>(CornerOverrideItem::OffsetY, display, anyValue);
}
double SettingsStore::cornerOffsetX(const QString& display) const {
    return effective<double>(CornerOverrideItem::OffsetX, display, anyValue);
}
double SettingsStore::cornerMargin(const QString& display) const {
    return effective<double>(CornerOverrideItem::Margin, display, anyValue);
}
CornerWeight SettingsStore::cornerWeight(const QString& display) const {
    return effectiveEnum<CornerWeight>(CornerOverrideItem::Weight, display);
}
CornerVPadding SettingsStore::cornerVPadding(const QString& display) const {
    return effectiveEnum<CornerVPadding>(CornerOverrideItem::VPadding, display);
}
CornerShape SettingsStore::cornerShape(const QString& display) const {
    return effectiveEnum<CornerShape>(CornerOverrideItem::Shape, display);
}
CornerColorMode SettingsStore::cornerColorMode(const QString& display) const {
    return effectiveEnum<CornerColorMode>(CornerOverrideItem::ColorMode, display);
}
double SettingsStore::cornerBgOpacity(const QString& display) const {
    return effective<double>(CornerOverrideItem::BgOpacity, display, anyValue);
}

void SettingsStore::setCornerOverlayEnabled(bool on, const QString& display) {
    setOwnValue(CornerOverrideItem::Enabled, display, on);
}
void SettingsStore::setCornerPosition(CornerPosition position, const QString& display) {
    setOwnValue(CornerOverrideItem::Position, display, rawValue(position));
}
void SettingsStore::setCornerFontSize(double size, const QString& display) {
    setOwnValue(CornerOverrideItem::FontSize, display, size);
}
void SettingsStore::setCornerOffsetY(double offset, const QString& display) {
    setOwnValue(CornerOverrideItem::OffsetY, display, offset);
}
void SettingsStore::setCornerOffsetX(double offset, const QString& display) {
    setOwnValue(CornerOverrideItem::OffsetX, display, offset);
}
void SettingsStore::setCornerMargin(double margin, const QString& display) {
    setOwnValue(CornerOverrideItem::Margin, display, margin);
}
void SettingsStore::setCornerWeight(CornerWeight weight, const QString& display) {
    setOwnValue(CornerOverrideItem::Weight, display, rawValue(weight));
}
void SettingsStore::setCornerVPadding(CornerVPadding padding, const QString& display) {
    setOwnValue(CornerOverrideItem::VPadding, display, rawValue(padding));
}
void SettingsStore::setCornerShape(CornerShape shape, const QString& display) {
    setOwnValue(CornerOverrideItem::Shape, display, rawValue(shape));
}
void SettingsStore::setCornerColorMode(CornerColorMode mode, const QString& display) {
    setOwnValue(CornerOverrideItem::ColorMode, display, rawValue(mode));
}
void SettingsStore::setCornerBgOpacity(double opacity, const QString& display) {
    setOwnValue(CornerOverrideItem::BgOpacity, display, opacity);
}

bool SettingsStore::isOverrideOn(CornerOverrideItem item, const QString& display) const {
    return cornerOverridesByDisplay_.value.value(display).contains(rawValue(item));
}

void SettingsStore::setOverride(CornerOverrideItem item, bool on, const QString& display) {
    const QString raw = rawValue(item);
    ByDisplay<QStringList> overrides = cornerOverridesByDisplay_.value;
    QStringList items = overrides.value(display);
    if (!on)
        items.removeAll(raw);
    else if (!items.contains(raw))
        items << raw;
    if (items.isEmpty())
        overrides.remove(display);
    else
        overrides.insert(display, items);
    assign(cornerOverridesByDisplay_, overrides);
    if (!on)
        return;
    // A first switch on starts from the global value; a later one brings back the
    // display's last own value.
    forEachOverride(*this, [&](CornerOverrideItem each, auto& byDisplay, const auto& global) {
        if (each == item && !byDisplay.value.contains(display))
            setDisplayEntry(byDisplay, display, global.value);
    });
}

void SettingsStore::resetDisplaySettings(const QString& display) {
    const auto removeEntry = [&](auto& byDisplay) {
        auto entries = byDisplay.value;
        if (entries.remove(display) > 0)
            assign(byDisplay, entries);
    };
    forEachOverride(
        *this, [&](CornerOverrideItem, auto& byDisplay, const auto&) { removeEntry(byDisplay); });
    removeEntry(cornerOverridesByDisplay_);
}

bool SettingsStore::hasDisplayOverrides(const QString& display) const {
    bool found = !cornerOverridesByDisplay_.value.value(display).isEmpty();
    forEachOverride(*this, [&](CornerOverrideItem, const auto& byDisplay, const auto&) {
        found = found || byDisplay.value.contains(display);
    });
    return found;
}

// A readable overrides dictionary is kept as it is, even empty. Otherwise it is built
// from the per-display values stored before overrides existed: a display with its own
// position, font size, offsets or margin keeps using them.
void SettingsStore::loadOverrides() {
    if (!load(cornerOverridesByDisplay_)) {
        using Item = CornerOverrideItem;
        const auto migrated = {Item::Position, Item::FontSize, Item::OffsetY, Item::OffsetX,
                               Item::Margin};
        forEachOverride(*this, [&](Item item, const auto& byDisplay, const auto&) {
            if (std::find(migrated.begin(), migrated.end(), item) == migrated.end())
                return;
            for (const QString& display : byDisplay.value.keys()) {
                QStringList& items = cornerOverridesByDisplay_.value[display];
                if (!items.contains(rawValue(item)))
                    items << rawValue(item);
            }
        });
    }
    write(cornerOverridesByDisplay_);
}

} // namespace deskmark
