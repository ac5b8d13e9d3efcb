#pragma once

#include <QString>

namespace deskmark {

// The lock that lets only one Deskmark run per user: an exclusive flock on
// ".instance.lock" in the data folder. The lock lasts as long as the descriptor is
// open; the descriptor is close-on-exec, so a program started by Deskmark (the
// relaunch helper and the new copy it starts) never inherits it.
class InstanceLock {
public:
    enum class State {
        Acquired,      // this object holds the lock
        HeldElsewhere, // another instance holds it
        Unavailable,   // the file could not be opened: run without a lock
    };

    // Creates the folder (a failure shows up as Unavailable), opens the lock file and
    // tries to lock it without waiting.
    static InstanceLock acquire(const QString& folder);

    // The single-instance step of the program entry, after the language is decided:
    // when another instance holds the lock, writes the already-running message to
    // standard error and exits with status 0. Otherwise the lock, if it was taken,
    // stays held until the process ends. True when this process holds it.
    static bool ensureSingleInstance(const QString& folder);

    // "Deskmark is already running.\n" in the interface language.
    static QByteArray alreadyRunningMessage();

    InstanceLock(InstanceLock&& other) noexcept;
    InstanceLock& operator=(InstanceLock&&) = delete;
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;
    ~InstanceLock(); // closing the descriptor releases the lock

    State state() const { return state_; }

private:
    InstanceLock(int fd, State state) : fd_(fd), state_(state) {}

    int fd_;
    State state_;
};

} // namespace deskmark
