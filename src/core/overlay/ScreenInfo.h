#pragma once

#include <QList>
#include <QRectF>
#include <QString>

#include <optional>

namespace deskmark {

// One screen as the platform lists it: its name (QScreen::name(), the key of display UUID
// lookups), its frame and its visible frame in global coordinates, origin at the top-left
// of the primary screen, y growing downwards; the same coordinates as accessibility frames.
struct ScreenInfo {
    QString name;
    QRectF frame;
    // The part of the frame left to ordinary windows: without panels and docks.
    QRectF visibleFrame;

    // The screen whose frame starts at the origin; else the main screen; else none.
    static std::optional<ScreenInfo> primary(const QList<ScreenInfo>& screens,
                                             const std::optional<ScreenInfo>& mainScreen);

    // The name of the screen that holds most of the area; none when it lies on none.
    static std::optional<QString> screenOf(const QRectF& area, const QList<ScreenInfo>& screens);

    friend bool operator==(const ScreenInfo&, const ScreenInfo&) = default;
};

} // namespace deskmark
