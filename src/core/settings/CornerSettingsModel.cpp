#include "core/settings/CornerSettingsModel.h"

#include "core/app/Language.h"
#include "core/model/SettingsStore.h"

#include <algorithm>
#include <cmath>

namespace deskmark {

namespace {
using Item = CornerOverrideItem;

template <typename E> QList<CornerSettingsModel::Option> optionsOf(QList<QString> labels) {
    QList<CornerSettingsModel::Option> result;
    for (const E value : allCases<E>())
        result << CornerSettingsModel::Option{rawValue(value), labels.takeFirst()};
    return result;
}

template <typename E> QList<QString> caseLabels() {
    QList<QString> labels;
    for (const E value : allCases<E>())
        labels << deskmark::label(value);
    return labels;
}

// Sets an enumeration from its raw text; unknown texts are ignored.
template <typename E, typename Set> void setCase(const QVariant& value, Set set) {
    if (const std::optional<E> parsed = enumFromRaw<E>(value.toString()))
        set(*parsed);
}
} // namespace

CornerSettingsModel::CornerSettingsModel(SettingsStore& settings, std::optional<QString> display)
    : settings_(settings), display_(std::move(display)) {}

QList<CornerOverrideItem> CornerSettingsModel::items() {
    const auto cases = allCases<CornerOverrideItem>();
    return QList<CornerOverrideItem>(cases.begin(), cases.end());
}

CornerSettingsModel::Kind CornerSettingsModel::kind(CornerOverrideItem item) {
    switch (item) {
    case Item::Enabled:
        return Kind::Toggle;
    case Item::FontSize:
    case Item::OffsetY:
    case Item::OffsetX:
    case Item::Margin:
    case Item::BgOpacity:
        return Kind::Number;
    default:
        return Kind::Choice;
    }
}

QString CornerSettingsModel::label(CornerOverrideItem item) {
    switch (item) {
    case Item::Enabled:
        return localized("コーナーに表示", "Show the corner label");
    case Item::Position:
        return localized("位置", "Position");
    case Item::FontSize:
        return localized("文字サイズ", "Font size");
    case Item::OffsetY:
        return localized("縦のずらし", "Vertical offset");
    case Item::OffsetX:
        return localized("横のずらし", "Horizontal offset");
    case Item::Margin:
        return localized("画面端からの余白", "Margin");
    case Item::Weight:
        return localized("太さ", "Weight");
    case Item::VPadding:
        return localized("上下の余白", "Vertical padding");
    case Item::Shape:
        return localized("形", "Shape");
    case Item::ColorMode:
        return localized("色", "Colors");
    case Item::BgOpacity:
        return localized("背景の不透明度", "Background opacity");
    }
    return {};
}

CornerSettingsModel::Bounds CornerSettingsModel::bounds(CornerOverrideItem item) {
    switch (item) {
    case Item::FontSize:
        return {8, 48, 1};
    case Item::OffsetY:
    case Item::OffsetX:
        return {-200, 200, 1};
    case Item::Margin:
        return {0, 100, 1};
    case Item::BgOpacity:
        return {0, 1, 0.05};
    default:
        return {0, 0, 0};
    }
}

QString CornerSettingsModel::valueText(CornerOverrideItem item, double value) {
    if (item == Item::BgOpacity)
        return QStringLiteral("%1 %").arg(std::lround(value * 100));
    return QStringLiteral("%1 pt").arg(std::lround(value));
}

QList<CornerSettingsModel::Option> CornerSettingsModel::options(CornerOverrideItem item) {
    switch (item) {
    case Item::Position:
        return optionsOf<CornerPosition>(caseLabels<CornerPosition>());
    case Item::Weight:
        return optionsOf<CornerWeight>(caseLabels<CornerWeight>());
    case Item::VPadding:
        return optionsOf<CornerVPadding>(
            {localized("狭い", "Narrow"), localized("標準", "Normal")});
    case Item::Shape:
        return optionsOf<CornerShape>(
            {localized("半円（カプセル）", "Capsule"), localized("四角", "Square")});
    case Item::ColorMode:
        return optionsOf<CornerColorMode>(
            {localized("デフォルト（黒地・白字）", "Default (black/white)"),
             localized("Space の色を反映", "Use Space colors")});
    default:
        return {};
    }
}

QVariant CornerSettingsModel::value(CornerOverrideItem item) const {
    const SettingsStore& s = settings_;
    if (!display_) {
        switch (item) {
        case Item::Enabled:
            return s.cornerOverlayEnabled();
        case Item::Position:
            return rawValue(s.cornerPosition());
        case Item::FontSize:
            return s.cornerFontSize();
        case Item::OffsetY:
            return s.cornerOffsetY();
        case Item::OffsetX:
            return s.cornerOffsetX();
        case Item::Margin:
            return s.cornerMargin();
        case Item::Weight:
            return rawValue(s.cornerWeight());
        case Item::VPadding:
            return rawValue(s.cornerVPadding());
        case Item::Shape:
            return rawValue(s.cornerShape());
        case Item::ColorMode:
            return rawValue(s.cornerColorMode());
        case Item::BgOpacity:
            return s.cornerBgOpacity();
        }
        return {};
    }
    const QString& d = *display_;
    switch (item) {
    case Item::Enabled:
        return s.cornerOverlayEnabled(d);
    case Item::Position:
        return rawValue(s.cornerPosition(d));
    case Item::FontSize:
        return s.cornerFontSize(d);
    case Item::OffsetY:
        return s.cornerOffsetY(d);
    case Item::OffsetX:
        return s.cornerOffsetX(d);
    case Item::Margin:
        return s.cornerMargin(d);
    case Item::Weight:
        return rawValue(s.cornerWeight(d));
    case Item::VPadding:
        return rawValue(s.cornerVPadding(d));
    case Item::Shape:
        return rawValue(s.cornerShape(d));
    case Item::ColorMode:
        return rawValue(s.cornerColorMode(d));
    case Item::BgOpacity:
        return s.cornerBgOpacity(d);
    }
    return {};
}

void CornerSettingsModel::setValue(CornerOverrideItem item, const QVariant& value) {
    SettingsStore& s = settings_;
    const Bounds range = bounds(item);
    const double number = std::clamp(value.toDouble(), range.minimum, range.maximum);
    if (!display_) {
        switch (item) {
        case Item::Enabled:
            return s.setCornerOverlayEnabled(value.toBool());
        case Item::Position:
            return setCase<CornerPosition>(value,
                                           [&](auto v) { s.setCornerPositionRaw(rawValue(v)); });
        case Item::FontSize:
            return s.setCornerFontSize(number);
        case Item::OffsetY:
            return s.setCornerOffsetY(number);
        case Item::OffsetX:
            return s.setCornerOffsetX(number);
        case Item::Margin:
            return s.setCornerMargin(number);
        case Item::Weight:
            return setCase<CornerWeight>(value, [&](auto v) { s.setCornerWeightRaw(rawValue(v)); });
        case Item::VPadding:
            return setCase<CornerVPadding>(value,
                                           [&](auto v) { s.setCornerVPaddingRaw(rawValue(v)); });
        case Item::Shape:
            return setCase<CornerShape>(value, [&](auto v) { s.setCornerShapeRaw(rawValue(v)); });
        case Item::ColorMode:
            return setCase<CornerColorMode>(value,
                                            [&](auto v) { s.setCornerColorModeRaw(rawValue(v)); });
        case Item::BgOpacity:
            return s.setCornerBgOpacity(number);
        }
        return;
    }
    const QString& d = *display_;
    switch (item) {
    case Item::Enabled:
        return s.setCornerOverlayEnabled(value.toBool(), d);
    case Item::Position:
        return setCase<CornerPosition>(value, [&](auto v) { s.setCornerPosition(v, d); });
    case Item::FontSize:
        return s.setCornerFontSize(number, d);
    case Item::OffsetY:
        return s.setCornerOffsetY(number, d);
    case Item::OffsetX:
        return s.setCornerOffsetX(number, d);
    case Item::Margin:
        return s.setCornerMargin(number, d);
    case Item::Weight:
        return setCase<CornerWeight>(value, [&](auto v) { s.setCornerWeight(v, d); });
    case Item::VPadding:
        return setCase<CornerVPadding>(value, [&](auto v) { s.setCornerVPadding(v, d); });
    case Item::Shape:
        return setCase<CornerShape>(value, [&](auto v) { s.setCornerShape(v, d); });
    case Item::ColorMode:
        return setCase<CornerColorMode>(value, [&](auto v) { s.setCornerColorMode(v, d); });
    case Item::BgOpacity:
        return s.setCornerBgOpacity(number, d);
    }
}

} // namespace deskmark
