#include "core/switcher/SwitchPoll.h"

namespace deskmark {

void SwitchPoll::start(std::function<bool()> tick, std::function<void()> then) {
    cancel();
    const quint64 run = run_;
    timer_ = scheduler_.every(kInterval, [this, run, tick = std::move(tick),
                                          then = std::move(then)] {
        if (run != run_ || !timer_->isActive() || !tick())
            return;
        // The timer cannot be destroyed inside its own tick: stop it here, let the
        // continuation run (and possibly start the next poll) a moment later.
        timer_->stop();
        scheduler_.after(std::chrono::milliseconds{0}, &context_, [this, run, then] {
            if (run != run_)
                return;
            timer_.reset();
            then();
        });
    });
}

void SwitchPoll::cancel() {
    ++run_;
    if (timer_)
        timer_->stop();
}

} // namespace deskmark
