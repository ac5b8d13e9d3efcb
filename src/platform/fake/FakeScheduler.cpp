#include "platform/fake/FakeScheduler.h"

namespace deskmark {

struct FakeScheduler::Entry {
    std::chrono::milliseconds due;
    std::chrono::milliseconds interval; // zero: runs once
    QPointer<const QObject> context;
    bool hasContext = false;
    bool active = true;
    std::function<void()> action;
};

class FakeScheduler::Timer : public RepeatingTimer {
public:
    explicit Timer(std::shared_ptr<Entry> entry) : entry_(std::move(entry)) {}
    ~Timer() override { entry_->active = false; }
    void stop() override { entry_->active = false; }
    bool isActive() const override { return entry_->active; }
    std::chrono::milliseconds interval() const override { return entry_->interval; }

private:
    std::shared_ptr<Entry> entry_;
};

FakeScheduler::FakeScheduler() = default;
FakeScheduler::~FakeScheduler() = default;

void FakeScheduler::after(std::chrono::milliseconds delay, const QObject* context,
                          std::function<void()> action) {
    auto entry = std::make_shared<Entry>();
    entry->due = now_ + delay;
    entry->interval = std::chrono::milliseconds{0};
    entry->context = context;
    entry->hasContext = context != nullptr;
    entry->action = std::move(action);
    entries_.push_back(std::move(entry));
}

std::unique_ptr<RepeatingTimer> FakeScheduler::every(std::chrono::milliseconds interval,
                                                     std::function<void()> action) {
    auto entry = std::make_shared<Entry>();
    entry->due = now_ + interval;
    entry->interval = interval;
    entry->action = std::move(action);
    entries_.push_back(entry);
    return std::make_unique<Timer>(std::move(entry));
}

FakeScheduler::Entry* FakeScheduler::nextDue(std::chrono::milliseconds limit) {
    Entry* best = nullptr;
    for (const auto& entry : entries_) {
        if (entry->active && entry->due <= limit && (!best || entry->due < best->due))
            best = entry.get();
    }
    return best;
}

void FakeScheduler::advance(std::chrono::milliseconds by) {
    const std::chrono::milliseconds end = now_ + by;
    while (Entry* entry = nextDue(end)) {
        now_ = entry->due;
        if (entry->interval.count() > 0) {
            entry->due += entry->interval;
        } else {
            entry->active = false;
        }
        const bool contextGone = entry->hasContext && entry->context.isNull();
        if (!contextGone)
            entry->action(); // may add or stop entries
        entries_.remove_if([](const std::shared_ptr<Entry>& e) {
            return !e->active && e.use_count() == 1;
        });
    }
    now_ = end;
}

int FakeScheduler::pendingCount() const {
    int count = 0;
    for (const auto& entry : entries_)
        count += entry->active && entry->interval.count() == 0 ? 1 : 0;
    return count;
}

int FakeScheduler::activeRepeatingCount() const {
    int count = 0;
    for (const auto& entry : entries_)
        count += entry->active && entry->interval.count() > 0 ? 1 : 0;
    return count;
}

} // namespace deskmark
