#include "core/app/QtScheduler.h"

#include <QTimer>

namespace deskmark {

namespace {
class QtRepeatingTimer : public RepeatingTimer {
public:
    QtRepeatingTimer(std::chrono::milliseconds interval, std::function<void()> action) {
        timer_.setInterval(interval);
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, std::move(action));
        timer_.start();
    }
    void stop() override { timer_.stop(); }
    bool isActive() const override { return timer_.isActive(); }
    std::chrono::milliseconds interval() const override { return timer_.intervalAsDuration(); }

private:
    QTimer timer_;
};
} // namespace

std::chrono::milliseconds QtScheduler::now() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

void QtScheduler::after(std::chrono::milliseconds delay, const QObject* context,
                        std::function<void()> action) {
    QTimer::singleShot(delay, context, std::move(action));
}

std::unique_ptr<RepeatingTimer> QtScheduler::every(std::chrono::milliseconds interval,
                                                   std::function<void()> action) {
    return std::make_unique<QtRepeatingTimer>(interval, std::move(action));
}

} // namespace deskmark
