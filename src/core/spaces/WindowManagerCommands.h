#pragma once

#include <QString>

#include <functional>

namespace deskmark {

// Commands for an i3-style window manager (i3, sway), run as its IPC socket runs them.
class WindowManagerCommands {
public:
    virtual ~WindowManagerCommands() = default;

    // Runs the command line (commands separated by "," or ";"). done, when given, learns
    // later whether every command of it succeeded; false also when the window manager
    // could not be asked.
    virtual void runCommand(const QString& command, std::function<void(bool)> done = {}) = 0;
};

} // namespace deskmark
