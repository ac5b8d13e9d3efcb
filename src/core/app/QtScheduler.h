#pragma once

#include "core/app/Scheduler.h"

namespace deskmark {

// The real scheduler: QTimer on the main event loop.
class QtScheduler : public Scheduler {
public:
    std::chrono::milliseconds now() const override;
    void after(std::chrono::milliseconds delay, const QObject* context,
               std::function<void()> action) override;
    std::unique_ptr<RepeatingTimer> every(std::chrono::milliseconds interval,
                                          std::function<void()> action) override;
};

} // namespace deskmark
