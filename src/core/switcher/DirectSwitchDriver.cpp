#include "core/switcher/DirectSwitchDriver.h"

#include "core/spaces/SpaceStore.h"
#include "core/switcher/SpaceRequester.h"

namespace deskmark {

DirectSwitchDriver::DirectSwitchDriver(SpaceRequester& requester, const SpaceStore& spaces,
                                       Scheduler& scheduler, const SwitchDebugLog& log)
    : requester_(requester), spaces_(spaces), scheduler_(scheduler), log_(log),
      poll_(scheduler) {}

void DirectSwitchDriver::press(const SwitchTarget& target, int tryNumber,
                               std::function<void(bool sent)> then) {
    const bool sent = requester_.requestSpace(target.display.displayUUID, target.index);
    log_.dbg(QStringLiteral("SW: request sent=%1 idx=%2 try=%3")
                 .arg(sent ? QStringLiteral("true") : QStringLiteral("false"))
                 .arg(target.index)
                 .arg(tryNumber));
    if (!sent) {
        then(false);
        return;
    }
    const QString wanted = target.spaceUUID();
    const QString displayUUID = target.display.displayUUID;
    const auto start = scheduler_.now();
    poll_.start(
        [this, wanted, displayUUID, start] {
            return spaces_.currentSpace(displayUUID) == wanted ||
                   scheduler_.now() - start > kTimeout;
        },
        [then] { then(true); });
}

void DirectSwitchDriver::refocus(const SwitchTarget& chosen) {
    const bool sent = requester_.requestSpace(chosen.display.displayUUID, chosen.index);
    log_.dbg(QStringLiteral("SW: refocus sent=%1 idx=%2")
                 .arg(sent ? QStringLiteral("true") : QStringLiteral("false"))
                 .arg(chosen.index));
}

} // namespace deskmark
