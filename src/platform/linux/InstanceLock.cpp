#include "platform/linux/InstanceLock.h"

#include "core/app/Language.h"
#include "core/model/AppFolders.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace deskmark {

InstanceLock InstanceLock::acquire(const QString& folder) {
    AppFolders::ensureExists(folder);
    const QByteArray path = QFile::encodeName(folder + QStringLiteral("/.instance.lock"));
    const int fd = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0)
        return InstanceLock(-1, State::Unavailable);
    int result;
    do {
        result = ::flock(fd, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    // Only "would block" means another instance; any other refusal (a file system
    // without locks) lets this copy run, as when the file cannot be opened.
    if (result == 0)
        return InstanceLock(fd, State::Acquired);
    const State state = errno == EWOULDBLOCK ? State::HeldElsewhere : State::Unavailable;
    ::close(fd);
    return InstanceLock(-1, state);
}

bool InstanceLock::ensureSingleInstance(const QString& folder) {
    // Held in a static so that the descriptor stays open until the process ends.
    static InstanceLock lock = acquire(folder);
    if (lock.state() != State::HeldElsewhere)
        return lock.state() == State::Acquired;
    const QByteArray message = alreadyRunningMessage();
    std::fwrite(message.constData(), 1, static_cast<size_t>(message.size()), stderr);
    std::fflush(stderr);
    std::exit(0);
}

QByteArray InstanceLock::alreadyRunningMessage() {
    return localized("Deskmark は既に起動しています。\n", "Deskmark is already running.\n")
        .toUtf8();
}

InstanceLock::InstanceLock(InstanceLock&& other) noexcept : fd_(other.fd_), state_(other.state_) {
    other.fd_ = -1;
}

InstanceLock::~InstanceLock() {
    if (fd_ >= 0)
        ::close(fd_);
}

} // namespace deskmark
