#pragma once

#include "core/model/SettingsStore.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

class QVBoxLayout;
class QWidget;

namespace deskmark {

class PresetStore;

// Controls bound to one setting of the SettingsStore: they show its value, write every
// change through the store at once, and follow changes made anywhere else.
class SettingControls {
public:
    using BoolGetter = bool (SettingsStore::*)() const;
    using BoolSetter = void (SettingsStore::*)(bool);
    using TextGetter = const QString& (SettingsStore::*)() const;
    using TextSetter = void (SettingsStore::*)(const QString&);
    using Signal = void (SettingsStore::*)();

    static QCheckBox* checkBox(SettingsStore& s, const QString& text, BoolGetter get,
                               BoolSetter set, Signal changed, QWidget* parent) {
        auto* box = new QCheckBox(text, parent);
        const auto render = [&s, box, get] {
            const QSignalBlocker blocker(box);
            box->setChecked((s.*get)());
        };
        render();
        QObject::connect(box, &QCheckBox::toggled, box, [&s, set](bool on) { (s.*set)(on); });
        QObject::connect(&s, changed, box, render);
        return box;
    }

    using NumberGetter = double (SettingsStore::*)() const;
    using NumberSetter = void (SettingsStore::*)(double);

    // A number held within minimum…maximum, in points unless another suffix is given.
    static QDoubleSpinBox* number(SettingsStore& s, NumberGetter get, NumberSetter set,
                                  Signal changed, double minimum, double maximum, QWidget* parent,
                                  int decimals = 0, const QString& suffix = QStringLiteral(" pt")) {
        auto* box = new QDoubleSpinBox(parent);
        box->setRange(minimum, maximum);
        box->setDecimals(decimals);
        box->setSingleStep(decimals > 0 ? 0.1 : 1.0);
        box->setSuffix(suffix);
        const auto render = [&s, box, get] {
            const QSignalBlocker blocker(box);
            box->setValue((s.*get)());
        };
        render();
        QObject::connect(box, &QDoubleSpinBox::valueChanged, box,
                         [&s, set](double value) { (s.*set)(value); });
        QObject::connect(&s, changed, box, render);
        return box;
    }

    // A picker of raw values, shown by their labels; choices holds (raw, label) pairs.
    static QComboBox* choice(SettingsStore& s, const QList<std::pair<QString, QString>>& choices,
                             TextGetter get, TextSetter set, Signal changed, QWidget* parent) {
        auto* box = new QComboBox(parent);
        for (const auto& [raw, text] : choices)
            box->addItem(text, raw);
        const auto render = [&s, box, get] {
            const QSignalBlocker blocker(box);
            box->setCurrentIndex(std::max(0, box->findData((s.*get)())));
        };
        render();
        QObject::connect(box, &QComboBox::activated, box,
                         [&s, box, set](int index) { (s.*set)(box->itemData(index).toString()); });
        QObject::connect(&s, changed, box, render);
        return box;
    }

    // (raw, label) for every case of an enumeration, by the given labels.
    template <typename E, typename Label>
    static QList<std::pair<QString, QString>> cases(Label labelOf) {
        QList<std::pair<QString, QString>> result;
        for (const E value : allCases<E>())
            result << std::pair(rawValue(value), labelOf(value));
        return result;
    }

    // Fills a preset picker (ids as item data) and selects presetID, else the first.
    static void fillPresets(QComboBox* box, const PresetStore& presets, const QString& presetID);
    // A grey, wrapping explanation line.
    static QLabel* note(const QString& text, QWidget* parent);
    // A bold section heading.
    static QLabel* heading(const QString& text, QWidget* parent);
    // The scrolling page a pane lives in, with its layout.
    static QVBoxLayout* page(QWidget* pane);
};

} // namespace deskmark
