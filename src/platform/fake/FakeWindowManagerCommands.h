#pragma once

#include "core/spaces/WindowManagerCommands.h"

#include <QStringList>

#include <functional>

namespace deskmark {

// A window manager that runs commands in memory: it records every command line and
// answers each at once, by default with success; tests choose the answers.
class FakeWindowManagerCommands : public WindowManagerCommands {
public:
    void runCommand(const QString& command, std::function<void(bool)> done = {}) override {
        commands_ << command;
        const bool succeeded = answer_(command);
        if (done)
            done(succeeded);
    }

    const QStringList& commands() const { return commands_; }
    void clear() { commands_.clear(); }
    // Decides whether a command line succeeds.
    void setAnswer(std::function<bool(const QString&)> answer) { answer_ = std::move(answer); }

private:
    QStringList commands_;
    std::function<bool(const QString&)> answer_ = [](const QString&) { return true; };
};

} // namespace deskmark
