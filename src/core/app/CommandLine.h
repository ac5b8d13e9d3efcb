#pragma once

#include "core/model/HotKeyAction.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace deskmark {

// What one run of the program is asked to do by its arguments, and what it tells the
// user afterwards. With no arguments the program is the agent; a command word asks the
// running agent for one of its actions and ends; an option prints and ends.
class CommandLine {
public:
    enum class Mode {
        Agent,    // no arguments: run as the session's agent
        Diagnose, // --diagnose: print the displays and Spaces as JSON
        Help,     // -h, --help
        Version,  // --version
        Action,   // a command word: one of the agent's hot-key actions
        Switch,   // switch NAME: to the first Space whose project is called NAME
        Invalid,  // a usage error: error() says which
    };

    // How a request to the running agent ended.
    enum class Reply {
        Done,
        NotRunning, // no agent answers on the session bus
        NoMatch,    // switch: no Space has a project of that name
        Failed,     // the agent answered with an error
    };

    static constexpr int kExitOK = 0;
    static constexpr int kExitFailure = 1;
    static constexpr int kExitUsage = 2;

    // The arguments after the program name.
    static CommandLine parse(const QStringList& arguments);

    Mode mode() const { return mode_; }
    // The agent's action of a command word; set in Action mode only.
    std::optional<HotKeyAction> action() const { return action_; }
    // The project name of switch.
    const QString& projectName() const { return projectName_; }
    // The usage error, one line without the trailing hint.
    const QString& error() const { return error_; }

    // What the user sees for a usage error (standard error), ending in a newline.
    QString usageErrorText() const;
    // The --help text, listing every option and command.
    static QString helpText();
    // The word that runs the action: "switcher", "rename", ...
    static QString commandWord(HotKeyAction action);
    static QString versionText();

    // The exit status and the standard-error text for the agent's reply; `detail` is the
    // error the bus reported for Failed.
    struct Report {
        int exitCode;
        QString message;
        friend bool operator==(const Report&, const Report&) = default;
    };
    Report report(Reply reply, const QString& detail = QString()) const;

private:
    static CommandLine invalid(QString error);

    Mode mode_ = Mode::Agent;
    std::optional<HotKeyAction> action_;
    QString projectName_;
    QString error_;
};

} // namespace deskmark
