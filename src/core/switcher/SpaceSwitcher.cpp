#include "core/switcher/SpaceSwitcher.h"

#include "core/model/ProjectStore.h"
#include "core/spaces/SpaceStore.h"
#include "core/switcher/SwitchDriver.h"

namespace deskmark {

SpaceSwitcher::SpaceSwitcher(const SpaceStore& spaces, const ProjectStore& projects,
                             SwitchDriver& driver, Scheduler& scheduler, const SwitchDebugLog& log)
    : spaces_(spaces), projects_(projects), driver_(driver), scheduler_(scheduler), log_(log),
      chain_(std::make_unique<QObject>()) {}

SpaceSwitcher::~SpaceSwitcher() { driver_.cancel(); }

void SpaceSwitcher::switchSpace(const QString& spaceUUID, const QString& displayUUID) {
    const QList<CGSDisplay> displays = spaces_.displays();
    for (const CGSDisplay& display : displays) {
        if (display.displayUUID != displayUUID)
            continue;
        for (const CGSSpace& space : display.spaces) {
            if (space.uuid == spaceUUID) {
                round(switchTargets(display, space, displays, projects_));
                return;
            }
        }
    }
}

QList<SwitchTarget> SpaceSwitcher::switchTargets(const CGSDisplay& display, const CGSSpace& space,
                                                 const QList<CGSDisplay>& displays,
                                                 const ProjectStore& projects) {
    const auto indexOf = [](const CGSDisplay& on, const auto& matches) {
        for (qsizetype i = 0; i < on.spaces.size(); ++i) {
            if (matches(on.spaces[i]))
                return int(i);
        }
        return -1;
    };
    const auto isChosen = [&space](const CGSSpace& other) { return other.uuid == space.uuid; };
    QList<SwitchTarget> targets{{display, indexOf(display, isChosen)}};
    const auto project = projects.projectForSpace(space.uuid);
    if (!project)
        return targets;
    const auto ofProject = [&projects, &project](const CGSSpace& other) {
        const auto otherProject = projects.projectForSpace(other.uuid);
        return otherProject && otherProject->id == project->id;
    };
    for (const CGSDisplay& other : displays) {
        if (other.displayUUID == display.displayUUID || indexOf(other, isChosen) >= 0)
            continue;
        const int index = indexOf(other, ofProject);
        if (index >= 0)
            targets << SwitchTarget{other, index};
    }
    return targets;
}

std::optional<QString> SpaceSwitcher::currentUUID(const QString& displayUUID) const {
    return spaces_.currentSpace(displayUUID);
}

void SpaceSwitcher::round(QList<SwitchTarget> targets) {
    // A new round replaces the one under way, with its pending delays and polls.
    driver_.cancel();
    chain_ = std::make_unique<QObject>();
    chosen_ = targets.isEmpty() ? std::nullopt : std::optional(targets.first());
    focusMoved_ = false;
    next(std::move(targets));
}

void SpaceSwitcher::next(QList<SwitchTarget> targets) {
    if (targets.isEmpty()) {
        finishRound();
        return;
    }
    const SwitchTarget first = targets.takeFirst();
    if (currentUUID(first.display.displayUUID) == first.spaceUUID()) {
        if (targets.isEmpty()) {
            finishRound();
            return;
        }
        driver_.waitSettled([this, targets] { next(targets); });
        return;
    }
    focusMoved_ = focusMoved_ || first.display.displayUUID != chosen_->display.displayUUID;
    pressStep(first, 1, [this, targets](bool) { next(targets); });
}

void SpaceSwitcher::attempt(const SwitchTarget& target, int tries, Done done) {
    const int tryNumber = tries + 1;
    if (target.index < 0 || target.index >= target.display.spaces.size()) {
        done(false);
        return;
    }
    if (currentUUID(target.display.displayUUID) == target.spaceUUID()) {
        done(true);
        return;
    }
    if (tryNumber >= kMaxTries) {
        log_.dbg(QStringLiteral("SW: give up after %1 tries").arg(tryNumber));
        done(false);
        return;
    }
    pressStep(target, tryNumber, std::move(done));
}

void SpaceSwitcher::pressStep(const SwitchTarget& target, int tryNumber, Done done) {
    driver_.press(target, tryNumber, [this, target, tryNumber, done](bool sent) {
        if (sent)
            verify(target, tryNumber, done);
        else
            attempt(target, tryNumber, done);
    });
}

void SpaceSwitcher::verify(const SwitchTarget& target, int tryNumber, Done done) {
    const QString wanted = target.spaceUUID();
    const std::optional<QString> now = currentUUID(target.display.displayUUID);
    log_.dbg(QStringLiteral("SW: after press wanted=%1 now=%2")
                 .arg(wanted, now.value_or(QStringLiteral("none"))));
    if (now == wanted) {
        done(true);
        return;
    }
    scheduler_.after(kRetryDelay, chain_.get(),
                     [this, target, tryNumber, done] { attempt(target, tryNumber, done); });
}

void SpaceSwitcher::finishRound() {
    if (std::exchange(focusMoved_, false))
        driver_.refocus(*chosen_);
    if (roundFinished_)
        roundFinished_();
}

} // namespace deskmark
