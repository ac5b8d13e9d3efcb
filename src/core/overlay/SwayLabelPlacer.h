#pragma once

#include "core/overlay/WindowPlacer.h"

#include <QHash>
#include <QObject>

#include <chrono>

namespace deskmark {

class Scheduler;
class WindowManagerCommands;

// Places the label windows on sway: floating, sticky (on every workspace of their
// output), borderless, never focused, moved with `move absolute position`.
//
// installRules(), when the connection opens, and before a placement while sway has not
// taken them (it refused, or they were never sent), adds rules: every
// window of this application floats (its panels and dialogs are no tiles), and windows
// whose title starts with the label prefix are also sticky and borderless (for_window)
// and never focused (no_focus), so that a label never lands tiled
// among the user's windows nor takes the focus when it appears. Each
// placement names the window by its whole title and repeats the floating and sticky
// commands, which also covers a window that sway mapped before the rules were in.
// A window shown a moment ago may not be mapped yet: sway then finds no window, and the
// placement is tried again every 50 ms for up to 2 s. A newer placement of the same
// window replaces one still trying.
class SwayLabelPlacer : public QObject, public WindowPlacer {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds kRetryInterval{50};
    static constexpr int kMaxTries = 40;

    SwayLabelPlacer(WindowManagerCommands& commands, Scheduler& scheduler, QString appID,
                    QObject* parent = nullptr);

    void installRules();

    // "deskmark-label:" and the key, whose characters other than letters, digits and "-"
    // are written as "_" and two hex digits, so that the title is its own pattern.
    QString windowTitle(const QString& key) const override;
    void place(const QString& title, const QPoint& topLeft) override;

private:
    enum class Rules { Missing, Asked, Installed };

    QString criteria(const QString& titlePattern) const;
    void attempt(const QString& title, const QPoint& topLeft, int tries, quint64 generation);

    WindowManagerCommands& commands_;
    Scheduler& scheduler_;
    QString appID_;
    Rules rules_ = Rules::Missing;
    QHash<QString, quint64> generations_;
};

} // namespace deskmark
