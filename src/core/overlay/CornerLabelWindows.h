#pragma once

#include "core/model/RgbColor.h"
#include "core/overlay/CornerLabel.h"

#include <QPointF>
#include <QString>

#include <chrono>

namespace deskmark {

// The corner label windows, one per display (named by display UUID): borderless,
// click-through, above ordinary windows and on every Space. A display's window is created
// by its first show() and kept for good: hide() only takes it off the screen.
class CornerLabelWindows {
public:
    // How long fade() takes.
    static constexpr std::chrono::milliseconds fadeDuration{220};

    virtual ~CornerLabelWindows() = default;

    // Draws the label in the display's window at label.frame, over its background colour
    // at that opacity (the text keeps its full colour), and puts the window on screen.
    virtual void show(const QString& displayUUID, const CornerLabel& label,
                      const RgbColor& background, double bgOpacity) = 0;
    // Takes the display's window off the screen.
    virtual void hide(const QString& displayUUID) = 0;
    // Repaints the background only, at once.
    virtual void setBackground(const QString& displayUUID, const RgbColor& background,
                               double bgOpacity) = 0;
    // Moves the window's top-left corner there, at once, without redrawing it.
    virtual void move(const QString& displayUUID, const QPointF& topLeft) = 0;
    // Fades the whole window in (visible) or out over fadeDuration.
    virtual void fade(const QString& displayUUID, bool visible) = 0;
};

} // namespace deskmark
