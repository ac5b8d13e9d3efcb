#pragma once

#include "core/bookmarks/WindowMover.h"
#include "core/overlay/ScreenInfo.h"

#include <QList>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>

namespace deskmark {

class Scheduler;

// Waits for the window a browser opens after being asked for a new one and moves it to
// the target screen: the first look 0.2 s after the launch, then every 0.15 s until the
// deadline, after which it gives up silently.
class BrowserWindowRelocation {
public:
    struct Request {
        QString windowClass;
        // The browser's windows before the launch.
        QList<WindowMover::Window> before;
        // The startup id the launch handed over; empty when none.
        QString startupID;
        ScreenInfo target;
        std::chrono::milliseconds deadline;
    };

    static constexpr std::chrono::milliseconds firstLook{200};
    static constexpr std::chrono::milliseconds interval{150};

    static void start(WindowMover& windows, Scheduler& scheduler, Request request);

    // The browser's new window among now: the one carrying the launch's startup id, else
    // the newest of those that were not there before; none while no new window exists.
    static std::optional<WindowMover::Window> newWindow(const QList<WindowMover::Window>& now,
                                                        const Request& request);

private:
    BrowserWindowRelocation(WindowMover& windows, Scheduler& scheduler, Request request);
    static void round(const std::shared_ptr<BrowserWindowRelocation>& self);

    WindowMover& windows_;
    Scheduler& scheduler_;
    Request request_;
    std::chrono::milliseconds elapsed_{0};
};

} // namespace deskmark
