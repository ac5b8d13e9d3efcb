#include "core/model/SettingsEnums.h"

#include "core/app/Language.h"

namespace deskmark {

namespace {
struct Label {
    const char* japanese;
    const char* english;
};

// Label tables hold one row per case, in case order.
template <typename E, std::size_t N> QString labelFrom(const std::array<Label, N>& table, E value) {
    static_assert(N == EnumRaw<E>::values.size());
    const Label& row = table[static_cast<std::size_t>(value)];
    return localized(row.japanese, row.english);
}

constexpr std::array<Label, 8> positionLabels{{
    {"左上", "Top Left"},
    {"上", "Top"},
    {"右上", "Top Right"},
    {"左", "Left"},
    {"右", "Right"},
    {"左下", "Bottom Left"},
    {"下", "Bottom"},
    {"右下", "Bottom Right"},
}};

constexpr std::array<Label, 7> weightLabels{{
    {"極細", "Thin"},
    {"細い", "Light"},
    {"標準", "Regular"},
    {"中", "Medium"},
    {"やや太", "Semibold"},
    {"太字", "Bold"},
    {"極太", "Heavy"},
}};

// Each language is named in itself, whatever the interface language.
constexpr std::array<Label, 3> languageLabels{{
    {"自動（システム言語）", "Automatic (System)"},
    {"日本語", "日本語"},
    {"English", "English"},
}};

constexpr std::array<Label, 3> appearanceLabels{{
    {"システムに合わせる", "Match System"},
    {"ライト", "Light"},
    {"ダーク", "Dark"},
}};
} // namespace

QString label(CornerPosition position) {
    return labelFrom(positionLabels, position);
}

QString label(CornerWeight weight) {
    return labelFrom(weightLabels, weight);
}

QString label(AppLanguage language) {
    return labelFrom(languageLabels, language);
}

QString label(AppAppearance appearance) {
    return labelFrom(appearanceLabels, appearance);
}

} // namespace deskmark
