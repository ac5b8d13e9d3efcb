#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <optional>

namespace deskmark {

// The enumerations that the settings keep as raw text. Cases are declared in the
// order the settings panes list them.
enum class CornerPosition { TopLeft, Top, TopRight, Left, Right, BottomLeft, Bottom, BottomRight };
enum class CornerShape { Capsule, Square };
enum class CornerVPadding { Narrow, Normal };
enum class CornerWeight { Thin, Light, Regular, Medium, Semibold, Bold, Heavy };
enum class CornerColorMode { DefaultColors, SpaceColors };
enum class MCLabelVPosition { Top, Center, Bottom };
enum class AppLanguage { Auto, Ja, En };
enum class AppAppearance { Auto, Light, Dark };

// The corner settings that a display may override; the raw values are the words
// stored in the per-display override lists.
enum class CornerOverrideItem {
    Enabled,
    Position,
    FontSize,
    OffsetY,
    OffsetX,
    Margin,
    Weight,
    VPadding,
    Shape,
    ColorMode,
    BgOpacity,
};

// EnumRaw<E>: the raw text of every case of E, in case order, and (for the settings
// enumerations) the case an unknown raw text falls back to.
template <typename E> struct EnumRaw;

template <> struct EnumRaw<CornerPosition> {
    static constexpr std::array values{"topLeft", "top",        "topRight", "left",
                                       "right",   "bottomLeft", "bottom",   "bottomRight"};
    static constexpr CornerPosition fallback = CornerPosition::Bottom;
};
template <> struct EnumRaw<CornerShape> {
    static constexpr std::array values{"capsule", "square"};
    static constexpr CornerShape fallback = CornerShape::Capsule;
};
template <> struct EnumRaw<CornerVPadding> {
    static constexpr std::array values{"narrow", "normal"};
    static constexpr CornerVPadding fallback = CornerVPadding::Narrow;
};
template <> struct EnumRaw<CornerWeight> {
    static constexpr std::array values{"thin",     "light", "regular", "medium",
                                       "semibold", "bold",  "heavy"};
    static constexpr CornerWeight fallback = CornerWeight::Regular;
};
template <> struct EnumRaw<CornerColorMode> {
    static constexpr std::array values{"defaultColors", "spaceColors"};
    static constexpr CornerColorMode fallback = CornerColorMode::SpaceColors;
};
template <> struct EnumRaw<MCLabelVPosition> {
    static constexpr std::array values{"top", "center", "bottom"};
    static constexpr MCLabelVPosition fallback = MCLabelVPosition::Bottom;
};
// Anything but "ja" or "en" follows the system language.
template <> struct EnumRaw<AppLanguage> {
    static constexpr std::array values{"auto", "ja", "en"};
    static constexpr AppLanguage fallback = AppLanguage::Auto;
};
// Anything but "light" or "dark" follows the system appearance.
template <> struct EnumRaw<AppAppearance> {
    static constexpr std::array values{"auto", "light", "dark"};
    static constexpr AppAppearance fallback = AppAppearance::Auto;
};
template <> struct EnumRaw<CornerOverrideItem> {
    static constexpr std::array values{"enabled", "position",  "fontSize", "offsetY",
                                       "offsetX", "margin",    "weight",   "vPadding",
                                       "shape",   "colorMode", "bgOpacity"};
};

template <typename E> QString rawValue(E value) {
    return QLatin1String(EnumRaw<E>::values[static_cast<std::size_t>(value)]);
}

// The case whose raw text is raw, or none for an unknown text.
template <typename E> std::optional<E> enumFromRaw(const QString& raw) {
    const auto& values = EnumRaw<E>::values;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (raw == QLatin1String(values[i]))
            return static_cast<E>(i);
    }
    return std::nullopt;
}

// The case whose raw text is raw; an unknown text gives the enumeration's fallback.
template <typename E> E enumOrFallback(const QString& raw) {
    return enumFromRaw<E>(raw).value_or(EnumRaw<E>::fallback);
}

// Every case of E in order.
template <typename E> constexpr auto allCases() {
    std::array<E, EnumRaw<E>::values.size()> cases{};
    for (std::size_t i = 0; i < cases.size(); ++i)
        cases[i] = static_cast<E>(i);
    return cases;
}

// The texts the settings panes show for a case, in the interface language.
QString label(CornerPosition position);
QString label(CornerWeight weight);
QString label(AppLanguage language);
QString label(AppAppearance appearance);

} // namespace deskmark
