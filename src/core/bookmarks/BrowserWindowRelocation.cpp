#include "core/bookmarks/BrowserWindowRelocation.h"

#include "core/app/Scheduler.h"
#include "core/bookmarks/BookmarkOpener.h"

#include <algorithm>

namespace deskmark {

BrowserWindowRelocation::BrowserWindowRelocation(WindowMover& windows, Scheduler& scheduler,
                                                 Request request)
    : windows_(windows), scheduler_(scheduler), request_(std::move(request)) {}

void BrowserWindowRelocation::start(WindowMover& windows, Scheduler& scheduler, Request request) {
    std::shared_ptr<BrowserWindowRelocation> self(
        new BrowserWindowRelocation(windows, scheduler, std::move(request)));
    self->elapsed_ = firstLook;
    scheduler.after(firstLook, nullptr, [self] { round(self); });
}

std::optional<WindowMover::Window>
BrowserWindowRelocation::newWindow(const QList<WindowMover::Window>& now, const Request& request) {
    QList<WindowMover::Window> fresh;
    for (const WindowMover::Window& window : now) {
        const bool known = std::any_of(request.before.begin(), request.before.end(),
                                       [&](const auto& old) { return old.id == window.id; });
        if (known)
            continue;
        if (!request.startupID.isEmpty() && window.startupID == request.startupID)
            return window;
        fresh << window;
    }
    if (fresh.isEmpty())
        return std::nullopt;
    return fresh.last();
}

void BrowserWindowRelocation::round(const std::shared_ptr<BrowserWindowRelocation>& self) {
    const std::optional<WindowMover::Window> window =
        newWindow(self->windows_.windows(self->request_.windowClass), self->request_);
    if (window) {
        if (const std::optional<QPointF> topLeft =
                BookmarkOpener::relocatedTopLeft(window->frame, self->request_.target))
            self->windows_.moveWindow(window->id, *topLeft);
        return;
    }
    if (self->elapsed_ > self->request_.deadline)
        return;
    self->elapsed_ += interval;
    self->scheduler_.after(interval, nullptr, [self] { round(self); });
}

} // namespace deskmark
