#pragma once

#include "core/app/Scheduler.h"

#include <QPointer>

#include <list>
#include <memory>

namespace deskmark {

// A scheduler on a manual clock. advance() moves time forward and runs every due
// action in time order (repeating timers fire once per elapsed interval).
class FakeScheduler : public Scheduler {
public:
    FakeScheduler();
    ~FakeScheduler() override;

    void after(std::chrono::milliseconds delay, const QObject* context,
               std::function<void()> action) override;
    std::unique_ptr<RepeatingTimer> every(std::chrono::milliseconds interval,
                                          std::function<void()> action) override;

    void advance(std::chrono::milliseconds by);
    std::chrono::milliseconds now() const override { return now_; }
    int pendingCount() const;
    int activeRepeatingCount() const;

private:
    struct Entry;
    class Timer;
    Entry* nextDue(std::chrono::milliseconds limit);

    std::chrono::milliseconds now_{0};
    std::list<std::shared_ptr<Entry>> entries_;
};

} // namespace deskmark
