#pragma once

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

namespace deskmark {

// A repeating timer handed out by a Scheduler. Destroying it stops it.
class RepeatingTimer {
public:
    virtual ~RepeatingTimer() = default;
    virtual void stop() = 0;
    virtual bool isActive() const = 0;
    virtual std::chrono::milliseconds interval() const = 0;
};

// Every timer and delay of the program goes through a Scheduler, so tests can run
// them on a fake clock instead of waiting. Actions run on the main thread.
class Scheduler {
public:
    virtual ~Scheduler() = default;

    // Monotonic time, for measuring how long a wait has lasted.
    virtual std::chrono::milliseconds now() const = 0;

    // Runs action once after delay, unless context has been destroyed by then.
    virtual void after(std::chrono::milliseconds delay, const QObject* context,
                       std::function<void()> action) = 0;

    // Runs action every interval until the returned timer is stopped or destroyed.
    virtual std::unique_ptr<RepeatingTimer> every(std::chrono::milliseconds interval,
                                                  std::function<void()> action) = 0;
};

} // namespace deskmark
