#pragma once

#include <QString>

namespace deskmark {

// The switch engine's step-by-step trace. Each line is appended, with a time stamp, to a
// file that is written only while the trace is enabled (SW_DEBUG set in the environment,
// whatever its value): a user who reports a switch that went wrong can send it along.
class SwitchDebugLog {
public:
    static constexpr const char* kDefaultPath = "/tmp/swdbg.log";

    // Enabled by the environment, writing to the default file.
    SwitchDebugLog();
    SwitchDebugLog(QString path, bool enabled);

    // Whether SW_DEBUG is present in this process's environment; read once.
    static bool swDebugEnabled();

    bool isEnabled() const { return enabled_; }
    // Appends "<seconds since 1970, three decimals> <message>\n" when enabled.
    void dbg(const QString& message) const;

private:
    QString path_;
    bool enabled_;
};

} // namespace deskmark
