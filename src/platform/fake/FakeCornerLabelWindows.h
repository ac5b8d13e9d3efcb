#pragma once

#include "core/overlay/CornerLabelWindows.h"

#include <QHash>
#include <QStringList>

namespace deskmark {

// Keeps the state of every corner label window and a log of what each was asked to do,
// one line per call ("show DISPLAY", "hide DISPLAY", "background DISPLAY",
// "move DISPLAY", "fade DISPLAY in|out").
class FakeCornerLabelWindows : public CornerLabelWindows {
public:
    struct Window {
        CornerLabel label;
        RgbColor background;
        double bgOpacity = 1;
        bool onScreen = false;
        // The alpha the last fade went to.
        double alpha = 1;
    };

    void show(const QString& displayUUID, const CornerLabel& label, const RgbColor& background,
              double bgOpacity) override {
        Window& window = windows[displayUUID];
        window.label = label;
        window.background = background;
        window.bgOpacity = bgOpacity;
        window.onScreen = true;
        log << QStringLiteral("show ") + displayUUID;
    }
    void hide(const QString& displayUUID) override {
        windows[displayUUID].onScreen = false;
        log << QStringLiteral("hide ") + displayUUID;
    }
    void setBackground(const QString& displayUUID, const RgbColor& background,
                       double bgOpacity) override {
        windows[displayUUID].background = background;
        windows[displayUUID].bgOpacity = bgOpacity;
        log << QStringLiteral("background ") + displayUUID;
    }
    void move(const QString& displayUUID, const QPointF& topLeft) override {
        windows[displayUUID].label.frame.moveTopLeft(topLeft);
        log << QStringLiteral("move ") + displayUUID;
    }
    void fade(const QString& displayUUID, bool visible) override {
        windows[displayUUID].alpha = visible ? 1 : 0;
        log << QStringLiteral("fade %1 %2").arg(displayUUID, visible ? "in" : "out");
    }

    // The labels on screen.
    QStringList shownTexts() const {
        QStringList texts;
        for (auto it = windows.cbegin(); it != windows.cend(); ++it) {
            if (it->onScreen)
                texts << it.key() + ":" + it->label.text;
        }
        texts.sort();
        return texts;
    }

    QHash<QString, Window> windows;
    QStringList log;
};

} // namespace deskmark
