#pragma once

#include <QPoint>
#include <QString>

namespace deskmark {

// Puts the label windows where the windowing system does not let the program put them
// itself: a Wayland client cannot place its own windows, so the window manager is asked.
// A window is found by its title, which the placer hands out.
class WindowPlacer {
public:
    virtual ~WindowPlacer() = default;

    // The title that the window for key must carry; distinct keys get distinct titles.
    virtual QString windowTitle(const QString& key) const = 0;
    // The window titled so has just been shown (or was shown before): put its top-left
    // corner at topLeft, in the coordinates of the whole desktop, floating above ordinary
    // windows, on every workspace of the output it lands on, and never focused.
    virtual void place(const QString& title, const QPoint& topLeft) = 0;
};

} // namespace deskmark
