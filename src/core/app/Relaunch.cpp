#include "core/app/Relaunch.h"

#include "core/app/SystemLog.h"

#include <QCoreApplication>
#include <QProcess>

namespace deskmark {

Relaunch::Command Relaunch::helperCommand(qint64 pid, const QString& executable) {
    const QString script = QStringLiteral("while /bin/kill -0 %1 2>/dev/null; do /bin/sleep 0.1; "
                                          "done; exec \"$1\"")
                               .arg(pid);
    return {QStringLiteral("/bin/sh"),
            {QStringLiteral("-c"), script, QStringLiteral("deskmark-relaunch"), executable}};
}

bool Relaunch::startHelper(const Command& command) {
    QProcess process;
    process.setProgram(command.program);
    process.setArguments(command.arguments);
    if (process.startDetached())
        return true;
    systemLog(QStringLiteral("Deskmark: 再起動用プロセスの起動に失敗（再起動を中止）: ") +
              process.errorString());
    return false;
}

bool Relaunch::start() {
    return startHelper(
        helperCommand(QCoreApplication::applicationPid(), QCoreApplication::applicationFilePath()));
}

} // namespace deskmark
