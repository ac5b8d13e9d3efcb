#pragma once

#include "core/app/CommandLine.h"

namespace deskmark {

// The command line's side of the agent's command interface (DBusControlService): one
// blocking call on the session bus, never starting an agent that is not running.
class DBusControlClient {
public:
    // Sends an Action or Switch command to the running agent. On Failed, *detail holds the
    // bus's error message.
    static CommandLine::Reply send(const CommandLine& command, QString* detail);
};

} // namespace deskmark
