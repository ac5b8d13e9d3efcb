#pragma once

#include "core/app/Scheduler.h"
#include "core/switcher/SwitchDebugLog.h"
#include "core/switcher/SwitchTarget.h"

#include <QList>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace deskmark {

class ProjectStore;
class SpaceStore;
class SwitchDriver;

// Makes a chosen Space current, and with it the Spaces of the same project on the other
// displays. Each display is switched through the driver and checked afterwards; a request
// that did not take effect is retried 0.15 s later, and the third try gives up (logged
// only: the user sees nothing). Everything runs on the main thread as a chain of polls
// and delays; starting a new switch drops the one under way.
class SpaceSwitcher {
public:
    static constexpr int kMaxTries = 3;
    static constexpr std::chrono::milliseconds kRetryDelay{150};

    using Done = std::function<void(bool switched)>;

    SpaceSwitcher(const SpaceStore& spaces, const ProjectStore& projects, SwitchDriver& driver,
                  Scheduler& scheduler, const SwitchDebugLog& log);
    ~SpaceSwitcher();

    // Switches the display with that UUID to that Space, and the other displays to their
    // first Space of the same project. Nothing happens when either is not found.
    void switchSpace(const QString& spaceUUID, const QString& displayUUID);

    // The displays to switch, the chosen one first; then each other display's first Space
    // assigned to the chosen Space's project, in display order. A display that lists the
    // chosen Space itself shows it once the chosen display does, and is left out.
    static QList<SwitchTarget> switchTargets(const CGSDisplay& display, const CGSSpace& space,
                                             const QList<CGSDisplay>& displays,
                                             const ProjectStore& projects);

    // Switches the targets' displays in order; a round that switched another display than
    // the first target's ends with the driver giving the focus back to the first one.
    void round(QList<SwitchTarget> targets);
    void attempt(const SwitchTarget& target, int tries, Done done);
    std::optional<QString> currentUUID(const QString& displayUUID) const;

    // Called with the outcome of each whole round; for whoever waits on a switch.
    void setRoundFinished(std::function<void()> callback) { roundFinished_ = std::move(callback); }

private:
    void next(QList<SwitchTarget> targets);
    void pressStep(const SwitchTarget& target, int tryNumber, Done done);
    void verify(const SwitchTarget& target, int tryNumber, Done done);
    void finishRound();

    const SpaceStore& spaces_;
    const ProjectStore& projects_;
    SwitchDriver& driver_;
    Scheduler& scheduler_;
    const SwitchDebugLog& log_;
    std::unique_ptr<QObject> chain_; // the retry delays of the switch under way
    std::function<void()> roundFinished_;
    std::optional<SwitchTarget> chosen_; // the first target of the round under way
    bool focusMoved_ = false;            // the round has asked for another display
};

} // namespace deskmark
