#pragma once

#include "core/app/Scheduler.h"

#include <QObject>

#include <functional>
#include <memory>

namespace deskmark {

// Calls a tick every 0.05 s until it answers true, then, on the next turn of the event
// loop, the continuation. Starting a new poll, cancel() or destruction ends the running
// one, continuation included. The continuation may start the next poll.
class SwitchPoll {
public:
    static constexpr std::chrono::milliseconds kInterval{50};

    explicit SwitchPoll(Scheduler& scheduler) : scheduler_(scheduler) {}

    void start(std::function<bool()> tick, std::function<void()> then);
    void cancel();

private:
    Scheduler& scheduler_;
    QObject context_; // pending continuations die with the poll
    std::unique_ptr<RepeatingTimer> timer_;
    quint64 run_ = 0;
};

} // namespace deskmark
