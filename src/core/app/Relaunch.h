#pragma once

#include <QString>
#include <QStringList>

namespace deskmark {

// Restarting Deskmark (a language change shows only after a restart). A small shell
// helper waits until this process has gone, polling every 0.1 s, and then starts the
// executable again, so the new copy never meets the old one's instance lock.
class Relaunch {
public:
    struct Command {
        QString program;
        QStringList arguments;
    };

    // The helper invocation: /bin/sh -c <script> deskmark-relaunch <executable>. The
    // executable travels as the script's $1, never inside the script text, so any
    // path (spaces, quotes, dollar signs) reaches exec unchanged.
    static Command helperCommand(qint64 pid, const QString& executable);

    // Starts command detached. On failure logs the reason and returns false: the
    // restart is abandoned and the program keeps running.
    static bool startHelper(const Command& command);

    // Starts the helper for this process and its executable. Returns true when it
    // started; the caller then quits the application.
    static bool start();
};

} // namespace deskmark
