#pragma once

#include "core/model/SettingsEnums.h"

#include <QList>
#include <QString>
#include <QVariant>

#include <optional>

namespace deskmark {

class SettingsStore;

// The corner-label settings as the Corner Overlay pane edits them, either the global
// values or one display's own values. Every item is a switch, a bounded number or a
// choice among raw values; the pane builds one control per item from this description,
// so the global section and each display's section behave alike.
class CornerSettingsModel {
public:
    enum class Kind { Toggle, Number, Choice };
    struct Bounds {
        double minimum;
        double maximum;
        double step;
    };
    struct Option {
        QString raw;
        QString label;

        friend bool operator==(const Option&, const Option&) = default;
    };

    // No display: the global values. A display: its effective values, and the setters
    // store its own values (used while its override is on).
    CornerSettingsModel(SettingsStore& settings, std::optional<QString> display);

    static QList<CornerOverrideItem> items();
    static Kind kind(CornerOverrideItem item);
    static QString label(CornerOverrideItem item);
    // For numbers.
    static Bounds bounds(CornerOverrideItem item);
    // How a number is shown beside its slider ("13 pt", "80 %").
    static QString valueText(CornerOverrideItem item, double value);
    // For choices, in the order the settings list the cases.
    static QList<Option> options(CornerOverrideItem item);

    const std::optional<QString>& display() const { return display_; }

    // A bool, a double or the raw text of the case.
    QVariant value(CornerOverrideItem item) const;
    // Numbers are held within their bounds; a raw text that names no case is ignored.
    void setValue(CornerOverrideItem item, const QVariant& value);

private:
    SettingsStore& settings_;
    std::optional<QString> display_;
};

} // namespace deskmark
