#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QtGlobal>

namespace deskmark {

// The top-level windows of applications and moving them between screens.
class WindowMover {
public:
    struct Window {
        quint64 id = 0;
        // The startup-notification id the window (or its client leader) carries; may be empty.
        QString startupID;
        // Frame in global coordinates, origin at the top-left of the primary screen.
        QRectF frame;

        friend bool operator==(const Window&, const Window&) = default;
    };

    virtual ~WindowMover() = default;

    // The managed windows whose WM_CLASS class or instance is windowClass (compared
    // without case), oldest first.
    virtual QList<Window> windows(const QString& windowClass) const = 0;
    // Moves the window so that its frame's top-left corner is at topLeft, keeping its
    // size; a maximized window is maximized again on the screen it lands on.
    virtual void moveWindow(quint64 window, QPointF topLeft) = 0;
};

} // namespace deskmark
