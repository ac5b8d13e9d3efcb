#pragma once

#include <QString>
#include <QtGlobal>

namespace deskmark {

// An application with a window on screen, as the platform identifies it: the one that was
// active when the bookmark popup opened is the source of a capture.
struct RunningApp {
    // Desktop-file id without ".desktop" ("firefox-esr", "org.gnome.Nautilus", "xterm");
    // empty when the window could not be matched to any application.
    QString bundleID;
    // The application's display name; may be empty.
    QString localizedName;
    // Its active window (an X window id) and the process that owns it (0 when unknown).
    quint64 window = 0;
    qint64 pid = 0;
    // The application declares itself a terminal emulator (Categories=TerminalEmulator).
    bool isTerminal = false;

    friend bool operator==(const RunningApp&, const RunningApp&) = default;
};

} // namespace deskmark
